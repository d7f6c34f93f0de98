"""The page fits a phone, is readable in both schemes and on paper, and has the order that a screen reader needs."""
from opened_page import ALERTS, NARROW, ORDER, TONER_LOW, OpenedPage, browser

VIEWS = ("", f"alert={TONER_LOW}", f"alert={TONER_LOW}&language=de&scale=200", f"alert={TONER_LOW}&view=languages",
         "search=toner", "view=contrast", "alert=never-heard-of")
LEAST_CONTRAST = 4.5  # of text and ground, so that weak eyes can read it

# What reaches beyond the window.
TOO_WIDE = """
const wide = [...document.body.querySelectorAll("*")].filter(element => !element.closest(".unseen, .skip") &&
    (element.getBoundingClientRect().right > innerWidth + 0.5 || element.getBoundingClientRect().left < -0.5));
return [...(document.documentElement.scrollWidth > innerWidth ? ["the page"] : []),
        ...wide.map(element => element.outerHTML.slice(0, 120))];
"""
# The texts and hints in fields whose contrast with the ground behind them is below the limit.
WEAK_TEXTS = """
const numbers = color => color.match(/[0-9.]+/g).map(Number);
const light = color => {
    const [red, green, blue] = numbers(color).map(value => {
        const share = value / 255;
        return share <= 0.04045 ? share / 12.92 : ((share + 0.055) / 1.055) ** 2.4;
    });
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
};
const groundOf = element => {
    for (; element; element = element.parentElement) {
        const color = getComputedStyle(element).backgroundColor;
        if (numbers(color)[3] !== 0) return color;
    }
    return "rgb(255, 255, 255)";
};
const texts = [...document.body.querySelectorAll("*")].filter(element => element.checkVisibility() &&
    (element.placeholder || [...element.childNodes].some(
        child => child.nodeType === Node.TEXT_NODE && child.data.trim())));
return [texts.length, texts.filter(element => {
    const style = getComputedStyle(element, element.placeholder && "::placeholder");
    const [one, other] = [light(style.color), light(groundOf(element))];
    return (Math.max(one, other) + 0.05) / (Math.min(one, other) + 0.05) < arguments[0];
}).map(element => element.outerHTML.slice(0, 120))];
"""


class Looks(OpenedPage):
    def test_nothing_is_wider_than_a_phone(self):
        browser.set_window(self.driver, NARROW)
        for view in (*VIEWS, "view=everything", "view=everything&language=ar", "view=everything&language=de",
                     "view=everything&scale=200"):
            with self.subTest(view=view):
                self.open(view)
                self.assertEqual(self.driver.execute_script("return innerWidth"), NARROW)
                self.assertEqual(self.driver.execute_script(TOO_WIDE), [])

    def test_nothing_is_wider_than_a_wide_window(self):
        for view in VIEWS:
            with self.subTest(view=view):
                self.open(view)
                self.assertEqual(self.driver.execute_script(TOO_WIDE), [])

    def test_the_facts_stand_beside_the_picture_where_there_is_room(self):
        self.go(f"alert={TONER_LOW}")
        picture, facts = self.one("main img").rect, self.one(".facts").rect
        self.assertGreater(facts["x"], picture["x"] + picture["width"])
        self.assertLess(facts["y"], picture["y"] + picture["height"])

        browser.set_window(self.driver, NARROW)
        picture, facts = self.one("main img").rect, self.one(".facts").rect
        self.assertGreater(facts["y"], picture["y"] + picture["height"])

    def test_pictures_at_100_percent_are_shown_dot_by_dot_in_a_wide_window(self):
        self.go(f"alert={TONER_LOW}")
        image = self.one("main img")
        self.assertEqual(str(image.size["width"]), image.get_dom_attribute("width"))

    def test_texts_stand_out_from_the_ground_in_both_schemes(self):
        for scheme in ("light", "dark"):
            browser.set_media(self.driver, scheme=scheme)
            for view in VIEWS:
                with self.subTest(scheme=scheme, view=view):
                    self.open(view)
                    count, weak = self.driver.execute_script(WEAK_TEXTS, LEAST_CONTRAST)
                    self.assertGreater(count, 5)
                    self.assertEqual(weak, [])

    def test_the_dark_scheme_is_dark(self):
        light = self.one("body").value_of_css_property("background-color")
        browser.set_media(self.driver, scheme="dark")
        dark = self.one("body").value_of_css_property("background-color")

        red = [int(color.split("(")[1].split(",")[0]) for color in (light, dark)]
        self.assertGreater(red[0], 200)
        self.assertLess(red[1], 50)

    def test_paper_has_the_alert_and_its_facts_but_no_controls(self):
        self.go(f"alert={TONER_LOW}")
        browser.set_media(self.driver, media="print", scheme="dark")

        self.assertEqual([element for element in self.all("header, footer, .turn") if element.is_displayed()], [])
        self.assertTrue(self.one("main img").is_displayed())
        for rule in ALERTS[TONER_LOW]["rules"]:
            self.assertIn(rule, self.one(".facts").text)
        self.assertEqual(self.one("body").value_of_css_property("background-color"), "rgba(255, 255, 255, 1)")

    def test_each_alert_begins_a_page_of_paper(self):
        self.go("view=everything")
        browser.set_media(self.driver, media="print")
        begins = [alert.value_of_css_property("break-before") for alert in self.all(".alert")]
        self.assertEqual(begins, ["auto"] + ["page"] * (len(ORDER) - 1))

    def test_each_view_has_one_heading_of_the_first_rank_and_leaves_none_out(self):
        for view in VIEWS:
            with self.subTest(view=view):
                self.open(view)
                ranks = [int(element.tag_name[1]) for element in self.all("h1, h2, h3")]
                self.assertEqual((ranks[0], ranks.count(1)), (1, 1))
                self.assertTrue(all(rank <= before + 1 for before, rank in zip(ranks, ranks[1:])), ranks)

    def test_every_control_and_every_link_has_a_name_to_be_spoken(self):
        for view in VIEWS:
            with self.subTest(view=view):
                self.open(view)
                self.assertEqual([element.get_attribute("outerHTML") for element in self.all("a, input, select")
                                  if not element.accessible_name.strip()], [])
