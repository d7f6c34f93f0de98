"""How a mutant is built, run and judged."""

import collections
import contextlib
import dataclasses
import json
import os
import pathlib
import re
import shlex
import signal
import subprocess
import sys
import tempfile
import threading
import time

from mutation.mutants import ROOT, lines_of

STATE = ROOT / "build" / "mutation"
# Not optimized, every source compiled alone, whatever the presets do.
CONFIGURATION = ("-G", "Ninja", "-DCMAKE_BUILD_TYPE=", "-DCMAKE_CXX_COMPILER=g++", "-DCMAKE_UNITY_BUILD=OFF",
                 "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON")
# A program that hangs is stopped after this time, or after so many times what it took unchanged.
LEAST_TIME_LIMIT_SECONDS = 10
TIME_LIMIT_FACTOR = 8
# The programs that must notice a mutant of a folder.
PROGRAMS = {
    "platform": ["platform_test", "platform_simulated_test"],
    "arbor": ["arbor_tests"],
    "tern": ["tern_tests"],
    "device": ["device_tests"],
    "printer": ["printer_tests"],
    "monitor": ["monitor_tests"],
    "ui": ["ui_tests"],
}
# Those that run under the sanitizers as well, quickest first.
LATE_PROGRAMS = {
    "platform": [],
    "arbor": ["arbor_faults"],
    "tern": ["tern_faults"],
    "device": ["device_faults"],
    "printer": ["printer_faults"],
    "monitor": ["monitor_faults"],
    "ui": ["ui_faults"],
}
# Of the Windows-only sources, in the build that is checked: guard heap and undefined behaviour.
WINDOWS_PROGRAMS = {
    "platform/windows": ["platform_test", "platform_system_faults_test", "platform_windows_test",
                         "platform_pipe_rights_test", "platform_refused_search_test"],
    "ui/windows": ["alert_window_tests", "alert_pictures_tests", "alert_language_tests", "alert_system_calls_tests",
                   "alert_scale_tests"],
}
LATE_WINDOWS_PROGRAMS = {
    "platform/windows": [],
    "ui/windows": ["accessible_control_tests", "alert_window_faults", "alert_layout_tests", "alert_leak_tests"],
}
# Those that need a prefix of their own: with the simulated spooler, with a sharp screen, and in a language that
# is read from the right.
SPOOLER_PROGRAMS = {"platform/windows": ["platform_printer_test"], "ui/windows": []}
SHARP_PROGRAMS = {"platform/windows": [], "ui/windows": ["alert_scale_tests"]}
MIRRORED_PROGRAMS = {"platform/windows": [], "ui/windows": ["alert_language_tests"]}
# The tests that must notice another order of virtual functions: only their sources are compiled with
# the changed header, so nothing else of the program may run.
SLOT_TESTS_INCLUDE = "tests/support/slot_of.h"
SLOT_TESTS_FILTER = "--gtest_filter=*Slot*"


@dataclasses.dataclass(frozen=True, eq=False)
class Round:
    """How a mutant is built and run. A limit of memory protects the machine, and fresh memory is filled, so
    that no mutant passes because memory happens to be zero."""

    name: str
    flags: tuple
    runner: tuple
    environment: dict
    programs: dict


@dataclasses.dataclass(frozen=True, eq=False)
class Kind:
    """Sources that are built alike: how their build is configured, and the rounds that a mutant must survive."""

    build: pathlib.Path
    configure: tuple
    suffix: str    # of a program
    link_flags: tuple
    rounds: tuple


QUICK = Round("quick", (), ("prlimit", "--as=2000000000", "--core=0"), {"MALLOC_PERTURB_": "165"},
              PROGRAMS)
CHECKED = Round("checked",
                ("-fsanitize=address,undefined,float-cast-overflow", "-fno-sanitize-recover=all"),
                ("prlimit", "--core=0"),
                {"ASAN_OPTIONS": "hard_rss_limit_mb=1500:detect_stack_use_after_return=1:"
                                 "strict_string_checks=1:check_initialization_order=1:strict_init_order=1"},
                {folder: [*names, *LATE_PROGRAMS[folder]] for folder, names in PROGRAMS.items()})
