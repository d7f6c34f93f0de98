#!/bin/sh
# play-all-test.sh BIN: a scenario that cannot be played fails the suite and is named, and its log is
# shown. Within with-wine.sh.
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
