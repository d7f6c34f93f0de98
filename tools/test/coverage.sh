#!/bin/sh
# usage: coverage [logic|windows]   which lines and branches the tests run, with lower limits; default: both
#
# The counts of an earlier run are deleted first. The counts of all tests of one run are added up. The file
# build/PRESET/coverage.html leads to pages that show each line.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
case ${1:-both} in both | logic | windows) ;; *)
    echo "coverage.sh: there is no $1" >&2
    exit 2
    ;;
esac
sh tools/install-packages.sh ci || { echo "0 passed, 1 failed"; exit 1; }

# measure PRESET 'CTEST ARGUMENT...' GCOV 'LIMIT...' FILTER...: passes when the tests pass and no limit is
# missed.
measure() {
    preset=$1 arguments=$2 gcov=$3 limits=$4
    shift 4
    sh tools/build-quietly.sh "$preset" || return 1
    find "build/$preset" -name '*.gcda' -delete
    python3 tools/test/run_tests.py "$preset $arguments --timeout 900" || return 1
    filters=
    for filter in "$@"; do filters="$filters -f $filter"; done
    # The copy of tern that is built for the fuzzers is left out: it does not run here, and gcovr counts the
    # branches of exceptions in code that did not run.
    # shellcheck disable=SC2086
    gcovr -r . --gcov-executable "$gcov" $filters --exclude-directories '.*/tern_fuzzing\.dir' \
        --exclude-throw-branches --exclude-unreachable-branches -j "$(nproc)" \
        --txt --html-details "build/$preset/coverage.html" --print-summary $limits "build/$preset"
}

passed=0 failed=0
count() { if "$@"; then passed=$((passed + 1)); else failed=$((failed + 1)); fi; }
if [ "${1:-both}" != windows ]; then
    count measure host-coverage "-j $(nproc)" gcov '--fail-under-line 98 --fail-under-branch 95' \
        arbor/ tern/ device/ printer/ monitor/ ui/
fi
if [ "${1:-both}" != logic ]; then
    # One test at a time, because Windows programs do not lock the files that they add their counts to.
    # Left out are tests that run no other lines of these folders: the same ones at other scales and in other
    # languages, the logic without memory, leaks, and the tools.
    # There is no limit for branches: those of a cross-built file include what the compiler adds for exceptions.
    others='_(at_[0-9]+|de|zh_CN|ar|he)$|^(arbor|tern|device|printer|monitor|ui)_faults$'
    others="$others|^(alert_leak|check_strings|gauges|printpath|scenario)_tests?$"
    others="$others|^(soak|size_and_memory|pictures|scenario_suite|replay_corpora|strings_.*)$"
    count measure windows-coverage "-j 1 -E $others" x86_64-w64-mingw32-gcov-win32 '--fail-under-line 90' \
        platform/windows/ ui/windows/ app/
fi
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
