"""The checks of the texts: each kind of mistake is refused, with file, line, id and reason."""

import contextlib
import io
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import unittest.mock
from pathlib import Path

STRINGS = Path(__file__).resolve().parents[2] / "strings"
sys.path.insert(0, str(STRINGS))
import polib  # noqa: E402

import check_strings  # noqa: E402
import generate_tables  # noqa: E402
import languages  # noqa: E402
import string_tables  # noqa: E402
import text_rules  # noqa: E402

ENGLISH = string_tables.ENGLISH
GERMAN = 0x0407
HINDI = 0x0439
GERMAN_FILE = "po/de.po"
TEMPLATE_FILE = "po/beamline.pot"
# Three languages suffice to try the scripts on files.
FILES = (TEMPLATE_FILE, GERMAN_FILE, "po/he.po")


def good_texts():
    """A text for every id that keeps every rule."""
    texts = {}
    for text_id, rule in text_rules.RULES.items():
        texts[text_id] = f"Text {text_id}" + " %s" * rule.placeholders
    texts.update({156: "&OK", 158: "&Continue", 218: "&Return", 247: "&Help", 248: "B&uy"})
    texts.update({1036: "&Submit", 1063: "&Decline", 1067: "&Done"})
    return texts


def good_ids():
    return [string_tables.Id(f"IDS_{text_id}", text_id, "", "") for text_id in text_rules.RULES]


def problems_with(changes, language=ENGLISH):
    """What the rules say about good texts with some changed."""
    texts = {**good_texts(), **changes}
    return check_strings.check_table(string_tables.Table("some.po", language, texts))


