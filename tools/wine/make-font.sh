#!/bin/sh
# make-font.sh DIR: makes the font of make_font.py in DIR, which takes half a minute. Does nothing when it is
# there already; safe to call from several tests at once.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$1"
exec 9>"$1/.lock"
flock 9
# A font of another version of the program, or of other languages, is made anew.
made_by=$(cat "$here/make_font.py" "$here/../../strings/languages.tsv" | cksum)
[ "$(cat "$1/.complete" 2>/dev/null)" = "$made_by" ] && exit 0
PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 "$here/make_font.py" "$1"
echo "$made_by" >"$1/.complete"
