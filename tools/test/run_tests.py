#!/usr/bin/env python3
"""run_tests.py [--began SECONDS] 'PRESET [CTEST ARGUMENT...]'...: runs the tests of presets that are
built, shows what failed and ends with "N passed, N failed".

A GoogleTest program counts as many cases as its results file (--gtest_output=xml:FILE) has. A script that
prints "ok ..." and "not ok ..." counts as many cases as it printed such lines. Any other test counts as one.
Every registered test and every case in it must have run: a test that was not run, was skipped or left no
results has failed. A run without any test has failed too, and so has one whose ctest ended with an error.
Results of an earlier run are removed first. The exit code is 0 only if nothing failed.
"""
import argparse
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time
import xml.etree.ElementTree as xml

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
import progress  # noqa: E402

RESULTS_OPTION = "--gtest_output=xml:"
WHOLE_OUTPUT = ["--test-output-size-passed", "10000000", "--test-output-size-failed", "10000000"]


def environment():
    """That of the caller without the settings of GoogleTest: GTEST_FILTER and others leave cases out, and
    nothing in the results says so."""
    return {name: value for name, value in os.environ.items() if not name.startswith("GTEST_")}


def registered(ctest):
    """The tests that the command would run: for each name the file of its results, or None."""
    listing = subprocess.run([*ctest, "--show-only=json-v1"], cwd=ROOT, capture_output=True, text=True)
    if listing.returncode != 0:
        raise RuntimeError(f"ctest does not list its tests: {listing.stderr.strip()}")
    tests = {}
    for test in json.loads(listing.stdout)["tests"]:
        files = [argument.removeprefix(RESULTS_OPTION).removeprefix("Z:")  # as a Windows program sees it
                 for argument in test.get("command", []) if argument.startswith(RESULTS_OPTION)]
        tests[test["name"]] = pathlib.Path(files[0]) if files else None
    return tests


def count_cases(results):
    """Passed and other cases of a GoogleTest program."""
    cases = list(xml.parse(results).iter("testcase"))
    if not cases:
        raise ValueError("no test case was run")
    passed = sum(case.get("result") == "completed" and case.find("failure") is None for case in cases)
    return passed, len(cases) - passed


def count(results, ended):
    """Passed and failed cases of one ctest test, and a text that says what is wrong.

    `ended` is ctest's own record of the test, or None when it was not run."""
    if ended is None:
        return 0, 1, "was not run"
    if ended.get("status") not in ("run", "fail"):
        reason = ended.find("skipped")
        return 0, 1, f"was not run: {'' if reason is None else reason.get('message')}"
    output, succeeded = ended.findtext("system-out") or "", ended.get("status") == "run"
    passed, failed, wrong = 0, 0, output.rstrip()
    if results:
        try:
            passed, failed = count_cases(results)
        except (OSError, ValueError, xml.ParseError) as error:
            failed, wrong = 1, f"{wrong}\nleft no results: {error}"
    elif re.search("^(not )?ok ", output, re.MULTILINE):
        passed, failed = [len(re.findall(f"^{word} ", output, re.MULTILINE)) for word in ("ok", "not ok")]
    elif succeeded:
        passed = 1
    if not succeeded and failed == 0:
        failed = 1  # it crashed or ran out of time, although no case had failed before
    return passed, failed, wrong


def run(name, folder, arguments):
    """Runs the tests that ctest selects by these arguments; returns the passed and failed cases."""
    results, log = folder / "test-results", folder / "tests.log"
    shutil.rmtree(results, ignore_errors=True)
    log.unlink(missing_ok=True)
    ctest = ["ctest", *arguments]
    try:
        tests = registered(ctest)
        if not tests:
            raise RuntimeError("no test was found")
        results.mkdir(parents=True)
    except (OSError, ValueError, RuntimeError) as error:
        print(f"--- {name}: {error}")
        return 0, 1
    junit = results / "ctest.xml"
    command = [*ctest, *WHOLE_OUTPUT, "--output-junit", str(junit)]
    status = progress.run(f"testing {name}", command, log, environment())
    try:
        ended = {case.get("name"): case for case in xml.parse(junit).iter("testcase")}
    except (OSError, xml.ParseError):
        ended = {}
    all_passed = all_failed = 0
    for test, file in tests.items():
        passed, failed, wrong = count(file, ended.get(test))
        all_passed, all_failed = all_passed + passed, all_failed + failed
        if failed:
            print(f"--- {test} failed:\n{wrong}")
    if status != 0:
        print(f"--- {name}: ctest ended with exit code {status}; its output is in {log}")
        all_failed = all_failed or 1
    return all_passed, all_failed


def main(arguments):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--began", type=int, default=int(time.time()), help="when the caller began")
    parser.add_argument("stages", nargs="+")
    options = parser.parse_args(arguments)
    all_passed = all_failed = 0
    for stage in options.stages:
        preset, *more = stage.split()
        print(f"[{int(time.time()) - options.began} s] testing {preset}", flush=True)
        passed, failed = run(preset, ROOT / "build" / preset, ["--preset", preset, *more])
        all_passed, all_failed = all_passed + passed, all_failed + failed
    print(f"{all_passed} passed, {all_failed} failed")
    return 0 if all_passed > 0 and all_failed == 0 else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
