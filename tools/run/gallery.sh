#!/bin/sh
# usage: gallery [LANGUAGE...]   pictures of every alert (en zh_CN de ar he, or those named) in out/gallery/
# Plays the scenarios of scenarios/gallery on the real monitor in each language, and shows one alert of each
# template in two high-contrast schemes.
set -eu
cd "$(dirname "$0")/../.."
root=$(pwd)
[ $# -gt 0 ] || set -- en zh_CN de ar he
for language in "$@"; do
    sh tools/gallery/locale-of.sh "$language" >/dev/null
done

sh tools/build-player.sh
sh tools/build-quietly.sh windows alert_gallery

for language in "$@"; do
    sh tools/gallery/make-locale.sh "$(sh tools/gallery/locale-of.sh "$language")"
done
sh tools/gallery/make-locale.sh zh_CN.UTF-8

sh tools/wine/with-wine.sh "$root/build/wine-template" \
    sh tools/gallery/play.sh "$root/build/windows/bin" "$root/out/gallery" "$@"
sh tools/wine/with-wine.sh "$root/build/wine-template" \
    sh tools/gallery/high-contrast.sh "$root/build/windows/tests" "$root/out/gallery"
sh tools/gallery/make-page.sh "$root/out/gallery"
echo "Page: out/gallery/index.html"
