"""Words and status codes are found in every language."""
import unicodedata

from opened_page import ALERTS, FACTS, TONER_LOW, TONER_LOW_STATUS, OpenedPage, text_of
from selenium.webdriver.common.keys import Keys

CHINESE_TONER = "碳粉"
NOWHERE = "xyzzy"


class Search(OpenedPage):
    def found(self):
        return [link.get_attribute("textContent") for link in self.all(".hits h2 a")]

    def test_toner_finds_the_alerts_about_it_first(self):
        self.search("toner")

        named = [alert["headline"] for alert in ALERTS.values() if "toner" in alert["headline"].lower()]
        self.assertGreaterEqual(len(named), 2)
        self.assertEqual(sorted(self.found()[:len(named)]), sorted(named))

    def test_a_status_code_finds_its_alert(self):
        self.search(TONER_LOW_STATUS)

        self.assertEqual(self.found(), [alert["headline"] for alert in ALERTS.values() if any(
            str(status.get("code")) == TONER_LOW_STATUS for status in alert["statuses"])])
        self.assertIn(ALERTS[TONER_LOW]["headline"], self.found())

    def test_the_name_of_a_status_finds_its_alert(self):
        name = ALERTS[TONER_LOW]["statuses"][0]["name"]
        self.search(name)
        self.assertIn(f"Status: {TONER_LOW_STATUS} {name}", self.one(".hits").text)

    def test_a_chinese_word_finds_the_alerts_that_say_it(self):
        self.search(CHINESE_TONER)

        self.assertIn(ALERTS[TONER_LOW]["headline"], self.found())
        self.assertIn(CHINESE_TONER, self.texts(".hits mark"))
        self.assertIn("Chinese (Simplified), headline", self.one(".hits").text)

    def test_words_of_a_language_without_pictures_are_found(self):
        self.search(text_of(TONER_LOW, "fr", "headline").upper())

        self.assertEqual(self.found()[0], ALERTS[TONER_LOW]["headline"])
        self.assertIn("French, headline", self.one(".hits").text)

    def test_accents_case_and_the_order_of_words_do_not_matter(self):
        words = text_of(TONER_LOW, "vi", "headline").rstrip(".").upper().split()
        plain = "".join(letter for letter in unicodedata.normalize("NFD", " ".join(reversed(words)))
                        if not unicodedata.combining(letter))
        self.assertGreater(len(words), 1)
        self.assertNotEqual(plain, " ".join(reversed(words)))

        self.search(plain)

        self.assertIn(ALERTS[TONER_LOW]["headline"], self.found())

    def test_a_number_within_a_range_of_statuses_is_found(self):
        alert, status = next((alert, status) for alert in ALERTS.values() for status in alert["statuses"]
                             if status.get("last", 0) > status.get("code", 0) + 1)
        self.search(str(status["code"] + 1))
        self.assertIn(alert["headline"], self.found())

    def test_a_status_that_opens_no_alert_is_found_as_such(self):
        self.search(str(FACTS["noAlert"][0]["code"]))

        self.assertEqual(self.found(), [])
        self.assertEqual([heading.text for heading in self.all("main h2")], ["Statuses that open no alert"])
        self.assertIn(FACTS["noAlert"][0]["name"], self.one("main table").text)

    def test_what_was_found_in_a_language_opens_in_it(self):
        self.search(text_of(TONER_LOW, "de", "headline"))
        self.one(".hits h2 a").click()
        self.until(lambda: self.heading() == ALERTS[TONER_LOW]["headline"])

        self.assertEqual(self.address(), f"alert={TONER_LOW}&language=de")
        self.assertEqual(self.one("#search").get_attribute("value"), "")

    def test_what_is_nowhere_is_said(self):
        self.search(NOWHERE)

        self.assertEqual(self.heading(), f"Nothing found for “{NOWHERE}”")
        self.assertEqual(self.texts("#found"), [f"Nothing found for “{NOWHERE}”"])

    def test_the_field_keeps_the_focus_and_what_was_typed(self):
        self.search("toner ")

        self.assertEqual(self.driver.switch_to.active_element.get_attribute("id"), "search")
        self.assertEqual(self.one("#search").get_attribute("value"), "toner ")

    def test_an_emptied_field_leads_back(self):
        self.go(f"alert={TONER_LOW}")
        self.search("x" + Keys.BACKSPACE)
        self.assertEqual(self.heading(), ALERTS[TONER_LOW]["headline"])

    def test_a_search_is_one_step_to_go_back_over(self):
        self.go(f"alert={TONER_LOW}")
        self.search("paper")
        self.driver.back()
        self.until(lambda: self.heading() == ALERTS[TONER_LOW]["headline"])

        self.assertEqual(self.one("#search").get_attribute("value"), "")
