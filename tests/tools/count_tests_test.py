#!/usr/bin/env python3
"""The counter of ./test on logs as ctest writes them."""
import io
import os
import sys
import tempfile
import unittest
from contextlib import redirect_stdout

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "tools", "test"))
import count_tests  # noqa: E402
from one_line_a_case import run  # noqa: E402


def block(name, output, verdict):
    return (
        f"1/2 Testing: {name}\n1/2 Test: {name}\nCommand: \"x\"\nOutput:\n"
        f"----------\n{output}<end of output>\nTest time =   0.02 sec\n----------\n"
        f"{verdict}\n\"{name}\" end time: now\n"
    )


class CountTests(unittest.TestCase):
    def counted(self, text):
        with tempfile.NamedTemporaryFile("w", suffix=".log") as log:
            log.write(text)
            log.flush()
            printed = io.StringIO()
            with redirect_stdout(printed):
                code = count_tests.main([log.name])
        return printed.getvalue(), code

    def test_cases_of_a_googletest_program_are_counted(self):
        text = "[==========] 12 tests from 3 test suites ran. (6 ms total)\n[  PASSED  ] 12 tests.\n"
        printed, code = self.counted(block("unit", text, "Test Passed."))
        self.assertEqual((printed, code), ("12 passed, 0 failed\n", 0))

    def test_failed_cases_are_counted_and_shown(self):
        text = "boom\n[==========] 3 tests from 1 test suite ran. (6 ms total)\n[  PASSED  ] 1 test.\n"
        printed, code = self.counted(block("unit", text, "Test Failed."))
        self.assertIn("boom", printed)
        self.assertTrue(printed.endswith("1 passed, 2 failed\n"))
        self.assertEqual(code, 1)

    def test_a_program_that_passed_all_and_then_crashed_has_failed(self):
        text = "[==========] 3 tests from 1 test suite ran. (6 ms total)\n[  PASSED  ] 3 tests.\n"
        printed, code = self.counted(block("unit", text, "Test Failed."))
        self.assertTrue(printed.endswith("3 passed, 1 failed\n"))
        self.assertEqual(code, 1)

    def test_lines_of_scripts_are_counted(self):
        printed, _ = self.counted(block("scripts", "ok a\nnot ok b\nok c\n", "Test Failed."))
        self.assertTrue(printed.endswith("2 passed, 1 failed\n"))

    def test_anything_else_is_one_case(self):
        printed, _ = self.counted(block("a", "", "Test Passed.") + block("b", "x\n", "Test Failed."))
        self.assertTrue(printed.endswith("1 passed, 1 failed\n"))

    def test_a_program_that_had_to_be_stopped_and_was_has_passed(self):
        verdict = "Test Pass Reason:\nRequired regular expression found. Regex=[data race]"
        printed, code = self.counted(block("planted fault", "a data race\n", verdict))
        self.assertEqual((printed, code), ("1 passed, 0 failed\n", 0))

    def test_no_test_at_all_is_a_failure(self):
        printed, code = self.counted("")
        self.assertTrue(printed.endswith("0 passed, 1 failed\n"))
        self.assertEqual(code, 1)

    def test_a_missing_log_is_a_failure(self):
        printed = io.StringIO()
        with redirect_stdout(printed):
            self.assertEqual(count_tests.main(["/no/such/log"]), 1)


if __name__ == "__main__":
    sys.exit(run(sys.modules[__name__]))
