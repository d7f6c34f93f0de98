"""The page in a real browser, for the tests of this folder."""
import json
import os
import pathlib
import sys
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "tools" / "gallery"))
import browser  # noqa: E402
from selenium.webdriver.common.by import By  # noqa: E402
from selenium.webdriver.support.ui import Select, WebDriverWait  # noqa: E402

FOLDER = pathlib.Path(os.environ["BEAMLINE_PAGE"])
FACTS = json.loads(pathlib.Path(os.environ["BEAMLINE_FACTS"]).read_text(encoding="utf-8"))
ALERTS = {alert["id"]: alert for alert in FACTS["alerts"]}
# The alerts as the page goes through them.
ORDER = [alert["id"] for topic in FACTS["topics"] for alert in FACTS["alerts"] if alert["topic"] == topic["id"]]
# The languages that tools/test/gallery.sh makes pictures of, by scale, in the order of the list of languages.
PICTURED = {"100": ["en", "zh_CN", "ar", "de"], "200": ["en"]}
TONER_LOW, TONER_LOW_STATUS = "toner-low", "10209"

WIDE, NARROW = 1400, 390
SECONDS_TO_CHANGE = 10


def text_of(alert, language, part):
    return ALERTS[alert]["texts"][language][part]


class OpenedPage(unittest.TestCase):
    """Each test begins with the page just opened in a wide window, and ends with nothing logged."""

    @classmethod
    def setUpClass(cls):
        cls.driver = cls.enterClassContext(browser.browser())

    def setUp(self):
        browser.set_window(self.driver, WIDE)
        browser.set_media(self.driver)
        self.driver.get_log("browser")
        self.open("")

    def tearDown(self):
        self.assertEqual([entry["message"] for entry in self.driver.get_log("browser")], [],
                         "the browser has complained")

    def open(self, view):
        """Opens the page anew at an address."""
        self.driver.get("about:blank")
        self.driver.get(f"{(FOLDER / 'index.html').as_uri()}#{view}")

    def go(self, view):
        """Goes to another address within the page."""
        self.driver.execute_async_script(
            "const [view, done] = arguments; if (location.hash.slice(1) === view) done();"
            "else { addEventListener('hashchange', () => setTimeout(done), { once: true }); location.hash = view; }",
            view)

    def until(self, condition):
        WebDriverWait(self.driver, SECONDS_TO_CHANGE, 0.02).until(lambda _: condition())

    def all(self, selector):
        return self.driver.find_elements(By.CSS_SELECTOR, selector)

    def one(self, selector):
        return self.driver.find_element(By.CSS_SELECTOR, selector)

    def texts(self, selector):
        return self.driver.execute_script(
            "return [...document.querySelectorAll(arguments[0])].map(element => element.textContent)", selector)

    def heading(self):
        return self.texts("h1")[0]

    def address(self):
        return self.driver.execute_script("return location.hash.slice(1)")

    def picture(self):
        """The file of the first picture, from the page's folder."""
        return self.one("main img").get_attribute("src").split(FOLDER.name + "/")[-1]

    def choose(self, picker, value):
        Select(self.one(f"#{picker}")).select_by_value(value)

    def search(self, words):
        self.one("#search").send_keys(words)

    def press(self, key):
        self.one("body").send_keys(key)
