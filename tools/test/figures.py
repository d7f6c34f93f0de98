#!/usr/bin/env python3
"""figures.py LOG...: the figures that the project keeps to, as measured in the logs of this run.

Whoever measures one prints "figure: NAME: VALUE"; whole numbers of the same name add up. The names,
aims and last values stand in the table under "## Figures" of docs/verification.md. A figure that no
log has is shown with the value kept there and the command that measures it anew.
"""
import pathlib
import re
import sys

KEPT = pathlib.Path(__file__).resolve().parent.parent.parent / "docs" / "verification.md"
FIGURE = re.compile(r"^(?:\d+: )?figure: (?P<name>[^:]+): (?P<value>.+?)\s*$", re.MULTILINE)
ROW = re.compile(r"^\| (?P<name>[^|]+?) \| (?P<aim>[^|]+?) \| (?P<value>[^|]+?) \| `(?P<command>[^|`]+)` \|$")


def whole(text):
    """The number that a text such as "171 934" is, or None."""
    digits = text.replace(" ", "")
    return int(digits) if digits.isdigit() else None


def measured(text, found=None):
    """Name to value of all figures in a log, on top of those found before."""
    found = {} if found is None else found
    for match in FIGURE.finditer(text):
        name, value = match["name"], match["value"]
        earlier, now = whole(found.get(name, "")), whole(value)
        if earlier is not None and now is not None:
            value = f"{earlier + now:,}".replace(",", " ")
        elif now is not None:
            value = f"{now:,}".replace(",", " ")
        found[name] = value
    return found


def kept(document):
    """The rows of the table: name, aim, value, command."""
    rows, inside = [], False
    for line in document.splitlines():
        if line.startswith("## "):
            inside = line == "## Figures"
        row = ROW.match(line)
        if inside and row:
            rows.append((row["name"], row["aim"], row["value"], row["command"]))
    return rows


def table(found, rows):
    """Lines for a reader: what was measured now, then what was measured last."""
    lines = []
    for name, aim, value, command in rows:
        if name in found:
            lines.append(f"  {name:44} {found[name]:>18}   aim {aim}")
    for name, aim, value, command in rows:
        if name not in found:
            lines.append(f"  {name:44} {value:>18}   aim {aim}; last time, by {command}")
    unknown = sorted(set(found) - {row[0] for row in rows})
    return lines + [f"  {name:44} {found[name]:>18}   in no table" for name in unknown]


def main(paths):
    found = {}
    for path in paths:
        log = pathlib.Path(path)
        if log.exists():
            measured(log.read_text(encoding="utf-8", errors="replace"), found)
    print("Figures:", *table(found, kept(KEPT.read_text(encoding="utf-8"))), sep="\n")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
