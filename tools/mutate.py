#!/usr/bin/env python3
"""Mutation of the logic: changes one token at a time and demands that a test notices.

usage: tools/mutate.py [--changed | FILE.cpp ... | FOLDER ...] [--survivors] [--jobs N]
                       [--limit N] [--seed N]

Every mutant of a source is compiled alone, linked into the test program of its folder before the
library that holds the original, and run. It is killed when the program fails, crashes or does not
end in time. Verdicts are kept in build/mutation and reused while source, tests and headers are the
same. Mutants that change nothing stand with their reasons in tests/mutation/*.txt, one a line:
FILE | the line of code, trimmed | the change | the reason.

--changed takes the sources that differ from main's; --survivors believes earlier kills although
tests have changed since, for quick rounds while writing tests; --limit takes a random sample of that
many mutants. Prints the survivors; exit code 1 when fewer than 90 % are killed.
"""

import argparse
import concurrent.futures
import dataclasses
import hashlib
import json
import pathlib
import random
import re
import shlex
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "host"
STATE = ROOT / "build" / "mutation"
EQUIVALENT = ROOT / "tests" / "mutation"
KILL_GOAL = 90.0
TEST_SECONDS = 20
# The programs that must notice a mutant of a folder, quickest first.
PROGRAMS = {
    "arbor": ["arbor_tests"],
    "tern": ["tern_tests"],
    "device": ["device_tests"],
    "monitor/facts": ["facts_tests"],
    "monitor": ["monitor_tests"],
    "ui": ["ui_tests"],
}

# One token for another. Templates and includes keep their angle brackets: blanks stand around a
# comparison in this code.
SWAPS = [
    (r" < ", " <= "), (r" <= ", " < "), (r" > ", " >= "), (r" >= ", " > "),
    (r" == ", " != "), (r" != ", " == "), (r" && ", " || "), (r" \|\| ", " && "),
    (r" \+ ", " - "), (r" - ", " + "), (r" \+= ", " -= "), (r" -= ", " += "),
    (r"\btrue\b", "false"), (r"\bfalse\b", "true"), (r"\+\+", "--"), (r"--", "++"),
]
NUMBER = re.compile(r"(?<![\w.'])(\d+)(?![\w.'])")
CONDITION = re.compile(r"\bif \((?!constexpr)(.+)\) (return|\{|break|continue)")
CALL = re.compile(r"^\s+[A-Za-z_][\w.:>\-]*\(.*\);$")


@dataclasses.dataclass(frozen=True)
class Mutant:
    file: str
    line: int     # from 1
    column: int
    before: str   # the whole line
    after: str

    def change(self):
        return f"{self.before.strip()}  ->  {self.after.strip() or '(nothing)'}"


def is_code(line):
    text = line.strip()
    return bool(text) and not text.startswith(("//", "#", "static_assert", "namespace", "using "))


def outside_texts(line, position):
    """Whether a position of the line stands in code, not in a text or a comment."""
    head = line[:position]
    return head.replace('\\"', "").count('"') % 2 == 0 and "//" not in head


def mutants_of_line(file, number, line):
    found = []

    def add(start, end, text):
        if outside_texts(line, start):
            found.append(Mutant(file, number, start, line, line[:start] + text + line[end:]))

    for pattern, other in SWAPS:
        for match in re.finditer(pattern, line):
            add(match.start(), match.end(), other)
    for match in NUMBER.finditer(line):
        add(match.start(), match.end(), str(int(match.group(1)) + 1))
    condition = CONDITION.search(line)
    if condition and condition.group(1).count("(") == condition.group(1).count(")"):
        add(condition.start(1), condition.end(1), f"!({condition.group(1)})")
    if CALL.match(line) and not line.strip().startswith(("return", "throw", "static_cast")):
        found.append(Mutant(file, number, 0, line, ""))
    if line.strip() == "break;":
        found.append(Mutant(file, number, 0, line, ""))
    return found


