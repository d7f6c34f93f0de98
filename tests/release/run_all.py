#!/usr/bin/env python3
"""Runs all tests of this folder and ends with "N passed, N failed". That the tests are run at all means that
two builds of the release were equal, which counts as one."""
import pathlib
import sys
import unittest

tests = unittest.defaultTestLoader.discover(pathlib.Path(__file__).parent, "*_test.py")
result = unittest.TextTestRunner(stream=sys.stdout).run(tests)
failed = len(result.failures) + len(result.errors) + len(result.skipped) + len(result.unexpectedSuccesses)
failed = min(failed, result.testsRun) if result.testsRun else 1
print(f"{result.testsRun - failed + 1} passed, {failed} failed")
sys.exit(1 if failed else 0)
