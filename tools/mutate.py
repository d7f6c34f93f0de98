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
import dataclasses
import hashlib
import json
import os
import pathlib
import random
import re
import shlex
import shutil
import subprocess
import sys
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "host"
STATE = ROOT / "build" / "mutation"
EQUIVALENT = ROOT / "tests" / "mutation"
SAVE_EACH_SECONDS = 30
# A program that hangs is given up after this time, or after so many times what it took before.
LEAST_PATIENCE_SECONDS = 10
PATIENCE = 8
# The programs that must notice a mutant of a folder.
PROGRAMS = {
    "arbor": ["arbor_tests"],
    "tern": ["tern_tests"],
    "device": ["device_tests"],
    "monitor/facts": ["facts_tests"],
    "monitor": ["monitor_tests"],
    "ui": ["ui_tests"],
}
# Those that have a last look, quickest first.
LATE_PROGRAMS = {
    "arbor": ["arbor_torture"],
    "tern": ["tern_torture"],
    "device": ["device_torture"],
    "monitor/facts": ["facts_torture"],
    "monitor": ["monitor_torture"],
    "ui": ["ui_torture"],
}


@dataclasses.dataclass(frozen=True, eq=False)
class Round:
    """How a mutant is built and run; it must not eat the machine, nor pass because memory is zero by luck."""

    name: str
    flags: tuple
    runner: tuple
    environment: dict
    programs: dict


QUICK = Round("quick", (), ("prlimit", "--as=2000000000", "--core=0"), {"MALLOC_PERTURB_": "165"},
              PROGRAMS)
CHECKED = Round("checked",
                ("-fsanitize=address,undefined,float-cast-overflow", "-fno-sanitize-recover=all"),
                ("prlimit", "--core=0"),
                {"ASAN_OPTIONS": "hard_rss_limit_mb=1500:detect_stack_use_after_return=1:"
                                 "strict_string_checks=1:check_initialization_order=1:strict_init_order=1"},
                {folder: [*names, *LATE_PROGRAMS[folder]] for folder, names in PROGRAMS.items()})

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


def ends_switch(line, following):
    """Whether a break changes nothing: it stands last in its switch, two levels in from the brace, or before
    a default that does nothing."""
    if line.strip() != "break;":
        return False
    depth = len(line) - len(line.lstrip())
    rest = " ".join(text.strip() for text in following)
    return following[:1] == [" " * (depth - 8) + "}"] or re.match(r"(} )?default: break; }", rest) is not None


def mutants_of(file):
    mutants, fenced = [], False
    lines = (ROOT / file).read_text(encoding="utf-8").splitlines()
    for number, line in enumerate(lines, 1):
        fenced = fenced or "mutate: off" in line
        if "mutate: on" in line:
            fenced = False
        if is_code(line) and not fenced and not ends_switch(line, lines[number:number + 4]):
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


def key(mutant):
    """How a mutant is named in the lists of equivalents."""
    return (mutant.file, mutant.before.strip(), mutant.after.strip() or "(nothing)")


def folder_of(file):
    return next(folder for folder in ("monitor/facts", *PROGRAMS) if file.startswith(folder + "/"))


class Workshop:
    """Knows how a source is compiled and how its test programs are linked."""

    def __init__(self):
        commands = json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8"))
        self._compile = {}
        for entry in (c for c in commands if c["file"].startswith(str(ROOT))):
            file, command = str(pathlib.Path(entry["file"]).relative_to(ROOT)), shlex.split(entry["command"])
            # Programs may compile a source for themselves, with other flags: its own library's count.
            if command[command.index("-o") + 1].startswith(f"{pathlib.Path(file).parent}/CMakeFiles/"):
                self._compile[file] = command
        self._heads = {}
        self._proven = {}
        self._proving = threading.Lock()
        self._longest = {}
        self._links = {}

    def can_compile(self, file):
        return file in self._compile

    def proves(self, judging, file, lines, place):
        """Whether a file passes a round as it is; tried once, when the first of its mutants comes."""
        with self._proving:
            if (judging, file) not in self._proven:
                self._proven[judging, file] = lives(self, judging, file, lines, place)
            return self._proven[judging, file]

    def took(self, judging, file, program, seconds):
        key = judging, file, program
        self._longest[key] = max(seconds, self._longest.get(key, 0))

    def patience(self, judging, file, program):
        """How long a program may run with a mutant of a file; with the file itself, which comes first, as
        long as it likes."""
        if (judging, file, program) not in self._longest:
            return None
        return max(LEAST_PATIENCE_SECONDS, PATIENCE * self._longest[judging, file, program])

    def compile(self, judging, file, source, target):
        """Compiles what stands in source as file is compiled, but quickly and with checked containers."""
        command = [*self._flags(judging, file), "-include", str(self._head(judging, file)),
                   "-o", str(target), "-c", str(source)]
        return subprocess.run(command, cwd=BUILD, capture_output=True).returncode == 0

    def _flags(self, judging, file):
        command = [part for part in self._compile[file]
                   if not part.endswith("ccache") and not part.startswith(("-W", "-O")) and part != "-MD"]
        for flag in ("-MT", "-MF", "-o", "-c"):
            if flag in command:
                del command[command.index(flag):command.index(flag) + 2]
        return [*command, "-O0", "-w", "-D_GLIBCXX_ASSERTIONS", *judging.flags]

    def _head(self, judging, file):
        """What the source includes, compiled beforehand: most of a mutant's time would go there."""
        if (judging, file) in self._heads:
            return self._heads[judging, file]
        head = STATE / "heads" / judging.name / (file.replace("/", "@") + ".h")
        head.parent.mkdir(parents=True, exist_ok=True)
        lines = (ROOT / file).read_text(encoding="utf-8").splitlines()
        plain = not any(re.match(r"#\s*(if|define)", line) for line in lines)
        includes = [line for line in lines if plain and line.startswith("#include")]
        head.write_text("\n".join(includes) + "\n", encoding="utf-8")
        subprocess.run([*self._flags(judging, file), "-x", "c++-header", "-o", f"{head}.gch", "-c",
                        str(head)], cwd=BUILD, check=True, capture_output=True)
        self._heads[judging, file] = head
        return head

    def link_command(self, program):
        """What ninja links the program with."""
        if program not in self._links:
            listed = subprocess.run(["ninja", "-t", "commands", "-s", f"tests/{program}"], cwd=BUILD,
                                    capture_output=True, text=True, check=True).stdout
            line = listed.strip().splitlines()[-1]
            command = shlex.split(line.replace(": && ", "", 1).rsplit(" && :", 1)[0])
            self._links[program] = [part for part in command if not part.endswith("ccache")]
        return [*self._links[program]]

    def link(self, judging, program, file, changed, target):
        """A changed object stands in the original's place, or before the libraries: one of them holds the
        original, which the linker leaves out when nothing misses it. Both would be an error."""
        command = self.link_command(program)
        original = self._compile[file][self._compile[file].index("-o") + 1]
        if original in command:
            command[command.index(original)] = str(changed)
        else:
            command.insert(command.index("-o"), str(changed))
        command[command.index("-o") + 1] = str(target)
        return subprocess.run([*command, "-fuse-ld=lld", *judging.flags], cwd=BUILD,
                              capture_output=True).returncode == 0


