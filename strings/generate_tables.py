#!/usr/bin/env python3
"""Checks the texts and writes them for the resource compiler and as a C++ table.

usage: generate_tables.py [--leave-out-unfinished] FOLDER RC CPP

Native programs have no resource library. They take the texts from the C++ table, as do the tests
that compare the library with its sources. Nothing is written while a text is wrong.
"""

import argparse
import sys
from pathlib import Path

import check_strings

RC_ESCAPES = str.maketrans({'"': '""', "\\": "\\\\", "\n": "\\n"})
CPP_ESCAPES = {'"': '\\"', "\\": "\\\\", "\n": "\\n"}
CPP_HEAD = """// Generated from the files of strings/; do not edit.
#include "tests/support/strings_table.h"

const StringRow kStringRows[] = {
"""
CPP_TAIL = """}};
const unsigned kStringRowCount = {count};
"""
PRIMARY_BITS = 10  # of a language id; the rest is the variant


def resource_script(tables):
    """One script with every language, so that the resource compiler writes one table."""
    parts = []
    for table in tables:
        primary = table.number & ((1 << PRIMARY_BITS) - 1)
        parts.append(f"LANGUAGE {primary:#x}, {table.number >> PRIMARY_BITS:#x}\n")
        parts.append("STRINGTABLE\nBEGIN\n")
        for text_id, text in sorted(table.texts.items()):
            parts.append(f'    {text_id} "{text.translate(RC_ESCAPES)}"\n')
        parts.append("END\n\n")
    return "".join(parts)


def literal(text):
    """The text as a wide literal in plain ASCII, so that no compiler's character set matters."""
    return 'L"' + "".join(_escaped(letter) for letter in text) + '"'


def _escaped(letter):
    if letter in CPP_ESCAPES:
        return CPP_ESCAPES[letter]
    code = ord(letter)
    if 0x20 <= code < 0x7F:
        return letter
    return f"\\u{code:04X}" if code < 0x10000 else f"\\U{code:08X}"


def cpp_table(tables):
    rows = [
        f"    {{{text_id}, {table.number}, {literal(text)}}},\n"
        for table in tables
        for text_id, text in sorted(table.texts.items())
    ]
    return CPP_HEAD + "".join(rows) + CPP_TAIL.format(count=len(rows))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--leave-out-unfinished", action="store_true")
    parser.add_argument("folder", type=Path)
    parser.add_argument("rc", type=Path)
    parser.add_argument("cpp", type=Path)
    options = parser.parse_args()
    tables = check_strings.checked_tables(options.folder, options.leave_out_unfinished)
    if tables is None:
        return 1
    tables.sort(key=lambda table: table.number)
    options.rc.write_text(resource_script(tables), encoding="utf-8")
    options.cpp.write_text(cpp_table(tables), encoding="ascii")
    return 0


if __name__ == "__main__":
    sys.exit(main())
