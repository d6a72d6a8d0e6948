# SPDX-License-Identifier: MIT
"""assemble.py DOCS PAGES: the site's pages, from the documentation as it is read in the repository.

The pages of DOCS are plain Markdown, whose list in index.md is the only table of contents. Here each section of that list
becomes a part of the site's menu. A link to an example becomes a link to a page that shows it, and one to any other file
outside of DOCS loses its target, because the site doesn't hold that file. Below a script that continues another one, the
whole script can be unfolded, so that it can be copied.
"""
import os
import pathlib
import re
import shutil
import sys

docs, pages = (pathlib.Path(argument) for argument in sys.argv[1:])
examples = docs.parent / "examples"
LINK = re.compile(r"(?<!!)\[([^\]]*)\]\(([^)\s]+)\)")


def on_the_site(page):
    """What a link of a page becomes on the site."""
    def link(match):
        text, target = match.groups()
        file = os.path.normpath(page.parent / target.partition("#")[0])
        if "://" in target or target.startswith("#") or pathlib.Path(file).is_relative_to(os.path.normpath(docs)):
            return match.group(0)
        example = pathlib.Path(file)
        if example.parent != pathlib.Path(os.path.normpath(examples)) or example.suffix != ".xojo_script":
            return text
        return f"[{text}]({os.path.relpath(docs / 'examples' / example.stem, page.parent)}.md)"
    return link


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


SAVE = """
Dim pageFile As New FolderItem("page.pdf")
If pageFile.Exists Then pageFile.Delete
document.Save(pageFile)
"""
BLOCK = re.compile(r"^```vb([^\n]*)\n(.*?)^```\n", re.M | re.S)


def words_of(fence):
    """What a fence says, by key."""
    return dict(word.split("=", 1) for word in fence.split())


def named_blocks():
    """The scripts that others can continue, by name: their code and the name of the one that they continue themselves."""
    blocks = {}
    for page in docs.rglob("*.md"):
        for fence, code in BLOCK.findall(page.read_text(encoding="utf-8")):
            words = words_of(fence)
            if "name" in words:
                blocks[words["name"]] = (code, words.get("after"))
    return blocks


def with_whole_script(match):
    """A block, and the whole script below it if it continues another one."""
    fence, code = match.groups()
    name = words_of(fence).get("after")
    if name is None:
        return match.group(0)
    while name is not None:
        before, name = NAMED[name]
        code = before + "\n" + code
    if "document.Save(" not in code:
        code += SAVE
    return f"{match.group(0)}\n<details><summary>The whole script</summary>\n\n```vb\n{code}```\n\n</details>\n"


def part_menu(page, text):
    """The hidden table of contents of a page that has a folder of its own: the pages there, as they are linked."""
    names = [target[:-3] for _, target in LINK.findall(text) if target.startswith(f"{page.stem}/") and "#" not in target]
    return "\n```{toctree}\n:hidden:\n" + "\n".join(dict.fromkeys(names)) + "\n```\n" if names else ""


NAMED = named_blocks()
shutil.copytree(docs / "pictures", pages / "pictures")
for page in docs.rglob("*.md"):
    text = LINK.sub(on_the_site(page), page.read_text(encoding="utf-8"))
    text = BLOCK.sub(with_whole_script, text)
    text += menu(text) if page == docs / "index.md" else part_menu(page, text)
    (pages / page.relative_to(docs)).parent.mkdir(exist_ok=True)
    (pages / page.relative_to(docs)).write_text(text, encoding="utf-8")

(pages / "examples").mkdir()
for script in examples.glob("*.xojo_script"):
    code = script.read_text(encoding="utf-8")
    title = script.stem.replace("_", " ").capitalize().replace(" chinese", " Chinese")
    pictures = "".join(f"![{title}](../pictures/{picture.name})\n" for picture in sorted(
        picture for picture in (docs / "pictures").glob("*.png")
        if re.fullmatch(re.escape(script.stem) + r"(-\d+)?", picture.stem)))
    (pages / "examples" / f"{script.stem}.md").write_text(
        f"# {title}\n\n`./run examples/{script.name}`\n\n{pictures}\n````vb\n{code}````\n", encoding="utf-8")
