# SPDX-License-Identifier: MIT
"""assemble.py DOCS PAGES: the site's pages, from the documentation as it is read in the repository.

The pages of DOCS are plain Markdown, whose list in index.md is the only table of contents. Here each section of that list
becomes a part of the site's menu. A link to an example becomes a link to a page that shows it, and one to any other file
outside of DOCS loses its target, because the site doesn't hold that file.
"""
import pathlib
import re
import shutil
import sys

docs, pages = (pathlib.Path(argument) for argument in sys.argv[1:])
examples = docs.parent / "examples"
LINK = re.compile(r"(?<!!)\[([^\]]*)\]\(([^)\s]+)\)")


def on_the_site(match):
    """A link as the site has it."""
    text, target = match.groups()
    if not target.startswith("../"):
        return match.group(0)
    example = re.fullmatch(r"\.\./examples/(\w+)\.xojo_script", target)
    return f"[{text}](examples/{example.group(1)}.md)" if example else text


def menu(index):
    """The hidden tables of contents of index.md: for each heading the pages that are linked below it."""
    listed, parts = set(), []
    for section in re.split(r"^## ", index, flags=re.M)[1:]:
        heading, _, body = section.partition("\n")
        names = [target[:-3] for _, target in LINK.findall(body) if target.endswith(".md") and "/" not in target]
        if heading == "Examples":
            names = sorted(f"examples/{script.stem}" for script in examples.glob("*.xojo_script"))
        parts.append((heading, names))
        listed.update(names)
    others = sorted(page.stem for page in docs.glob("*.md") if page.stem not in listed | {"index"})
    if others:
        parts.append(("More", others))
    return "".join(
        f"\n```{{toctree}}\n:hidden:\n:caption: {heading}\n" + "\n".join(names) + "\n```\n" for heading, names in parts)


shutil.copytree(docs / "pictures", pages / "pictures")
for page in docs.glob("*.md"):
    text = LINK.sub(on_the_site, page.read_text(encoding="utf-8"))
    if page.stem == "index":
        text += menu(text)
    (pages / page.name).write_text(text, encoding="utf-8")

(pages / "examples").mkdir()
for script in examples.glob("*.xojo_script"):
    code = script.read_text(encoding="utf-8")
    title = script.stem.replace("_", " ").capitalize().replace(" chinese", " Chinese")
    pictures = "".join(f"![{title}](../pictures/{picture.name})\n" for picture in sorted(
        picture for picture in (docs / "pictures").glob("*.png")
        if re.fullmatch(re.escape(script.stem) + r"(-\d+)?", picture.stem)))
    (pages / "examples" / f"{script.stem}.md").write_text(
        f"# {title}\n\n`./run examples/{script.name}`\n\n{pictures}\n````vb\n{code}````\n", encoding="utf-8")
