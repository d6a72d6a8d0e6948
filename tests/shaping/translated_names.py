# SPDX-License-Identifier: MIT
"""Writes the names of countries and languages, in all translations of Debian's package iso-codes, to files of a folder:
PP.txt has those with a character from U+PP00 to U+PPFF, each on a line of its own, in the order of their characters.
Usage: /usr/bin/python3 translated_names.py FOLDER"""
import collections
import gettext
import json
import pathlib
import sys

LISTS = {"iso_3166-1": "3166-1", "iso_639-3": "639-3"}
KEYS = ("name", "common_name", "official_name", "inverted_name")


def english_names(domain, key):
    entries = json.loads(pathlib.Path(f"/usr/share/iso-codes/json/{domain}.json").read_text(encoding="utf-8"))[key]
    return {entry[field] for entry in entries for field in KEYS if field in entry}


def translated_names():
    names = set()
    for domain, key in LISTS.items():
        english = english_names(domain, key)
        for catalogue in pathlib.Path("/usr/share/locale").glob(f"*/LC_MESSAGES/{domain}.mo"):
            with catalogue.open("rb") as file:
                names.update(map(gettext.GNUTranslations(file).gettext, english))
    return names


folder = pathlib.Path(sys.argv[1])
folder.mkdir(parents=True, exist_ok=True)
pages = collections.defaultdict(list)
for name in sorted(translated_names()):
    for page in {ord(character) >> 8 for character in name}:
        pages[page].append(name + "\n")
for page, lines in pages.items():
    (folder / f"{page:02X}.txt").write_text("".join(lines), encoding="utf-8", newline="")
