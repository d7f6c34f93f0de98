#!/usr/bin/env python3
"""Writes the texts of every language as a C++ table. Usage: generate_table.py FOLDER OUTPUT

Native programs have no resource library. They take the texts from this table, as do the tests that
compare the library with its sources.
"""

import sys
from pathlib import Path

import string_tables

HEAD = """// Generated from the files of strings/; do not edit.
#include "tests/support/strings_table.h"

const StringRow kStringRows[] = {
"""
TAIL = """}};
const unsigned kStringRowCount = {count};
"""
NAMED_ESCAPES = {'"': '\\"', "\\": "\\\\", "\n": "\\n"}


def literal(text):
    """The text as a wide literal in plain ASCII, so that no compiler's character set matters."""
    return 'L"' + "".join(_escaped(letter) for letter in text) + '"'


def _escaped(letter):
    if letter in NAMED_ESCAPES:
        return NAMED_ESCAPES[letter]
    code = ord(letter)
    if 0x20 <= code < 0x7F:
        return letter
    return f"\\u{code:04X}" if code < 0x10000 else f"\\U{code:08X}"


def generate(tables):
    rows = [
        f"    {{{text_id}, {table.language}, {literal(text)}}},\n"
        for table in tables
        for text_id, text in sorted(table.texts.items())
    ]
    return HEAD + "".join(rows) + TAIL.format(count=len(rows))


def main(arguments):
    folder, output = arguments[1:]
    ids = dict(string_tables.read_ids(folder))
    Path(output).write_text(generate(string_tables.read_tables(folder, ids)), encoding="ascii")


if __name__ == "__main__":
    main(sys.argv)
