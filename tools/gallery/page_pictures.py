#!/usr/bin/env python3
"""page_pictures.py FOLDER OUT: pictures of the page FOLDER/index.html in a wide and a narrow window, for the
documentation."""
import pathlib
import sys

import browser

VIEWS = (("catalogue", 1400, 900, "alert=toner-low&language=de"), ("catalogue-all", 1400, 900, ""),
         ("catalogue-phone", 390, 844, "alert=toner-low&language=zh_CN"))

folder, out = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
with browser.browser() as driver:
    for name, width, height, view in VIEWS:
        browser.set_window(driver, width, height)
        driver.get("about:blank")
        driver.get(f"{(folder / 'index.html').as_uri()}#{view}")
        driver.save_screenshot(str(out / f"{name}.png"))
