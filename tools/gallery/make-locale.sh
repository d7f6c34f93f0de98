#!/bin/sh
# make-locale.sh LOCALE: makes a locale in build/locales if it is not there yet. Wine takes the language of
# the system and of the user from the names of two categories of the locale, and only if the locale exists.
# What the locale says is of no use to it, so all are the one that every system has.
set -eu
cd "$(dirname "$0")/../.."
mkdir -p build/locales
ln -sfn /usr/lib/locale/C.utf8 "build/locales/$1"
