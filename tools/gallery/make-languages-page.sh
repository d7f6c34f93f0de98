#!/bin/sh
# make-languages-page.sh FOLDER ROWS: makes a web page of the pictures in FOLDER/LANGUAGE, with a row for each
# language of the file ROWS, which has rows of strings/languages.tsv.
set -eu
notes=$(cd "$(dirname "$0")" && pwd)/shaped-wrongly.tsv
folder=$1
rows=$2
tab=$(printf '\t')
{
    cat <<'HTML'
<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Three alerts in every language of the Beamline K7400 status monitor</title>
<style>
body { font-family: sans-serif; margin: 2em; background: #fff; color: #222; }
section { display: flex; flex-wrap: wrap; gap: 1em; align-items: flex-start; }
h2 { margin: 1.5em 0 0.3em; font-size: 1.1em; }
p { margin: 0 0 0.5em; max-width: 50em; }
</style>
</head>
<body>
<h1>Three alerts in every language of the Beamline K7400 status monitor</h1>
<p>Toner that runs low, the second sides of a manual two-sided job, and the check of a new cartridge. The first
two come on every system, the third where the system is Chinese, whatever the language of the user is.</p>
HTML
    while IFS=$tab read -r language _ english own _; do
        code=$(printf '%s\n' "$language" | sed 's/_/-/; s/@latin/-Latn/')
        echo "<h2 id=\"$code\"><span lang=\"$code\">$own</span> &ndash; $english</h2>"
        sed -n "s|^$language$tab\\(.*\\)|<p>Under Wine: \\1</p>|p" "$notes"
        echo "<section>"
        for picture in "$folder/$language"/*.png; do
            # Pictures at 200 % take the room of the others; a click shows all their dots.
            width=$(identify -format %w "$picture")
            file=$language/${picture##*/}
            [ "$width" -lt 1000 ] || width=$((width / 2))
            echo "<a href=\"$file\"><img src=\"$file\" width=\"$width\" alt=\"${picture##*/}\" loading=\"lazy\"></a>"
        done
        echo "</section>"
    done <"$rows"
    echo "</body>"
    echo "</html>"
} >"$folder/index.html"
