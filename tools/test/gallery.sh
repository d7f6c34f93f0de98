#!/bin/sh
# usage: gallery   the page of all alerts in Chromium, with the pictures of four languages, one of them also at 200 %
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
page=$root/build/gallery
rm -rf "$page"
{ sh tools/install-packages.sh ci && ./run gallery --into "$page" en de zh_CN ar &&
    ./run gallery --into "$page" --dpi 192 en && ./run alerts json >"$page/facts.json"; } || {
    echo "0 passed, 1 failed"
    exit 1
}
exec env PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 tests/gallery/run_all.py "$page" "$page/facts.json"
