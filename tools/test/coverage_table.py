#!/usr/bin/env python3
"""coverage_table.py logic|windows FILE.json...: what gcovr counted, as a table per folder.

Lists what is not covered and exits with 1 when a total stands below its limit: logic 98 % of lines
and 95 % of branches, Windows-only sources 90 % of lines.
"""
import collections
import json
import re
import sys

SCOPES = {
    "logic": (re.compile(r"^(arbor|tern|device|printer|monitor|ui)/(?!.*windows/)"), 98.0, 95.0),
    # The branch figures of a cross-built file count what the compiler adds for exceptions.
    "windows": (re.compile(r"^(platform/windows|ui/windows|monitor/windows|app)/"), 90.0, None),
}


class Count:
    """Lines and branches of a file or a folder."""

    def __init__(self):
        self.lines = self.lines_hit = self.branches = self.branches_hit = 0

    def add(self, other):
        self.lines += other.lines
        self.lines_hit += other.lines_hit
        self.branches += other.branches
        self.branches_hit += other.branches_hit

    def line_percent(self):
        return 100.0 * self.lines_hit / self.lines if self.lines else 100.0

    def branch_percent(self):
        return 100.0 * self.branches_hit / self.branches if self.branches else 100.0


def ranges(numbers):
    """[1, 2, 3, 7] as "1-3 7"."""
    parts, start = [], None
    for index, number in enumerate(numbers):
        start = number if start is None else start
        if index + 1 == len(numbers) or numbers[index + 1] != number + 1:
            parts.append(str(start) if start == number else f"{start}-{number}")
            start = None
    return " ".join(parts)


def read_file(entry):
    """The count of one file, its lines that never ran and those with a branch never taken."""
    count, missed, half = Count(), [], []
    for line in entry["lines"]:
        if line.get("gcovr/noncode"):
            continue
        count.lines += 1
        count.lines_hit += line["count"] > 0
        if line["count"] == 0:
            missed.append(line["line_number"])
        taken = [branch["count"] > 0 for branch in line["branches"]
                 if not branch.get("gcovr/excluded")]
        count.branches += len(taken)
        count.branches_hit += sum(taken)
        if line["count"] > 0 and not all(taken):
            half.append(line["line_number"])
    return count, sorted(set(missed)), sorted(set(half))


def main(scope, paths):
    pattern, line_limit, branch_limit = SCOPES[scope]
    folders, total = collections.defaultdict(Count), Count()
    gaps = []
    for path in paths:
        with open(path, encoding="utf-8") as report:
            files = json.load(report)["files"]
        for entry in sorted(files, key=lambda file: file["file"]):
            name = entry["file"]
            if not pattern.match(name):
                continue
            count, missed, half = read_file(entry)
            folders[name.rsplit("/", 1)[0]].add(count)
            total.add(count)
            if missed:
                gaps.append(f"  {name}: lines {ranges(missed)}")
            if half and branch_limit is not None:
                gaps.append(f"  {name}: a branch of lines {ranges(half)}")
    print(f"{'folder':24} {'lines':>13} {'':>8} {'branches':>13}")
    for folder, count in [*sorted(folders.items()), ("all", total)]:
        print(f"{folder:24} {count.lines_hit:6}/{count.lines:<6} {count.line_percent():6.1f} % "
              f"{count.branches_hit:6}/{count.branches:<6} {count.branch_percent():6.1f} %")
    if gaps:
        print("not covered:", *gaps, sep="\n")
    if total.lines == 0:
        print(f"coverage of {scope}: nothing was counted")
        return 1
    short = []
    if total.line_percent() < line_limit:
        short.append(f"lines {total.line_percent():.1f} % are below {line_limit:.0f} %")
    if branch_limit is not None and total.branch_percent() < branch_limit:
        short.append(f"branches {total.branch_percent():.1f} % are below {branch_limit:.0f} %")
    for reason in short:
        print(f"coverage of {scope}: {reason}")
    return 1 if short else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