NATIVE = Kind(STATE / "build", ("cmake", "-S", str(ROOT), "-B", str(STATE / "build"), *CONFIGURATION), "", (),
              (QUICK, CHECKED))

WINE = ("sh", str(ROOT / "tools" / "wine" / "run-test.sh"))
WITH_WINE = ("sh", str(ROOT / "tools" / "wine" / "with-wine.sh"), str(ROOT / "build" / "wine-template"))
WINDOWS_BUILD = ROOT / "build" / "windows-checked"
WINDOWS = Kind(WINDOWS_BUILD, ("cmake", "--preset", "windows-checked"), ".exe", ("-s",),
               (Round("wine", (), WINE, {}, WINDOWS_PROGRAMS), Round("late-wine", (), WINE, {}, LATE_WINDOWS_PROGRAMS),
                Round("spooler", (), (*WITH_WINE, *WINE),
                      {"BEAMLINE_SPOOLER": str(WINDOWS_BUILD / "bin" / "simulated-spooler" / "winspool.drv"),
                       "WINEDLLOVERRIDES": "winspool.drv=n,b;mscoree,mshtml="}, SPOOLER_PROGRAMS),
                Round("sharp", (), (*WITH_WINE, *WINE), {"BEAMLINE_DPI": "120"}, SHARP_PROGRAMS),
                Round("mirrored", (), (*WITH_WINE, *WINE), {"LC_ALL": "he_IL.UTF-8", "BEAMLINE_LANGUAGE": "040D"},
                      MIRRORED_PROGRAMS)))


@dataclasses.dataclass(frozen=True, eq=False)
class Job:
    """One of the jobs that work at the same time: its folder, where its programs go, and their environment."""

    place: pathlib.Path
    programs: str  # the path of a program without its name
    environment: dict


@contextlib.contextmanager
def job_of(kind, number):
    """Windows programs get a Wine prefix and a display that no other job uses, as long as the job lasts. They
    lie beside the test programs, where they find their libraries."""
    place = STATE / "work" / str(os.getpid()) / str(number)
    place.mkdir(parents=True, exist_ok=True)
    if kind is NATIVE:
        yield Job(place, f"{place}/", dict(os.environ))
        return
    show = "import json, os; print(json.dumps(dict(os.environ)), flush=True)"
    command = [*WITH_WINE, "sh", "-c", f"{shlex.quote(sys.executable)} -c '{show}'; cat"]
    with subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True) as keeper:
        job = Job(place, f"{kind.build}/tests/mutant-{os.getpid()}-{number}-", json.loads(keeper.stdout.readline()))
        try:
            yield job
        finally:
            for program in pathlib.Path(job.programs).parent.glob(f"mutant-{os.getpid()}-{number}-*"):
                program.unlink()
            keeper.stdin.close()


def folder_of(file):
    return file.rpartition("/")[0]


def build(kind, programs):
    """Configures and builds the test programs; True when that worked, else the log is printed."""
    STATE.mkdir(parents=True, exist_ok=True)
    with tempfile.NamedTemporaryFile(dir=STATE, suffix=".log") as log:
        for label, command in (
                ("configuring for mutation", kind.configure),
                ("building for mutation", ["cmake", "--build", str(kind.build), "--target", *programs])):
            progress = [sys.executable, str(ROOT / "tools" / "progress.py"), label, log.name]
            if subprocess.run([*progress, *command]).returncode:
                print(pathlib.Path(log.name).read_text(encoding="utf-8", errors="replace")[-8000:])
                return False
    return True


