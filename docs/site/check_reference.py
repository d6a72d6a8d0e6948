# SPDX-License-Identifier: MIT
"""check_reference.py DOCS DESCRIPTION: whether the pages of DOCS/reference describe what the plugins register.

DESCRIPTION is what `quillbar describe --json` prints. Each class has a page of its name. A section with a declaration
describes one member, or a few that belong together, which its heading names. Of each member the page has

- its declaration, as registered, in a block fenced with "declaration", and text that says what it does;
- "Units", where it takes or gives numbers;
- "Modes", if it is a member of Page;
- "Refused", if it can be called or set;
- a script that uses it, in its section or in the one to which "Example" leads. One that continues another script and
  paints has the picture of what it paints.

Of each enumeration the page has all members with their values. Prints what is missing, and exits with 1 if anything is.
"""
import json
import pathlib
import re
import sys

# What leaves something to see on a page; the methods are those of the cookbook's first section.
PAINTS = re.compile(r"\bp\.(Draw|Fill|FillAndDraw|ShowText|ShowTextNextLine|TextRect|TextRectBaseline|DrawImage)\b"
                    r"|^\s*(Write|WriteRight|WriteCentred|Rule)\(", re.M)
NUMBER = re.compile(r"\b(Single|Double|U?Integer|U?Int(8|16|32|64))\b")
BLOCK = re.compile(r"^```(\S+)([^\n]*)\n(.*?)^```$", re.M | re.S)
LINK = re.compile(r"\]\(([^)#\s]*)#([^)\s]+)\)")


