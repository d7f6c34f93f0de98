#!/usr/bin/env python3
"""fuzz_coverage.py BUILD [TARGET...]: replays each fuzz corpus alone with counters and shows the
lines of the target's sources that it does not reach. Ends with "N passed, N failed"; a target passes
when every line is reached or excepted in tests/fuzz/coverage.txt, and every exception is needed.

Each line of coverage.txt has one of these forms:
    TARGET: SOURCE [only FUNCTION...]
    TARGET: not SOURCE function NAME: REASON
    TARGET: not SOURCE line TEXT: REASON        the line contains TEXT; "TEXT +2": and two more lines
Lines with only a closing brace do not count, because the code there is the compiler's clean-up.
"""
import gzip
import json
import os
import re
import subprocess
import sys
import tempfile

UNIT = re.compile(r"^(?P<target>\w+): (?P<source>\S+)( only (?P<only>[^:]+))?$")
EXCEPTION = re.compile(r"^(?P<target>\w+): not (?P<source>\S+) (?P<kind>function|line) (?P<what>.+): "
                       r"(?P<reason>[^:]+)$")


def read_facts(path):
    """Reads coverage.txt: the sources of each target and the exceptions of each target."""
    units, exceptions = {}, {}
    with open(path, encoding="utf-8") as facts:
        for number, line in enumerate(facts, 1):
            line = line.rstrip("\n")
            if not line or line.startswith("#"):
                continue
            exception, unit = EXCEPTION.match(line), UNIT.match(line)
            if exception:
                exceptions.setdefault(exception["target"], []).append(exception.groupdict())
            elif unit:
                only = (unit["only"] or "").split()
                units.setdefault(unit["target"], []).append((unit["source"], only))
            else:
                sys.exit(f"{path}:{number}: not understood: {line}")
    return units, exceptions


def counter_files(build):
    for folder, _, files in os.walk(build):
        for name in files:
            if name.endswith(".gcda"):
                yield os.path.join(folder, name)


def replay(build, target):
    for path in list(counter_files(build)):
        os.remove(path)
    program = os.path.join(build, "tests", "replay_corpora")
    subprocess.run([program, "--gtest_brief=1", f"--gtest_filter=*/{target}"], check=False,
                   stdout=subprocess.DEVNULL)


def counts_of(build, source):
    """The lines and functions of one source with the counts of the last replay, as gcov reports them."""
    name = os.path.basename(source) + ".gcda"
    for path in counter_files(build):
        if os.path.basename(path) != name:
            continue
        with tempfile.TemporaryDirectory() as work:
            subprocess.run(["gcov", "--json-format", "--demangled-names", os.path.abspath(path)],
                           cwd=work, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            for result in os.listdir(work):
                with gzip.open(os.path.join(work, result), "rt", encoding="utf-8") as text:
                    for file in json.load(text)["files"]:
                        if os.path.abspath(file["file"]) == os.path.abspath(source):
                            return file
    sys.exit(f"{source}: no counts")


def lines_of_function(file, name):
    lines = set()
    for function in file["functions"]:
        if re.search(rf"\b{re.escape(name)}(\[abi:cxx11\])?\(", function["demangled_name"]):
            lines.update(range(function["start_line"], function["end_line"] + 1))
    if not lines:
        sys.exit(f"{file['file']}: no function {name}")
    return lines


def excepted_lines(exception, file, text):
    if exception["kind"] == "line":
        what, _, more = re.match(r"^(.*?)( \+(\d+))?$", exception["what"]).groups()
        first = [number for number, line in enumerate(text, 1) if what in line]
        return {number + i for number in first for i in range(int(more or 0) + 1)}
    return lines_of_function(file, exception["what"])


def check_source(build, source, only, exceptions):
    """The numbers of covered, excepted and all lines of a source, and of its faults.

    Prints each line that is not reached and each exception that is not needed."""
    file = counts_of(build, source)
    with open(source, encoding="utf-8") as stream:
        text = stream.read().splitlines()
    counts = {}
    for line in file["lines"]:
        number = line["line_number"]
        if text[number - 1].strip() != "}":
            counts[number] = max(line["count"], counts.get(number, 0))
    if only:
        wanted = set().union(*(lines_of_function(file, name) for name in only))
        counts = {number: count for number, count in counts.items() if number in wanted}
    missed = {number for number, count in counts.items() if count == 0}
    faults = 0
    excepted = set()
    for exception in exceptions:
        lines = excepted_lines(exception, file, text)
        if not lines & missed:
            print(f"    {source}: the exception for {exception['what']} is not needed")
            faults += 1
        excepted |= lines
    for number in sorted(missed - excepted):
        print(f"    {source}:{number}: not reached: {text[number - 1].strip()}")
        faults += 1
    return len(counts) - len(missed), len(missed & excepted), len(counts), faults


def check_target(build, target, sources, exceptions):
    replay(build, target)
    covered = excepted = total = faults = 0
    for source, only in sources:
        own = [exception for exception in exceptions if exception["source"] == source]
        result = check_source(build, source, only, own)
        covered, excepted = covered + result[0], excepted + result[1]
        total, faults = total + result[2], faults + result[3]
    print(f"{target}: {covered} of {total} lines, {excepted} excepted ({', '.join(source for source, _ in sources)})")
    return faults == 0


def main(build, wanted):
    units, exceptions = read_facts("tests/fuzz/coverage.txt")
    unknown = set(wanted) - set(units)
    if unknown:
        sys.exit(f"no such target: {' '.join(sorted(unknown))}")
    results = [check_target(build, target, units[target], exceptions.get(target, []))
               for target in (wanted or units)]
    print(f"{sum(results)} passed, {len(results) - sum(results)} failed")
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
