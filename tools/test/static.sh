#!/bin/sh
# usage: static [PATH...]   layout, scripts, cppcheck, and clang-tidy with all of clang's warnings; default: all sources
set -u
cd "$(dirname "$0")/../.." || exit 1
sh tools/install-packages.sh ci || { echo "0 passed, 1 failed"; exit 1; }
# Nothing is built here: the analysers only need to know how each source is compiled.
for preset in host-asan windows; do
    sh tools/build-quietly.sh "$preset" help || { echo "0 passed, 1 failed"; exit 1; }
done
exec python3 tools/check_static.py --jobs "$(nproc)" "$@"
