#!/bin/sh
# scripts_test.sh ROOT: what ./run and ./test say without building anything. Prints one
# line for each check.
set -u
cd "$1" || exit 1
failed=0
unset BEAMLINE_FUZZ_RUNS BEAMLINE_PROGRESS_FD

# check NAME CODE PATTERN COMMAND...: the command ends with this code and prints this.
check() {
    name=$1 code=$2 pattern=$3
    shift 3
    printed=$("$@" 2>&1)
    got=$?
    if [ "$got" -eq "$code" ] && printf '%s\n' "$printed" | grep -q -e "$pattern"; then
        echo "ok $name"
    else
        echo "not ok $name (exit code $got)"
        printf '%s\n' "$printed"
        failed=1
    fi
}

every_story_is_listed() {
    for scenario in scenarios/*.txt; do
        ./run --list | grep -q "^$(basename "$scenario" .txt)  *[A-Z0-9]" || { echo "$scenario"; return 1; }
    done
    echo all
}

the_change_log_has_the_version() {
    version=$(sed -n 's/^project(.* VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
    [ -n "$version" ] && sed -n 's/^## //p' CHANGELOG.md | head -n 1 | grep -qF "$version" && echo same
}

every_package_has_a_purpose() {
    ! grep -v -e '^#' -e '^$' tools/packages.txt | grep -v -E '^[a-z0-9.+-]+ +(run|release|test|ci|nightly)( +1[23])?$' && echo all
}

# wanted_packages PURPOSE: what install-packages.sh would install of a list, on a system that has nothing and
# cannot install.
wanted_packages() {
    place=$(mktemp -d)
    release=$(sed -n 's/^VERSION_ID="\(.*\)"$/\1/p' /etc/os-release)
    cp tools/install-packages.sh "$place/"
    printf '# a list\na run\nb test\nc nightly\nd ci %s\ne ci 1\nf release\n' "$release" >"$place/packages.txt"
    printf '#!/bin/sh\nexit 1\n' >"$place/dpkg-query"
    cp "$place/dpkg-query" "$place/apt-get"
    cp "$place/dpkg-query" "$place/sudo"
    chmod +x "$place"/dpkg-query "$place"/apt-get "$place"/sudo
    PATH=$place:$PATH sh "$place/install-packages.sh" "$1"
    ended=$?
    rm -rf "$place"
    return "$ended"
}

# Where and in which language Wine is told to make a prefix that is named from the folder, for a test that
# runs in Chinese.
made_prefix() {
    place=$(mktemp -d)
    for program in wine wineboot wineserver; do
        # shellcheck disable=SC2016  # the written script expands it
        printf '#!/bin/sh\necho "$WINEPREFIX $LC_ALL" >>%s/told\n' "$place" >"$place/$program"
        chmod +x "$place/$program"
    done
    cp tools/wine/make-prefix.sh "$place/"
    (cd "$place" && PATH=$place:$PATH LC_ALL=zh_CN.UTF-8 sh ./make-prefix.sh build/template) &&
        sort -u "$place/told" | sed "s,^$place/,here/,"
    ended=$?
    rm -rf "$place"
    return "$ended"
}

# A night in which the commands only say how they ended: one is missing, one lies, one finds something.
nightly_of_stubs() {
    place=$(mktemp -d)
    mkdir -p "$place/tools/test"
    cp tools/test/nightly.sh "$place/tools/test/"
    cp tools/series.sh "$place/tools/"
    echo 'exit 0' >"$place/tools/install-packages.sh"
    cat >"$place/test" <<'TEXT'
case $1 in
mutate) exit 2 ;;
fuzz) printf '%s\n' '--- a page failed:' 'why' '7 passed, 1 failed'; exit 1 ;;
soak) echo "14 passed, 0 failed"; exit 1 ;;
portability) echo "30 passed, 0 failed" ;;
*) echo "0 passed, 0 failed" ;;
esac
TEXT
    sh "$place/tools/test/nightly.sh"
    ended=$?
    rm -rf "$place"
    return "$ended"
}

# What such a night prints after its last command.
end_of_a_bad_night() {
    nightly_of_stubs | sed -n '/^== What failed in .* fuzz$/,$p'
}

# Two paragraphs after the first: each command needs that the first has ended, and that the other is running.
series_of_paragraphs() {
    place=$(mktemp -d)
    mkdir -p "$place/tools"
    cp tools/series.sh "$place/tools/"
    cat >"$place/test" <<'TEXT'
touch "$1-has-begun"
case $1 in
first) sleep 0.3; touch first-has-ended ;;
left) other=right ;;
right) other=left ;;
esac
for _ in 1 2 3 4 5 6 7 8 9 10; do
    [ -z "${other:-}" ] || [ -e "$other-has-begun" ] || sleep 0.5
done
[ -e first-has-ended ] && [ -e "${other:-first}-has-begun" ] && echo "1 passed, 0 failed"
TEXT
    printf 'first\n\nleft\n\nright\n' | sh "$place/tools/series.sh" some
    ended=$?
    rm -rf "$place"
    return "$ended"
}

# fuzz_of_stubs FUZZER ARGUMENT...: ./test fuzz on one target, whose fuzzer is this script; '' for none. It
# then tells whether the corpus and the expected results are as they were.
fuzz_of_stubs() {
    place=$(mktemp -d)
    fuzzer=$place/build/host-asan/tests/fuzz_page
    mkdir -p "$place/tools/test" "$place/build/host-asan/tests" "$place/tests/fuzz/corpus/page"
    cp tools/test/fuzz.sh "$place/tools/test/"
    cp tools/progress.py "$place/tools/"
    cp tests/fuzz/CMakeLists.txt "$place/tests/fuzz/"
    echo 'exit 0' >"$place/tools/install-packages.sh"
    echo 'exit 0' >"$place/tools/build-quietly.sh"
    printf '#!/bin/sh\ntouch expected-results-written\n' >"$place/build/host-asan/tests/replay_corpora"
    [ -z "$1" ] || printf '#!/bin/sh\n%s\n' "$1" >"$fuzzer"
    chmod +x "$place"/build/host-asan/tests/*
    shift
    sh "$place/tools/test/fuzz.sh" "$@"
    ended=$?
    [ ! -e "$place/expected-results-written" ] || echo "the expected results were written anew"
    rm -rf "$place"
    return "$ended"
}
good_fuzzer='case $* in *-merge*) touch tests/fuzz/corpus/page/new ;; *) echo "stat::number_of_executed_units: 7" ;; esac'
nothing_is_rewritten() {
    printed=$(fuzz_of_stubs "$good_fuzzer")
    echo "$printed"
    case $printed in *'written anew'*) return 1 ;; esac
}

# short_fuzzer RUNS: a run of 1000 that ./test asks for, by a fuzzer that makes RUNS and ends well.
short_fuzzer() {
    place=$(mktemp -d)
    printf '#!/bin/sh\necho "#%s DONE cov: 1"\n' "$1" >"$place/fuzzer"
    chmod +x "$place/fuzzer"
    sh tests/fuzz/run-fuzzer.sh "$place/fuzzer" "$place" page "$place/findings" 1000 64
    ended=$?
    rm -rf "$place"
    return "$ended"
}

# coverage_of_stubs BUILD TESTS GCOVR: ./test coverage logic with these exit codes.
coverage_of_stubs() {
    place=$(mktemp -d)
    mkdir -p "$place/tools/test" "$place/build/host-coverage"
    cp tools/test/coverage.sh "$place/tools/test/"
    echo 'exit 0' >"$place/tools/install-packages.sh"
    echo "exit $1" >"$place/tools/build-quietly.sh"
    echo "raise SystemExit($2)" >"$place/tools/test/run_tests.py"
    printf '#!/bin/sh\nexit %s\n' "$3" >"$place/gcovr"
    chmod +x "$place/gcovr"
    PATH=$place:$PATH sh "$place/tools/test/coverage.sh" logic
    ended=$?
    rm -rf "$place"
    return "$ended"
}

# test_of_stubs BUILDS TESTS: ./test with a build that ends with the code BUILDS and tests that end with TESTS.
test_of_stubs() {
    place=$(mktemp -d)
    mkdir -p "$place/tools/test"
    cp test "$place/"
    echo 'exit 0' >"$place/tools/install-packages.sh"
    echo "exit $1" >"$place/tools/build-quietly.sh"
    printf 'import sys\nfor stage in sys.argv[3:]: print(stage)\nsys.exit(%s)\n' "$2" >"$place/tools/test/run_tests.py"
    "$place/test"
    ended=$?
    rm -rf "$place"
    return "$ended"
}

check "./run --help explains stories" 0 'SCENARIO' ./run --help
check "./run --list lists every story with its text" 0 '^all$' every_story_is_listed
check "./run refuses an unknown option" 2 'no option --sideways' ./run --sideways
check "./run alerts refuses an unknown form" 2 'there is no xml' ./run alerts xml
check "./run refuses an unknown story" 2 'no story never-told' ./run never-told
check "./run gallery refuses a scale that there is not" 2 'not 100' ./run gallery --dpi 100
check "./run gallery wants a folder" 2 'into needs a folder' ./run gallery --into
check "./run gallery refuses a language that the monitor does not speak" 2 'does not speak xx' ./run gallery --dpi 192 xx
check "./test --help explains itself" 0 'N passed, N failed' ./test --help
check "./test refuses what it does not know" 2 'no sideways' ./test sideways
check "./test fuzz passes when the fuzzer made runs" 0 '^1 passed, 0 failed$' fuzz_of_stubs "$good_fuzzer"
check "./test fuzz leaves the expected results to people" 0 'Look at the new inputs' nothing_is_rewritten
check "./test fuzz fails when a fuzzer is missing" 1 '^0 passed, 1 failed$' fuzz_of_stubs ''
check "./test fuzz fails when a fuzzer ends at once" 1 'after 0 runs' fuzz_of_stubs 'exit 0'
check "./test fuzz fails when a fuzzer makes no run" 1 '^0 passed, 1 failed$' \
    fuzz_of_stubs 'echo "stat::number_of_executed_units: 0"'
check "./test fuzz fails when a fuzzer ends badly" 1 'exit code 77 after 7 runs' \
    fuzz_of_stubs 'echo "stat::number_of_executed_units: 7"; exit 77'
check "./test fuzz fails when a fuzzer is killed" 1 'exit code 137' fuzz_of_stubs 'kill -9 $$'
check "./test fuzz fails when a corpus cannot be merged" 1 '^0 passed, 1 failed$' \
    fuzz_of_stubs 'case $* in *-merge*) exit 1 ;; *) echo "stat::number_of_executed_units: 7" ;; esac'
check "a fuzzer of ./test makes all its runs" 0 'page: 1000 runs' short_fuzzer 1000
check "a fuzzer of ./test that makes fewer runs has failed" 1 'only 999 of 1000' short_fuzzer 999
check "./test fuzz refuses a target that there is not" 2 'no target no-such' fuzz_of_stubs "$good_fuzzer" no-such
for minutes in many 0 -1 ''; do
    check "./test fuzz refuses '$minutes' minutes" 2 'minutes needs a number' \
        fuzz_of_stubs "$good_fuzzer" --minutes "$minutes"
done
for command in soak threads nightly; do
    check "./test $command refuses what it does not know" 2 'no --sideways' ./test "$command" --sideways
done
check "./test threads wants a number of rounds" 2 'rounds needs a number' ./test threads --rounds many
check "./test soak wants a number of jobs" 2 'jobs needs a number' ./test soak --jobs many
check "./test coverage passes when no limit is missed" 0 '^1 passed, 0 failed$' coverage_of_stubs 0 0 0
check "./test coverage fails when gcovr misses a limit" 1 '^0 passed, 1 failed$' coverage_of_stubs 0 0 2
check "./test coverage fails when its tests fail" 1 '^0 passed, 1 failed$' coverage_of_stubs 0 1 0
check "./test coverage fails when its build fails" 1 '^0 passed, 1 failed$' coverage_of_stubs 1 0 0
check "./test coverage refuses a scope that there is not" 2 'no sideways' ./test coverage sideways
check "./test fails when a build fails" 1 '^0 passed, 1 failed$' test_of_stubs 1 0
check "./test fails when a test fails" 1 '^host-asan  *-j' test_of_stubs 0 1
check "./test runs the tests of each preset" 0 '^windows -L system -j' test_of_stubs 0 0
check "a night goes on after a failure" 1 '^portability  *ok ' nightly_of_stubs
check "a night counts what failed" 1 '^51 passed, 3 failed$' nightly_of_stubs
check "a night tells at its end what failed" 0 '^--- a page failed:$' end_of_a_bad_night
check "a night does not believe a count against the exit code" 1 '^soak  *NOT OK .*exit code 1$' nightly_of_stubs
check "the paragraphs of a series after the first run at the same time" 0 '^3 passed, 0 failed$' series_of_paragraphs
check "the change log begins with the version of the project" 0 '^same$' the_change_log_has_the_version
check "packages are those of the purpose and of this release" 1 '^Installing: a b d f$' wanted_packages ci
check "a release needs no packages of the tests" 1 '^Installing: a f$' wanted_packages release
check "every package is listed with its purpose" 0 '^all$' every_package_has_a_purpose
check "a prefix is made where it is named from the folder, in one language for all" 0 \
    '^here/build/template C.UTF-8$' made_prefix
exit "$failed"
