#!/usr/bin/env python3
"""Checks the texts of every language. Usage: check_strings.py [FOLDER]

Prints one line for each thing that is wrong, with language, id and reason, and exits with 1.
"""

import sys
from pathlib import Path

import string_tables
import text_rules
from string_tables import utf16_units
from text_rules import RULES


def check_ids(macros):
    """What is wrong with the ids header; `macros` is the list of (macro, number)."""
    problems = []
    by_number = {}
    by_macro = {}
    for macro, number in macros:
        if number in by_number:
            problems.append(f"{macro} and {by_number[number]} have the same id {number}")
        if macro in by_macro:
            problems.append(f"{macro} is defined twice")
        by_number[number] = macro
        by_macro[macro] = number
        if number not in RULES:
            problems.append(f"{macro}: no text has the id {number}")
    problems += [f"no macro for id {number}" for number in RULES if number not in by_number]
    return [f"{string_tables.IDS_HEADER}: {problem}" for problem in problems]


def check_tables(tables):
    """What is wrong with the texts of all languages together."""
    problems = []
    seen = {}
    for table in tables:
        if table.language in seen:
            other = seen[table.language]
            problems.append(f"{table.name}: language {table.language} is in {other} too")
        seen[table.language] = table.name
        problems += check_table(table)
    if text_rules.ENGLISH not in seen:
        missing = text_rules.ENGLISH
        problems.append(f"language {missing} is missing: every other one falls back to it")
    return problems


def check_table(table):
    """What is wrong with the texts of one language."""
    problems = []
    for text_id in sorted(table.texts.keys() - RULES.keys()):
        low = text_id < text_rules.FIRST_ID
        reason = "below the first id" if low else "not in the list of texts"
        problems.append((text_id, f"id is {reason}"))
    for text_id, rule in RULES.items():
        text = table.texts.get(text_id)
        if text is None:
            problems.append((text_id, "missing"))
        elif text == "":
            problems.append((text_id, "empty"))
        else:
            problems += [(text_id, found) for found in check_text(table, text_id, text, rule)]
    problems += snooze_entries(table) + free_keys(table)
    where = f"{table.name}: language {table.language}"
    return [f"{where}, id {text_id}: {what}" for text_id, what in problems]


def check_text(table, text_id, text, rule):
    """What is wrong with one text that is not empty."""
    for check in (blanks, placeholders, length, lines, keys):
        yield from check(table, text_id, text, rule)
    if table.language == text_rules.ENGLISH:
        yield from forbidden_words(text)


def blanks(_table, text_id, text, _rule):
    if text == " " and text_id in text_rules.MAY_BE_ONE_BLANK:
        return
    if text != text.strip():
        yield "leading or trailing blank"


def placeholders(_table, _text_id, text, rule):
    """Without its placeholder a text would be shown without the name or the number."""
    found = text.count("%s")
    if found != rule.placeholders:
        yield f'{found} placeholders "%s" instead of {rule.placeholders}'
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


def lines(_table, _text_id, text, rule):
    if "\n" in text and rule.roles & text_rules.SINGLE_LINE_ROLES:
        yield "a line break in a text of one line"
    if any(ord(letter) < ord(" ") and letter != "\n" for letter in text):
        yield "a control character"


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


def forbidden_words(text):
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
                problems.append((text_id, f"the same key {key} as button {seen[key]} of its dialog"))
            seen[key] = text_id
    return problems


def check_folder(folder):
    """What is wrong with the files of a folder; raises TableError where one cannot be read."""
    macros = string_tables.read_ids(folder)
    return check_ids(macros) + check_tables(string_tables.read_tables(folder, dict(macros)))


def main(arguments):
    folder = Path(arguments[1]) if len(arguments) > 1 else Path(__file__).parent
    try:
        problems = check_folder(folder)
    except string_tables.TableError as problem:
        problems = [str(problem)]
    for problem in problems:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
