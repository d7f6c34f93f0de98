#!/usr/bin/env python3
"""How ./test runs and counts its tests, on small folders of tests that the real ctest runs."""
import contextlib
import io
import os
import pathlib
import sys
import tempfile
import unittest
from unittest import mock

sys.path.insert(0, os.path.join(os.path.dirname(__file__), "..", "..", "tools", "test"))
import run_tests  # noqa: E402
from print_each_case import run  # noqa: E402

RESULTS = """<?xml version="1.0"?><testsuites><testsuite>{}</testsuite></testsuites>"""
PASSED = '<testcase name="a" status="run" result="completed"/>'
FAILED = '<testcase name="b" status="run" result="completed"><failure message="x"/></testcase>'
SKIPPED = '<testcase name="c" status="run" result="skipped"><skipped message="x"/></testcase>'
DISABLED = '<testcase name="d" status="notrun" result="suppressed"/>'


class RunTests(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.list = ""

    def add_test(self, name, script, *arguments, properties=""):
        command = " ".join(f"[==[{word}]==]" for word in ("sh", "-c", script, *arguments))
        self.add_program(name, command, properties)

    def add_program(self, name, command, properties=""):
        self.list += f"add_test({name} {command})\n"
        if properties:
            self.list += f"set_tests_properties({name} PROPERTIES {properties})\n"

    def add_googletest(self, name, *cases, end="true"):
        """A program that leaves these cases in its results file and then ends."""
        file = self.folder / "test-results" / f"{name}.xml"
        tell = f"echo '{RESULTS.format(''.join(cases))}' >'{file}'; {end}" if cases else end
        self.add_test(name, tell, f"--gtest_output=xml:{file}")

    def run_all(self):
        """(passed, failed) and what was printed."""
        (self.folder / "CTestTestfile.cmake").write_text(self.list, encoding="utf-8")
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            counted = run_tests.run("it", self.folder, ["--test-dir", str(self.folder)])
        return counted, printed.getvalue()

    def test_cases_of_a_googletest_program_are_counted(self):
        self.add_googletest("unit", PASSED, PASSED, PASSED)
        self.assertEqual(self.run_all(), ((3, 0), ""))

    def test_the_results_of_a_windows_program_are_found(self):
        file = self.folder / "test-results" / "unit.xml"
        self.add_test("unit", f"echo '{RESULTS.format(PASSED)}' >'{file}'", f"--gtest_output=xml:Z:{file}")
        self.assertEqual(self.run_all()[0], (1, 0))

    def test_failed_cases_are_counted_and_shown(self):
        self.add_googletest("unit", PASSED, FAILED, FAILED, end="echo boom; false")
        counted, printed = self.run_all()
        self.assertEqual(counted, (1, 2))
        self.assertIn("--- unit failed:\nboom", printed)

    def test_skipped_and_disabled_cases_have_failed(self):
        self.add_googletest("unit", PASSED, SKIPPED, DISABLED)
        self.assertEqual(self.run_all()[0], (1, 2))

    def test_a_program_that_passed_all_and_then_crashed_has_failed(self):
        self.add_googletest("unit", PASSED, PASSED, end="kill -SEGV $$")
        self.assertEqual(self.run_all()[0], (2, 1))

    def test_a_program_that_leaves_no_results_has_failed_though_it_says_otherwise(self):
        self.add_googletest("unit", end="echo '[  PASSED  ] 3 tests.'")
        counted, printed = self.run_all()
        self.assertEqual(counted, (0, 1))
        self.assertIn("left no results", printed)

    def test_a_program_without_a_test_case_has_failed(self):
        self.add_googletest("unit", " ")
        self.assertEqual(self.run_all()[0], (0, 1))

    def test_lines_of_scripts_are_counted(self):
        self.add_test("script", "echo ok a; echo not ok b; echo ok c; false")
        self.assertEqual(self.run_all()[0], (2, 1))

    def test_anything_else_is_one_case(self):
        self.add_test("a", "true")
        self.add_test("b", "false")
        self.assertEqual(self.run_all()[0], (1, 1))

    def test_a_program_that_had_to_be_stopped_and_was_has_passed(self):
        self.add_test("fault", "echo a data race; exit 66", properties='PASS_REGULAR_EXPRESSION "data race"')
        self.assertEqual(self.run_all()[0], (1, 0))

    def test_a_ctest_that_is_killed_is_red_in_spite_of_the_results_of_an_earlier_run(self):
        self.add_test("first", "true")
        self.add_googletest("unit", PASSED, PASSED)
        self.assertEqual(self.run_all()[0], (3, 0))
        self.list = self.list.replace("[==[true]==]", "[==[kill -9 $PPID]==]", 1)
        counted, printed = self.run_all()
        self.assertEqual(counted[0], 0)
        self.assertGreater(counted[1], 0)
        self.assertIn("exit code 137", printed)

    def test_the_results_of_an_earlier_run_do_not_stand_for_a_program_that_leaves_none(self):
        self.add_googletest("unit", PASSED, PASSED)
        self.assertEqual(self.run_all()[0], (2, 0))
        self.list = ""
        self.add_googletest("unit")
        self.assertEqual(self.run_all()[0], (0, 1))

    def test_a_filter_that_the_caller_has_set_for_googletest_leaves_no_case_out(self):
        self.add_googletest("unit", PASSED, PASSED, end='[ -z "${GTEST_FILTER-}${GTEST_TOTAL_SHARDS-}" ]')
        with mock.patch.dict(os.environ, {"GTEST_FILTER": "None.*", "GTEST_TOTAL_SHARDS": "2"}):
            self.assertEqual(self.run_all()[0], (2, 0))

    def test_a_test_that_was_not_run_because_another_failed_has_failed(self):
        self.add_test("start", "false", properties="FIXTURES_SETUP server")
        self.add_test("use", "true", properties="FIXTURES_REQUIRED server")
        counted, printed = self.run_all()
        self.assertEqual(counted, (0, 2))
        self.assertIn("--- use failed:\nwas not run", printed)

    def test_a_test_that_is_disabled_has_failed(self):
        self.add_test("a", "true")
        self.add_test("b", "true", properties="DISABLED TRUE")
        self.assertEqual(self.run_all()[0], (1, 1))

    def test_a_program_that_is_missing_has_failed(self):
        self.add_test("a", "true")
        self.add_program("gone", "/no/such/program")
        counted, printed = self.run_all()
        self.assertEqual(counted, (1, 1))
        self.assertIn("--- gone failed:\nwas not run", printed)

    def test_a_test_that_ctest_lost_has_failed(self):
        self.add_test("a", "true")
        with mock.patch.object(run_tests, "registered", lambda _: {"a": None, "b": None}):
            self.assertEqual(self.run_all()[0], (1, 1))

    def test_an_exit_code_of_ctest_is_believed_against_its_results(self):
        self.add_test("a", "true")
        with mock.patch.object(run_tests.progress, "run", side_effect=lambda _, command, *rest: (
                run_tests.subprocess.run(command, stdout=run_tests.subprocess.DEVNULL, check=True), 8)[1]):
            self.assertEqual(self.run_all()[0], (1, 1))

    def test_no_test_at_all_is_a_failure(self):
        counted, printed = self.run_all()
        self.assertEqual(counted, (0, 1))
        self.assertIn("no test was found", printed)

    def test_a_missing_ctest_is_a_failure(self):
        self.add_test("a", "true")
        with mock.patch.dict(os.environ, {"PATH": str(self.folder)}):
            self.assertEqual(self.run_all()[0], (0, 1))

    def test_a_preset_that_is_unknown_is_a_failure(self):
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            self.assertEqual(run_tests.main(["no-such-preset"]), 1)
        self.assertTrue(printed.getvalue().endswith("\n0 passed, 1 failed\n"))


if __name__ == "__main__":
    sys.exit(run(sys.modules[__name__]))
