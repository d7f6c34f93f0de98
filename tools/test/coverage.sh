#!/bin/sh
# usage: coverage [logic|windows]   what the tests cover, against the limits; default: both
#
# Counts of the last run are thrown away first, those of earlier tests of the same run add up. Pages that show
# each line stand in build/PRESET/coverage.html and its like.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
case ${1:-both} in both | logic | windows) ;; *)
    echo "coverage.sh: there is no $1" >&2
    exit 2
    ;;
esac
sh tools/install-packages.sh ci || { echo "0 passed, 1 failed"; exit 1; }

# measure PRESET JOBS GCOV 'LIMIT...' FILTER...: passes when the tests pass and no limit is missed.
measure() {
    preset=$1 jobs=$2 gcov=$3 limits=$4
    shift 4
    sh tools/build-quietly.sh "$preset" || return 1
    find "build/$preset" -name '*.gcda' -delete
    python3 tools/test/run_tests.py "$preset -j $jobs --timeout 900" || return 1
    filters=
    for filter in "$@"; do filters="$filters -f $filter"; done
    # Without tern as the fuzzers get it: where it did not run, exceptions count as branches.
    # shellcheck disable=SC2086
    gcovr -r . --gcov-executable "$gcov" $filters --exclude-directories '.*/tern_fuzzing\.dir' \
        --exclude-throw-branches --exclude-unreachable-branches -j "$(nproc)" \
        --txt --html-details "build/$preset/coverage.html" --print-summary $limits "build/$preset"
}

passed=0 failed=0
count() { if "$@"; then passed=$((passed + 1)); else failed=$((failed + 1)); fi; }
if [ "${1:-both}" != windows ]; then
    count measure host-coverage "$(nproc)" gcov '--fail-under-line 98 --fail-under-branch 95' \
        arbor/ tern/ device/ printer/ monitor/ ui/
fi
if [ "${1:-both}" != logic ]; then
    # One at a time: Windows programs do not lock the files that they add their counts to. The branches of a
    # cross-built file count what the compiler adds for exceptions, so they have no limit.
    count measure windows-coverage 1 x86_64-w64-mingw32-gcov-win32 '--fail-under-line 90' \
        platform/windows/ ui/windows/ app/
fi
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