class TableChecks(unittest.TestCase):
    def assert_refused(self, changes, text_id, reason, language=ENGLISH):
        expected = f"some.po:1: {text_id}: {reason}"
        self.assertEqual(problems_with(changes, language), [expected])

    def assert_too_long(self, changes, text_id, units, limit):
        reason = f"{units} UTF-16 units once formatted, the limit is {limit}"
        self.assert_refused(changes, text_id, reason)

    def test_a_table_that_keeps_every_rule_passes(self):
        self.assertEqual(problems_with({}), [])

    def test_there_are_145_texts(self):
        self.assertEqual(len(text_rules.RULES), 145)

    def test_a_missing_english_text_is_refused(self):
        self.assert_refused({149: ""}, 149, "missing")

    def test_a_missing_placeholder_is_refused(self):
        self.assert_refused({154: "Type: %s"}, 154, '1 placeholders "%s" instead of 2')

    def test_a_placeholder_too_many_is_refused(self):
        self.assert_refused({119: "The fan of %s"}, 119, '1 placeholders "%s" instead of 0')

    def test_another_kind_of_placeholder_is_refused(self):
        found = problems_with({223: "Part %d"})

        self.assertEqual(len(found), 2)
        self.assertIn('a per cent sign that is no "%s"', found[0])
        self.assertIn('0 placeholders "%s" instead of 1', found[1])

    def test_a_lone_per_cent_sign_is_refused(self):
        self.assert_refused({284: "5 % left"}, 284, 'a per cent sign that is no "%s"')

    def test_a_text_of_exactly_the_limit_passes(self):
        self.assertEqual(problems_with({149: "x" * 1023, 1067: "&" + "x" * 62}), [])

    def test_a_text_over_its_limit_is_refused(self):
        self.assert_too_long({149: "x" * 1024}, 149, 1024, 1023)
        self.assert_too_long({1067: "&" + "x" * 63}, 1067, 64, 63)

    def test_a_letter_outside_the_first_plane_counts_twice(self):
        self.assert_too_long({149: "\U0001F5A8" * 512}, 149, 1024, 1023)

    def test_the_longest_printer_name_counts_in_the_title(self):
        self.assertEqual(problems_with({107: "%s" + "x" * 39}), [])
        self.assert_too_long({107: "%s" + "x" * 40}, 107, 260, 259)

    def test_both_media_names_count_in_the_media_detail(self):
        self.assertEqual(problems_with({154: "%s%s" + "x" * 431}), [])
        self.assert_too_long({154: "%s%s" + "x" * 432}, 154, 512, 511)

    def test_a_media_name_longer_than_usual_counts_with_its_own_length(self):
        self.assert_too_long({154: "%s%s" + "x" * 412, 310: "y" * 50}, 154, 512, 511)

    def test_the_longest_part_number_counts_in_the_supplies_line(self):
        self.assertEqual(problems_with({223: "%s" + "x" * 480}), [])
        self.assert_too_long({223: "%s" + "x" * 481}, 223, 512, 511)

    def test_a_long_text_for_an_unknown_value_counts_where_it_is_inserted(self):
        self.assert_too_long({130: "%s" + "x" * 472, 364: "y" * 40}, 130, 512, 511)

    def test_every_fixed_key_is_checked(self):
        fixed = {156: "O", 158: "C", 218: "R", 247: "H", 248: "U"}
        for text_id, letter in fixed.items():
            with self.subTest(id=text_id):
                reason = f'"&" marks Z, but the key of this button is {letter}'
                self.assert_refused({text_id: "Text (&Z)"}, text_id, reason)

    def test_a_fixed_key_may_be_a_capital_in_brackets(self):
        self.assertEqual(problems_with({247: "\u5e2e\u52a9(&H)"}), [])

    def test_a_button_without_a_key_is_refused(self):
        self.assert_refused({247: "Help"}, 247, '0 letters marked with "&" instead of 1')

    def test_a_button_with_two_keys_is_refused(self):
        self.assert_refused({156: "&O&K"}, 156, '2 letters marked with "&" instead of 1')

    def test_an_ampersand_at_the_end_marks_nothing(self):
        reason = '"&" marks nothing, but the key of this button is O'
        self.assert_refused({156: "OK&"}, 156, reason)

    def test_a_free_key_must_be_a_letter_too(self):
        self.assert_refused({1067: "Done (&)"}, 1067, '"&" marks no letter')

    def test_two_buttons_of_a_dialog_with_the_same_key_are_refused(self):
        self.assert_refused({1063: "&Skip"}, 1063, "the same key S as button 1036 of its dialog")

    def test_an_ampersand_outside_a_button_is_refused(self):
        reason = 'an "&", which would underline the letter after it'
        self.assert_refused({149: "Paper & toner"}, 149, reason)

    def test_a_line_break_in_a_title_caption_or_button_is_refused(self):
        for text_id, text in {107: "%s\nAlert", 357: "Toner\nlow", 156: "&O\nK"}.items():
            with self.subTest(id=text_id):
                reason = "a line break in a text of one line"
                self.assert_refused({text_id: text}, text_id, reason)

    def test_a_line_break_in_a_detail_that_is_a_link_too_is_refused(self):
        self.assert_refused({349: "Open\nfax"}, 349, "a line break in a text of one line")

    def test_a_line_break_in_a_help_text_passes(self):
        self.assertEqual(problems_with({261: "One.\n\nTwo."}), [])

    def test_a_control_character_is_refused(self):
        unseen = {"\t": "0009", "\u200b": "200B", "\u200e": "200E", "\ue000": "E000"}
        for letter, code in unseen.items():
            with self.subTest(code=code):
                reason = f"a control character, U+{code}"
                self.assert_refused({261: f"One.{letter}Two."}, 261, reason, GERMAN)

    def test_a_joiner_passes_only_where_words_need_it(self):
        self.assertEqual(problems_with({261: "\u0930\u094d\u200d\u092f"}, HINDI), [])
        self.assert_refused({261: "a\u200db"}, 261, "a control character, U+200D", GERMAN)

    def test_blanks_around_a_text_are_refused(self):
        for text in (" Text", "Text ", "Text\n", " ", "Text\u00a0"):
            with self.subTest(text=text):
                self.assert_refused({261: text}, 261, "leading or trailing blank")

    def test_the_second_half_of_a_sentence_may_be_one_blank(self):
        self.assertEqual(problems_with({1031: " "}), [])

    def test_the_second_half_of_a_sentence_may_not_be_two_blanks(self):
        self.assert_refused({1031: "  "}, 1031, "leading or trailing blank")

    def test_two_equal_snooze_texts_are_refused(self):
        self.assert_refused({126: "Later", 127: "Later"}, 127, "the same text as id 126")

    def test_every_forbidden_word_is_refused_in_english(self):
        for word in ("error", "failure", "illegal", "invalid", "abort"):
            with self.subTest(word=word):
                reason = f'the word "{word}" puts the blame on somebody'
                self.assert_refused({166: f"{word.title()}s."}, 166, reason)

    def test_other_languages_may_have_words_that_look_like_those(self):
        self.assertEqual(problems_with({166: "Terror"}, GERMAN), [])