def mutants_of(file):
    mutants, fenced = [], False
    for number, line in enumerate((ROOT / file).read_text(encoding="utf-8").splitlines(), 1):
        fenced = fenced or "mutate: off" in line
        if "mutate: on" in line:
            fenced = False
        if is_code(line) and not fenced:
            mutants += mutants_of_line(file, number, line)
    return mutants


def equivalents():
    marked = set()
    for path in sorted(EQUIVALENT.glob("*.txt")):
        for line in path.read_text(encoding="utf-8").splitlines():
            fields = [field.strip() for field in line.split(" | ")]
            if line.startswith("#") or not line.strip():
                continue
            if len(fields) != 4 or not fields[3]:
                sys.exit(f"{path.name}: not FILE | code | change | reason: {line}")
            marked.add((fields[0], fields[1], fields[2]))
    return marked


def folder_of(file):
    return next(folder for folder in ("monitor/facts", *PROGRAMS) if file.startswith(folder + "/"))


class Workshop:
    """Knows how a source is compiled and how its test programs are linked."""

    def __init__(self):
        commands = json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8"))
        self._compile = {str(pathlib.Path(c["file"]).relative_to(ROOT)): shlex.split(c["command"])
                         for c in commands if c["file"].startswith(str(ROOT))}

    def can_compile(self, file):
        return file in self._compile

    def compile(self, file, source, target):
        command = [part for part in self._compile[file]
                   if not part.endswith("ccache") and not part.startswith(("-W", "-O"))]
        command[command.index("-o") + 1] = str(target)
        for flag in ("-MT", "-MF"):
            if flag in command:
                del command[command.index(flag):command.index(flag) + 2]
        command = [part for part in command if part != "-MD"]
        command[command.index("-c") + 1] = str(source)
        return subprocess.run([*command, "-O0", "-w"], cwd=BUILD, capture_output=True).returncode == 0

    def link_command(self, program):
        """What ninja links the program with; a changed object goes first, before the libraries."""
        listed = subprocess.run(["ninja", "-t", "commands", "-s", f"tests/{program}"], cwd=BUILD,
                                capture_output=True, text=True, check=True).stdout
        line = listed.strip().splitlines()[-1]
        command = shlex.split(line.replace(": && ", "", 1).rsplit(" && :", 1)[0])
        return [part for part in command if not part.endswith("ccache")]

    def link(self, program, changed, target):
        command = self.link_command(program)
        command[command.index("-o") + 1] = str(target)
        command.insert(command.index("-o"), str(changed))
        return subprocess.run([*command, "-fuse-ld=lld", "-Wl,--allow-multiple-definition"], cwd=BUILD,
                              capture_output=True).returncode == 0


