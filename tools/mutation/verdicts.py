"""Verdicts that stay from one run to the next."""

import hashlib
import json

from mutation.builder import LATE_PROGRAMS, STATE, folder_of
from mutation.mutants import ROOT, code_of, lines_of


def digest(paths):
    """Of the code alone: a verdict stays when nothing but comments and blank lines has changed."""
    total = hashlib.sha256()
    for path in sorted(path for path in paths if path.suffix in (".h", ".cpp")):
        for line in path.read_text(encoding="utf-8").splitlines():
            if code_of(line).strip():
                total.update(code_of(line).encode() + b"\n")
    return total.hexdigest()


class Verdicts:
    """Verdicts of earlier runs; a change of the source, its headers or its tests forgets them."""

    def __init__(self, file, believe_kills):
        self._path = STATE / "verdicts" / (file.replace("/", "@") + ".json")
        folder = folder_of(file)
        self._code = digest([ROOT / file, *(ROOT / folder).glob("*.h")])
        faults = (f"tests/fault_injection/{name}_test.cpp" for name in LATE_PROGRAMS.get(folder, []))
        self._tests = digest([*(ROOT / "tests" / folder).glob("*"),
                              *(ROOT / name for name in faults if (ROOT / name).exists())])
        code = [number for number, line in enumerate(lines_of(file), 1) if code_of(line).strip()]
        self._place = {number: place for place, number in enumerate(code)}
        kept = json.loads(self._path.read_text(encoding="utf-8")) if self._path.exists() else {}
        self._verdicts = kept.get("verdicts", {}) if kept.get("code") == self._code else {}
        if kept.get("tests") != self._tests:
            self._verdicts = {mutant: value for mutant, value in self._verdicts.items()
                              if believe_kills and value != "survived"}

    def _key(self, mutant):
        return f"{self._place[mutant.line]}:{mutant.column}:{mutant.how}"

    def get(self, mutant):
        return self._verdicts.get(self._key(mutant))

    def put(self, mutant, value):
        self._verdicts[self._key(mutant)] = value

    def save(self):
        self._path.parent.mkdir(parents=True, exist_ok=True)
        self._path.write_text(json.dumps({"code": self._code, "tests": self._tests,
                                          "verdicts": self._verdicts}), encoding="utf-8")
