#!/usr/bin/env python3
"""Checks the texts of every language. Usage: check_strings.py [FOLDER]

Prints one line for each thing that is wrong, with file, line, id and reason, and exits with 1.
msgfmt and msgcmp of gettext check what they can, and fontconfig knows the letters of the fonts.
The rules below are those that no other program has.
"""

import functools
import os
import re
import subprocess
import sys
import unicodedata
from collections import namedtuple
from pathlib import Path

import polib

import string_tables
import text_rules
from string_tables import ENGLISH, TableError, utf16_units
from text_rules import RULES

# isUnfinished: a text is missing or to be looked at again. Everything else is a mistake.
Problem = namedtuple("Problem", "text isUnfinished")
GETTEXT_LINE = re.compile(r"(.+?):(\d+)(?::\d+)?: (?:warning: )?(.*)")


def check_ids(ids):
    """What is wrong with the ids header."""
    problems = []
    by_number = {}
    for entry in ids:
        if entry.number in by_number:
            other = by_number[entry.number]
            problems.append(f"{entry.macro} and {other} have the same id {entry.number}")
        if entry.macro in by_number.values():
            problems.append(f"{entry.macro} is defined twice")
        by_number[entry.number] = entry.macro
        if entry.number < text_rules.FIRST_ID:
            problems.append(f"{entry.macro}: a printer's name may begin with {entry.number}")
        if entry.number not in RULES:
            problems.append(f"{entry.macro}: text_rules.py has no rule for id {entry.number}")
    problems += [f"no macro for id {number}" for number in RULES if number not in by_number]
    return [f"{string_tables.IDS_HEADER}: {problem}" for problem in problems]


def check_languages(languages, folder):
    """What is wrong with the list of languages: each file needs one line, each number is one."""
    problems = []
    numbers = {}
    for language in languages:
        other = numbers.setdefault(language.number, language.po)
        if other != language.po:
            problems.append(f"{language.po} and {other} have the number {language.number:04X}")
    if ENGLISH not in numbers:
        problems.append("English is missing: every other language falls back to it")
    known = {language.po for language in languages}
    files = sorted(path.stem for path in (folder / "po").glob("*.po"))
    problems += [f"no line for po/{po}.po" for po in files if po not in known]
    return [f"{string_tables.LANGUAGES}: {problem}" for problem in problems]


def check_with(path, *command):
    """What a program of gettext says about a file, with the id that each line belongs to."""
    done = subprocess.run(
        command,
        capture_output=True,
        encoding="utf-8",
        errors="replace",
        check=False,
        env={**os.environ, "LC_ALL": "C.UTF-8", "LANGUAGE": ""},
    )
    problems = {}
    for line in done.stderr.splitlines():
        found = GETTEXT_LINE.fullmatch(line)
        if found:
            file, number, reason = Path(found[1]), int(found[2]), found[3]
            macro = id_at(file, number)
            where = f"{file.name}:{number}: {macro}: " if macro else f"{file.name}:{number}: "
            # The first line about a text tells the reason, others repeat it in other words.
            problems.setdefault(macro, where + reason.replace(str(path), path.name))
    if done.returncode != 0 and not problems:
        return [f"{path.name}: {done.stderr.strip()}"]
    return list(problems.values())


def id_at(path, line):
    """The id of the entry at a line; empty in the head of the file."""
    lines = path.read_text(encoding="utf-8", errors="replace").splitlines()[:line]
    found = [text for text in lines if text.startswith("msgctxt ")]
    return found[-1].split('"')[1] if found else ""


def check_file(path, language):
    """What gettext says about the file of a language: what is wrong, and what is unfinished."""
    problems = check_with(
        path, "msgfmt", "--check", "--check-accelerators=&", "-o", os.devnull, str(path)
    )
    if problems:
        return [Problem(text, False) for text in problems]
    template = path.with_name(string_tables.TEMPLATE)
    unfinished = check_with(path, "msgcmp", "--no-fuzzy-matching", str(path), str(template))
    return [Problem(text, True) for text in unfinished] + check_header(path, language)


