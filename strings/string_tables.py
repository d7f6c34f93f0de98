"""Reads the string tables of this folder: string_ids.h and one .rc file for each language.

This reader knows only the small part of the resource language that the files need. It refuses
everything else with file and line: what it skipped would reach the library unchecked.
"""

import re
from pathlib import Path

IDS_HEADER = "string_ids.h"
IDS_INCLUDE = '#include "strings/string_ids.h"'

DEFINE = re.compile(r"#define\s+(IDS_[A-Z0-9_]+)\s+([0-9]+)\s*(//.*)?")
TOKEN = re.compile(
    r"""(?P<blank>[ \t\r]+)
      | (?P<newline>\n)
      | (?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>\#[^\n]*)
      | (?P<text>"(?:[^"\n]|"")*")
      | (?P<number>0[xX][0-9A-Fa-f]+|[0-9]+)(?![A-Za-z_0-9])
      | (?P<word>[A-Za-z_][A-Za-z_0-9]*)
      | (?P<mark>[{},])""",
    re.VERBOSE | re.DOTALL,
)
ESCAPE = re.compile(r'""|\\.|\\$', re.DOTALL)
ESCAPED = {'""': '"', "\\n": "\n", "\\\\": "\\"}


class TableError(Exception):
    """A file that cannot be read as a string table; the text names file and line."""


class Table:
    """The texts of one language: `language` is the Windows language id, `texts` maps id to text."""

    def __init__(self, name, language, texts):
        self.name = name
        self.language = language
        self.texts = texts


def parse_ids(source, name=IDS_HEADER):
    """The macros of the ids header, as a list of (macro, number) in the order of the file."""
    macros = []
    for number, line in enumerate(source.splitlines(), 1):
        stripped = line.strip()
        if not stripped or stripped.startswith("//") or stripped == "#pragma once":
            continue
        found = DEFINE.fullmatch(stripped)
        if not found:
            raise TableError(f"{name}:{number}: not an id: {stripped}")
        macros.append((found[1], int(found[2])))
    return macros


def parse_table(source, ids, name):
    """The table in the text of one .rc file; `ids` maps macro to number."""
    return _Parser(source, ids, name).table()


def read_ids(folder):
    path = Path(folder) / IDS_HEADER
    return parse_ids(_read(path), path.name)


def read_tables(folder, ids):
    """Every language's table, ordered by language id."""
    paths = sorted(Path(folder).glob("*.rc"))
    tables = [parse_table(_read(path), ids, path.name) for path in paths]
    return sorted(tables, key=lambda table: table.language)


def utf16_units(text):
    return len(text.encode("utf-16-le", "surrogatepass")) // 2


def _read(path):
    try:
        return path.read_bytes().decode("utf-8")
    except UnicodeDecodeError as problem:
        raise TableError(f"{path.name}: not UTF-8 at byte {problem.start}") from None


def _unescape(literal):
    """The text between the quotes, its escapes resolved; ValueError at an unknown one."""

    def replace(found):
        if found[0] not in ESCAPED:
            raise ValueError(f"unknown escape {found[0]}")
        return ESCAPED[found[0]]

    return ESCAPE.sub(replace, literal[1:-1])


class _Parser:
    def __init__(self, source, ids, name):
        self._ids = ids
        self._name = name
        self._line = 1
        self._tokens = list(self._scan(source))
        self._next = 0

    def table(self):
        language = None
        texts = {}
        while self._peek()[0] != "end":
            kind, value = self._take()
            if kind == "directive" and value == IDS_INCLUDE:
                continue
            if kind == "word" and value == "LANGUAGE":
                if language is not None:
                    self._fail("a file holds one language, and this is the second LANGUAGE")
                language = self._language()
            elif kind == "word" and value == "STRINGTABLE":
                if language is None:
                    self._fail("LANGUAGE must come before STRINGTABLE")
                self._entries(texts)
            else:
                self._fail(f"not understood: {value}")
        if language is None:
            self._fail("no LANGUAGE")
        return Table(self._name, language, texts)

    def _language(self):
        primary = self._expect("number", "the primary language")
        self._expect_mark(",")
        sub = self._expect("number", "the sub-language")
        return int(sub, 0) << 10 | int(primary, 0)

    def _entries(self, texts):
        opening = self._take()[1]
        if opening not in ("BEGIN", "{"):
            self._fail(f"BEGIN expected, not {opening}")
        closing = "END" if opening == "BEGIN" else "}"
        while self._peek()[1] != closing:
            number = self._id()
            if self._peek()[1] == ",":
                self._take()
            literal = self._expect("text", "a text")
            if number in texts:
                self._fail(f"id {number} stands twice")
            try:
                texts[number] = _unescape(literal)
            except ValueError as problem:
                self._fail(str(problem))
        self._take()

    def _id(self):
        kind, value = self._take()
        if kind == "number":
            return int(value, 0)
        if kind != "word" or value not in self._ids:
            self._fail(f"not a text id: {value}")
        return self._ids[value]

    def _expect(self, kind, what):
        found, value = self._take()
        if found != kind:
            self._fail(f"{what} expected, not {value}")
        return value

    def _expect_mark(self, mark):
        if self._take()[1] != mark:
            self._fail(f"{mark} expected")

    def _peek(self):
        return self._tokens[self._next][:2]

    def _take(self):
        kind, value, self._line = self._tokens[self._next]
        if kind == "end":
            self._fail("the file ends too early")
        self._next += 1
        return kind, value

    def _scan(self, source):
        position = 0
        while position < len(source):
            found = TOKEN.match(source, position)
            if not found:
                rest = source[position:].splitlines()[0]
                self._fail(f"not understood: {rest}")
            if found.lastgroup not in ("blank", "newline", "comment"):
                yield found.lastgroup, found[0].rstrip(), self._line
            self._line += found[0].count("\n")
            position = found.end()
        yield "end", "the end of the file", self._line

    def _fail(self, what):
        raise TableError(f"{self._name}:{self._line}: {what}")
