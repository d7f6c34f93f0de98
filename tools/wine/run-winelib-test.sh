#!/bin/sh
# run-winelib-test.sh PROGRAM.exe ARGS...: as run-test.sh, for a program of the preset winelib: with the
# sanitizers' libraries before all others. Within with-wine.sh.
set -u
here=$(cd "$(dirname "$0")" && pwd)
program=$1
shift

# The desktop is a process of its own, which does not start with those libraries: it goes first.
wine explorer </dev/null >/dev/null 2>&1 &
tries=0
until xwininfo -root -tree 2>/dev/null | grep -q 'Wine desktop'; do
    tries=$((tries + 1))
    [ "$tries" -lt 600 ] || { echo "run-winelib-test.sh: the desktop did not start"; exit 1; }
    sleep 0.1
done

# Where Wine finds libraries of this kind beside the program.
WINEDLLPATH=$(cd "$(dirname "$program")" && pwd)
# Leaks would be Wine's own, and the stack for signals is Wine's, too.
ASAN_OPTIONS=detect_leaks=0:use_sigaltstack=0:strict_string_checks=1:check_initialization_order=1
UBSAN_OPTIONS=print_stacktrace=1
export WINEDLLPATH ASAN_OPTIONS UBSAN_OPTIONS
LD_PRELOAD="$(g++ -print-file-name=libasan.so) $(g++ -print-file-name=libubsan.so)" \
    sh "$here/run-test.sh" "$program.so" "$@"
