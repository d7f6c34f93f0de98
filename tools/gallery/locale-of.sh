#!/bin/sh
# locale-of.sh LANGUAGE: prints the locale in which the monitor shows its texts in this language, which is
# named as in strings/languages.tsv.
row=$(grep "^$1	" "$(dirname "$0")/../../strings/languages.tsv") || {
    echo "locale-of.sh: the monitor does not speak $1; ./run languages lists what it speaks" >&2
    exit 2
}
printf '%s\n' "$row" | cut -f 5
