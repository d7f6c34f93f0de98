#!/usr/bin/env python3
"""What tools/gallery/make_page.py puts into the page. What the page does with it is tested in tests/gallery."""
import json
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest

from print_each_case import run

PROGRAM = pathlib.Path(__file__).resolve().parents[2] / "tools" / "gallery" / "make_page.py"
FACTS = {"topics": [], "alerts": [{"headline": 'Toner </script> "low" /* page.js */ 碳粉'}], "noAlert": []}


class Catalogue(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)
        (self.folder / "facts.json").write_text(json.dumps(FACTS), encoding="utf-8")

    def picture(self, place, width, height):
        """The beginning of a PNG file, which says how big it is."""
        file = self.folder / "page" / place
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(b"\x89PNG\r\n\x1a\n" + struct.pack(">I4sII", 13, b"IHDR", width, height))

    def make(self):
        (self.folder / "page").mkdir(exist_ok=True)
        return subprocess.run([sys.executable, PROGRAM, self.folder / "facts.json", self.folder / "page"], text=True,
                              stdin=subprocess.DEVNULL, capture_output=True, check=False)

    def data(self):
        """What a browser finds in the page."""
        self.assertEqual(self.make().returncode, 0)
        page = (self.folder / "page" / "index.html").read_text(encoding="utf-8")
        return json.loads(re.search(r'<script type="application/json" id="data">(.*?)</script>', page, re.DOTALL)[1])

    def test_texts_with_marks_of_a_page_stay_texts(self):
        self.picture("100/en/a.png", 1, 1)
        self.assertEqual(self.data()["alerts"], FACTS["alerts"])

    def test_whatever_scales_and_languages_are_there_are_offered(self):
        self.picture("200/de/toner.png", 1506, 1060)
        self.picture("100/de/toner.png", 753, 530)
        self.picture("100/ar/toner.png", 754, 531)
        (self.folder / "page" / "older").mkdir()

        self.assertEqual(self.data()["pictures"], {"100": {"ar": {"toner": [754, 531]}, "de": {"toner": [753, 530]}},
                                                   "200": {"de": {"toner": [1506, 1060]}}})

    def test_languages_have_their_names_tags_and_directions(self):
        self.picture("100/en/a.png", 1, 1)
        languages = {language["id"]: language for language in self.data()["languages"]}

        self.assertEqual([languages["sr@latin"][key] for key in ("tag", "english", "own", "direction")],
                         ["sr-Latn", "Serbian (Latin)", "Srpski", "ltr"])
        self.assertEqual(languages["zh_CN"]["tag"], "zh-CN")
        self.assertEqual([id for id, language in languages.items() if language["direction"] == "rtl"], ["ar", "he"])
        self.assertIn("wrong order", languages["ar"]["note"])
        self.assertEqual(languages["de"]["note"], "")

    def test_a_folder_without_pictures_says_how_they_are_made(self):
        made = self.make()
        self.assertEqual(made.returncode, 1)
        self.assertIn("./run gallery makes them", made.stderr)
        self.assertFalse((self.folder / "page" / "index.html").exists())


if __name__ == "__main__":
    sys.exit(run(sys.modules[__name__]))
