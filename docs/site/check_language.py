# SPDX-License-Identifier: MIT
"""check_language.py DOCS DECLARATIONS: whether the pages of DOCS/language describe the library of the script language.

DECLARATIONS is a text file: each line is a function, a member with its class or type ("String.Left(count As Integer) As
String", "New Pair(left as Variant, right as Variant)"), an enumeration, or a class that has no members of its own ("class
IOException"). A section of a page has the declarations of a few that belong together, text that says what they do, and a
script that uses each of them. Operators have no name that a script could use. Prints what is missing, and exits with 1
if anything is.
"""
import pathlib
import re
import sys

from check_reference import BLOCK, scripts_of, sections_of


def name_of(declaration):
    """The name by which scripts use what is declared."""
    head = re.sub(r"^(New|Enum) ", "", declaration).partition("(")[0].partition(" ")[0]
    return head.rpartition(".")[2]


def faults_of(docs, declarations):
    """What the pages lack, one line each."""
    faults, described, prose = [], set(), ""
    for path in sorted((docs / "language").glob("*.md")):
        for _, heading, body in sections_of(path.read_text(encoding="utf-8")).values():
            text = BLOCK.sub("", body)
            prose += text
            here = [line for kind, _, code in BLOCK.findall(body) if kind == "declaration" for line in code.splitlines()]
            code = "\n".join(code for _, code in scripts_of(body))
            where = f"docs/language/{path.name}: {heading}"
            if here and not re.search(r"\w+ \w+ \w+", text):
                faults.append(f"{where}: says nothing of what it is")
            for declaration in here:
                name = name_of(declaration)
                if declaration in described:
                    faults.append(f"{where}: {declaration} is described twice")
                described.add(declaration)
                if declaration not in declarations:
                    faults.append(f"{where}: there is no {declaration}")
                elif not name.startswith("Operator_") and not re.search(rf"\b{name}\b", code):
                    faults.append(f"{where}: has no script that uses {declaration}")
    for declaration in declarations:
        if declaration.startswith("class "):
            if f"`{declaration[6:]}`" not in prose:
                faults.append(f"docs/language: {declaration} is missing")
        elif declaration not in described:
            faults.append(f"docs/language: {declaration} is missing")
    return faults


if __name__ == "__main__":
    lines = pathlib.Path(sys.argv[2]).read_text(encoding="utf-8").splitlines()
    found = faults_of(pathlib.Path(sys.argv[1]), dict.fromkeys(lines))
    for fault in found:
        print(fault)
    sys.exit(1 if found else 0)
