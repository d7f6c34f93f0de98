#!/bin/sh
# usage: static [--all] [PATH...]   layout, second compiler, cppcheck and clang-tidy on what changed
set -u
tools=$(dirname "$0")/..
sh "$tools/install-packages.sh" ci || { echo "0 passed, 1 failed"; exit 1; }
exec "$tools/check_static.py" --jobs "$(nproc)" "$@"