def passes(program):
    try:
        ran = subprocess.run([str(program), "--gtest_brief=1", "--gtest_fail_fast"],
                             cwd=ROOT, timeout=TEST_SECONDS, stdin=subprocess.DEVNULL,
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return ran.returncode == 0
    except subprocess.TimeoutExpired:
        return False


def verdict(workshop, mutant, place):
    """killed, survived or invalid (does not compile)."""
    place.mkdir(parents=True, exist_ok=True)
    lines = (ROOT / mutant.file).read_text(encoding="utf-8").splitlines()
    lines[mutant.line - 1] = mutant.after
    source, changed = place / "mutant.cpp", place / "mutant.o"
    source.write_text("\n".join(lines) + "\n", encoding="utf-8")
    if not workshop.compile(mutant.file, source, changed):
        return "invalid"
    for name in PROGRAMS[folder_of(mutant.file)]:
        program = place / name
        if not workshop.link(name, changed, program):
            return "invalid"
        if not passes(program):
            return "killed"
    return "survived"


def digest(paths):
    total = hashlib.sha256()
    for path in sorted(paths):
        if path.is_file():
            total.update(path.read_bytes())
    return total.hexdigest()


class Memory:
    """Verdicts of earlier runs; a change of the source, its headers or its tests forgets them."""

    def __init__(self, file, believe_kills):
        self._path = STATE / (file.replace("/", "@") + ".json")
        folder = folder_of(file)
        self._code = digest([ROOT / file, *(ROOT / folder).glob("*.h")])
        self._tests = digest((ROOT / "tests" / folder).glob("*"))
        kept = json.loads(self._path.read_text()) if self._path.exists() else {}
        self._verdicts = kept.get("verdicts", {}) if kept.get("code") == self._code else {}
        if kept.get("tests") != self._tests:
            self._verdicts = {mutant: value for mutant, value in self._verdicts.items()
                              if believe_kills and value != "survived"}

    def get(self, mutant):
        return self._verdicts.get(f"{mutant.line}:{mutant.column}:{mutant.after}")

    def put(self, mutant, value):
        self._verdicts[f"{mutant.line}:{mutant.column}:{mutant.after}"] = value

    def save(self):
        self._path.parent.mkdir(parents=True, exist_ok=True)
        self._path.write_text(json.dumps({"code": self._code, "tests": self._tests,
                                          "verdicts": self._verdicts}))


def logic_sources(only_changed):
    listed = ["git", "-C", str(ROOT), "ls-files", "*.cpp"]
    if only_changed:
        listed = ["git", "-C", str(ROOT), "diff", "--name-only", "--diff-filter=d", "main", "--", "*.cpp"]
    names = subprocess.run(listed, capture_output=True, text=True, check=True).stdout.splitlines()
    return [n for n in names if n.split("/")[0] in ("arbor", "tern", "device", "monitor", "ui")
            and "/windows/" not in n]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--changed", action="store_true")
    parser.add_argument("--survivors", action="store_true")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--limit", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("files", nargs="*")
    options = parser.parse_args()

    sources = logic_sources(options.changed)
    files = sources if not options.files else [
        file for file in sources if file in options.files or folder_of(file) in options.files]
    if options.files and not files:
        sys.exit(f"no source or folder of the logic: {' '.join(options.files)}")
    names = sorted({name for file in files for name in PROGRAMS[folder_of(file)]})
    if names and subprocess.run(["sh", "tools/build-quietly.sh", "host", *names], cwd=ROOT).returncode:
        return 1
    for name in names:
        if not passes(BUILD / "tests" / name):
            sys.exit(f"{name} fails without any mutation")
    workshop, marked = Workshop(), equivalents()
    memories = {file: Memory(file, options.survivors) for file in files}
    mutants = [mutant for file in files if workshop.can_compile(file) for mutant in mutants_of(file)]
    equivalent = [m for m in mutants
                  if (m.file, m.before.strip(), m.after.strip() or "(nothing)") in marked]
    mutants = [m for m in mutants if m not in set(equivalent)]
    if options.limit and options.limit < len(mutants):
        mutants = random.Random(options.seed).sample(mutants, options.limit)

    def judge(index):
        mutant = mutants[index]
        known = memories[mutant.file].get(mutant)
        return mutant, known or verdict(workshop, mutant, STATE / "work" / str(index % options.jobs))

    counts = {"killed": 0, "survived": 0, "invalid": 0}

    # Each job has a folder of its own, so jobs take every nth mutant.
    def work(job):
        return [judge(index) for index in range(job, len(mutants), options.jobs)]

    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for results in pool.map(work, range(options.jobs)):
            for mutant, value in results:
                memories[mutant.file].put(mutant, value)
                counts[value] += 1
                if value == "survived":
                    print(f"{mutant.file}:{mutant.line}: survived: {mutant.change()}")
    for memory in memories.values():
        memory.save()
    valid = counts["killed"] + counts["survived"]
    percent = 100.0 * counts["killed"] / valid if valid else 100.0
    print(f"mutants: {counts['killed']} killed, {counts['survived']} survived, "
          f"{counts['invalid']} did not compile, {len(equivalent)} marked as equivalent: "
          f"{percent:.1f} % killed")
    return 0 if percent >= KILL_GOAL else 1


if __name__ == "__main__":
    sys.exit(main())