def check_header(path, language):
    found = polib.pofile(str(path)).metadata
    problems = []
    if found.get("Language") != language.po:
        problems.append(f'"Language: {found.get("Language")}" instead of {language.po}')
    if not found.get("X-Review"):
        problems.append('"X-Review:" does not say who has looked at the texts')
    return [Problem(f"{path.name}:1: {problem}", False) for problem in problems]


def check_table(table, ids=None):
    """What the rules say about the texts of one language; `ids` maps number to macro."""
    problems = []
    for text_id, rule in RULES.items():
        text = table.texts.get(text_id)
        if text:
            problems += [(text_id, found) for found in check_text(table, text_id, text, rule)]
        elif table.number == ENGLISH:
            problems.append((text_id, "missing"))
    problems += snooze_entries(table) + free_keys(table)
    return [
        f"{table.name}:{table.lines.get(text_id, 1)}: {(ids or {}).get(text_id, text_id)}: {what}"
        for text_id, what in problems
    ]


def check_text(table, text_id, text, rule):
    """What is wrong with one text that is not empty."""
    for check in (blanks, per_cent_signs, length, letters, keys):
        yield from check(table, text_id, text, rule)
    if table.number == ENGLISH:
        yield from english(text, rule)


def blanks(_table, text_id, text, _rule):
    if text == " " and text_id in text_rules.MAY_BE_ONE_BLANK:
        return
    if text != text.strip():
        yield "leading or trailing blank"


def per_cent_signs(_table, _text_id, text, _rule):
    if "%" in text.replace("%s", ""):
        yield 'a per cent sign that is no "%s"'


def length(table, text_id, text, rule):
    """The monitor cuts a text that does not fit its buffer, and nobody would notice."""
    inserted = text.count("%s") * argument_units(table, text_id)
    units = utf16_units(text.replace("%s", "")) + inserted
    if units > rule.limit:
        yield f"{units} UTF-16 units once formatted, the limit is {rule.limit}"


def argument_units(table, text_id):
    """The greatest length of one argument of the text in this language.

    Some arguments are texts of the same language, so a long translation of one text can make
    another one too long.
    """
    texts = [table.texts.get(other, "") for other in text_rules.ARGUMENT_TEXTS.get(text_id, ())]
    return max([text_rules.ARGUMENT_UNITS.get(text_id, 0)] + [utf16_units(text) for text in texts])


def letters(table, _text_id, text, rule):
    if "\n" in text and rule.roles & text_rules.SINGLE_LINE_ROLES:
        yield "a line break in a text of one line"
    joiners = text_rules.JOINERS if table.number in text_rules.USE_JOINERS else ""
    for letter in sorted(set(text) - set("\n" + joiners)):
        if unicodedata.category(letter) in text_rules.UNSEEN:
            yield f"a control character, U+{ord(letter):04X}"


def keys(_table, text_id, text, rule):
    """The key letter of a button is marked once. No other text may have a mark."""
    marks = text.count("&")
    if "button" not in rule.roles:
        if marks:
            yield 'an "&", which would underline the letter after it'
        return
    marked = key_of(text)
    fixed = text_rules.KEY_LETTERS.get(text_id)
    if marks != 1:
        yield f'{marks} letters marked with "&" instead of 1'
    elif fixed is not None and marked != fixed:
        yield f'"&" marks {marked or "nothing"}, but the key of this button is {fixed}'
    elif fixed is None and not marked.isalnum():
        yield '"&" marks no letter'


def key_of(text):
    return text.partition("&")[2][:1].upper()


def english(text, rule):
    """The English texts are those that gettext compares the others with."""
    found = text.count("%s")
    if found != rule.placeholders:
        yield f'{found} placeholders "%s" instead of {rule.placeholders}'
    for word in text_rules.FORBIDDEN_IN_ENGLISH:
        if word in text.lower():
            yield f'the word "{word}" puts the blame on somebody'


