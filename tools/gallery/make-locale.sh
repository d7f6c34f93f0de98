#!/bin/sh
# make-locale.sh LOCALE: makes a locale in build/locales if it is not there yet. Wine takes the language of
# the system and of the user from two categories of the locale, and only if the locale exists.
set -eu
cd "$(dirname "$0")/../.."
folder=build/locales/$1.UTF-8
[ -d "$folder" ] && exit 0
mkdir -p build/locales
rm -rf "$folder.new"
localedef -i "$1" -f UTF-8 "$folder.new"
mv "$folder.new" "$folder"
