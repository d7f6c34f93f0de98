"""How a mutant is built, run and judged."""

import dataclasses
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys
import threading
import time

from mutation.mutants import ROOT

BUILD = ROOT / "build" / "host"
STATE = ROOT / "build" / "mutation"
# A program that hangs is given up after this time, or after so many times what it took before.
LEAST_PATIENCE_SECONDS = 10
PATIENCE = 8
# The programs that must notice a mutant of a folder.
PROGRAMS = {
    "arbor": ["arbor_tests"],
    "tern": ["tern_tests"],
    "device": ["device_tests"],
    "printer": ["printer_tests"],
    "monitor": ["monitor_tests"],
    "ui": ["ui_tests"],
}
# Those that have a last look, quickest first.
LATE_PROGRAMS = {
    "arbor": ["arbor_faults"],
    "tern": ["tern_faults"],
    "device": ["device_faults"],
    "printer": ["printer_faults"],
    "monitor": ["monitor_faults"],
    "ui": ["ui_faults"],
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


def folder_of(file):
    return next(folder for folder in ("printer", *PROGRAMS) if file.startswith(folder + "/"))


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
