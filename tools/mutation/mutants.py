"""What is changed: the mutants of a source, and those that are marked as changing nothing."""

import dataclasses
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
EQUIVALENT = ROOT / "tests" / "mutation"

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
