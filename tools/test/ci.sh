#!/bin/sh
# usage: ci   ./test and all other checks that a change must pass: long and tall languages, the page of all alerts, analysers, Valgrind, coverage, instructions
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
sh "$root/tools/install-packages.sh" ci || { echo "0 passed, 1 failed"; exit 1; }
sh "$root/tools/series.sh" ci <<'COMMANDS'
all
languages ar de el hi ja ml ta th
gallery
coverage
release
fuzz_coverage
memory
instructions
threads --schedules 2000 --rounds 30
static
COMMANDS
