#!/bin/sh
# row-of.sh LANGUAGE: prints the row of strings/languages.tsv for a language, which is named as there.
grep "^$1	" "$(dirname "$0")/../../strings/languages.tsv" || {
    echo "row-of.sh: the monitor does not speak $1; ./run languages lists what it speaks" >&2
    exit 2
}
