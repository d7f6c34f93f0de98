#!/bin/sh
# play.sh BIN JOBS RECORDS: plays the scenarios of this folder on the programs of BIN, within with-wine.sh,
# with at least so many jobs and records. One line for each, its table of gauges before it, and the whole
# timeline of one that fails.
set -eu
bin=$1 jobs=$2 records=$3
here=$(cd "$(dirname "$0")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failed=0

# soak NAME FEWEST ROUNDS: fewer rounds, as the scenario is written with, would prove nothing.
soak() {
    rounds=$(($3 > $2 ? $3 : $2))
    sed "s/^repeat $2\$/repeat $rounds/" "$here/$1.txt" >"$folder/$1.txt"
    grep -qx "repeat $rounds" "$folder/$1.txt"
    begin=$(date +%s)
    ended=0
    sh "$here/../scenarios/play.sh" "$bin" "$folder/$1.txt" --timeout 60 >"$folder/log" 2>&1 || ended=$?
    # The last line as well: a program that crashes under Wine can end with exit code 0.
    if [ "$ended" -eq 0 ] && tail -n 1 "$folder/log" | grep -q 'all as expected'; then
        sed -n '/^ *round  *handles/,$p' "$folder/log"
        echo "ok soak $1: $rounds rounds in $(($(date +%s) - begin)) s"
    else
        cat "$folder/log"
        echo "not ok soak $1: $rounds rounds, exit code $ended"
        failed=1
    fi
}

soak long-life 20 $((records / 412))
soak many-jobs 5 $((jobs / 4))
exit "$failed"
