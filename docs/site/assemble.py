# SPDX-License-Identifier: MIT
"""assemble.py DOCS PAGES: the site's pages, from the documentation as it is read in the repository.

The pages of DOCS are plain Markdown, whose list in index.md is the only table of contents. Here each section of that list
becomes a part of the site's menu. A link to an example becomes a link to a page that shows it, and one to any other file
outside of DOCS loses its target, because the site doesn't hold that file. Below a script that continues another one, the
whole script can be unfolded, so that it can be copied.
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
    for page in docs.glob("*.md"):
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


NAMED = named_blocks()
shutil.copytree(docs / "pictures", pages / "pictures")
for page in docs.glob("*.md"):
    text = LINK.sub(on_the_site, page.read_text(encoding="utf-8"))
    text = BLOCK.sub(with_whole_script, text)
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
