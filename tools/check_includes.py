#!/usr/bin/env python3
"""Demands that every portable source includes what it uses, so that no header is there by luck.

usage: tools/check_includes.py [--jobs N] [--removals] [PATH ...]

Asks include-what-you-use about every source and header that is not Windows code. A missing include
is a finding. What it would remove is only listed, with --removals: some headers are included for
those who include us. The last line is "N passed, N failed", a check being one source with its
header, or a header without one; exit code 1 with any finding.
"""

import argparse
import collections
import concurrent.futures
import re
import subprocess
import sys

import check_static

SECTION = re.compile(r"^(\S+) should (add|remove) these lines:$")
ADDED = re.compile(r'^#include [<"](?P<header>[^>"]+)[>"]\s*(?:// for (?P<names>.*))?$')


def is_needed(file, line):
    """Whether a header that is advised must be there: it declares a name that the file writes.

    What nobody writes comes with what is written: the traits of a text, the comparison of a map,
    the type of a call's result of which only a member is used.
    """
    advised = ADDED.match(line)
    if not advised or not advised["names"]:
        return True
    text = (check_static.ROOT / file).read_text(encoding="utf-8")
    words = set(re.findall(r"\w+", re.sub(r"^\s*#.*|//.*", "", text, flags=re.MULTILINE)))
    names = [name.strip() for name in advised["names"].split(",")]
    return any(re.sub(r"<.*", "", name) in words for name in names)


def advice(name):
    """Returns (file, "add" or "remove", line) for a source and its header, or for a header."""
    command = ["include-what-you-use", "-std=c++20", f"-I{check_static.ROOT}", "-x", "c++"]
    # Without asking for declarations in place of includes: a class that is named is included.
    for option in ("--no_fwd_decls", "--cxx17ns", "--max_line_length=1000"):
        command += ["-Xiwyu", option]
    command.append(name)
    ran = subprocess.run(command, cwd=check_static.ROOT, capture_output=True, text=True)
    said = ran.stderr.replace(f"{check_static.ROOT}/", "")
    if " error: " in said or f"for {name}:" not in said and f"{name} has correct" not in said:
        return [(name, "add", "cannot be read: " + said.strip()[-2000:])]
    advised = []
    section = None
    for line in said.splitlines():
        begin = SECTION.match(line)
        if begin:
            section = (begin[1], begin[2])
        elif not line.strip() or line.startswith("The full include-list"):
            section = None
        elif section and "#include" in line:
            advised.append((*section, line.removeprefix("- ").strip()))
    return advised


def files(sources):
    """Every portable source, and the headers without a source of their own."""
    names = set(sources.product())
    headers = [name for name in sources.all if name.endswith(".h")
               and name.split("/")[0] in check_static.PRODUCT
               and name.removesuffix(".h") + ".cpp" not in names]
    return [name for name in sorted(names | set(headers))
            if "/windows/" not in name and not sources.is_windows(name)]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--removals", action="store_true")
    parser.add_argument("paths", nargs="*")
    options = parser.parse_args()

    sources = check_static.Sources()
    names = [name for name in files(sources)
             if not options.paths or any(name.startswith(p) for p in options.paths)]
    findings = collections.defaultdict(set)
    could_go = set()
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        for name, advised in zip(names, pool.map(advice, names)):
            for file, kind, line in advised:
                if kind == "remove":
                    could_go.add(f"{file}: could do without {line}")
                elif is_needed(file, line):
                    findings[file].add(line)
    for file in sorted(findings):
        print(f"== {file}")
        for line in sorted(findings[file]):
            print(line)
    if options.removals:
        print("\n".join(sorted(could_go)))
    failed = len({file.rsplit(".", 1)[0] for file in findings})
    print(f"{len(names) - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
