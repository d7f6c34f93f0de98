#!/usr/bin/env python3
"""Mutation of the logic: makes one small change at a time and demands that a test notices.

usage: tools/mutate.py [windows] [--changed | FILE ... | FOLDER ...] [--survivors] [--jobs N]
                       [--limit N] [--seed N] [--only REGEX] [--list]

A change is another token, a statement left out or exchanged with the next, a null argument, a direct
instead of a virtual call, or the sibling of a conversion. Every mutant of a source is compiled alone,
linked into the test program of its folder in the place of the original, and run. It is killed when the
program fails, crashes or does not end in time. What lives through that is compiled with optimization:
when that makes the same code of both, nobody can tell them apart. What is left is judged again under the
address, leak and undefined-behaviour sanitizers, where memory also runs out. In a header two neighbouring
virtual functions are exchanged, which the tests of their slots must notice. The files themselves must pass
first. With the word "windows" the Windows-only sources are judged, in the Windows build that is checked, by
tests under Wine; each job has a prefix and a display of its own. Verdicts are kept in build/mutation and reused
while code, tests and headers are the same.

A mutant that changes nothing a test can see is marked beside its line of code, or above it, with the
words in brackets that stand behind it in the list of survivors, and with the reason:
  // Equally right with >=: the reason.        // Equally right without it or negated: the reason.

--changed takes the files that differ from main's; --survivors believes earlier kills although
tests have changed since, for quick rounds while writing tests; --limit takes a random sample of that
many mutants; --only takes the mutants whose words match; --list prints them and judges none.
Prints the survivors; exit code 1 when there is one: each is looked at, none tolerated.
"""

import argparse
import collections
import concurrent.futures
import os
import random
import re
import shutil
import subprocess
import sys
import threading
import time

from mutation.builder import NATIVE, STATE, WINDOWS, Builder, build, folder_of, job_of, verdict
from mutation.mutants import ROOT, mutants_of, unmarked
from mutation.verdicts import Verdicts

SAVE_EACH_SECONDS = 30


def files_of(kind, only_changed):
    listed = ["git", "-C", str(ROOT), "ls-files", "*.cpp", "*.h"]
    if only_changed:
        listed = ["git", "-C", str(ROOT), "diff", "--name-only", "--diff-filter=d", "main", "--", "*.cpp", "*.h"]
    names = subprocess.run(listed, capture_output=True, text=True, check=True).stdout.splitlines()
    return [n for n in names if folder_of(n) in kind.rounds[0].programs]


def options_given():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--changed", action="store_true")
    parser.add_argument("--survivors", action="store_true")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--limit", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--only", default="")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("files", nargs="*")
    return parser.parse_intermixed_args()


def chosen_files(options, kind):
    files = files_of(kind, options.changed)
    if options.files:
        files = [file for file in files if file in options.files or folder_of(file) in options.files]
    if options.files and not files:
        sys.exit(f"no file or folder of the logic, nor of Windows with the word windows: {' '.join(options.files)}")
    return files


def chosen_mutants(options, files):
    """The mutants to judge, how many are marked, and how many marks fit no mutant."""
    chosen, marked, stray = [], 0, 0
    for file in files:
        mutants = mutants_of(file)
        judged, strays = unmarked(file, mutants)
        for line, how in strays:
            print(f"{file}:{line}: marked as equally right, but no such mutant: {how}")
        chosen += [mutant for mutant in judged if re.search(options.only, mutant.how)]
        marked, stray = marked + len(mutants) - len(judged), stray + len(strays)
    if options.limit and options.limit < len(chosen):
        chosen = random.Random(options.seed).sample(chosen, options.limit)
    return chosen, marked, stray


def judge_all(builder, mutants, verdicts, jobs):
    """Counts by verdict; prints the survivors as they are found and saves the verdicts as it goes."""
    counts = collections.Counter()
    save_at = [time.monotonic() + SAVE_EACH_SECONDS]
    counting = threading.Lock()

    # Each job has a folder of its own, so jobs take every nth mutant.
    def work(number):
        with job_of(builder.kind, number) as job:
            judge(mutants[number::jobs], job)

    def judge(share, job):
        for mutant in share:
            known = verdicts[mutant.file]
            value = known.get(mutant) or verdict(builder, mutant, job)
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
    shutil.rmtree(STATE / "work" / str(os.getpid()), ignore_errors=True)
    for kept in verdicts.values():
        kept.save()
    return counts


def main():
    options = options_given()
    kind = WINDOWS if options.files[:1] == ["windows"] else NATIVE
    options.files = options.files[1:] if kind is WINDOWS else options.files
    files = chosen_files(options, kind)
    mutants, marked, stray = chosen_mutants(options, files)
    if options.list:
        for mutant in mutants:
            print(f"{mutant.file}:{mutant.line}: {mutant.change()}")
        return 0
    names = sorted({name for mutant in mutants for judging in kind.rounds
                    for name in judging.programs[folder_of(mutant.file)]})
    if names and not build(kind, names):
        print("0 passed, 1 failed")
        return 1
    started = time.monotonic()
    counts = collections.Counter()
    if mutants:
        builder = Builder(kind)
        verdicts = {file: Verdicts(file, options.survivors) for file in files}
        counts = judge_all(builder, [m for m in mutants if builder.can_compile(m.file)], verdicts, options.jobs)
    killed, survived = counts["killed"], counts["survived"]
    percent = 100.0 * killed / (killed + survived) if killed + survived else 100.0
    print(f"mutants: {killed} killed, {survived} survived, {counts['invalid']} did not compile, "
          f"{counts['same']} made the same code, {marked} marked as equally right: "
          f"{percent:.1f} % killed in {time.monotonic() - started:.0f} s")
    unjudged = 1 if mutants and not counts else 0
    if unjudged:
        print("none of the mutants could be judged: the build does not compile their files")
    failed = survived + stray + unjudged
    print(f"{killed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
