#!/usr/bin/env python3
"""Static analysis of the product's sources: layout, clang-tidy, cppcheck, clang as second compiler.

usage: tools/check_static.py [--tool NAME ...] [--jobs N] [--all] [PATH ...]

A source is looked at again only when it, a header that it includes, the configuration or the tool
has changed since it was last clean; --all looks at everything. Every tool stands at zero findings.
The last line is "N passed, N failed", a check being one tool on one source; exit code 1 with any
finding.
"""

import argparse
import concurrent.futures
import dataclasses
import hashlib
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
STATE = ROOT / "build" / "static"
PRODUCT = ("platform", "arbor", "tern", "device", "printer", "monitor", "ui", "app", "tools")
MINGW = "x86_64-w64-mingw32-g++-win32"
SYSTEM_HEADERS = re.compile(r'#\s*include\s*<(windows|winsock2)\.h>')
OWN_HEADERS = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)

WINDOWS_DEFINES = [
    "-DUNICODE", "-D_UNICODE", "-DWIN32_LEAN_AND_MEAN", "-DNOMINMAX", "-DSTRICT",
    "-D_WIN32_WINNT=0x0601",
]
# What clang knows beyond our own warnings, less what does not apply to this code: see the reasons.
CLANG_WARNINGS = [
    "-Weverything", "-Werror",
    "-Wno-c++98-compat", "-Wno-c++98-compat-pedantic", "-Wno-c++20-compat",
    "-Wno-padded",                # layout for humans, not for the last byte
    "-Wno-missing-prototypes",    # entry points that others declare
    "-Wno-used-but-marked-unused",
    "-Wno-reserved-identifier",   # clang-tidy judges it too, where a line can give its reason
    "-Wno-weak-vtables",          # interfaces have no source file by design
    "-Wno-exit-time-destructors", "-Wno-global-constructors",  # clang-tidy judges these better
    "-Wno-thread-safety-negative",  # our locks are re-entrant: their holder may take them again
    "-Wno-switch-enum",           # contradicts -Wcovered-switch-default
    "-Wno-ctad-maybe-unsupported",  # guards such as ScopedLock deduce on purpose
    "-Wno-unsafe-buffer-usage", "-Wno-unknown-warning-option",
]


def output_of(command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def windows_flags():
    """Makes clang read the headers of the cross compiler."""
    library = pathlib.Path(output_of([MINGW, "-print-libgcc-file-name"]).strip()).parent
    include = library / "include" / "c++"
    return ["--target=x86_64-w64-mingw32", "-isystem", str(include),
            "-isystem", str(include / "x86_64-w64-mingw32"), *WINDOWS_DEFINES]


class Sources:
    """The project's files, what each includes and whether it is Windows code."""

    def __init__(self):
        listed = output_of(["git", "-C", str(ROOT), "ls-files", "-co", "--exclude-standard",
                            "*.cpp", "*.h"])
        self.all = [name for name in listed.splitlines() if (ROOT / name).exists()]
        self._texts = {}
        self._closures = {}

    def product(self):
        return [name for name in self.all
                if name.endswith(".cpp") and name.split("/")[0] in PRODUCT]

    def text(self, name):
        if name not in self._texts:
            self._texts[name] = (ROOT / name).read_text(encoding="utf-8")
        return self._texts[name]

    def closure(self, name):
        """The file and every header of the project that it includes."""
        if name not in self._closures:
            found, waiting = set(), [name]
            while waiting:
                current = waiting.pop()
                if current in found or not (ROOT / current).exists():
                    continue
                found.add(current)
                waiting += OWN_HEADERS.findall(self.text(current))
            self._closures[name] = sorted(found)
        return self._closures[name]

    def is_windows(self, name):
        return any(SYSTEM_HEADERS.search(self.text(file)) for file in self.closure(name))


@dataclasses.dataclass
class Tool:
    """One means of analysis: how it is called for a source, and what its verdict depends on."""
    name: str
    version: str
    configuration: list
    command: callable
    needs_headers: bool = True


def tools(sources):
    to_windows = windows_flags()

    def language(name):
        return ["-std=c++20", "-I", str(ROOT), "-D_GLIBCXX_ASSERTIONS",
                *(to_windows if sources.is_windows(name) else [])]

    def clang_tidy(name):
        return ["clang-tidy-14", "--quiet", name, "--", *language(name)]

    def second_compiler(name):
        return ["clang++-14", "-fsyntax-only", *language(name), *CLANG_WARNINGS, name]

    def cppcheck(name):
        return ["cppcheck", "--quiet", "--enable=warning,performance,portability", "--std=c++20",
                "--platform=win64", "--library=windows", "--inline-suppr",
                "--suppress=missingIncludeSystem", "--error-exitcode=1", "-I", ".", name]

    def layout(name):
        return ["clang-format-14", "--dry-run", "-Werror", name]

    def version(program):
        return output_of([program, "--version"])

    return [
        Tool("layout", version("clang-format-14"), [".clang-format"], layout, needs_headers=False),
        Tool("clang", version("clang++-14"), ["tools/check_static.py"], second_compiler),
        Tool("cppcheck", version("cppcheck"), ["tools/check_static.py"], cppcheck),
        Tool("clang-tidy", version("clang-tidy-14"), [".clang-tidy", "tools/check_static.py"],
             clang_tidy),
    ]


def digest(tool, sources, name):
    files = sources.closure(name) if tool.needs_headers else [name]
    total = hashlib.sha256(tool.version.encode())
    for file in [*tool.configuration, *files]:
        total.update(file.encode() + b"\0" + (ROOT / file).read_bytes())
    return total.hexdigest()


def check(tool, sources, name, look_again):
    """Returns (whether the tool ran, its findings)."""
    mark = STATE / tool.name / name.replace("/", "@")
    wanted = digest(tool, sources, name)
    if not look_again and mark.exists() and mark.read_text() == wanted:
        return False, ""
    ran = subprocess.run(tool.command(name), cwd=ROOT, capture_output=True, text=True)
    findings = (ran.stdout + ran.stderr).strip()
    if ran.returncode == 0:
        mark.parent.mkdir(parents=True, exist_ok=True)
        mark.write_text(wanted)
        return True, ""
    return True, findings or f"{name}: {tool.name} ended with exit code {ran.returncode}"


def chosen(sources, tool, paths):
    names = sources.all if tool.name == "layout" else sources.product()
    return [name for name in names if not paths or any(name.startswith(p) for p in paths)]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--tool", action="append", default=[])
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--all", action="store_true")
    parser.add_argument("paths", nargs="*")
    options = parser.parse_args()

    sources = Sources()
    selected = [tool for tool in tools(sources) if not options.tool or tool.name in options.tool]
    passed = failed = looked_at = 0
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for tool in selected:
            names = chosen(sources, tool, options.paths)
            results = pool.map(lambda name, t=tool: check(t, sources, name, options.all), names)
            for ran, findings in results:
                looked_at += ran
                passed += not findings
                failed += bool(findings)
                if findings:
                    print(f"== {tool.name}\n{findings}", flush=True)
    print(f"static analysis: {looked_at} checks were due, the rest unchanged since they were clean")
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