def anchor_of(heading):
    """The anchor of a heading, as code hosts and the site make it."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def sections_of(text):
    """The sections of a page, of any level, by anchor: their heading and their text."""
    parts = re.split(r"^(#+) (.+)$", BLOCK.sub(lambda block: block.group(0).replace("\n#", "\n\0#"), text), flags=re.M)
    return {anchor_of(heading): (level, heading, body.replace("\0", ""))
            for level, heading, body in zip(parts[1::3], parts[2::3], parts[3::3])}


def scripts_of(text):
    """The scripts of a section: what their fences say, and their code."""
    return [(words, code) for kind, words, code in BLOCK.findall(text) if kind == "vb"]


class Page:
    """The page of one class."""

    def __init__(self, path, faults):
        self.path = path
        self.name = path.stem
        self.faults = faults
        self.sections = sections_of(path.read_text(encoding="utf-8"))
        self.entries = [Entry(self, heading, body) for _, heading, body in self.sections.values()
                        if "```declaration\n" in body]

    def fault(self, text):
        self.faults.append(f"docs/reference/{self.path.name}: {text}")

    def check(self, registered):
        """Compares the page with the class that is registered under its name."""
        methods = registered["constructors"] + registered["methods"]
        declarations = [(method["name"], method["declaration"], True) for method in methods]
        declarations += [(event["name"], "Event " + event["declaration"], False) for event in registered["events"]]
        declarations += [(one["name"], f"{one['name']} as {one['type']}" + ("" if one["writable"] else ", read-only"),
                          one["writable"]) for one in registered["properties"]]
        for name, declaration, takes in declarations:
            entry = self.entry_of(name, declaration)
            if entry is not None:
                entry.check_member(name, declaration, takes)
        for enumeration in registered["enumerations"]:
            declaration = "Enum " + self.name + "." + enumeration["name"]
            entry = self.entry_of(enumeration["name"], declaration)
            if entry is not None:
                entry.check_enumeration(enumeration)
        known = {declaration for _, declaration, _ in declarations}
        known |= {"Enum " + self.name + "." + enumeration["name"] for enumeration in registered["enumerations"]}
        for entry in self.entries:
            for declaration in entry.declarations:
                if declaration not in known:
                    self.fault(f"{declaration} is not registered")

    def entry_of(self, name, declaration):
        """The entry of a member; None, and a fault, if there is none."""
        for entry in self.entries:
            if declaration in entry.declarations and name in entry.names:
                return entry
        self.fault(f"{declaration} is missing, or not below a heading that names it")
        return None


class Entry:
    """A section that describes members."""

    def __init__(self, page, heading, body):
        self.page = page
        self.heading = heading
        self.body = body
        self.names = heading.split(", ")
        self.declarations = [line for kind, _, code in BLOCK.findall(body) if kind == "declaration"
                             for line in code.splitlines()]
        self.prose = BLOCK.sub("", body)
        for words, code in scripts_of(body):
            if "after=" in words and "picture=" not in words and PAINTS.search(code):
                self.fault("has a script that paints, without its picture")

    def fault(self, text):
        self.page.fault(f"{self.heading}: {text}")

    def says(self, label):
        return re.search(rf"^- \*\*{label}:\*\* \S", self.prose, re.M) is not None

    def check_member(self, name, declaration, takes):
        before = self.prose.split("\n- **")[0]
        if not re.search(r"\w+ \w+ \w+", before):
            self.fault("says nothing of what it does")
        signature = declaration.partition("(")[2] or declaration.partition(" as ")[2]
        if NUMBER.search(signature) and not self.says("Units"):
            self.fault(f"has no units, which {name} needs")
        if self.page.name == "Page" and not self.says("Modes"):
            self.fault("has no modes")
        if takes and not self.says("Refused"):
            self.fault(f"doesn't say what {name} refuses")
        self.check_example(self.page.name if name == "Constructor" else name)

    def check_enumeration(self, enumeration):
        for member in enumeration["members"]:
            if f"\n| `{member['name']}` | {member['value']} |" not in self.body:
                self.fault(f"has no row of {member['name']}, which is {member['value']}")
        rows = re.findall(r"^\| `\w+` \| -?\d+ \|", self.body, re.M)
        if len(rows) != len(enumeration["members"]):
            self.fault(f"has {len(rows)} members, of {len(enumeration['members'])}")
        self.check_example(enumeration["name"])

    def check_example(self, name):
        """A script with the name, here or where the links of "Example" lead."""
        scripts = scripts_of(self.body)
        example = re.search(r"^- \*\*Example:\*\* (.+?)(?=^- |^\s*$|\Z)", self.prose, re.M | re.S)
        for file, anchor in LINK.findall(example.group(1)) if example else []:
            target = (self.page.path.parent / file).resolve() if file else self.page.path
            sections = sections_of(target.read_text(encoding="utf-8")) if target.exists() else {}
            if anchor not in sections:
                self.fault(f"has an example at {file}#{anchor}, a place that isn't there")
            else:
                scripts += scripts_of(sections[anchor][2])
        if not any(re.search(rf"\b{name}\b", code) for _, code in scripts):
            self.fault(f"has no script that uses {name}")


def faults_of(docs, description):
    """What the reference lacks, one line each."""
    faults = []
    classes = {one["name"]: one for module in description["modules"] for one in module["classes"]}
    classes.update((one["name"], one) for one in description["classes"])
    for module in description["modules"]:
        for member in module["methods"] + module["enumerations"]:
            faults.append(f"docs/reference.md: {module['name']}.{member['name']} is missing")
    overview = (docs / "reference.md").read_text(encoding="utf-8")
    for name in classes:
        if f"(reference/{name}.md)" not in overview:
            faults.append(f"docs/reference.md: there is no link to {name}")
        if not (docs / "reference" / f"{name}.md").exists():
            faults.append(f"docs/reference: {name} has no page")
    for path in sorted((docs / "reference").glob("*.md")):
        if path.stem in classes:
            Page(path, faults).check(classes[path.stem])
        else:
            faults.append(f"docs/reference: {path.name} describes no class")
    return faults


if __name__ == "__main__":
    found = faults_of(pathlib.Path(sys.argv[1]), json.loads(pathlib.Path(sys.argv[2]).read_text(encoding="utf-8")))
    for fault in found:
        print(fault)
    sys.exit(1 if found else 0)
