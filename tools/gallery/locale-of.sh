#!/bin/sh
# locale-of.sh LANGUAGE: prints the locale in which the monitor shows its texts in this language.
case $1 in
en) echo en_US ;;
zh) echo zh_CN ;;
de) echo de_DE ;;
ar) echo ar_SA ;;
he) echo he_IL ;;
*)
    echo "locale-of.sh: the monitor does not speak $1; it speaks en, zh, de, ar and he" >&2
    exit 2
    ;;
esac
