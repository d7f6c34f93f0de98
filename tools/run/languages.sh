#!/bin/sh
# usage: languages [--merge]   a table of the languages; --merge brings a changed English text into all of them
set -eu
cd "$(dirname "$0")/../.."
sh tools/install-packages.sh run
PYTHONDONTWRITEBYTECODE=1 exec /usr/bin/python3 strings/languages.py "$@"
