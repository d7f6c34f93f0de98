#!/bin/sh
# make-locale.sh LOCALE: makes a locale in build/locales if it is not there yet. Wine takes the language of
# the system and of the user from two categories of the locale, and only if the locale exists.
set -eu
cd "$(dirname "$0")/../.."
folder=build/locales/$1
[ -d "$folder" ] && exit 0
mkdir -p build/locales
rm -rf "$folder.new"
# Some locales that Wine tells apart have one source: bs_BA and bs_BA@latin.
source=$(printf '%s' "$1" | sed 's/\.UTF-8//')
[ -f "/usr/share/i18n/locales/$source" ] || source=${source%@*}
localedef -i "$source" -f UTF-8 "$folder.new"
mv "$folder.new" "$folder"