def snooze_entries(table):
    """Two equal entries of the list would look the same and mean different times."""
    problems = []
    seen = {}
    for text_id in text_rules.SNOOZE_IDS:
        text = table.texts.get(text_id)
        if text and text in seen:
            problems.append((text_id, f"the same text as id {seen[text]}"))
        seen[text] = text_id
    return problems


def free_keys(table):
    """With the same key on two buttons of a dialog, Windows only moves the focus."""
    problems = []
    for buttons in text_rules.FREE_KEY_DIALOGS:
        seen = {}
        for text_id in buttons:
            key = key_of(table.texts.get(text_id, ""))
            if key and key in seen:
                other = seen[key]
                problems.append((text_id, f"the same key {key} as button {other} of its dialog"))
            seen[key] = text_id
    return problems


@functools.cache
def letters_of(family):
    """The letters that a font has in both weights; empty when it is not installed."""
    command = ("fc-list", "--format", "%{charset}\\n", f"{family}:slant=0")
    faces = subprocess.run(command, capture_output=True, encoding="ascii", check=True).stdout
    sets = []
    for face in faces.splitlines():
        ends = [[int(end, 16) for end in span.split("-")] for span in face.split()]
        sets.append({chr(code) for span in ends for code in range(span[0], span[-1] + 1)})
    return set.intersection(*sets) if sets else set()


def check_letters(table, script_font, macros):
    """A letter that the fonts of the dialogs lack would be a box."""
    known = {"\n"}
    for family in (text_rules.DIALOG_FONT, script_font):
        if family and not letters_of(family):
            yield f'{table.name}:1: the font "{family}" is not installed'
        known |= letters_of(family) if family else set()
    for text_id, text in table.texts.items():
        for letter in sorted(set(text) - known):
            where = f"{table.name}:{table.lines.get(text_id, 1)}: {macros.get(text_id, text_id)}"
            yield f'{where}: no font of the dialogs has "{letter}", U+{ord(letter):04X}'


def check_language(folder, language, ids):
    """The table of a language, or None if it cannot be read, and what is wrong with it."""
    problems = []
    if language.number != ENGLISH:
        problems = check_file(string_tables.po_path(folder, language), language)
        if any(not problem.isUnfinished for problem in problems):
            return None, problems
    numbers = {entry.macro: entry.number for entry in ids}
    try:
        table = string_tables.read_table(folder, language, numbers)
    except TableError as problem:
        return None, [*problems, Problem(str(problem), False)]
    macros = {entry.number: entry.macro for entry in ids}
    found = [*check_table(table, macros), *check_letters(table, language.font, macros)]
    return table, problems + [Problem(text, False) for text in found]


def checked_tables(folder, leave_out_unfinished=False):
    """The tables of all languages, or None after printing what is wrong with them.

    With `leave_out_unfinished`, a language with missing or fuzzy texts is left out and named.
    """
    try:
        ids = string_tables.read_ids(folder)
        languages = string_tables.read_languages(folder)
    except TableError as problem:
        print(problem, file=sys.stderr)
        return None
    problems = check_ids(ids) + check_languages(languages, folder)
    tables = []
    for language in languages:
        if not string_tables.po_path(folder, language).exists():
            continue  # a language without texts yet
        table, found = check_language(folder, language, ids)
        if leave_out_unfinished and found and all(problem.isUnfinished for problem in found):
            print(f"{language.english_name} is left out: {len(found)} texts to do")
            continue
        problems += [problem.text for problem in found]
        tables.append(table)
    for problem in problems:
        print(problem, file=sys.stderr)
    return None if problems else tables


def main(arguments):
    folder = Path(arguments[1]) if len(arguments) > 1 else Path(__file__).parent
    return 1 if checked_tables(folder) is None else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
