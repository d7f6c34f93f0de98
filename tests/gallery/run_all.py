#!/usr/bin/env python3
"""run_all.py FOLDER FACTS: runs all tests of the page in FOLDER, which was made from FACTS, and ends with
"N passed, N failed"."""
import os
import pathlib
import sys
import unittest

os.environ["BEAMLINE_PAGE"], os.environ["BEAMLINE_FACTS"] = sys.argv[1:]
tests = unittest.defaultTestLoader.discover(pathlib.Path(__file__).parent, "*_test.py")
result = unittest.TextTestRunner(stream=sys.stdout).run(tests)
# A test may fail in several of its parts and is one nevertheless.
bad = [test for test, _ in result.failures + result.errors + result.skipped] + result.unexpectedSuccesses
failed = min(len({getattr(test, "test_case", test).id() for test in bad}), result.testsRun) if result.testsRun else 1
print(f"{result.testsRun - failed} passed, {failed} failed")
sys.exit(1 if failed else 0)
