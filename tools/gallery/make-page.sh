#!/bin/sh
# make-page.sh FOLDER: makes the page FOLDER/index.html of the pictures in FOLDER and of the facts of the code.
set -eu
cd "$(dirname "$0")/../.."
facts=$(mktemp)
trap 'rm -f "$facts"' EXIT
./run alerts json >"$facts"
python3 tools/gallery/make_page.py "$facts" "$1"
