#!/usr/bin/env python3
"""make_page.py FACTS FOLDER: makes FOLDER/index.html, the catalogue of all alerts.

FACTS is what alert_facts prints. FOLDER holds pictures as SCALE/LANGUAGE/NAME.png, SCALE in percent; whatever
scales and languages are there, the page offers. Beside the languages of strings/languages.tsv a scale may have
folders of high-contrast schemes. Everything but the pictures is within the page, because a browser lets a page
that was opened from a folder read no other files.
"""
import json
import pathlib
import struct
import sys

HERE = pathlib.Path(__file__).resolve().parent
LANGUAGES = HERE.parent.parent / "strings" / "languages.tsv"
NOTES = HERE / "shaped-wrongly.tsv"
RIGHT_TO_LEFT = ("ar", "he")
FIRST_BYTES = 24  # of a PNG file: signature, then the header with width and height at its end


def rows_of(table):
    lines = table.read_text(encoding="utf-8").splitlines()
    return [line.split("\t") for line in lines if line and not line.startswith("#")]


def tag_of(language):
    """The name of a language as web pages write it."""
    return language.replace("_", "-").replace("@latin", "-Latn")


def languages():
    notes = dict(rows_of(NOTES))
    return [{"id": row[0], "tag": tag_of(row[0]), "english": row[2], "own": row[3],
             "direction": "rtl" if row[0] in RIGHT_TO_LEFT else "ltr", "note": notes.get(row[0], "")}
            for row in rows_of(LANGUAGES)]


def size_of(picture):
    with picture.open("rb") as file:
        return struct.unpack(">II", file.read(FIRST_BYTES)[16:])


def pictures_in(folder):
    """The size of every picture, by scale, language and name."""
    return {int(scale.name): {language.name: {picture.stem: size_of(picture)
                                              for picture in sorted(language.glob("*.png"))}
                              for language in sorted(scale.iterdir()) if language.is_dir()}
            for scale in sorted(folder.iterdir()) if scale.name.isdigit()}


def page(facts, pictures):
    data = {**facts, "languages": languages(), "pictures": pictures}
    # A "<" could end the script that holds the data; in JSON it only stands within texts.
    embedded = json.dumps(data, ensure_ascii=False, separators=(",", ":")).replace("<", "\\u003c")
    made = (HERE / "page.html").read_text(encoding="utf-8")
    for mark, content in (("/* page.css */", (HERE / "page.css").read_text(encoding="utf-8")),
                          ("/* page.js */", (HERE / "page.js").read_text(encoding="utf-8")),
                          ("/* data */", embedded)):
        before, after = made.split(mark)
        made = before + content + after
    return made


def main():
    facts, folder = json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8")), pathlib.Path(sys.argv[2])
    pictures = pictures_in(folder)
    if not any(pictures.values()):
        sys.exit(f"make_page.py: there are no pictures in {folder}; ./run gallery makes them")
    (folder / "index.html").write_text(page(facts, pictures), encoding="utf-8")


if __name__ == "__main__":
    main()
