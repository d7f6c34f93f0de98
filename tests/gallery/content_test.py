"""What the page shows is what the program's tables and the pictures say."""
import json
import re

from opened_page import ALERTS, FACTS, FOLDER, ORDER, PICTURED, ROOT, TONER_LOW, OpenedPage, text_of
from selenium.webdriver.support.ui import Select

ON_FRAMES = ("title", "helpCaption")  # of windows; they say the same for all alerts
SCHEMES = ("high-contrast-black", "high-contrast-white")


def code_of(status):
    if "code" not in status:
        return f"subcode {status['subcode']}"
    return str(status["code"]) if status["last"] == status["code"] else f"{status['code']} to {status['last']}"


class Content(OpenedPage):
    def test_every_alert_stands_under_its_topic_with_its_english_headline(self):
        shown = [(section.find_element("tag name", "h2").text,
                  [card.text for card in section.find_elements("css selector", "h3")])
                 for section in self.all("main > section")]

        self.assertEqual(shown, [(topic["name"], [alert["headline"] for alert in FACTS["alerts"]
                                                  if alert["topic"] == topic["id"]]) for topic in FACTS["topics"]])

    def test_every_alert_shows_all_its_facts(self):
        for name in ORDER:
            alert = ALERTS[name]
            with self.subTest(alert=name):
                self.go(f"alert={name}")
                facts = self.one(".facts").get_attribute("textContent")
                self.assertEqual(self.heading(), alert["headline"])
                self.assertEqual(self.texts(".facts tbody th"),
                                 [code_of(status) for status in alert["statuses"]])
                for fact in (alert["printers"], *alert["rules"], alert["alertMask"]["text"],
                             *(status["name"] for status in alert["statuses"]),
                             *(action["does"][1:] for action in alert["actions"]),
                             *(action["control"] for action in alert["actions"]),
                             *(key for action in alert["actions"] for key in action["keys"]),
                             *(text for role, text in alert["texts"]["en"].items() if role not in ON_FRAMES)):
                    self.assertIn(fact, facts)

    def test_what_holds_for_all_alerts_and_what_has_none_stand_below_them(self):
        for view in ("", "view=everything"):
            with self.subTest(view=view):
                self.go(view)
                self.assertEqual(self.texts(".common li"), FACTS["always"])
                self.assertEqual(self.texts(".common tbody th"), [code_of(status) for status in FACTS["noAlert"]])

    def test_every_picture_is_shown_by_an_alert_and_every_alert_has_its_pictures(self):
        story = (ROOT / "scenarios" / "gallery" / "languages.txt").read_text(encoding="utf-8")
        of_other_page = re.findall(r"^screenshot (\S+)", story, re.MULTILINE)
        told = {name for alert in FACTS["alerts"] for name in alert["pictures"]} - set(of_other_page)
        for alert in FACTS["alerts"]:
            self.assertTrue(set(alert["pictures"]) & told, alert["id"])
        for scale, languages in PICTURED.items():
            for language in languages:
                with self.subTest(scale=scale, language=language):
                    self.assertEqual(sorted(file.stem for file in (FOLDER / scale / language).iterdir()),
                                     sorted(told))

    def test_every_picture_has_an_alternative_text_and_can_be_loaded(self):
        for view in ("", "view=everything", "view=contrast", f"alert={TONER_LOW}&view=languages", "search=toner",
                     "view=everything&language=ar", "view=everything&scale=200", "view=contrast&scale=200"):
            with self.subTest(view=view):
                self.go(view)
                self.driver.execute_script("for (const image of document.images) image.loading = 'eager'")
                self.until(lambda: self.driver.execute_script("return [...document.images].every(i => i.complete)"))
                pictures = self.driver.execute_script(
                    "return [...document.images].map(i => [i.getAttribute('src'), i.alt, i.naturalWidth, "
                    "Number(i.getAttribute('width'))])")
                self.assertTrue(pictures)
                self.assertEqual([source for source, alternative, width, told in pictures
                                  if not alternative or width == 0 or width != told], [])

    def test_pictures_of_one_alert_have_different_alternative_texts(self):
        for name in ORDER:
            self.go(f"alert={name}")
            alternatives = [image.get_attribute("alt") for image in self.all("main img")]
            self.assertEqual(len(set(alternatives)), len(alternatives), name)

    def test_both_high_contrast_schemes_are_shown(self):
        self.one("#contrast").click()
        self.until(lambda: self.heading() == "High contrast")

        shown = sorted(image.get_attribute("src").split(FOLDER.name + "/")[-1] for image in self.all("main img"))

        self.assertEqual(shown, sorted(str(file.relative_to(FOLDER)) for scheme in SCHEMES
                                       for file in (FOLDER / "100" / scheme).iterdir()))

    def test_the_pickers_offer_what_is_there(self):
        pictured = [option.get_attribute("value") for option in self.all("#language > option")]
        others = [option.get_attribute("value") for option in self.all("#language > optgroup > option")]

        self.assertEqual(pictured, PICTURED["100"])
        self.assertEqual(sorted(pictured + others), sorted(ALERTS[TONER_LOW]["texts"]))
        self.assertEqual([option.get_attribute("value") for option in self.all("#scale option")], list(PICTURED))
        self.assertIn("Deutsch – German", [option.text for option in self.all("#language option")])

    def test_another_language_changes_picture_and_texts(self):
        self.go(f"alert={TONER_LOW}")
        self.assertRegex(self.picture(), "^100/en/")
        self.assertIn(text_of(TONER_LOW, "en", "suppliesDetail"), self.one(".facts").text)

        self.choose("language", "de")

        self.assertRegex(self.picture(), "^100/de/")
        self.assertEqual(self.heading(), ALERTS[TONER_LOW]["headline"])
        self.assertEqual(self.one(".own").text, text_of(TONER_LOW, "de", "headline"))
        self.assertIn(text_of(TONER_LOW, "de", "suppliesDetail"), self.one(".facts").text)
        self.assertNotIn(text_of(TONER_LOW, "en", "suppliesDetail"), self.one(".facts").text)
        self.assertIn("German", self.one("main img").get_attribute("alt"))

    def test_another_scale_changes_the_picture(self):
        self.go(f"alert={TONER_LOW}")
        width = self.one("main img").size["width"]

        self.choose("scale", "200")

        self.assertRegex(self.picture(), "^200/en/")
        self.assertGreater(self.one("main img").size["width"], width)

    def test_a_language_without_pictures_has_its_texts_and_says_how_pictures_are_made(self):
        self.go(f"alert={TONER_LOW}")

        self.choose("language", "fr")

        self.assertRegex(self.picture(), "^100/en/")
        self.assertEqual(self.one(".own").text, text_of(TONER_LOW, "fr", "headline"))
        self.assertIn("no picture in French at 100 %", self.one(".substitute").text)
        self.assertIn("./run gallery fr makes it", self.one(".substitute").text)

    def test_a_scale_without_pictures_of_the_language_keeps_the_language(self):
        self.go(f"alert={TONER_LOW}&language=de&scale=200")

        self.assertRegex(self.picture(), "^100/de/")
        self.assertIn("./run gallery --dpi 192 de makes it", self.one(".substitute").text)

    def test_all_languages_are_a_grid_of_one_alert(self):
        self.go(f"alert={TONER_LOW}&view=languages")

        self.assertEqual(len(self.all(".cards > li")), len(ALERTS[TONER_LOW]["texts"]))
        self.assertEqual([image.get_attribute("src").split("/")[-2] for image in self.all("main img")],
                         PICTURED["100"])
        shown = self.one("main").text
        for said in ALERTS[TONER_LOW]["texts"].values():
            self.assertIn(said["headline"], shown)

    def test_texts_have_their_language_and_direction(self):
        self.go(f"alert={TONER_LOW}&language=ar")
        self.assertEqual([self.one(".own").get_attribute(name) for name in ("lang", "dir")], ["ar", "rtl"])
        self.go(f"alert={TONER_LOW}&language=zh_CN")
        self.assertEqual([self.one(".own").get_attribute(name) for name in ("lang", "dir")], ["zh-CN", "ltr"])

        self.assertEqual(self.one("html").get_attribute("lang"), "en")

    def test_pictures_that_wine_draws_otherwise_say_so(self):
        self.go(f"alert={TONER_LOW}&language=ar")
        self.assertIn("wrong order", self.one(".shown").text)

    def test_nothing_comes_from_outside(self):
        self.driver.get_log("performance")
        self.open("view=everything")

        events = [json.loads(entry["message"])["message"] for entry in self.driver.get_log("performance")]
        asked = [event["params"]["request"]["url"] for event in events
                 if event["method"] == "Network.requestWillBeSent"]
        self.assertGreater(len(asked), len(ORDER))
        self.assertEqual([address for address in asked if not address.startswith((FOLDER.as_uri(), "data:"))], [])

    def test_the_selected_language_is_the_one_of_the_address(self):
        self.open("language=ar&scale=200")
        self.assertEqual([Select(self.one(f"#{name}")).first_selected_option.get_attribute("value")
                          for name in ("language", "scale")], ["ar", "200"])