class Letters(unittest.TestCase):
    def problems(self, text, script_font=""):
        table = string_tables.Table("some.po", HINDI, {149: text})
        return list(check_strings.check_letters(table, script_font, {149: "IDS_PAPER"}))

    def test_letters_of_the_dialog_font_pass(self):
        self.assertEqual(self.problems("\u00e4 \u0416 \u05d0 \u0627\n"), [])

    def test_a_letter_that_no_font_has_is_refused(self):
        reason = "no font of the dialogs has \"\u5e2e\", U+5E2E"
        self.assertEqual(self.problems("\u5e2e"), [f"some.po:1: IDS_PAPER: {reason}"])

    def test_a_script_with_a_font_of_its_own_passes_in_its_language_only(self):
        self.assertEqual(self.problems("\u0916 Go \u200d", "Noto Sans Devanagari UI"), [])
        self.assertEqual(len(self.problems("\u0916")), 1)

    def test_a_letter_that_only_the_regular_weight_has_is_refused(self):
        regular = check_strings.letters_of(f"{text_rules.DIALOG_FONT}:weight=80")
        both = check_strings.letters_of(text_rules.DIALOG_FONT)

        only = min(regular - both)

        self.assertEqual(len(self.problems(only)), 1)

    def test_a_font_that_is_not_there_is_named(self):
        with unittest.mock.patch.object(text_rules, "DIALOG_FONT", "No Such Font"):
            found = self.problems("a")

        self.assertEqual(found[0], 'some.po:1: the font "No Such Font" is not installed')


class ChecksOfTheLanguages(unittest.TestCase):
    HEAD = "# A comment\n\nen\t0409\tEnglish\tEnglish\ten_US\n"

    def check(self, rows):
        languages = string_tables.parse_languages(rows)
        return check_strings.check_languages(languages, Path("no such folder"))

    def test_a_line_has_five_fields_and_may_name_a_font(self):
        found = string_tables.parse_languages(self.HEAD + "ja\t0411\tJapanese\t\u65e5\tja_JP\tMincho")

        english = ("en", 0x409, "English", "English", "en_US", "")
        self.assertEqual(found, [english, ("ja", 0x411, "Japanese", "\u65e5", "ja_JP", "Mincho")])

    def test_a_list_with_english_passes(self):
        self.assertEqual(self.check(self.HEAD), [])

    def test_a_list_without_english_is_refused(self):
        found = self.check("de\t0407\tGerman\tDeutsch\tde_DE\n")

        reason = "English is missing: every other language falls back to it"
        self.assertEqual(found, [f"languages.tsv: {reason}"])

    def test_one_number_for_two_languages_is_refused(self):
        found = self.check(self.HEAD + "de\t0409\tGerman\tDeutsch\tde_DE\n")

        self.assertEqual(found, ["languages.tsv: de and en have the number 0409"])

    def test_a_line_that_is_no_language_is_refused(self):
        for row in ("de 0407 German", "de\t407\tGerman\tDeutsch\tde_DE"):
            with self.subTest(row=row):
                with self.assertRaisesRegex(string_tables.TableError, "languages.tsv:4: not a"):
                    string_tables.parse_languages(self.HEAD + row)


