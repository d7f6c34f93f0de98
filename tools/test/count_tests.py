#!/usr/bin/env python3
"""count_tests.py LOG...: counts the test cases in ctest's logs (LastTest.log) and shows what failed.

A GoogleTest program counts as many cases as it ran, a script that prints "ok ..." and "not ok ..."
as many as it printed, anything else as one. Ends with "N passed, N failed" and exit code 0 only if
nothing failed and something passed. A log that is missing counts as a failure.
"""
import re
import sys

BLOCK = re.compile(
    r"^\d+/\d+ Testing: (?P<name>.*?)$.*?^Output:\n-+\n(?P<output>.*?)^<end of output>"
    r"(?P<rest>.*?)^\"(?P=name)\" end time",
    re.MULTILINE | re.DOTALL,
)
RAN = re.compile(r"^\[=+\] (\d+) tests? from .* ran\.", re.MULTILINE)
PASSED = re.compile(r"^\[  PASSED  \] (\d+) tests?\.", re.MULTILINE)
OK = re.compile(r"^ok ", re.MULTILINE)
NOT_OK = re.compile(r"^not ok ", re.MULTILINE)


def count(output, succeeded):
    """The passed and failed cases of one test of ctest."""
    if RAN.search(output):
        ran = sum(int(n) for n in RAN.findall(output))
        passed = sum(int(n) for n in PASSED.findall(output))
        failed = ran - passed
    elif OK.search(output) or NOT_OK.search(output):
        passed, failed = len(OK.findall(output)), len(NOT_OK.findall(output))
    else:
        passed, failed = (1, 0) if succeeded else (0, 1)
    if not succeeded and failed == 0:
        failed = 1  # it crashed or ran out of time, whatever it had printed before
    return passed, failed


def read_log(path):
    """Passed and failed cases of one log; prints the output of tests that failed."""
    try:
        with open(path, encoding="utf-8", errors="replace") as log:
            text = log.read()
    except OSError as error:
        print(f"no test log: {error}")
        return 0, 1
    passed = failed = 0
    for block in BLOCK.finditer(text):
        # The second is what ctest says of a test that must print something in order to pass.
        succeeded = "\nTest Passed." in block["rest"] or "\nTest Pass Reason:" in block["rest"]
        more_passed, more_failed = count(block["output"], succeeded)
        passed += more_passed
        failed += more_failed
        if more_failed:
            print(f"--- {block['name']} failed:")
            print(block["output"].rstrip())
    if passed + failed == 0:
        print(f"{path}: no test ran")
        failed = 1
    return passed, failed


def main(paths):
    results = [read_log(path) for path in paths]
    passed = sum(result[0] for result in results)
    failed = sum(result[1] for result in results)
    print(f"{passed} passed, {failed} failed")
    return 0 if passed > 0 and failed == 0 else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
