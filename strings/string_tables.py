"""Reads the texts: string_ids.h, languages.tsv, and the PO files of the folder po.

po/beamline.pot is the template: it has the English texts. po/LANGUAGE.po has those of a language.
"""

import re
from collections import namedtuple
from pathlib import Path

import polib

IDS_HEADER = "string_ids.h"
LANGUAGES = "languages.tsv"
TEMPLATE = "beamline.pot"
ENGLISH = 0x0409

DEFINE = re.compile(r"#define\s+(IDS_[A-Z0-9_]+)\s+([0-9]+)\s*(?://\s*(.*))?")

# section: the comment above the group of the id; note: the comment beside it.
Id = namedtuple("Id", "macro number section note")
# po: its name in gettext; number: its Windows language id; locale: one in which the tests run it; font:
# one for its script, empty where the font of the dialogs has it.
Language = namedtuple("Language", "po number english_name own_name locale font", defaults=[""])


class TableError(Exception):
    """A file that cannot be read; the text names file and line."""


class Table:
    """The texts of one language: `texts` maps id to text, `lines` id to line of the file."""

    def __init__(self, name, number, texts, lines=None):
        self.name = name
        self.number = number
        self.texts = texts
        self.lines = lines or {}


def parse_ids(source):
    """The ids of the header, in the order of the file."""
    ids = []
    section = ""
    for line, text in enumerate(source.splitlines(), 1):
        text = text.strip()
        if text.startswith("//"):
            section = text.removeprefix("//").strip()
        elif text and text != "#pragma once":
            found = DEFINE.fullmatch(text)
            if not found:
                raise TableError(f"{IDS_HEADER}:{line}: not an id: {text}")
            ids.append(Id(found[1], int(found[2]), section, found[3] or ""))
    return ids


def parse_languages(source):
    """The languages in the text of languages.tsv."""
    languages = []
    for line, text in enumerate(source.splitlines(), 1):
        if not text or text.startswith("#"):
            continue
        fields = text.split("\t")
        count = len(Language._fields)
        if len(fields) not in (count - 1, count) or not re.fullmatch("[0-9A-F]{4}", fields[1]):
            raise TableError(f"{LANGUAGES}:{line}: not a language: {text}")
        languages.append(Language(fields[0], int(fields[1], 16), *fields[2:]))
    return languages


def read_ids(folder):
    return parse_ids((Path(folder) / IDS_HEADER).read_text(encoding="utf-8"))


def read_languages(folder):
    return parse_languages((Path(folder) / LANGUAGES).read_text(encoding="utf-8"))


def po_path(folder, language):
    """The file of a language; English has the template."""
    name = TEMPLATE if language.number == ENGLISH else f"{language.po}.po"
    return Path(folder) / "po" / name


def read_table(folder, language, ids):
    """The texts of a language whose file is there; `ids` maps macro to number."""
    path = po_path(folder, language)
    texts = {}
    lines = {}
    for entry in polib.pofile(str(path), encoding="utf-8"):
        if entry.obsolete:
            continue
        if entry.msgctxt not in ids:
            raise TableError(f"{path.name}:{entry.linenum}: no id of a text: {entry.msgctxt}")
        number = ids[entry.msgctxt]
        texts[number] = entry.msgid if language.number == ENGLISH else entry.msgstr
        lines[number] = entry.linenum
    return Table(path.name, language.number, texts, lines)


def utf16_units(text):
    return len(text.encode("utf-16-le", "surrogatepass")) // 2
