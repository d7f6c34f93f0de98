#!/bin/sh
# make-page.sh FOLDER: makes a web page of all pictures, and for each language a contact sheet of the
# pictures in FOLDER/LANGUAGE.
set -eu
cd "$1"
columns=5
width=300

for folder in */; do
    language=${folder%/}
    montage -font DejaVu-Sans -pointsize 12 -label '%t' "$language"/*.png -tile "${columns}x" \
        -geometry "${width}x+8+8" -background white "contact-sheet-$language.png"
done

{
    cat <<'HTML'
<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Every alert of the Beamline K7400 status monitor</title>
<style>
body { font-family: sans-serif; margin: 2em; background: #fff; color: #222; }
section { display: flex; flex-wrap: wrap; gap: 1.5em; align-items: flex-start; }
figure { margin: 0; }
figcaption { font-size: 0.8em; padding-top: 0.3em; }
img { max-width: 760px; height: auto; }
</style>
</head>
<body>
<h1>Every alert of the Beamline K7400 status monitor</h1>
HTML
    for folder in */; do
        language=${folder%/}
        echo "<h2 id=\"$language\">$language</h2>"
        echo "<p><a href=\"contact-sheet-$language.png\">Contact sheet</a></p>"
        echo "<section>"
        for picture in "$language"/*.png; do
            name=$(basename "$picture" .png)
            echo "<figure><img src=\"$picture\" alt=\"$name\" loading=\"lazy\">" \
                "<figcaption>$name</figcaption></figure>"
        done
        echo "</section>"
    done
    echo "</body>"
    echo "</html>"
} >index.html
