#!/usr/bin/python3
"""Makes the font in which Wine shows the scripts of all languages. Usage: make_font.py FOLDER

FOLDER gets BeamlineTestSans-Regular.ttf and -Bold.ttf: the font of the dialogs, and the letters of the
scripts that it lacks. Wine shapes a script only within one font: letters that come through a font link
stand side by side as they are. Height, widths and hints of the other letters stay, so that every layout
stays as it is.
"""

import logging
import subprocess
import sys
from concurrent.futures import ProcessPoolExecutor
from pathlib import Path
from tempfile import TemporaryDirectory

from fontTools.merge import Merger, Options
from fontTools.ttLib import TTFont
from fontTools.ttLib.scaleUpem import scale_upem

STRINGS = Path(__file__).resolve().parents[2] / "strings"
sys.path.insert(0, str(STRINGS))
# pylint: disable=wrong-import-position
import string_tables  # noqa: E402
import text_rules  # noqa: E402

NAME = "Beamline Test Sans"
# Wine takes these scripts through a font link all the same: it shapes nothing in them.
LINKED = "Noto Sans CJK"
WEIGHTS = {"Regular": 80, "Bold": 200}
NO_FEATURE = 0xFFFF
# Tables about one font as a whole, and those that belong to the hints of its letters.
NOT_MERGED = ("DSIG", "FFTM", "MATH", "gasp", "kern")
HINTS = ("cvt ", "fpgm", "prep")
NAMES_OF_FAMILY, STYLE_NAME, FULL_NAME, POSTSCRIPT_NAME = (1, 16), 2, 4, 6


def font_file(family, weight):
    """The file of a font; it is installed, because the build's check of letters needs it too."""
    pattern = f"{family}:weight={WEIGHTS[weight]}:slant=0"
    command = ("fc-list", "--format", "%{file}\\n", pattern)
    files = subprocess.run(command, capture_output=True, encoding="utf-8", check=True).stdout
    if not files:
        sys.exit(f"make_font.py: the font {family} {weight} is not installed")
    return files.splitlines()[0]


def prepared(source, target, units, is_first):
    """Brings a font into the form in which it can be merged with others."""
    font = TTFont(source)
    if not is_first:
        # Hints count the points of one size and call functions of their own font.
        for glyph in font["glyf"].keys():
            font["glyf"][glyph].removeHinting()
        scale_upem(font, units)
    for table in NOT_MERGED if is_first else NOT_MERGED + HINTS:
        if table in font:
            del font[table]
    for table in ("GSUB", "GPOS"):
        make_features_optional(font[table].table.ScriptList)
    font.save(target)


def make_features_optional(scripts):
    """The merger knows no required feature. An optional one of the same list does the same in Wine."""
    for script in scripts.ScriptRecord:
        languages = [record.LangSys for record in script.Script.LangSysRecord]
        for language in filter(None, [script.Script.DefaultLangSys, *languages]):
            if language.ReqFeatureIndex != NO_FEATURE:
                language.FeatureIndex.append(language.ReqFeatureIndex)
                language.FeatureCount = len(language.FeatureIndex)
                language.ReqFeatureIndex = NO_FEATURE


def rename(font, weight):
    for record in font["name"].names:
        if record.nameID in NAMES_OF_FAMILY:
            record.string = NAME
        elif record.nameID == STYLE_NAME:
            record.string = weight
        elif record.nameID == FULL_NAME:
            record.string = NAME if weight == "Regular" else f"{NAME} {weight}"
        elif record.nameID == POSTSCRIPT_NAME:
            record.string = f"{NAME.replace(' ', '')}-{weight}"


def keep_metrics(font, first):
    """The lines stay as high as those of the first font, whatever the others ask for."""
    for table, fields in {
        "hhea": ("ascent", "descent", "lineGap"),
        "OS/2": (
            "sTypoAscender sTypoDescender sTypoLineGap usWinAscent usWinDescent xAvgCharWidth "
            "fsSelection ulCodePageRange1 ulCodePageRange2"
        ).split(),
    }.items():
        for field in fields:
            setattr(font[table], field, getattr(first[table], field))


def make(folder, families, weight):
    sources = [font_file(family, weight) for family in families]
    first = TTFont(sources[0])
    with TemporaryDirectory() as work:
        files = [f"{work}/{number}.ttf" for number in range(len(sources))]
        for number, source in enumerate(sources):
            prepared(source, files[number], first["head"].unitsPerEm, number == 0)
        merged = Merger(options=Options()).merge(files)
    rename(merged, weight)
    keep_metrics(merged, first)
    merged.save(folder / f"{NAME.replace(' ', '')}-{weight}.ttf")


def main(folder):
    logging.disable(logging.WARNING)
    families = [language.font for language in string_tables.read_languages(STRINGS)]
    scripts = dict.fromkeys(font for font in families if font and not font.startswith(LINKED))
    with ProcessPoolExecutor() as pool:
        made = [
            pool.submit(make, Path(folder), [text_rules.DIALOG_FONT, *scripts], weight)
            for weight in WEIGHTS
        ]
        for result in made:
            result.result()


if __name__ == "__main__":
    main(sys.argv[1])
