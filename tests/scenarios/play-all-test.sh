#!/bin/sh
# play-all-test.sh BIN: a scenario that cannot be played fails the suite and is named, its log is shown, and
# no scenario is left out. Within with-wine.sh.
set -u
here=$(cd "$(dirname "$0")" && pwd)
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
echo 'status seven' >"$folder/wrong.txt"
if printed=$(sh "$here/play-all.sh" "$1" "$folder" 2>&1 </dev/null); then
    echo "not ok a failed scenario fails the suite"
    exit 1
fi
echo "ok a failed scenario fails the suite"
case $printed in
*'not ok scenario wrong'*'wrong.txt:1: status: '*) echo "ok a failed scenario is named and explained" ;;
*)
    echo "not ok a failed scenario is named and explained"
    printf '%s\n' "$printed" | sed 's/^not ok/(not ok)/'
    exit 1
    ;;
esac
cp "$folder/wrong.txt" "$folder/also-wrong.txt"
cp "$folder/wrong.txt" "$folder/at-last.txt"
played=$(for part in 1 2; do
    sh "$here/play-all.sh" "$1" "$folder" "$part" 2 2>&1 </dev/null | grep '^not ok' | sort | paste -sd ,
done)
if [ "$played" = "not ok scenario also-wrong,not ok scenario wrong
not ok scenario at-last" ]; then
    echo "ok two parts play each scenario once"
else
    echo "not ok two parts play each scenario once"
    printf '%s\n' "$played" | sed 's/^not ok/(not ok)/'
    exit 1
fi
