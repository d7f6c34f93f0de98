#!/bin/sh
# usage: fuzz_coverage [TARGET...]   shows the lines of its sources that a fuzz corpus does not reach
#
# tests/fuzz/coverage.txt says which sources each target tests, and which of their functions or lines no
# input can reach, with the reason.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
sh tools/install-packages.sh test &&
    sh tools/build-quietly.sh host-coverage replay_corpora || { echo "0 passed, 1 failed"; exit 1; }
exec python3 tools/test/fuzz_coverage.py build/host-coverage "$@"
