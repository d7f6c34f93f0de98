#!/usr/bin/env python3
"""Lists the languages, or merges the template into all of them; see docs/adding-a-language.md.

usage: ./run languages [--merge]
"""

import sys
from pathlib import Path

import polib

import string_tables
import text_rules
from string_tables import ENGLISH, utf16_units
from text_rules import RULES

LINE_WIDTH = 78


def comment_of(entry, rule):
    """What a translator has to know about a text, in the lines of an extracted comment."""
    section = entry.section.partition(":")[0]
    lines = [section + (f"; {entry.note}" if entry.note else "")]
    lines.append("Used as: " + ", ".join(sorted(rule.roles)))
    if entry.number in text_rules.INSERTED:
        lines.append(f"Inserted at %s: {text_rules.INSERTED[entry.number]}")
    if entry.number in text_rules.KEY_LETTERS:
        letter = text_rules.KEY_LETTERS[entry.number]
        lines.append(f"Key letter: {letter} in every language; append it in brackets")
        lines[-1] += " where the word lacks it"
    elif "button" in rule.roles:
        lines.append("Key letter: any, but another one than that of the button beside it")
    if entry.number in text_rules.MAY_BE_ONE_BLANK:
        lines.append("A single blank if the text before it is the whole sentence")
    lines.append(f"Greatest length: {longest(entry.number)} letters")
    if entry.number in text_rules.ROOM:
        lines[-1] += f"; there is room for about {text_rules.ROOM[entry.number]}"
    return "\n".join(lines)


def longest(text_id):
    """The greatest length of a text in UTF-16 units, its placeholders included."""
    rule = RULES[text_id]
    argument = text_rules.ARGUMENT_UNITS.get(text_id, 0)
    return rule.limit - rule.placeholders * (argument - len("%s"))


def flags_of(text_id):
    kind = "c-format" if RULES[text_id].placeholders else "no-c-format"
    return [kind, f"max-length:{longest(text_id)}"]


def merged_template(old, ids):
    """The template's English texts under the comments and flags of today's ids and rules."""
    texts = {entry.msgctxt: entry.msgid for entry in old}
    new = new_file(old)
    for entry in ids:
        new.append(
            polib.POEntry(
                msgctxt=entry.macro,
                msgid=texts.get(entry.macro, ""),
                comment=comment_of(entry, RULES[entry.number]),
                flags=flags_of(entry.number),
            )
        )
    return new


def merged(old, template):
    """The texts of a language for a changed template, each found by its id.

    A text whose English text has changed becomes fuzzy. gettext's own msgmerge also proposes texts
    of other ids, and drops flags that it does not know.
    """
    had = {entry.msgctxt: entry for entry in old if not entry.obsolete}
    new = new_file(old)
    for model in template:
        entry = polib.POEntry(
            msgctxt=model.msgctxt, msgid=model.msgid, comment=model.comment, flags=list(model.flags)
        )
        before = had.get(model.msgctxt)
        if before:
            entry.msgstr, entry.tcomment = before.msgstr, before.tcomment
            has_changed = before.msgid != model.msgid
            if entry.msgstr and (has_changed or before.fuzzy):
                entry.flags.insert(0, "fuzzy")
                entry.previous_msgid = before.msgid if has_changed else before.previous_msgid
        new.append(entry)
    return new


def new_file(old):
    new = polib.POFile(wrapwidth=LINE_WIDTH)
    new.header, new.metadata = old.header, old.metadata
    return new


def merge(folder):
    """Rewrites the template and all languages; returns the lines that name the texts to look at."""
    ids = string_tables.read_ids(folder)
    languages = string_tables.read_languages(folder)
    path = folder / "po" / string_tables.TEMPLATE
    template = merged_template(polib.pofile(str(path)), ids)
    template.save(str(path))
    lines = []
    for language in languages:
        path = string_tables.po_path(folder, language)
        if language.number == ENGLISH or not path.exists():
            continue
        file = merged(polib.pofile(str(path)), template)
        file.save(str(path))
        for entry in file.fuzzy_entries():
            lines.append(f"{path.name}: {entry.msgctxt}: look at it again")
        for entry in file.untranslated_entries():
            lines.append(f"{path.name}: {entry.msgctxt}: translate")
    return lines


def state_of(file):
    counts = ((len(file.untranslated_entries()), "missing"), (len(file.fuzzy_entries()), "fuzzy"))
    return ", ".join(f"{count} {what}" for count, what in counts if count) or "complete"


def fullest(file, ids):
    """The text that fills its room most, as "83 % IDS_HELP"."""
    rooms = {entry.macro: text_rules.ROOM.get(entry.number, longest(entry.number)) for entry in ids}
    used = [(utf16_units(entry.msgstr) / rooms[entry.msgctxt], entry.msgctxt) for entry in file]
    return "{:.0%} {}".format(*max(used))


def print_table(folder):
    """One line for each language: its names, state and review, and its fullest text."""
    ids = string_tables.read_ids(folder)
    rows = [("Language", "PO", "Number", "State", "Reviewed by", "Fullest text", "Own name")]
    for language in string_tables.read_languages(folder):
        path = string_tables.po_path(folder, language)
        known = ("no texts yet", "-", "-")
        if language.number == ENGLISH:
            known = ("template", "-", "-")
        elif path.exists():
            file = polib.pofile(str(path))
            known = (state_of(file), file.metadata["X-Review"], fullest(file, ids))
        number = f"{language.number:04X}"
        rows.append((language.english_name, language.po, number, *known, language.own_name))
    widths = [max(len(row[column]) for row in rows) for column in range(len(rows[0]) - 1)]
    for row in rows:
        print("  ".join(f"{field:{width}}" for field, width in zip(row, [*widths, 0])))


def main(arguments):
    folder = Path(__file__).parent
    if arguments == ["--merge"]:
        print("\n".join(merge(folder)) or "Every text of every language is up to date.")
        return 0
    if arguments:
        print(__doc__, file=sys.stderr)
        return 2
    print_table(folder)
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
