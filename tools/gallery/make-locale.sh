#!/bin/sh
# make-locale.sh LOCALE: makes a locale in build/locales, once. Wine takes the language of the system
# from one category and that of the user from another, and both only from locales that exist.
set -eu
cd "$(dirname "$0")/../.."
folder=build/locales/$1.UTF-8
[ -d "$folder" ] && exit 0
mkdir -p build/locales
rm -rf "$folder.new"
localedef -i "$1" -f UTF-8 "$folder.new"
mv "$folder.new" "$folder"
