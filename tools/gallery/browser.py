"""Chromium without a window, with a profile of its own that is removed afterwards."""
import contextlib
import os
import tempfile

from selenium import webdriver
from selenium.webdriver.chrome.service import Service

DRIVER = "/usr/bin/chromedriver"


@contextlib.contextmanager
def browser():
    with tempfile.TemporaryDirectory(prefix="beamline-browser.", ignore_cleanup_errors=True) as profile:
        options = webdriver.ChromeOptions()
        for argument in ("--headless=new", "--disable-gpu", "--disable-dev-shm-usage", "--hide-scrollbars",
                         f"--user-data-dir={profile}"):
            options.add_argument(argument)
        if os.geteuid() == 0:
            options.add_argument("--no-sandbox")  # Chromium's own has no use for root.
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        driver = webdriver.Chrome(service=Service(DRIVER), options=options)
        try:
            yield driver
        finally:
            driver.quit()


def set_window(driver, width, height=900, density=1):
    """Gives the page a window of this size, also one that is narrower than the browser's own may be."""
    driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride",
                           {"width": width, "height": height, "deviceScaleFactor": density, "mobile": False})


def set_media(driver, media="", scheme="light"):
    driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                           {"media": media, "features": [{"name": "prefers-color-scheme", "value": scheme}]})
