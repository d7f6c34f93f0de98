"""Every view has an address, and the keyboard goes through the alerts."""
from opened_page import ALERTS, ORDER, TONER_LOW, OpenedPage
from selenium.webdriver.common.keys import Keys


class Navigation(OpenedPage):
    def test_an_address_opens_its_view(self):
        headline = ALERTS[TONER_LOW]["headline"]
        for view, heading in ((f"alert={TONER_LOW}", headline),
                              (f"alert={TONER_LOW}&language=de", headline),
                              (f"alert={TONER_LOW}&view=languages", f"“{headline}” in all languages"),
                              ("view=everything", "All alerts with their facts"),
                              ("view=contrast", "High contrast"),
                              ("language=de&scale=200", "All alerts"),
                              ("search=10209", "1 alert with “10209”"),
                              ("alert=never-heard-of", "There is no alert “never-heard-of”")):
            with self.subTest(view=view):
                self.open(view)
                self.assertEqual(self.heading(), heading)
                self.assertEqual(self.driver.title, f"{heading} – alerts of the Beamline K7400")

    def test_what_is_chosen_stands_in_the_address(self):
        self.all(".cards h3 a")[ORDER.index(TONER_LOW)].click()
        self.until(lambda: self.heading() == ALERTS[TONER_LOW]["headline"])
        self.choose("language", "ar")
        self.choose("scale", "200")
        self.assertEqual(self.address(), f"alert={TONER_LOW}&language=ar&scale=200")
        self.search("ab")
        self.assertEqual(self.address(), f"alert={TONER_LOW}&search=ab&language=ar&scale=200")

    def test_a_language_that_nobody_speaks_is_english(self):
        self.open(f"alert={TONER_LOW}&language=xx&scale=77")
        self.assertRegex(self.picture(), "^100/en/")

    def test_arrows_go_through_all_alerts_and_stop_at_both_ends(self):
        self.go("language=de")
        for name in ORDER:
            self.press(Keys.ARROW_RIGHT)
            self.until(lambda name=name: self.address() == f"alert={name}&language=de")
            self.until(lambda name=name: self.heading() == ALERTS[name]["headline"])
        self.press(Keys.ARROW_RIGHT)
        self.assertEqual(self.address(), f"alert={ORDER[-1]}&language=de")
        for name in reversed(ORDER[:-1]):
            self.press(Keys.ARROW_LEFT)
            self.until(lambda name=name: self.address() == f"alert={name}&language=de")
        self.press(Keys.ARROW_LEFT)
        self.assertEqual(self.address(), f"alert={ORDER[0]}&language=de")

    def test_arrows_stay_in_the_grid_of_all_languages(self):
        self.go(f"alert={ORDER[0]}&view=languages")
        self.press(Keys.ARROW_RIGHT)
        self.until(lambda: self.heading() == f"“{ALERTS[ORDER[1]]['headline']}” in all languages")

    def test_arrows_in_a_field_move_within_it(self):
        self.go(f"alert={TONER_LOW}")
        self.one("#search").send_keys(Keys.ARROW_RIGHT)
        self.assertEqual(self.address(), f"alert={TONER_LOW}")

    def test_links_lead_to_the_previous_and_the_next_alert(self):
        self.go(f"alert={ORDER[1]}")
        self.one("a[rel=next]").click()
        self.until(lambda: self.heading() == ALERTS[ORDER[2]]["headline"])
        self.one("a[rel=prev]").click()
        self.until(lambda: self.heading() == ALERTS[ORDER[1]]["headline"])

    def test_a_slash_leads_to_the_search(self):
        self.press("/")
        self.assertEqual(self.driver.switch_to.active_element.get_attribute("id"), "search")
        self.assertEqual(self.one("#search").get_attribute("value"), "")

    def test_a_new_view_begins_at_its_heading(self):
        self.driver.execute_script("scrollTo(0, 800)")
        self.all(".cards h3 a")[ORDER.index(TONER_LOW)].click()
        self.until(lambda: self.heading() == ALERTS[TONER_LOW]["headline"])

        self.assertEqual(self.driver.switch_to.active_element.tag_name, "h1")
        self.assertEqual(self.driver.execute_script("return scrollY"), 0)

    def test_the_first_tab_leads_past_the_controls(self):
        self.press(Keys.TAB)
        self.driver.switch_to.active_element.send_keys(Keys.ENTER)
        self.assertEqual(self.driver.switch_to.active_element.tag_name, "h1")
        self.assertEqual(self.heading(), "All alerts")

    def test_the_title_leads_home_and_keeps_the_language(self):
        self.go(f"alert={TONER_LOW}&language=de")
        self.one("#home").click()
        self.until(lambda: self.heading() == "All alerts")
        self.assertEqual(self.address(), "language=de")