class Builder:
    """Knows how a source is compiled and how its test programs are linked."""

    def __init__(self, kind):
        self.kind = kind
        commands = json.loads((kind.build / "compile_commands.json").read_text(encoding="utf-8"))
        self._compile = {}
        for entry in (c for c in commands if c["file"].startswith(str(ROOT)) and c["file"].endswith(".cpp")):
            file, command = str(pathlib.Path(entry["file"]).relative_to(ROOT)), shlex.split(entry["command"])
            # Programs may compile a source for themselves, with other flags: its own library's count.
            if any(command[command.index("-o") + 1].startswith(f"{folder}/CMakeFiles/")
                   for folder in pathlib.Path(file).parents):
                self._compile[file] = command
        self._precompiled = {}
        self._proven = {}
        self._proving = threading.Lock()
        self._longest = {}
        self._links = {}
        self.kills = collections.Counter()

    def can_compile(self, file):
        return file in self._compile or file.endswith(".h")

    def proves(self, judging, file, job):
        """Whether a file passes a round as it is; tried once, when the first of its mutants comes."""
        key = judging, self._proof_of(file)
        with self._proving:
            if key not in self._proven:
                self._proven[key] = lives(self, judging, file, lines_of(file), job)
            return self._proven[key]

    def _proof_of(self, file):
        """Tests with windows take long: there one file speaks for its folder."""
        return file if self.kind is NATIVE else folder_of(file)

    def likeliest_first(self, file, programs):
        """The program that has noticed most mutants of a file is likely to notice the next one too."""
        return sorted(programs, key=lambda program: -self.kills[file, program])

    def took(self, judging, file, program, seconds):
        key = judging, self._proof_of(file), program
        self._longest[key] = max(seconds, self._longest.get(key, 0))

    def time_limit(self, judging, file, program):
        """How long a program may run with a mutant of a file; with the file itself, which comes first, as
        long as it likes."""
        key = judging, self._proof_of(file), program
        if key not in self._longest:
            return None
        return max(LEAST_TIME_LIMIT_SECONDS, TIME_LIMIT_FACTOR * self._longest[key])

    def compile(self, judging, file, source, target):
        """Compiles what stands in source as file is compiled, but quickly and with checked containers."""
        return self._ran([*self._flags(file), "-O0", "-D_GLIBCXX_ASSERTIONS", *judging.flags, "-include",
                          str(self._precompiled_includes(judging, file)), "-o", str(target), "-c", str(source)])

    def compile_test(self, file, headers, target):
        """Compiles a test of the order of virtual functions with the headers of a folder before all others."""
        first, *rest = self._flags(file)
        return self._ran([first, f"-I{headers}", *rest, "-O0", "-o", str(target), "-c", str(ROOT / file)])

    def optimized(self, file, source, target):
        """The object that the optimizer makes of a source: the same for two sources that do the same."""
        flags = [part for part in self._flags(file) if not part.startswith(("-g", "-fsanitize"))]
        self._ran([*flags, "-O2", "-DNDEBUG", "-o", str(target), "-c", str(source)])
        return target.read_bytes()

    def _ran(self, command):
        return subprocess.run(command, cwd=self.kind.build, capture_output=True).returncode == 0

    def _flags(self, file):
        command = [part for part in self._compile[file]
                   if not part.endswith("ccache") and not part.startswith(("-W", "-O")) and part != "-MD"]
        for flag in ("-MT", "-MF", "-o", "-c"):
            if flag in command:
                del command[command.index(flag):command.index(flag) + 2]
        return [*command, "-w"]

    def _precompiled_includes(self, judging, file):
        """What the source includes, compiled beforehand: most of a mutant's time would go there."""
        if (judging, file) in self._precompiled:
            return self._precompiled[judging, file]
        header = STATE / "precompiled" / judging.name / (file.replace("/", "@") + ".h")
        header.parent.mkdir(parents=True, exist_ok=True)
        lines = lines_of(file)
        plain = not any(re.match(r"#\s*(if|define)", line) for line in lines)
        includes = [line for line in lines if plain and line.startswith("#include")]
        header.write_text("\n".join(includes) + "\n", encoding="utf-8")
        subprocess.run([*self._flags(file), "-O0", "-D_GLIBCXX_ASSERTIONS", *judging.flags, "-x", "c++-header",
                        "-o", f"{header}.gch", "-c", str(header)], cwd=self.kind.build, check=True, capture_output=True)
        self._precompiled[judging, file] = header
        return header

    def _link_command(self, program):
        """What ninja links the program with."""
        if program not in self._links:
            listed = subprocess.run(["ninja", "-t", "commands", "-s", f"tests/{program}{self.kind.suffix}"],
                                    cwd=self.kind.build, capture_output=True, text=True, check=True).stdout
            line = listed.strip().splitlines()[-1]
            command = shlex.split(line.replace(": && ", "", 1).rsplit(" && :", 1)[0])
            self._links[program] = [part for part in command if not part.endswith("ccache")]
        return [*self._links[program]]

    def link(self, program, file, changed, target, flags=()):
        """A changed object stands in the original's place, or before the libraries: one of them holds the
        original, which the linker leaves out when nothing misses it. Both would be an error."""
        command = self._link_command(program)
        original = self._compile[file][self._compile[file].index("-o") + 1]
        if original in command:
            command[command.index(original)] = str(changed)
        else:
            command.insert(command.index("-o"), str(changed))
        command[command.index("-o") + 1] = str(target)
        return self._ran([*command, "-fuse-ld=lld", *flags, *self.kind.link_flags])


