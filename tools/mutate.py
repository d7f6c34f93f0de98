#!/usr/bin/env python3
"""Mutation of the logic: changes one token at a time and demands that a test notices.

usage: tools/mutate.py [--changed | FILE.cpp ... | FOLDER ...] [--survivors] [--jobs N]
                       [--limit N] [--seed N]

Every mutant of a source is compiled alone, linked into the test program of its folder in the place of
the original, and run. It is killed when the program fails, crashes or does not end in time. What lives
through that is judged again under the address, leak and undefined-behaviour sanitizers, where memory
also runs out. The source itself, built the same ways, must pass first. Verdicts are kept in
build/mutation and reused while source, tests and headers are the same.
Mutants that change nothing stand with their reasons in tests/mutation/*.txt, one a line:
FILE | the line of code, trimmed | the change | the reason.

--changed takes the sources that differ from main's; --survivors believes earlier kills although
tests have changed since, for quick rounds while writing tests; --limit takes a random sample of that
many mutants. Prints the survivors; exit code 1 when there is one: each is looked at, none tolerated.
"""

import argparse
import concurrent.futures
import os
import random
import shutil
import subprocess
import sys
import threading
import time

from mutation.mutants import ROOT, equivalents, key, mutants_of
from mutation.verdicts import Verdicts
from mutation.workshop import CHECKED, STATE, Workshop, folder_of, verdict

SAVE_EACH_SECONDS = 30


def logic_sources(only_changed):
    listed = ["git", "-C", str(ROOT), "ls-files", "*.cpp"]
    if only_changed:
        listed = ["git", "-C", str(ROOT), "diff", "--name-only", "--diff-filter=d", "main", "--", "*.cpp"]
    names = subprocess.run(listed, capture_output=True, text=True, check=True).stdout.splitlines()
    return [n for n in names if n.split("/")[0] in ("arbor", "tern", "device", "monitor", "ui")
            and "/windows/" not in n]


def options_given():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--changed", action="store_true")
    parser.add_argument("--survivors", action="store_true")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--limit", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("files", nargs="*")
    return parser.parse_args()


def chosen_files(options):
    sources = logic_sources(options.changed)
    files = sources if not options.files else [
        file for file in sources if file in options.files or folder_of(file) in options.files]
    if options.files and not files:
        sys.exit(f"no source or folder of the logic: {' '.join(options.files)}")
    return files


def unmarked(mutants, files):
    """The mutants to judge, and how many are marked; tells of marks that fit no mutant."""
    marked = equivalents()
    equivalent = [m for m in mutants if key(m) in marked]
    for file, code, change in sorted(marked - {key(m) for m in equivalent}):
        if file in files:
            print(f"{file}: marked as equivalent, but no such mutant: {code}  ->  {change}")
    return [m for m in mutants if key(m) not in marked], len(equivalent)


def judge_all(workshop, mutants, verdicts, jobs):
    """Counts by verdict; prints the survivors as they are found and saves the verdicts as it goes."""
    counts = {"killed": 0, "survived": 0, "invalid": 0}
    place = STATE / "work" / str(os.getpid())
    save_at = [time.monotonic() + SAVE_EACH_SECONDS]
    counting = threading.Lock()

    # Each job has a folder of its own, so jobs take every nth mutant.
    def work(job):
        for mutant in mutants[job::jobs]:
            known = verdicts[mutant.file]
            value = known.get(mutant) or verdict(workshop, mutant, place / str(job))
            with counting:
                known.put(mutant, value)
                counts[value] += 1
                if value == "survived":
                    print(f"{mutant.file}:{mutant.line}: survived: {mutant.change()}", flush=True)
                if time.monotonic() > save_at[0]:
                    save_at[0] = time.monotonic() + SAVE_EACH_SECONDS
                    for kept in verdicts.values():
                        kept.save()

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        list(pool.map(work, range(jobs)))
    shutil.rmtree(place, ignore_errors=True)
    for kept in verdicts.values():
        kept.save()
    return counts


def main():
    options = options_given()
    files = chosen_files(options)
    names = sorted({name for file in files for name in CHECKED.programs[folder_of(file)]})
    if names and subprocess.run(["sh", "tools/build-quietly.sh", "host", *names], cwd=ROOT).returncode:
        print("0 passed, 1 failed")
        return 1
    workshop = Workshop()
    verdicts = {file: Verdicts(file, options.survivors) for file in files}
    mutants, equivalent = unmarked(
        [mutant for file in files if workshop.can_compile(file) for mutant in mutants_of(file)], files)
    if options.limit and options.limit < len(mutants):
        mutants = random.Random(options.seed).sample(mutants, options.limit)

    started = time.monotonic()
    counts = judge_all(workshop, mutants, verdicts, options.jobs)
    killed, survived = counts["killed"], counts["survived"]
    percent = 100.0 * killed / (killed + survived) if killed + survived else 100.0
    print(f"mutants: {killed} killed, {survived} survived, {counts['invalid']} did not compile, "
          f"{equivalent} marked as equivalent: {percent:.1f} % killed in {time.monotonic() - started:.0f} s")
    if not (options.files or options.changed or options.limit):
        print(f"figure: mutants of the logic killed: {percent:.1f} %")
    print(f"{killed} passed, {survived} failed")
    return 1 if survived else 0


if __name__ == "__main__":
    sys.exit(main())