def passes(judging, program, seconds):
    try:
        ran = subprocess.run([*judging.runner, str(program), "--gtest_brief=1", "--gtest_fail_fast"],
                             cwd=ROOT, timeout=seconds, env={**os.environ, **judging.environment},
                             stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return ran.returncode == 0
    except subprocess.TimeoutExpired:
        return False


def lives(workshop, judging, file, lines, place):
    """Whether changed lines of a file pass a round; None when they do not compile."""
    place.mkdir(parents=True, exist_ok=True)
    source, changed = place / "mutant.cpp", place / "mutant.o"
    source.write_text("\n".join(lines) + "\n", encoding="utf-8")
    if not workshop.compile(judging, file, source, changed):
        return None
    for name in judging.programs[folder_of(file)]:
        program = place / name
        if not workshop.link(judging, name, file, changed, program):
            return None
        started = time.monotonic()
        if not passes(judging, program, workshop.patience(judging, file, name)):
            return False
        workshop.took(judging, file, name, time.monotonic() - started)
    return True


def verdict(workshop, mutant, place):
    """killed, survived or invalid (does not compile)."""
    lines = (ROOT / mutant.file).read_text(encoding="utf-8").splitlines()
    original = [*lines]
    lines[mutant.line - 1] = mutant.after
    for judging in (QUICK, CHECKED):
        if not workshop.proves(judging, mutant.file, original, place):
            sys.exit(f"{mutant.file}: fails the {judging.name} round without any mutation")
        living = lives(workshop, judging, mutant.file, lines, place)
        if not living:
            return "invalid" if living is None else "killed"
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
        torture = (f"tests/torture/{name}_test.cpp" for name in LATE_PROGRAMS[folder])
        self._tests = digest([*(ROOT / "tests" / folder).glob("*"), *(ROOT / name for name in torture)])
        kept = json.loads(self._path.read_text()) if self._path.exists() else {}
        self._verdicts = kept.get("verdicts", {}) if kept.get("code") == self._code else {}
        if kept.get("tests") != self._tests:
            self._verdicts = {mutant: value for mutant, value in self._verdicts.items()
                              if believe_kills and value == "killed"}

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


def judge_all(workshop, mutants, memories, jobs):
    """Counts by verdict; prints the survivors as they are found and saves the verdicts as it goes."""
    counts = {"killed": 0, "survived": 0, "invalid": 0}
    place = STATE / "work" / str(os.getpid())
    save_at = [time.monotonic() + SAVE_EACH_SECONDS]
    counting = threading.Lock()

    # Each job has a folder of its own, so jobs take every nth mutant.
    def work(job):
        for mutant in mutants[job::jobs]:
            memory = memories[mutant.file]
            value = memory.get(mutant) or verdict(workshop, mutant, place / str(job))
            with counting:
                memory.put(mutant, value)
                counts[value] += 1
                if value == "survived":
                    print(f"{mutant.file}:{mutant.line}: survived: {mutant.change()}", flush=True)
                if time.monotonic() > save_at[0]:
                    save_at[0] = time.monotonic() + SAVE_EACH_SECONDS
                    for kept in memories.values():
                        kept.save()

    with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
        list(pool.map(work, range(jobs)))
    shutil.rmtree(place, ignore_errors=True)
    for memory in memories.values():
        memory.save()
    return counts


def main():
    options = options_given()
    files = chosen_files(options)
    names = sorted({name for file in files for name in CHECKED.programs[folder_of(file)]})
    if names and subprocess.run(["sh", "tools/build-quietly.sh", "host", *names], cwd=ROOT).returncode:
        print("0 passed, 1 failed")
        return 1
    workshop = Workshop()
    memories = {file: Memory(file, options.survivors) for file in files}
    mutants, equivalent = unmarked(
        [mutant for file in files if workshop.can_compile(file) for mutant in mutants_of(file)], files)
    if options.limit and options.limit < len(mutants):
        mutants = random.Random(options.seed).sample(mutants, options.limit)

    started = time.monotonic()
    counts = judge_all(workshop, mutants, memories, options.jobs)
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
