"""The checks of the texts: each kind of mistake is refused, with language, id and reason."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

STRINGS = Path(__file__).resolve().parents[2] / "strings"
sys.path.insert(0, str(STRINGS))

import check_strings  # noqa: E402
import generate_table  # noqa: E402
import string_tables  # noqa: E402
import text_rules  # noqa: E402

ENGLISH = 1033
GERMAN = 1031


def good_texts():
    """A text for every id that keeps every rule."""
    texts = {}
    for text_id, rule in text_rules.RULES.items():
        texts[text_id] = f"Text {text_id}" + " %s" * rule.placeholders
    texts.update({156: "&OK", 158: "&Continue", 218: "&Return", 247: "&Help", 248: "B&uy"})
    texts.update({1036: "&Submit", 1063: "&Decline", 1067: "&Done"})
    return texts


def good_macros():
    return [(f"IDS_{text_id}", text_id) for text_id in text_rules.RULES]


def problems_with(changes, language=ENGLISH):
    """What the checks say about good texts with some changed; None takes a text out."""
    texts = {**good_texts(), **changes}
    kept = {text_id: text for text_id, text in texts.items() if text is not None}
    return check_strings.check_table(string_tables.Table("some.rc", language, kept))


class TableChecks(unittest.TestCase):
    def assert_refused(self, changes, text_id, reason, language=ENGLISH):
        expected = f"some.rc: language {language}, id {text_id}: {reason}"
        self.assertEqual(problems_with(changes, language), [expected])

    def assert_too_long(self, changes, text_id, units, limit):
        reason = f"{units} UTF-16 units once formatted, the limit is {limit}"
        self.assert_refused(changes, text_id, reason)

    def test_a_table_that_keeps_every_rule_passes(self):
        self.assertEqual(problems_with({}), [])

    def test_there_are_142_texts(self):
        self.assertEqual(len(text_rules.RULES), 142)

    def test_a_missing_text_is_refused(self):
        self.assert_refused({149: None}, 149, "missing")

    def test_an_empty_text_is_refused(self):
        self.assert_refused({158: ""}, 158, "empty")

    def test_an_id_that_no_window_uses_is_refused(self):
        self.assert_refused({373: "Text"}, 373, "id is not in the list of texts")

    def test_an_id_that_a_printer_name_could_load_is_refused(self):
        self.assert_refused({106: "Text"}, 106, "id is below the first id")

    def test_the_language_is_named(self):
        self.assert_refused({149: None}, 149, "missing", GERMAN)

    def test_a_missing_placeholder_is_refused(self):
        self.assert_refused({154: "Type: %s"}, 154, '1 placeholders "%s" instead of 2')

    def test_a_placeholder_too_many_is_refused(self):
        self.assert_refused({119: "The fan of %s"}, 119, '1 placeholders "%s" instead of 0')

    def test_another_kind_of_placeholder_is_refused(self):
        found = problems_with({223: "Part %d"})

        self.assertEqual(len(found), 2)
        self.assertIn('0 placeholders "%s" instead of 1', found[0])
        self.assertIn('a per cent sign that is no "%s"', found[1])

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
        self.assert_refused({261: "One.\tTwo."}, 261, "a control character")

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


class ChecksOfAllLanguages(unittest.TestCase):
    def test_a_library_without_english_is_refused(self):
        table = string_tables.Table("german.rc", GERMAN, good_texts())

        found = check_strings.check_tables([table])

        self.assertEqual(found, ["language 1033 is missing: every other one falls back to it"])

    def test_one_language_in_two_files_is_refused(self):
        tables = [string_tables.Table(name, ENGLISH, good_texts()) for name in ("a.rc", "b.rc")]

        found = check_strings.check_tables(tables)

        self.assertEqual(found, ["b.rc: language 1033 is in a.rc too"])


class HeaderChecks(unittest.TestCase):
    def test_a_header_with_every_id_passes(self):
        self.assertEqual(check_strings.check_ids(good_macros()), [])

    def test_a_missing_macro_is_refused(self):
        macros = [macro for macro in good_macros() if macro[1] != 149]

        self.assertEqual(check_strings.check_ids(macros), ["string_ids.h: no macro for id 149"])

    def test_two_macros_for_one_id_are_refused(self):
        found = check_strings.check_ids(good_macros() + [("IDS_AGAIN", 149)])

        self.assertEqual(found, ["string_ids.h: IDS_AGAIN and IDS_149 have the same id 149"])

    def test_a_macro_for_an_unknown_id_is_refused(self):
        found = check_strings.check_ids(good_macros() + [("IDS_NEW", 999)])

        self.assertEqual(found, ["string_ids.h: IDS_NEW: no text has the id 999"])

    def test_a_line_that_is_no_id_is_refused(self):
        with self.assertRaisesRegex(string_tables.TableError, "string_ids.h:2: not an id"):
            string_tables.parse_ids("#pragma once\n#define IDS_OK 1 + 2\n")

    def test_comments_and_blank_lines_are_skipped(self):
        source = "#pragma once\n\n// Buttons\n#define IDS_OK  156  // white\n"

        self.assertEqual(string_tables.parse_ids(source), [("IDS_OK", 156)])


class Parsing(unittest.TestCase):
    IDS = {"IDS_OK": 156, "IDS_HELP": 247}
    HEAD = "LANGUAGE 0x04, 0x02\n"

    def parse(self, entries, head=HEAD):
        """The table of a file whose first entry stands on line 4 below the usual head."""
        source = f"{head}STRINGTABLE\nBEGIN\n{entries}\nEND\n"
        return string_tables.parse_table(source, self.IDS, "x.rc")

    def assert_fails(self, message, entries="", head=HEAD):
        with self.assertRaisesRegex(string_tables.TableError, message):
            self.parse(entries, head)

    def test_the_language_is_put_together_from_its_two_parts(self):
        self.assertEqual(self.parse("").language, 2052)

    def test_a_text_is_found_by_macro_or_number_with_or_without_comma(self):
        table = self.parse('IDS_OK "a"\nIDS_HELP, "b"\n 300 "c"')

        self.assertEqual(table.texts, {156: "a", 247: "b", 300: "c"})

    def test_doubled_quotes_line_feeds_and_backslashes_are_resolved(self):
        table = self.parse(r'IDS_OK "a ""b"" \n c\\n"')

        self.assertEqual(table.texts[156], 'a "b" \n c\\n')

    def test_a_text_may_end_with_a_quote(self):
        self.assertEqual(self.parse('IDS_OK "a ""b"""').texts[156], 'a "b"')

    def test_comments_are_skipped_but_not_inside_a_text(self):
        first = '// one "\nIDS_OK "http://x /* y */" // two'
        table = self.parse(first + '\n/* three\n"four" */ IDS_HELP "b"')

        self.assertEqual(table.texts, {156: "http://x /* y */", 247: "b"})

    def test_braces_serve_as_begin_and_end(self):
        source = 'LANGUAGE 9, 1 STRINGTABLE { IDS_OK "a" }'
        table = string_tables.parse_table(source, self.IDS, "x.rc")

        self.assertEqual((table.language, table.texts), (1033, {156: "a"}))

    def test_the_ids_may_be_included(self):
        head = '#include "strings/string_ids.h"\nLANGUAGE 9, 1\n'

        self.assertEqual(self.parse('IDS_OK "a"', head).texts, {156: "a"})

    def test_another_directive_is_refused(self):
        self.assert_fails("x.rc:1: not understood: #define A 1", head="#define A 1\n" + self.HEAD)

    def test_another_statement_is_refused(self):
        self.assert_fails("x.rc:2: not understood: DIALOG", head=self.HEAD + "DIALOG\n")

    def test_an_unknown_escape_is_refused_with_its_line(self):
        self.assert_fails(r"x.rc:5: unknown escape \\t", 'IDS_OK "a"\nIDS_HELP "b\\tc"')

    def test_a_quote_escaped_with_a_backslash_is_refused(self):
        self.assert_fails("x.rc:4: ", 'IDS_OK "a \\"b\\" c"')

    def test_a_backslash_at_the_end_of_a_text_is_refused(self):
        self.assert_fails("x.rc:4: unknown escape", 'IDS_OK "a\\"')

    def test_a_text_that_does_not_end_on_its_line_is_refused(self):
        self.assert_fails('x.rc:4: not understood: "a', 'IDS_OK "a\nb"')

    def test_a_wide_text_is_refused(self):
        self.assert_fails("x.rc:4: a text expected, not L", 'IDS_OK L"a"')

    def test_an_unknown_macro_is_refused(self):
        self.assert_fails("x.rc:4: not a text id: IDS_NEW", 'IDS_NEW "a"')

    def test_an_id_that_stands_twice_is_refused(self):
        self.assert_fails("x.rc:5: id 156 stands twice", 'IDS_OK "a"\nIDS_OK "b"')

    def test_an_entry_without_a_text_is_refused(self):
        self.assert_fails("x.rc:5: a text expected, not IDS_HELP", 'IDS_OK\nIDS_HELP "b"')

    def test_two_texts_for_one_id_are_refused(self):
        self.assert_fails('x.rc:4: not a text id: "b"', 'IDS_OK "a" "b"')

    def test_a_table_that_does_not_end_is_refused(self):
        with self.assertRaisesRegex(string_tables.TableError, "the file ends too early"):
            source = self.HEAD + 'STRINGTABLE BEGIN IDS_OK "a"'
            string_tables.parse_table(source, self.IDS, "x.rc")

    def test_a_table_before_its_language_is_refused(self):
        self.assert_fails("LANGUAGE must come before", head="")

    def test_a_second_language_in_one_file_is_refused(self):
        self.assert_fails("second LANGUAGE", head=self.HEAD + "LANGUAGE 7, 1\n")

    def test_an_empty_file_is_refused(self):
        with self.assertRaisesRegex(string_tables.TableError, "no LANGUAGE"):
            string_tables.parse_table("", self.IDS, "x.rc")


