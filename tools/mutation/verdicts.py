"""Verdicts that stay from one run to the next."""

import hashlib
import json

from mutation.mutants import ROOT
from mutation.workshop import LATE_PROGRAMS, STATE, folder_of


def digest(paths):
    total = hashlib.sha256()
    for path in sorted(paths):
        if path.is_file():
            total.update(path.read_bytes())
    return total.hexdigest()


class Verdicts:
    """Verdicts of earlier runs; a change of the source, its headers or its tests forgets them."""

    def __init__(self, file, believe_kills):
        self._path = STATE / (file.replace("/", "@") + ".json")
        folder = folder_of(file)
        self._code = digest([ROOT / file, *(ROOT / folder).glob("*.h")])
        torture = (f"tests/fault_injection/{name}_test.cpp" for name in LATE_PROGRAMS[folder])
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
