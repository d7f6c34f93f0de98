#!/bin/sh
# usage: static [--all] [PATH...]   layout, second compiler, cppcheck and clang-tidy on what changed
set -u
exec "$(dirname "$0")/../check_static.py" --jobs "$(nproc)" "$@"
