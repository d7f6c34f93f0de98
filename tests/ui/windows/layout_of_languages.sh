#!/bin/sh
# layout_of_languages.sh PROGRAMS [LANGUAGE...]: runs the test programs, whose names have no blanks, once for
# each language that has texts, or for those named, within with-wine.sh. Prints what fails, and at the end
# "N passed, N failed".
set -u
root=$(cd "$(dirname "$0")/../../.." && pwd)
programs=$1
shift
list=$root/strings/languages.tsv
if [ $# -eq 0 ]; then
    # shellcheck disable=SC2046
    set -- en $(find "$root/strings/po" -name '*.po' -exec basename {} .po ';' | sort)
fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT
passed=0 failed=0
# all_pass: each program in the language of the environment, up to the first that fails.
all_pass() {
    for program in $programs; do
        sh "$root/tools/wine/run-test.sh" "$program" --gtest_brief=1 >"$log" 2>&1 || return 1
    done
}

for language in "$@"; do
    if ! row=$(grep "^$language	" "$list"); then
        echo "there is no language $language; see ./run languages"
        failed=$((failed + 1))
    elif (
        LC_ALL=$(echo "$row" | cut -f 5) BEAMLINE_LANGUAGE=$(echo "$row" | cut -f 2)
        export LC_ALL BEAMLINE_LANGUAGE
        all_pass
    ); then
        passed=$((passed + 1))
    else
        echo "== $language"
        cat "$log"
        failed=$((failed + 1))
    fi
done
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