def passes(judging, job, program, seconds, *arguments):
    ran = subprocess.Popen([*judging.runner, program, "--gtest_brief=1", "--gtest_fail_fast", *arguments],
                           cwd=ROOT, env={**job.environment, **judging.environment}, start_new_session=True,
                           stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        return ran.wait(seconds) == 0
    except subprocess.TimeoutExpired:
        os.killpg(ran.pid, signal.SIGKILL)  # with what the runner has started
        ran.wait()
        return False


def lives(builder, judging, file, lines, job):
    """Whether changed lines of a source pass a round; None when they do not compile."""
    source, changed = job.place / "mutant.cpp", job.place / "mutant.o"
    source.write_text("\n".join(lines) + "\n", encoding="utf-8")
    if not builder.compile(judging, file, source, changed):
        return None
    for name in builder.likeliest_first(file, judging.programs[folder_of(file)]):
        program = f"{job.programs}{name}{builder.kind.suffix}"
        if not builder.link(name, file, changed, program, judging.flags):
            return None
        started = time.monotonic()
        if not passes(judging, job, program, builder.time_limit(judging, file, name)):
            builder.kills[file, name] += 1
            return False
        builder.took(judging, file, name, time.monotonic() - started)
    return True


def slots_live(builder, file, lines, job):
    """Whether the tests of the order of virtual functions pass with changed lines of a header."""
    header = job.place / "headers" / file
    header.parent.mkdir(parents=True, exist_ok=True)
    header.write_text("\n".join(lines) + "\n", encoding="utf-8")
    try:
        for path in sorted((ROOT / "tests" / folder_of(file)).glob("*.cpp")):
            if SLOT_TESTS_INCLUDE not in path.read_text(encoding="utf-8"):
                continue
            test, changed, program = str(path.relative_to(ROOT)), job.place / "slots.o", job.place / "slots"
            if not (builder.compile_test(test, job.place / "headers", changed) and
                    builder.link(PROGRAMS[folder_of(file)][0], test, changed, program)):
                return None
            if not passes(QUICK, job, str(program), LEAST_TIME_LIMIT_SECONDS, SLOT_TESTS_FILTER):
                return False
        return True
    finally:
        header.unlink()


def verdict(builder, mutant, job):
    """killed, survived, same (the optimizer makes the same of both) or invalid (does not compile)."""
    original = lines_of(mutant.file)
    changed = mutant.applied_to(original)
    if mutant.file.endswith(".h"):
        living = slots_live(builder, mutant.file, changed, job)
        return "invalid" if living is None else "survived" if living else "killed"
    for judging in builder.kind.rounds:
        if not builder.proves(judging, mutant.file, job):
            sys.exit(f"{mutant.file}: fails the {judging.name} round without any mutation")
        living = lives(builder, judging, mutant.file, changed, job)
        if not living:
            return "invalid" if living is None else "killed"
        if judging is builder.kind.rounds[0] and is_the_same(builder, mutant, original, changed, job):
            return "same"
    return "survived"


def is_the_same(builder, mutant, original, changed, job):
    source, objects = job.place / "mutant.cpp", []
    for lines in (original, changed):
        source.write_text("\n".join(lines) + "\n", encoding="utf-8")
        objects.append(builder.optimized(mutant.file, source, job.place / "optimized.o"))
    return objects[0] == objects[1]