class HeaderChecks(unittest.TestCase):
    def test_a_header_with_every_id_passes(self):
        self.assertEqual(check_strings.check_ids(good_ids()), [])

    def test_a_missing_macro_is_refused(self):
        ids = [entry for entry in good_ids() if entry.number != 149]

        self.assertEqual(check_strings.check_ids(ids), ["string_ids.h: no macro for id 149"])

    def test_two_macros_for_one_id_are_refused(self):
        found = check_strings.check_ids([*good_ids(), string_tables.Id("IDS_AGAIN", 149, "", "")])

        self.assertEqual(found, ["string_ids.h: IDS_AGAIN and IDS_149 have the same id 149"])

    def test_a_macro_that_is_defined_twice_is_refused(self):
        first, *others = good_ids()
        again = others[0]._replace(macro=first.macro)

        found = check_strings.check_ids([first, again, *others[1:]])

        self.assertEqual(found, [f"string_ids.h: {first.macro} is defined twice"])

    def test_an_id_that_a_printers_name_could_load_is_refused(self):
        found = check_strings.check_ids([*good_ids(), string_tables.Id("IDS_LOW", 106, "", "")])

        self.assertIn("string_ids.h: IDS_LOW: a printer's name may begin with 106", found)

    def test_a_macro_for_an_unknown_id_is_refused(self):
        found = check_strings.check_ids([*good_ids(), string_tables.Id("IDS_NEW", 999, "", "")])

        self.assertEqual(found, ["string_ids.h: IDS_NEW: text_rules.py has no rule for id 999"])

    def test_a_line_that_is_no_id_is_refused(self):
        with self.assertRaisesRegex(string_tables.TableError, "string_ids.h:2: not an id"):
            string_tables.parse_ids("#pragma once\n#define IDS_OK 1 + 2\n")

    def test_an_id_has_the_comments_above_and_beside_it(self):
        source = "#pragma once\n\n// Buttons\n#define IDS_OK  156  // white\n#define IDS_NO 7\n"

        found = string_tables.parse_ids(source)

        self.assertEqual(found, [("IDS_OK", 156, "Buttons", "white"), ("IDS_NO", 7, "Buttons", "")])


class Folder(unittest.TestCase):
    """The scripts as the build runs them, on a changed copy of the real files."""

    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = Path(temporary.name)
        (self.folder / "po").mkdir()
        for name in ("string_ids.h", "languages.tsv", *FILES):
            shutil.copyfile(STRINGS / name, self.folder / name)

    def replace(self, file, old, new):
        path = self.folder / file
        text = path.read_text(encoding="utf-8")
        self.assertEqual(text.count(old), 1, old)
        path.write_text(text.replace(old, new), encoding="utf-8")

    def run_script(self, name, *arguments):
        command = [sys.executable, str(STRINGS / name), *arguments]
        return subprocess.run(command, capture_output=True, encoding="utf-8", check=False)

    def check(self):
        """Exit code and error text of the checks, without the numbers of the lines."""
        done = self.run_script("check_strings.py", str(self.folder))
        return done.returncode, re.sub(r":\d+: ", ": ", done.stderr)


