#!/bin/sh
# usage: coverage [logic|windows]   tables of what the tests cover, against the limits; default: both
#
# Counts of the last run are thrown away first, those of earlier tests of the same run add up.
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
sh tools/install-packages.sh ci || { echo "0 passed, 1 failed"; exit 1; }
table() { python3 tools/test/coverage_table.py "$@"; }

# measure SCOPE PRESET JOBS GCOV FILTER...
measure() {
    scope=$1 preset=$2 jobs=$3 gcov=$4
    shift 4
    sh tools/build-quietly.sh "$preset" || return 1
    find "build/$preset" -name '*.gcda' -delete
    log="build/$preset/coverage-tests.log"
    ctest --preset "$preset" -j "$jobs" --timeout 900 >"$log" 2>&1 </dev/null || {
        sed -n '/tests failed out of/,$p' "$log"
        echo "coverage of $scope: tests failed, see $log"
        return 1
    }
    filters=
    for filter in "$@"; do filters="$filters -f $filter"; done
    # Without tern as the fuzzers get it: where it did not run, exceptions count as branches.
    # shellcheck disable=SC2086
    gcovr -r . --gcov-executable "$gcov" $filters --exclude-directories '.*/tern_fuzzing\.dir' \
        --exclude-throw-branches --exclude-unreachable-branches --json "build/$preset/coverage.json" \
        -j "$(nproc)" "build/$preset" >"build/$preset/gcovr.log" 2>&1 || {
        cat "build/$preset/gcovr.log"
        return 1
    }
    table "$scope" "build/$preset/coverage.json"
}

failed=0
asked=${1:-both}
if [ "$asked" != windows ]; then
    measure logic host-coverage "$(nproc)" gcov arbor/ tern/ device/ printer/ monitor/ ui/ || failed=$((failed + 1))
fi
if [ "$asked" != logic ]; then
    # One at a time: Windows programs do not lock the files that they add their counts to.
    measure windows windows-coverage 1 x86_64-w64-mingw32-gcov-win32 \
        platform/windows/ ui/windows/ monitor/windows/ app/ || failed=$((failed + 1))
fi
scopes=2
[ "$asked" = both ] || scopes=1
echo "$((scopes - failed)) passed, $failed failed"
[ "$failed" -eq 0 ]
