#!/bin/sh
# usage: portability   the logic with LLVM's standard library, and whether all sources include what they use
#
# What one standard library brings along by luck another one lacks: the build with a second one and
# include-what-you-use find it from two sides.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
sh tools/install-packages.sh nightly || { echo "0 passed, 1 failed"; exit 1; }
logs=$(mktemp -d)
trap 'rm -rf "$logs"' EXIT

# The last line that a command printed, "N passed, N failed", added to the sums.
passed=0 failed=0
add() {
    passed=$((passed + $(tail -n 1 "$1" | sed 's/ passed, .*//')))
    failed=$((failed + $(tail -n 1 "$1" | sed 's/.* passed, \([0-9]*\) failed/\1/')))
}

echo "Building and testing with LLVM's standard library"
if sh tools/build-quietly.sh host-libcxx; then
    python3 tools/test/run_tests.py "host-libcxx -j $(nproc) --timeout 900" >"$logs/tests" 2>&1 || :
else
    echo "0 passed, 1 failed" >"$logs/tests"
fi
cat "$logs/tests"
add "$logs/tests"

echo "Asking include-what-you-use"
python3 tools/check_includes.py --jobs "$(nproc)" >"$logs/includes" 2>&1 || :
cat "$logs/includes"
add "$logs/includes"

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
