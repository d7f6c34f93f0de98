#!/usr/bin/env python3
"""Static analysis: layout, scripts, cppcheck, and clang-tidy with all of clang's warnings.

usage: tools/check_static.py [--jobs N] [PATH ...]

Reads what stands under the paths, by default all. A source is read as the build compiles it: natively if
it is part of the native build, else for Windows, with the headers of the cross compiler. Each tool must
first find its fault in tests/planted_faults/static_faults.cc. Wants the presets host-asan and windows
configured. Every tool stands at zero findings. The last line is "N passed, N failed", a check being one
tool; exit code 1 with any finding.
"""
import argparse
import json
import os
import pathlib
import shutil
import subprocess
import sys

import progress

ROOT = pathlib.Path(__file__).resolve().parent.parent
STATE = ROOT / "build" / "static"
PRODUCT = ("platform", "arbor", "tern", "device", "printer", "monitor", "ui", "app", "tools")
PLANTED = "tests/planted_faults/static_faults.cc"
LAYOUT_VERSION = "14.0.6"  # other versions break lines elsewhere
MINGW = "x86_64-w64-mingw32-g++-win32"


def output_of(*command):
    return subprocess.run(command, cwd=ROOT, capture_output=True, text=True, check=True).stdout


def files_under(paths, *patterns):
    listed = output_of("git", "ls-files", "-co", "--exclude-standard", *patterns).splitlines()
    return [name for name in listed if (ROOT / name).exists()
            and (not paths or any(name == path or name.startswith(path.rstrip("/") + "/") for path in paths))]


def clang_format():
    """The program that settles layout; from PyPI where the system's is another version."""
    if shutil.which("clang-format-14"):
        return "clang-format-14"
    program = STATE / "python" / "bin" / "clang-format"
    if not program.exists():
        subprocess.run([sys.executable, "-m", "venv", STATE / "python"], check=True)
        subprocess.run([program.parent / "pip", "-q", "install", f"clang-format=={LAYOUT_VERSION}"], check=True)
    return str(program)


def to_windows():
    """Options that make clang read the headers of the cross compiler."""
    include = pathlib.Path(output_of(MINGW, "-print-libgcc-file-name").strip()).parent / "include" / "c++"
    return ["--target=x86_64-w64-mingw32", "-isystem", str(include), "-isystem", str(include / "x86_64-w64-mingw32")]


def databases(sources):
    """Writes how each source is compiled: a folder with the native ones, one with those for Windows."""
    folders = []
    for preset in ("host-asan", "windows"):
        built = json.loads((ROOT / "build" / preset / "compile_commands.json").read_text(encoding="utf-8"))
        by_name = {os.path.relpath(entry["file"], ROOT): entry for entry in built}
        folder = STATE / preset
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "compile_commands.json").write_text(
            json.dumps([by_name[name] for name in sources if name in by_name]), encoding="utf-8")
        sources = [name for name in sources if name not in by_name]
        folders.append(folder)
    if sources:
        raise RuntimeError("in no build: " + " ".join(sources))
    return [folder for folder in folders if json.loads((folder / "compile_commands.json").read_text("utf-8"))]


def planted_database():
    """A folder that says how the planted faults are compiled."""
    folder = STATE / "planted"
    folder.mkdir(parents=True, exist_ok=True)
    entry = {"directory": str(ROOT), "file": str(ROOT / PLANTED),
             "command": f"clang++ -std=c++20 -I{ROOT} -c {ROOT / PLANTED}"}
    (folder / "compile_commands.json").write_text(json.dumps([entry]), encoding="utf-8")
    return folder


class Run:
    """The tools, each called once for what it has to read."""

    def __init__(self, jobs):
        self._jobs, self.passed, self.failed = str(jobs), 0, 0

    def tool(self, name, command, planted, finds):
        """Counts one tool: it must find the planted fault, and nothing else."""
        log = STATE / f"{name}.log"
        for step, arguments, wanted in (("planted fault", planted, finds), ("", command, None)):
            log.unlink(missing_ok=True)
            status = progress.run(f"{name} {step}".strip(), arguments, log)
            printed = log.read_text(encoding="utf-8", errors="replace")
            if (status == 0) if wanted is None else (status != 0 and all(word in printed for word in wanted)):
                continue
            self.failed += 1
            print(f"== {name}: {'the planted fault was not found' if wanted else 'findings'}\n{printed}", flush=True)
            return
        self.passed += 1

    def layout(self, files):
        check = [clang_format(), "--dry-run", "-Werror"]
        self.tool("layout", [*check, *files], [*check, PLANTED], ["code should be clang-formatted"])

    def scripts(self, files):
        check = ["shellcheck", "-x", "-e", "SC2317,SC2015,SC1091"]
        self.tool("scripts", [*check, *files], [*check, "tests/planted_faults/script_faults"], ["SC2086"])

    def clang_tidy(self, folder, planted):
        tidy = ["run-clang-tidy", "-quiet", "-j", self._jobs]
        if folder.name == "windows":
            tidy += [f"-extra-arg={option}" for option in to_windows()]
        self.tool(f"clang-tidy-{folder.name}", [*tidy, "-p", str(folder)], [*tidy, "-p", str(planted)],
                  ["bugprone-use-after-move", "clang-diagnostic-shadow"])

    def cppcheck(self, folder, planted):
        check = ["cppcheck", "--quiet", "--enable=warning,performance,portability", "--platform=win64",
                 "--library=windows", "--inline-suppr", "--suppress=missingIncludeSystem", "--error-exitcode=1",
                 "-j", self._jobs]
        state = STATE / f"cppcheck-{folder.name}"
        state.mkdir(exist_ok=True)
        self.tool(f"cppcheck-{folder.name}",
                  [*check, f"--cppcheck-build-dir={state}", f"--project={folder / 'compile_commands.json'}"],
                  [*check, f"--project={planted / 'compile_commands.json'}"], ["arrayIndexOutOfBounds"])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("paths", nargs="*")
    options = parser.parse_args()

    os.chdir(ROOT)
    STATE.mkdir(parents=True, exist_ok=True)
    run = Run(options.jobs)
    layout = files_under(options.paths, "*.cpp", "*.h")
    scripts = files_under(options.paths, "*.sh", "test", "run", ".ci/run")
    sources = [name for name in layout if name.endswith(".cpp") and name.split("/")[0] in PRODUCT]
    if not layout and not scripts:
        sys.exit(f"check_static.py: no source under {' '.join(options.paths)}")
    if layout:
        run.layout(layout)
    if scripts:
        run.scripts(scripts)
    planted = planted_database()
    try:
        for folder in databases(sources):
            run.cppcheck(folder, planted)
            run.clang_tidy(folder, planted)
    except (OSError, RuntimeError) as error:
        run.failed += 1
        print(f"== {error}")
    print(f"{run.passed} passed, {run.failed} failed")
    return 1 if run.failed else 0


if __name__ == "__main__":
    sys.exit(main())
