#!/bin/sh
# play-all.sh BIN FOLDER [PART PARTS]: plays every scenario of a folder, or its PART of so many parts, within
# with-wine.sh, one after the other, because they share a desktop. Prints one line for each scenario, and the
# timeline of those that fail.
set -eu
bin=$1
folder=$2
part=${3:-1}
parts=${4:-1}
here=$(cd "$(dirname "$0")" && pwd)
log=$(mktemp)
trap 'rm -f "$log"' EXIT

failed=0
number=0
for scenario in "$folder"/*.txt; do
    number=$((number + 1))
    [ $((number % parts)) -eq $((part % parts)) ] || continue
    name=$(basename "$scenario" .txt)
    begin=$(date +%s%N)
    if sh "$here/play.sh" "$bin" "$scenario" >"$log" 2>&1; then
        printf 'ok scenario %s (%d ms)\n' "$name" $((($(date +%s%N) - begin) / 1000000))
    else
        echo "not ok scenario $name"
        failed=1
        cat "$log"
    fi
done
exit "$failed"
