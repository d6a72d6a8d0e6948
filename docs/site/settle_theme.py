# SPDX-License-Identifier: MIT
"""settle_theme.py HTML: makes the theme of a finished site work for pages that are opened from the disk.

Debian's package of the theme leaves three things open that other builds of it have settled:
- Its style sheet imports another one from the place where a web server would have it.
- Its script imports another one as a module, which browsers refuse to pages from the disk.
- Its dark colours are only chosen by the button, not by what the reader's system prefers.
"""
import pathlib
import re
import sys

static = pathlib.Path(sys.argv[1]) / "_static"

style = static / "styles" / "furo.css"
text = style.read_text(encoding="utf-8")
text = re.sub(r"@import url\((/javascript/[^)]+)\);",
              lambda match: pathlib.Path("/usr/share" + match.group(1)).read_text(encoding="utf-8"), text)
if "prefers-color-scheme" not in text:
    dark = re.search(r'body\[data-theme="dark"\] (\{[^}]*--color-background-primary[^}]*\})', text).group(1)
    text += f'\n@media not print {{ @media (prefers-color-scheme: dark) {{ body:not([data-theme="light"]) {dark} }} }}\n'
style.write_text(text, encoding="utf-8")

script = static / "scripts" / "furo.js"
text = script.read_text(encoding="utf-8")
module = re.match(r'import Gumshoe from "\./([\w.-]+)";\n', text)
if module:
    imported = (script.parent / module.group(1)).read_text(encoding="utf-8")
    script.write_text(f"{imported}\n(function () {{\n{text[module.end():]}\n}})();\n", encoding="utf-8")