class Checks(Folder):
    def assert_refused(self, old, new, *problems, file=GERMAN_FILE):
        self.replace(file, old, new)
        self.assertEqual(self.check(), (1, "".join(f"{problem}\n" for problem in problems)))

    def test_the_copied_files_pass(self):
        self.assertEqual(self.check(), (0, ""))

    def test_a_problem_is_shown_with_the_line_of_its_text(self):
        self.replace(GERMAN_FILE, 'msgstr "&Hilfe"', 'msgstr "Hi&lfe"')
        lines = (self.folder / GERMAN_FILE).read_text(encoding="utf-8").splitlines()
        line = lines.index('msgstr "Hi&lfe"') + 1

        found = self.run_script("check_strings.py", str(self.folder)).stderr

        place, reason = found.split(": IDS_HELP: ")
        self.assertEqual(reason, '"&" marks L, but the key of this button is H\n')
        shown = int(place.removeprefix("de.po:"))
        self.assertIn(shown, range(line - 8, line + 1))
        self.assertEqual(lines[shown - 2], "")

    def test_every_wrong_text_is_reported_at_once(self):
        self.replace(GERMAN_FILE, 'msgstr "&Hilfe"', 'msgstr "Hi&lfe"')
        self.replace("po/he.po", "(&H)", "(&I)")

        code, report = self.check()

        self.assertEqual((code, len(report.splitlines())), (1, 2))

    def test_a_text_without_its_placeholder_is_refused(self):
        reason = "number of format specifications in 'msgid' and 'msgstr' does not match"
        self.assert_refused(
            'msgstr "%s – Druckermeldung"',
            'msgstr "Druckermeldung"',
            f"de.po: IDS_TITLE: {reason}",
        )

    def test_another_placeholder_is_refused(self):
        self.replace(GERMAN_FILE, 'msgstr "%s – Druckermeldung"', 'msgstr "%d"')

        code, report = self.check()

        self.assertEqual(code, 1)
        self.assertRegex(report, "^de.po: IDS_TITLE: format specifications .* are not the same")

    def test_a_letter_that_would_be_a_box_is_refused(self):
        reason = 'no font of the dialogs has "\u5e2e", U+5E2E'
        self.assert_refused('"&Hilfe"', '"&Hilfe\u5e2e"', f"de.po: IDS_HELP: {reason}")

    def test_a_key_without_its_mark_is_refused(self):
        reason = "msgstr lacks the keyboard accelerator mark '&'"
        self.assert_refused('"&Hilfe"', '"Hilfe"', f"de.po: IDS_HELP: {reason}")

    def test_a_text_that_is_not_translated_is_refused(self):
        reason = "this message is untranslated"
        self.assert_refused('"&Hilfe"', '""', f"de.po: IDS_HELP: {reason}")

    def test_a_fuzzy_text_is_refused(self):
        self.assert_refused(
            '#, no-c-format, max-length:63\nmsgctxt "IDS_HELP"',
            '#, fuzzy, no-c-format, max-length:63\nmsgctxt "IDS_HELP"',
            "de.po: IDS_HELP: this message needs to be reviewed by the translator",
        )

    def test_a_language_without_one_of_the_texts_is_refused(self):
        path = self.folder / GERMAN_FILE
        text = path.read_text(encoding="utf-8")
        entry = next(part for part in text.split("\n\n") if 'msgctxt "IDS_HELP"' in part)

        self.assert_refused(
            entry + "\n\n",
            "",
            "beamline.pot: IDS_HELP: this message is used but not defined in de.po",
        )

    def test_a_text_for_no_id_is_refused(self):
        path = self.folder / GERMAN_FILE
        added = '\nmsgctxt "IDS_NEW"\nmsgid "New"\nmsgstr "Neu"\n'
        path.write_text(path.read_text(encoding="utf-8") + added, encoding="utf-8")

        code, report = self.check()

        self.assertEqual(code, 1)
        self.assertIn("de.po: IDS_NEW: this message is not used\n", report)

    def test_an_english_text_for_no_id_is_refused(self):
        path = self.folder / TEMPLATE_FILE
        added = '\nmsgctxt "IDS_NEW"\nmsgid "New"\nmsgstr ""\n'
        path.write_text(path.read_text(encoding="utf-8") + added, encoding="utf-8")

        self.assertIn("beamline.pot: no id of a text: IDS_NEW\n", self.check()[1])

    def test_a_translation_of_an_older_english_text_is_refused(self):
        self.replace(TEMPLATE_FILE, 'msgid "&Help"', 'msgid "&Help me"')

        code, report = self.check()

        self.assertEqual(code, 1)
        reason = "beamline.pot: IDS_HELP: this message is used but not defined in de.po\n"
        self.assertIn(reason, report)

    def test_the_same_id_twice_is_refused(self):
        path = self.folder / GERMAN_FILE
        text = path.read_text(encoding="utf-8")
        entry = next(part for part in text.split("\n\n") if 'msgctxt "IDS_HELP"' in part)
        path.write_text(f"{text}\n{entry}\n", encoding="utf-8")

        self.assertIn("de.po: IDS_HELP: duplicate message definition", self.check()[1])

    def test_a_file_that_is_cut_off_is_refused(self):
        self.replace(GERMAN_FILE, 'msgstr "&Hilfe"', 'msgstr "&Hilfe')

        self.assertRegex(self.check()[1], "^de.po: IDS_HELP: end-of-line within string\n")

    def test_a_file_in_another_encoding_is_refused(self):
        path = self.folder / GERMAN_FILE
        path.write_bytes(path.read_text(encoding="utf-8").encode("cp1252"))

        code, report = self.check()

        self.assertEqual(code, 1)
        self.assertRegex(report, "^de.po: IDS_[A-Z_]+: invalid multibyte sequence\n")

    def test_the_head_names_the_language_of_the_file(self):
        self.assert_refused(
            '"Language: de\\n"', '"Language: fr\\n"', 'de.po: "Language: fr" instead of de'
        )

    def test_the_head_tells_who_has_looked_at_the_texts(self):
        path = self.folder / GERMAN_FILE
        text = path.read_text(encoding="utf-8")
        line = next(line for line in text.split("\n") if "X-Review" in line)

        reason = '"X-Review:" does not say who has looked at the texts'
        self.assert_refused(line + "\n", "", f"de.po: {reason}")

    def test_a_file_of_a_language_that_is_not_listed_is_refused(self):
        shutil.copyfile(self.folder / GERMAN_FILE, self.folder / "po/xx.po")

        self.assertEqual(self.check(), (1, "languages.tsv: no line for po/xx.po\n"))

    def test_a_list_that_cannot_be_read_is_refused_with_its_line(self):
        self.replace("languages.tsv", "de\t0407", "de\t")

        code, report = self.check()

        self.assertEqual(code, 1)
        self.assertRegex(report, "^languages.tsv: not a language: de\t")


