#!/bin/sh
# usage: ci   ./test and all other checks that a change must pass: long and tall languages, the page of all alerts, analysers, Valgrind, coverage, instructions
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
sh "$root/tools/install-packages.sh" ci || { echo "0 passed, 1 failed"; exit 1; }
# ./test comes first and alone. Much of the rest waits for windows that open or is one compiler at a time, so two
# paragraphs at once use the machine better. Commands that build the same presets stand in the same paragraph.
sh "$root/tools/series.sh" ci <<'COMMANDS'
all

coverage
fuzz_coverage
release

languages ar de el hi ja ml ta th
gallery
memory
instructions
threads --schedules 2000 --rounds 30
static
COMMANDS
