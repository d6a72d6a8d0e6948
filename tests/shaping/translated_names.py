# SPDX-License-Identifier: MIT
"""Prints the names of countries and languages, in all translations of Debian's package iso-codes, that have a character
of some blocks of Unicode, as a JSON array.
Usage: /usr/bin/python3 translated_names.py FIRST-LAST… (hexadecimal)"""
import gettext
import json
import pathlib
import re
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


blocks = [[chr(int(end, 16)) for end in argument.split("-")] for argument in sys.argv[1:]]
character = re.compile("[" + "".join(re.escape(first) + "-" + re.escape(last) for first, last in blocks) + "]")
json.dump(sorted(filter(character.search, translated_names())), sys.stdout)
