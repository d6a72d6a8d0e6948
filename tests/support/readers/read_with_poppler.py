# SPDX-License-Identifier: MIT
"""Reads PDF files with poppler and prints what it found in the form that document_readers.h describes.

Usage: python3 read_with_poppler.py FILE…
"""
import json
import pathlib
import sys

import gi

gi.require_version("Poppler", "0.18")
from gi.repository import Poppler  # noqa: E402: the version comes first

KEYS = ("title", "author", "subject", "keywords", "creator", "producer")


def page_of(action):
    """The page that an action leads to, counted from 1; 0 without one."""
    return action.goto_dest.dest.page_num if action.type == Poppler.ActionType.GOTO_DEST else 0


def first_bookmark(document):
    try:
        return Poppler.IndexIter.new(document)
    except TypeError:  # there is none
        return None


def bookmarks_of(item):
    bookmarks = []
    more = item is not None
    while more:
        action, below = item.get_action(), bookmarks_of(item.get_child())
        bookmarks.append({"title": action.any.title, "page": page_of(action), "children": below})
        more = item.next()
    return bookmarks


def annotations_of(page):
    annotations = []
    # Poppler lists the last ones first.
    for mapping in reversed(page.get_annot_mapping()):
        kind = mapping.annot.get_annot_type()
        if kind != Poppler.AnnotType.LINK:
            contents = mapping.annot.get_contents() or ""
            annotations.append({"kind": kind.value_nick.title(), "contents": contents, "address": "", "page": 0})
    for mapping in reversed(page.get_link_mapping()):
        action = mapping.action
        address = action.uri.uri if action.type == Poppler.ActionType.URI else ""
        annotations.append({"kind": "Link", "contents": "", "address": address, "page": page_of(action)})
    return annotations


def read(file):
    document = Poppler.Document.new_from_file(pathlib.Path(file).absolute().as_uri(), None)
    pages = [document.get_page(index) for index in range(document.get_n_pages())]
    information = {key.title(): getattr(document, "get_" + key)() for key in KEYS}
    return {
        "pages": [{"text": page.get_text(), "annotations": annotations_of(page)} for page in pages],
        "information": {key: value for key, value in information.items() if value},
        "bookmarks": bookmarks_of(first_bookmark(document)),
        "warnings": [],
    }


print(json.dumps([read(file) for file in sys.argv[1:]]))
