#!/bin/sh
# usage: release   makes the release twice, compares byte by byte, tests its files and their installation
set -u
root=$(cd "$(dirname "$0")/../.." && pwd)
cd "$root" || exit 1
{ sh tools/install-packages.sh release && ./release --check && sh tools/wine/make-prefix.sh build/wine-template; } || {
    echo "0 passed, 1 failed"
    exit 1
}
exec env PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 tests/release/run_all.py