class Generator(Folder):
    def generate(self, *options):
        outputs = [str(self.folder / name) for name in ("out.rc", "out.cpp")]
        return self.run_script("generate_tables.py", *options, str(self.folder), *outputs)

    def test_nothing_is_written_while_a_text_is_wrong(self):
        self.replace(GERMAN_FILE, '"&Hilfe"', '"Hilfe"')

        done = self.generate()

        self.assertEqual((done.returncode, len(done.stderr.splitlines())), (1, 1))
        self.assertFalse((self.folder / "out.rc").exists())
        self.assertFalse((self.folder / "out.cpp").exists())

    def test_an_unfinished_language_is_left_out_where_this_is_wanted(self):
        self.replace(GERMAN_FILE, '"&Hilfe"', '""')

        done = self.generate("--leave-out-unfinished")

        self.assertEqual((done.returncode, done.stdout), (0, "German is left out: 1 texts to do\n"))
        script = (self.folder / "out.rc").read_text(encoding="utf-8")
        self.assertNotIn("LANGUAGE 0x7,", script)
        self.assertIn("LANGUAGE 0xd, 0x1\n", script)

    def test_a_wrong_text_is_never_left_out(self):
        self.replace(GERMAN_FILE, '"&Hilfe"', '"Hi&lfe"')

        self.assertEqual(self.generate("--leave-out-unfinished").returncode, 1)

    def test_a_script_has_each_language_in_two_numbers_and_escapes_its_texts(self):
        table = string_tables.Table("x.po", 0x0804, {247: 'a "b"\n\\', 156: "c"})

        script = generate_tables.resource_script([table])

        entries = '    156 "c"\n    247 "a ""b""\\n\\\\"\n'
        self.assertEqual(script, f"LANGUAGE 0x4, 0x2\nSTRINGTABLE\nBEGIN\n{entries}END\n\n")

    def test_a_literal_is_plain_ascii_and_keeps_every_letter(self):
        literal = generate_tables.literal('a"b\\\n\u2013\U0001F5A8')

        self.assertEqual(literal, 'L"a\\"b\\\\\\n\\u2013\\U0001F5A8"')

    def test_rows_are_ordered_and_counted(self):
        table = string_tables.Table("x.po", ENGLISH, {247: "b", 156: "a"})

        source = generate_tables.cpp_table([table])

        self.assertIn('    {156, 1033, L"a"},\n    {247, 1033, L"b"},\n};\n', source)
        self.assertIn("kStringRowCount = 2;", source)


