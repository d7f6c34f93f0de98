#!/bin/sh
# usage: gallery [LANGUAGE...]   pictures of every alert (en zh_CN de ar he, or those named) in out/gallery/
# usage: gallery --dpi NUMBER [LANGUAGE...]   the same on a screen of this many dots per inch, in
# usage:                     out/gallery-NUMBER/
# usage: gallery --all-languages   three alerts in every language, in out/gallery-languages/
# Plays the scenarios of scenarios/gallery on the real monitor in each language, and shows one alert of each
# template in two high-contrast schemes.
set -eu
cd "$(dirname "$0")/../.."
root=$(pwd)
[ "${1:-}" != --all-languages ] || exec sh tools/gallery/all-languages.sh
export BEAMLINE_ALL_SCRIPTS=1
out=out/gallery
if [ "${1:-}" = --dpi ]; then
    case ${2:-} in
    96 | 120 | 144 | 168 | 192) ;;
    *)
        echo "./run gallery: a screen has 96, 120, 144, 168 or 192 dots per inch, not ${2:-}" >&2
        exit 2
        ;;
    esac
    export BEAMLINE_DPI="$2"
    out=out/gallery-$2
    shift 2
fi
[ $# -gt 0 ] || set -- en zh_CN de ar he
for language in "$@"; do
    sh tools/gallery/row-of.sh "$language" >/dev/null
done

sh tools/build-player.sh
sh tools/build-quietly.sh windows alert_gallery

for language in "$@"; do
    sh tools/gallery/make-locale.sh "$(sh tools/gallery/row-of.sh "$language" | cut -f 5)"
done
sh tools/gallery/make-locale.sh zh_CN.UTF-8

sh tools/wine/with-wine.sh "$root/build/wine-template" \
    sh tools/gallery/play.sh "$root/build/windows/bin" "$root/$out" all "$@"
sh tools/wine/with-wine.sh "$root/build/wine-template" \
    sh tools/gallery/high-contrast.sh "$root/build/windows/tests" "$root/$out"
sh tools/gallery/make-page.sh "$root/$out"
echo "Page: $out/index.html"