class Folder(unittest.TestCase):
    """The checks as the build runs them, on a changed copy of the real files."""

    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = Path(temporary.name)
        for source in [*STRINGS.glob("*.rc"), STRINGS / "string_ids.h"]:
            (self.folder / source.name).write_bytes(source.read_bytes())

    def replace(self, file, old, new):
        path = self.folder / file
        text = path.read_text(encoding="utf-8")
        self.assertEqual(text.count(old), 1, old)
        path.write_text(text.replace(old, new), encoding="utf-8")

    def check(self):
        """Exit code and error text of the script."""
        command = [sys.executable, str(STRINGS / "check_strings.py"), str(self.folder)]
        done = subprocess.run(command, capture_output=True, encoding="utf-8", check=False)
        return done.returncode, done.stderr

    def test_the_files_of_the_product_pass(self):
        self.assertEqual(self.check(), (0, ""))

    def test_a_wrong_text_fails_with_file_language_id_and_reason(self):
        self.replace("english.rc", '"&Help"', '"Help"')

        reason = '0 letters marked with "&" instead of 1'
        self.assertEqual(self.check(), (1, f"english.rc: language 1033, id 247: {reason}\n"))

    def test_every_wrong_text_is_reported_at_once(self):
        self.replace("english.rc", '"&Help"', '"Help"')
        self.replace("german.rc", '"&Hilfe"', '""')

        code, report = self.check()

        self.assertEqual((code, len(report.splitlines())), (1, 2))

    def test_a_file_that_cannot_be_read_fails_with_its_line(self):
        self.replace("german.rc", '"&OK"', "&OK")

        code, report = self.check()

        self.assertEqual(code, 1)
        self.assertRegex(report, r"^german.rc:\d+: ")

    def test_a_file_in_another_encoding_fails(self):
        path = self.folder / "german.rc"
        path.write_bytes(path.read_text(encoding="utf-8").encode("cp1252"))

        code, report = self.check()

        self.assertEqual(code, 1)
        self.assertRegex(report, "^german.rc: not UTF-8 at byte ")

    def test_a_byte_order_mark_fails(self):
        path = self.folder / "german.rc"
        path.write_bytes(b"\xef\xbb\xbf" + path.read_bytes())

        self.assertRegex(self.check()[1], "^german.rc:1: ")

    def test_a_further_language_is_found_as_one_further_file(self):
        english = (self.folder / "english.rc").read_text(encoding="utf-8")
        (self.folder / "french.rc").write_text(english, encoding="utf-8")
        self.replace("french.rc", "LANGUAGE 0x09, 0x01", "LANGUAGE 0x0C, 0x01")
        self.replace("french.rc", '"&Help"', '"&Aide"')

        reason = '"&" marks A, but the key of this button is H'
        self.assertEqual(self.check(), (1, f"french.rc: language 1036, id 247: {reason}\n"))


class GeneratedTable(unittest.TestCase):
    def test_a_literal_is_plain_ascii_and_keeps_every_letter(self):
        literal = generate_table.literal('a"b\\\n\u2013\U0001F5A8')

        self.assertEqual(literal, 'L"a\\"b\\\\\\n\\u2013\\U0001F5A8"')

    def test_rows_are_ordered_and_counted(self):
        table = string_tables.Table("x.rc", ENGLISH, {247: "b", 156: "a"})

        source = generate_table.generate([table])

        self.assertIn('    {156, 1033, L"a"},\n    {247, 1033, L"b"},\n};\n', source)
        self.assertIn("kStringRowCount = 2;", source)


if __name__ == "__main__":
    unittest.main()
