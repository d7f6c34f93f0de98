#!/bin/sh
# usage: gallery [LANGUAGE...]   every alert with its picture and facts (en zh_CN de ar he, or those named):
# usage:                     the page out/gallery/index.html
# usage: gallery --dpi NUMBER [LANGUAGE...]   adds pictures of a screen of this many dots per inch
# usage: gallery --into FOLDER [LANGUAGE...]   makes the page in another folder than out/gallery
# usage: gallery --all-languages   three alerts in every language, in out/gallery-languages/
# Plays the scenarios of scenarios/gallery on the real monitor in each language, and shows one alert of each
# template in two high-contrast schemes. The page also has the pictures that were there before.
set -eu
started=$(pwd)
cd "$(dirname "$0")/../.."
root=$(pwd)
[ "${1:-}" != --all-languages ] || exec sh tools/gallery/all-languages.sh
export BEAMLINE_ALL_SCRIPTS=1
out=$root/out/gallery
dpi=96
while :; do
    case ${1:-} in
    --dpi)
        case ${2:-} in
        96 | 120 | 144 | 168 | 192) dpi=$2 ;;
        *)
            echo "./run gallery: a screen has 96, 120, 144, 168 or 192 dots per inch, not ${2:-}" >&2
            exit 2
            ;;
        esac
        ;;
    --into)
        case ${2:-} in
        '')
            echo "./run gallery: --into needs a folder" >&2
            exit 2
            ;;
        /*) out=$2 ;;
        *) out=$started/$2 ;;
        esac
        ;;
    *) break ;;
    esac
    shift 2
done
export BEAMLINE_DPI="$dpi"
pictures=$out/$((dpi * 100 / 96))
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

# Each language has a prefix and a display of its own, so that several are played at once.
printf '%s\n' "$@" | xargs -n 1 -P "$(nproc)" sh tools/wine/with-wine.sh "$root/build/wine-template" \
    sh tools/gallery/play.sh "$root/build/windows/bin" "$pictures" all || {
    echo "./run gallery: not every language could be played; the page is left as it was" >&2
    exit 1
}
sh tools/wine/with-wine.sh "$root/build/wine-template" \
    sh tools/gallery/high-contrast.sh "$root/build/windows/tests" "$pictures"
sh tools/gallery/make-page.sh "$out"
echo "Page: $out/index.html"