class Merging(Folder):
    def merge(self):
        return languages.merge(self.folder)

    def entry(self, macro, file=GERMAN_FILE):
        file = polib.pofile(str(self.folder / file))
        return next(entry for entry in file if entry.msgctxt == macro)

    def test_the_files_of_the_product_are_as_merging_writes_them(self):
        shutil.copytree(STRINGS / "po", self.folder / "po", dirs_exist_ok=True)
        before = {path.name: path.read_bytes() for path in (self.folder / "po").iterdir()}

        self.assertEqual(self.merge(), [])

        for path in (self.folder / "po").iterdir():
            hint = f"run ./run languages --merge: {path.name} has other comments, flags or lines"
            self.assertEqual(path.read_bytes() == before[path.name], True, hint)

    def test_a_changed_english_text_makes_its_translations_fuzzy(self):
        self.replace(TEMPLATE_FILE, 'msgid "&Help"', 'msgid "&Help me"')

        listed = self.merge()

        self.assertIn("de.po: IDS_HELP: look at it again", listed)
        self.assertEqual(len(listed), len(FILES) - 1)
        entry = self.entry("IDS_HELP")
        self.assertEqual((entry.msgid, entry.msgstr), ("&Help me", "&Hilfe"))
        self.assertEqual((entry.fuzzy, entry.previous_msgid), (True, "&Help"))

    def test_a_fuzzy_text_stays_fuzzy_until_somebody_has_looked(self):
        self.replace(TEMPLATE_FILE, 'msgid "&Help"', 'msgid "&Help me"')
        first = self.merge()

        self.assertEqual(self.merge(), first)
        self.assertEqual(self.entry("IDS_HELP").previous_msgid, "&Help")

    def test_a_new_id_becomes_an_english_text_to_write_and_then_texts_to_translate(self):
        self.replace(TEMPLATE_FILE, 'msgctxt "IDS_HELP"', 'msgctxt "IDS_GONE"')
        self.merge()
        self.assertEqual(self.entry("IDS_HELP", TEMPLATE_FILE).msgid, "")

        head = 'msgctxt "IDS_HELP"\n'
        self.replace(TEMPLATE_FILE, head + 'msgid ""', head + 'msgid "&H"')

        self.assertIn("de.po: IDS_HELP: look at it again", self.merge())

    def test_a_text_that_is_missing_is_added_without_a_translation(self):
        self.replace(GERMAN_FILE, 'msgctxt "IDS_HELP"', 'msgctxt "IDS_GONE"')

        self.assertEqual(self.merge(), ["de.po: IDS_HELP: translate"])
        self.assertEqual(self.entry("IDS_HELP").msgstr, "")

    def test_flags_and_comments_that_an_editor_dropped_come_back(self):
        before = (self.folder / GERMAN_FILE).read_bytes()
        self.replace(
            GERMAN_FILE, '#, no-c-format, max-length:63\nmsgctxt "IDS_HELP"', 'msgctxt "IDS_HELP"'
        )

        self.merge()

        self.assertEqual((self.folder / GERMAN_FILE).read_bytes(), before)

    def test_a_translators_comment_is_kept(self):
        self.replace(GERMAN_FILE, '#. Greatest length: 41', '# Kurz halten\n#. Greatest length: 41')

        self.merge()

        self.assertEqual(self.entry("IDS_TITLE").tcomment, "Kurz halten")

    def test_the_greatest_length_of_the_comment_is_the_one_that_is_checked(self):
        for text_id, rule in text_rules.RULES.items():
            with self.subTest(id=text_id):
                units = languages.longest(text_id)
                text = " ".join(["%s"] * rule.placeholders)
                text = text + "x" * (units - len(text))
                table = string_tables.Table("x.po", GERMAN, {text_id: text})
                self.assertEqual(list(check_strings.length(table, text_id, text, rule)), [])
                self.assertEqual(
                    len(list(check_strings.length(table, text_id, text + "x", rule))), 1
                )


class TableOfLanguages(Folder):
    def table(self):
        output = io.StringIO()
        with contextlib.redirect_stdout(output):
            languages.print_table(self.folder)
        lines = output.getvalue().splitlines()
        return {line.split("  ")[0]: re.split("  +", line)[1:] for line in lines}

    def test_it_tells_the_state_the_reviewer_and_the_fullest_text(self):
        review = polib.pofile(str(self.folder / GERMAN_FILE)).metadata["X-Review"]

        row = self.table()["German"]

        self.assertEqual(row[:4], ["de", "0407", "complete", review])
        self.assertRegex(row[4], "^[0-9]+% IDS_[A-Z_0-9]+$")
        self.assertEqual(row[5], "Deutsch")

    def test_it_counts_what_is_missing_and_what_is_fuzzy(self):
        self.replace(GERMAN_FILE, '"&Hilfe"', '""')
        self.replace(TEMPLATE_FILE, 'msgid "&OK"', 'msgid "&OK!"')
        languages.merge(self.folder)

        self.assertEqual(self.table()["German"][2], "1 missing, 1 fuzzy")

    def test_a_language_without_a_file_has_no_texts_yet(self):
        (self.folder / GERMAN_FILE).unlink()

        self.assertEqual(self.table()["German"][:3], ["de", "0407", "no texts yet"])

    def test_the_fullest_text_is_measured_by_the_room_on_its_control(self):
        self.replace(GERMAN_FILE, 'msgstr "&Hilfe"', 'msgstr "&Hilfe fuer alle Faelle"')

        self.assertEqual(self.table()["German"][4], "135% IDS_HELP")


if __name__ == "__main__":
    unittest.main()
