# SPDX-License-Identifier: LGPL-2.1-or-later
"""Opens a page of packages in a browser and uses it as a person does.

catalog_browser.py [--hostile PAGE] [--many PAGE] [--shots DIRECTORY] PAGE

PAGE shows the sample packages. --hostile names a page of hostile packages, and --many a page of 2000 packages whose work is
counted; make_catalog makes both. --shots writes pictures of PAGE to DIRECTORY.

Needs Chromium, its driver and Selenium: Debian's chromium, chromium-driver and python3-selenium.
"""

import argparse
import base64
import os
import pathlib
import shutil
import sys
import unicodedata
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "support"))
from skip import skip  # noqa: E402

try:
    from selenium import webdriver
    from selenium.common.exceptions import WebDriverException
    from selenium.webdriver.chrome.options import Options
    from selenium.webdriver.chrome.service import Service
    from selenium.webdriver.common.action_chains import ActionChains
    from selenium.webdriver.common import utils
    from selenium.webdriver.common.by import By
    from selenium.webdriver.common.keys import Keys
    from selenium.webdriver.support.ui import WebDriverWait
except ImportError:
    sys.exit("catalog_browser: Selenium is missing (Debian: python3-selenium)")

DRIVER = shutil.which("chromedriver")
BROWSER = shutil.which("chromium")
ARGUMENTS = argparse.Namespace()

# The facts on a card, as a reader sees them.
CARDS = """
return [...document.querySelectorAll(".card")].map((card) => ({
    file: card.querySelector(".file").textContent.split("/").pop(),
    title: card.querySelector("h2").textContent,
    package: (card.querySelector(".package") ?? card.querySelector("h2")).textContent,
    labels: [...card.querySelectorAll(".label")].map((label) => label.dataset.labels),
    shownLabels: [...card.querySelectorAll(".label")].map((label) => label.textContent),
    texts: [...card.querySelectorAll("code, .file, .signer, h2")].map((node) => node.textContent),
    sdk: Number(card.dataset.sdk),
    rank: Number(card.dataset.rank),
    isShown: card.getClientRects().length > 0,
}));
"""


class LoopbackService(Service):
    """Starts the driver by its address, because the name localhost may not resolve."""

    @property
    def service_url(self):
        return f"http://127.0.0.1:{self.port}"

    def is_connectable(self):
        return utils.is_connectable(self.port, "127.0.0.1")


def folded(text):
    """The text without case and without marks on letters."""
    decomposed = unicodedata.normalize("NFKD", text.casefold())
    return "".join(letter for letter in decomposed if not unicodedata.combining(letter)).replace("ς", "σ")


def start(languages="en-US,en", scripts=True):
    options = Options()
    options.binary_location = BROWSER
    arguments = ["--headless=new", "--disable-gpu", "--hide-scrollbars", "--window-size=1280,1000",
                 # Host names do not resolve, so nothing is loaded.
                 "--host-resolver-rules=MAP * ~NOTFOUND", "--disable-dev-shm-usage"]
    if os.geteuid() == 0:
        arguments.append("--no-sandbox")
    for argument in arguments:
        options.add_argument(argument)
    preferences = {"intl.accept_languages": languages}
    if not scripts:
        preferences["profile.managed_default_content_settings.javascript"] = 2
    options.add_experimental_option("prefs", preferences)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=LoopbackService(DRIVER), options=options)


class PageTest(unittest.TestCase):
    """A test with a browser that has the page open."""

    languages = "en-US,en"
    scripts = True
    page = "page"

    @classmethod
    def setUpClass(cls):
        cls.driver = start(cls.languages, cls.scripts)
        cls.addClassCleanup(cls.driver.quit)

    def setUp(self):
        self.resize(1280, 1000)
        self.set_media("light")
        self.open()

    def tearDown(self):
        # The messages include everything that the policy of the page refused.
        self.assertEqual(self.driver.get_log("browser"), [])

    def open(self):
        self.driver.get(pathlib.Path(getattr(ARGUMENTS, self.page)).resolve().as_uri())

    def resize(self, width, height):
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": width, "height": height, "deviceScaleFactor": 2, "mobile": width < 500})

    def set_media(self, scheme, medium=""):
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "media": medium, "features": [{"name": "prefers-color-scheme", "value": scheme}]})

    def run_script(self, script, *arguments):
        return self.driver.execute_script(script, *arguments)

    def find(self, name):
        return self.driver.find_element(By.ID, name)

    def lay_out_everything(self):
        """Also shows the parts of the page that are far from the window."""
        self.run_script("""
            for (const card of document.querySelectorAll(".card"))
                card.style.contentVisibility = "visible";
        """)

    def assert_fits(self, width):
        """No element, folded or unfolded, is wider than the window."""
        self.resize(width, 740)
        self.open()
        self.lay_out_everything()
        for unfolds in (False, True):
            sizes = self.run_script("""
                for (const fold of document.querySelectorAll("details"))
                    fold.open = arguments[0];
                return [document.documentElement.scrollWidth,
                        ...[...document.querySelectorAll(".card")]
                            .map((card) => card.scrollWidth > card.clientWidth ? 9999 : 0),
                        ...[...document.querySelectorAll("header *, .card, .card > *, summary")]
                            .map((node) => node.getBoundingClientRect().right)];
            """, unfolds)
            self.assertLessEqual(max(sizes), width + 0.5)

    def contrasts(self):
        """The contrast of each kind of text with its background, as the W3C defines it."""
        return self.run_script("""
            for (const fold of document.querySelectorAll("details"))
                fold.open = true;
            const numbers = (color) => color.match(/[\\d.]+/g).map(Number);
            const luminance = (color) => {
                const [r, g, b] = numbers(color).slice(0, 3).map((part) => {
                    const value = part / 255;
                    return value <= 0.03928 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4;
                });
                return 0.2126 * r + 0.7152 * g + 0.0722 * b;
            };
            const behind = (node) => {
                for (; node; node = node.parentElement) {
                    const color = getComputedStyle(node).backgroundColor;
                    if ((numbers(color)[3] ?? 1) > 0)
                        return color;
                }
            };
            const contrasts = {};
            for (const kind of ["h1", "h2", "#count", ".package", "dt", "dd", ".file", "summary", ".none", ".label",
                                ".name", ".error > summary", ".warning > summary", ".note > summary",
                                ".error strong", ".warning strong", ".note strong", ".findings code", ".problem"]) {
                for (const node of document.querySelectorAll(kind)) {
                    const [a, b] = [getComputedStyle(node).color, behind(node)].map(luminance);
                    const contrast = (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
                    contrasts[kind] = Math.min(contrast, contrasts[kind] ?? 99);
                }
            }
            return contrasts;
        """)

    def assert_legible(self, kinds=9):
        contrasts = self.contrasts()
        self.assertGreaterEqual(len(contrasts), kinds)
        self.assertEqual({kind: value for kind, value in contrasts.items() if value < 4.5}, {})

    def cards(self):
        return self.run_script(CARDS)

    def shown(self):
        return [card for card in self.cards() if card["isShown"]]

    def card(self, file):
        return next(card for card in self.cards() if card["file"] == file)

    def choose(self, menu, value):
        self.run_script("""
            const menu = document.getElementById(arguments[0]);
            if (![...menu.options].some((option) => option.value === arguments[1]))
                throw new Error("no such option: " + arguments[1]);
            menu.value = arguments[1];
            menu.dispatchEvent(new Event("change"));
        """, menu, value)

    def press(self, *keys):
        ActionChains(self.driver).send_keys(*keys).perform()

    def search(self, text):
        self.find("search").clear()
        self.find("search").send_keys(text)

    def focused(self):
        """The number of the focused card among the shown ones, or the id of another focused element."""
        return self.run_script("""
            const shown = [...document.querySelectorAll(".card:not([hidden])")];
            const number = shown.indexOf(document.activeElement);
            return number >= 0 ? number : document.activeElement.id;
        """)


class Reading(PageTest):
    def test_every_package_is_shown_and_counted(self):
        cards = self.cards()
        self.assertGreaterEqual(len(cards), 12)
        self.assertTrue(all(card["isShown"] for card in cards))
        self.assertEqual(self.find("count").text, f"{len(cards)} packages")
        self.assertEqual(self.find("count").get_attribute("role"), "status")

    def test_pictures_are_shown(self):
        self.lay_out_everything()
        sizes = self.run_script(
            "return [...document.images].map((image) => [image.src.slice(0, 22), image.naturalWidth])")
        self.assertGreaterEqual(len(sizes), 6)
        for source, width in sizes:
            self.assertEqual(source, "data:image/png;base64,")
            self.assertGreater(width, 0)

    def test_nothing_comes_from_elsewhere(self):
        names = self.run_script("return performance.getEntriesByType('resource').map((entry) => entry.name)")
        self.assertEqual([name for name in names if not name.startswith("data:")], [])

    def test_policy_refuses_scripts_and_styles(self):
        self.run_script("""
            const script = document.createElement("script");
            script.textContent = "window.harmed = 1";
            document.body.append(script);
            const holder = document.createElement("div");
            holder.innerHTML = "<img src='https://example.org/x.png' onerror='window.harmed = 1'>";
            document.body.append(holder);
        """)
        self.assertIsNone(self.run_script("return window.harmed ?? null"))
        refusals = [entry["message"] for entry in self.driver.get_log("browser")]
        self.assertGreaterEqual(len(refusals), 2)
        for refusal in refusals:
            self.assertIn("Content Security Policy", refusal)

    def test_structure_for_screen_readers(self):
        self.lay_out_everything()
        nodes = self.driver.execute_cdp_cmd("Accessibility.getFullAXTree", {})["nodes"]
        names = {}
        for node in nodes:
            if not node.get("ignored"):
                names.setdefault(node["role"]["value"], []).append(node.get("name", {}).get("value", ""))
        self.assertEqual(len(names["banner"]), 1)
        self.assertEqual(len(names["main"]), 1)
        self.assertEqual(names["search"], ["Packages"])
        self.assertEqual(names["status"], [""])
        self.assertEqual(names["searchbox"], ["Search labels, packages, classes, files and signers"])
        self.assertEqual(names["switch"], ["Dark"])
        self.assertEqual(names["combobox"], ["Language", "Sort by"])
        self.assertEqual(names["checkbox"], ["With findings only"])
        self.assertIn("Packages", names["list"])
        titles = [card["title"] for card in self.cards()]
        named = [name for name in names["listitem"] if name]
        self.assertEqual(len(named), len(titles))
        self.assertEqual(names["heading"].count(titles[0]), titles.count(titles[0]))


class Searching(PageTest):
    def assert_finds(self, text, least):
        words = folded(text).split()
        wanted = []
        for card in self.cards():
            labels = [line.partition("=")[2] for lines in card["labels"] for line in lines.split("\n")]
            texts = folded("\n".join(labels + card["texts"]))
            if all(word in texts for word in words):
                wanted.append(card["file"])
        self.assertGreaterEqual(len(wanted), least, text)
        self.search(text)
        found = [card["file"] for card in self.shown()]
        self.assertEqual(found, wanted, text)
        self.assertEqual(self.find("count").text, f"{len(found)} of {len(self.cards())} packages")
        return found

    def test_labels_in_the_chosen_and_in_other_languages(self):
        for text in ("notizen", "Carnet", "筆記", "ملاحظات", "заметки"):
            found = self.assert_finds(text, 2)
            self.assertIn("notes.aapt2.apk", found)
            self.assertNotIn("babel.aapt2.apk", found)

    def test_case_and_accents_do_not_matter(self):
        for text in ("sprachfuhrer", "SPRACHFÜHRER", "Guia de conversacion", "frasa", "phrasebook"):
            self.assertIn("babel.aapt2.apk", self.assert_finds(text, 1))
        # In the middle of a word, the last typed letter is not the end of the word.
        for text in ("Σημειώσ", "ΣΗΜΕΙΩΣΕΙΣ", "σημειωσεις"):
            self.assertIn("notes.aapt.apk", self.assert_finds(text, 2))

    def test_packages_classes_and_files(self):
        self.assertIn("notes.aapt.apk", self.assert_finds("org.example.notes", 2))
        self.assertIn("notes.aapt.apk", self.assert_finds("JournalActivity", 2))
        self.assertEqual(self.assert_finds("notes.aapt2.apk", 1), ["notes.aapt2.apk"])
        self.assertEqual(self.assert_finds("aapt2 carnet", 1), ["notes.aapt2.apk"])

    # The samples are not signed, and every card has the reason.
    def test_signers(self):
        self.assertIn("babel.aapt2.apk", self.assert_finds("signature phrasebook", 1))

    def test_nothing_is_found(self):
        self.search("there is no such package")
        self.assertEqual(self.shown(), [])
        self.assertTrue(self.find("nothing").is_displayed())
        self.assertTrue(self.find("count").text.startswith("0 of "))
        self.find("reset").click()
        self.assertEqual(len(self.shown()), len(self.cards()))
        self.assertFalse(self.find("nothing").is_displayed())

    def test_tags_of_languages_are_not_searched(self):
        self.search("de-AT=")
        self.assertEqual(self.shown(), [])


class Languages(PageTest):
    def test_own_names_in_order(self):
        names = dict(self.run_script(
            "return [...document.getElementById('language').options].map(({ value, text }) =>"
            " [value, text.replace(/[\u2068\u2069]/g, '')])"))
        self.assertEqual(names[""], "Default")
        self.assertEqual(names["de"], "Deutsch")
        self.assertEqual(names["de-AT"], "Deutsch (Österreich)")
        self.assertEqual(names["ar"], "العربية")
        self.assertEqual(names["ja"], "日本語")
        self.assertEqual(names["sr-Latn"], "srpski (latinica)")

    def test_labels_by_language(self):
        notes = "notes.aapt2.apk"
        babel = "babel.aapt2.apk"
        for language, file, title in (
                ("", notes, "Notes"), ("de", notes, "Notizen"), ("de-AT", notes, "Notizen (AT)"),
                ("en-GB", notes, "Jotter"), ("en-US", notes, "Notes US"), ("fr-CA", notes, "Carnet (Canada)"),
                # A parent, a relative in the same script, and the default.
                ("de-AT", babel, "Sprachführer (AT)"), ("fr-FR", notes, "Carnet"),
                ("fr-CA", babel, "Guide de conversation"), ("fr", babel, "Guide de conversation"),
                ("zh-Hant-HK", notes, "筆記"), ("zh-TW", babel, "常用語手冊"), ("en-US", babel, "Phrasebook 🗼"),
                ("es-419", babel, "Libro de frases"), ("pt-PT", notes, "Apontamentos"),
                ("sr", babel, "Зборник фраза"), ("sr-Latn", babel, "Zbornik fraza"), ("sr-Latn", notes, "Notes"),
                ("he", babel, "שיחון"), ("he", notes, "Notes"), ("ca-ES-valencia", babel, "Llibre de frases")):
            with self.subTest(language=language, file=file):
                self.choose("language", language)
                self.assertEqual(self.card(file)["title"], title)

    def test_each_launcher_falls_back_by_itself(self):
        self.choose("language", "it")
        labels = self.card("notes.aapt2.apk")["shownLabels"]
        self.assertEqual(labels[0], "Notes")
        self.assertIn("Redattore", labels)

    def test_labels_from_right_to_left(self):
        self.choose("language", "ar")
        title = self.run_script("""
            const title = [...document.querySelectorAll("h2 bdi")].find((node) => node.textContent === "ملاحظات");
            return [getComputedStyle(title).direction, title.lang, getComputedStyle(title.closest(".card")).direction];
        """)
        self.assertEqual(title, ["rtl", "ar", "ltr"])
        self.choose("language", "de")
        self.assertEqual(self.run_script("return document.querySelectorAll('h2 [lang=ar]').length"), 0)

    def test_language_of_an_english_reader(self):
        self.assertEqual(self.find("language").get_property("value"), "en-US")


class ReaderOfGerman(PageTest):
    languages = "de-AT,de,en"

    def test_language_of_the_reader(self):
        self.assertEqual(self.find("language").get_property("value"), "de-AT")
        self.assertEqual(self.card("notes.aapt2.apk")["title"], "Notizen (AT)")


class ReaderOfAnUnknownLanguage(PageTest):
    languages = "eo,ja,de"

    def test_next_language_of_the_reader(self):
        self.assertEqual(self.find("language").get_property("value"), "ja")


class Sorting(PageTest):
    def assert_sorted(self, order, key):
        self.choose("order", order)
        values = [key(card) for card in self.cards()]
        self.assertGreater(len(set(values)), 2)
        self.assertEqual(values, sorted(values))

    def test_orders(self):
        self.assert_sorted("sdk", lambda card: card["sdk"])
        self.choose("order", "package")
        packages = [card["package"] for card in self.cards() if card["package"].startswith("org.example.")]
        self.assertGreater(len(set(packages)), 2)
        self.assertEqual(packages, sorted(packages))

    def test_labels_are_sorted_as_the_language_does(self):
        self.choose("order", "label")
        for language in ("", "de"):
            self.choose("language", language)
            self.assertTrue(self.run_script("""
                const collator = new Intl.Collator(arguments[0] || undefined, { numeric: true });
                const titles = [...document.querySelectorAll("h2")].map((node) => node.textContent);
                return titles.every((title, i) => i === 0 || collator.compare(titles[i - 1], title) <= 0);
            """, language))


class Keyboard(PageTest):
    def columns(self):
        return self.run_script(
            "return getComputedStyle(document.getElementById('packages')).gridTemplateColumns.split(' ').length")

    def open_folds(self, number):
        return self.run_script("""
            const card = document.querySelectorAll(".card:not([hidden])")[arguments[0]];
            return [...card.querySelectorAll("details")].map((fold) => fold.open);
        """, number)

    def test_search_and_escape(self):
        self.press("/")
        self.assertEqual(self.focused(), "search")
        self.assertEqual(self.find("search").get_property("value"), "")
        self.press("a/b")
        self.assertEqual(self.find("search").get_property("value"), "a/b")
        self.press(Keys.ESCAPE)
        self.assertEqual(self.find("search").get_property("value"), "")
        self.assertEqual(len(self.shown()), len(self.cards()))

    def test_arrows_go_from_card_to_card(self):
        self.press("/")
        self.press(Keys.ARROW_DOWN)
        self.assertEqual(self.focused(), 0)
        columns = self.columns()
        self.assertGreater(columns, 1)
        self.press(Keys.ARROW_RIGHT)
        self.assertEqual(self.focused(), 1)
        self.press(Keys.ARROW_DOWN)
        self.assertEqual(self.focused(), 1 + columns)
        self.press(Keys.ARROW_LEFT)
        self.assertEqual(self.focused(), columns)
        self.press(Keys.ARROW_UP)
        self.assertEqual(self.focused(), 0)
        self.press(Keys.ARROW_LEFT)
        self.assertEqual(self.focused(), 0)
        self.press(Keys.END)
        self.assertEqual(self.focused(), len(self.shown()) - 1)
        self.press(Keys.ARROW_DOWN)
        self.assertEqual(self.focused(), len(self.shown()) - 1)
        self.press(Keys.HOME)
        self.assertEqual(self.focused(), 0)
        self.press(Keys.ARROW_UP)
        self.assertEqual(self.focused(), "search")

    def test_arrows_pass_over_what_is_not_found(self):
        self.search("notes.aapt")
        self.press(Keys.ARROW_DOWN)
        self.press(Keys.ARROW_RIGHT)
        self.assertEqual(self.focused(), 1)
        self.press(Keys.ARROW_RIGHT)
        self.assertEqual(self.focused(), 1)

    def test_enter_unfolds(self):
        self.search("notes.aapt2.apk")
        self.press(Keys.ARROW_DOWN)
        self.assertNotIn(True, self.open_folds(0))
        self.press(Keys.ENTER)
        self.assertGreaterEqual(len(self.open_folds(0)), 1)
        self.assertNotIn(False, self.open_folds(0))
        self.press(Keys.ENTER)
        self.assertNotIn(True, self.open_folds(0))

    def test_enter_on_a_part_of_a_card_is_for_that_part(self):
        self.search("notes.aapt2.apk")
        self.press(Keys.ARROW_DOWN, Keys.TAB)
        self.assertEqual(self.run_script("return document.activeElement.tagName"), "SUMMARY")
        self.press(Keys.ENTER)
        self.assertEqual(self.open_folds(0).count(True), 1)

    def test_focus_is_seen(self):
        self.press("/")
        self.press(Keys.ARROW_DOWN)
        style, width = self.run_script("""
            const style = getComputedStyle(document.activeElement);
            return [style.outlineStyle, parseFloat(style.outlineWidth)];
        """)
        self.assertEqual(style, "solid")
        self.assertGreaterEqual(width, 2)

    def test_one_card_is_reached_by_tab(self):
        self.assertEqual(self.run_script("return document.querySelectorAll('.card[tabindex=\"0\"]').length"), 1)
        self.search("notes.aapt2.apk")
        self.assertEqual(
            self.run_script("return document.querySelector('.card[tabindex=\"0\"] .file').textContent").split("/")[-1],
            "notes.aapt2.apk")


class Looks(PageTest):
    def lightness(self):
        colour = self.run_script("return getComputedStyle(document.body).backgroundColor")
        return sum(int(part) for part in colour[4:-1].split(",")) / 3

    def test_light_and_dark_as_the_system_has_it(self):
        self.assertGreater(self.lightness(), 200)
        self.assertEqual(self.find("theme").get_attribute("aria-checked"), "false")
        self.assert_legible()
        self.set_media("dark")
        WebDriverWait(self.driver, 60).until(
            lambda driver: self.find("theme").get_attribute("aria-checked") == "true")
        self.assertLess(self.lightness(), 60)
        self.assert_legible()

    def test_switch(self):
        for scheme, first in (("light", "true"), ("dark", "false")):
            self.set_media(scheme)
            self.open()
            before = self.lightness()
            self.find("theme").click()
            self.assertEqual(self.find("theme").get_attribute("aria-checked"), first)
            self.assertGreater(abs(self.lightness() - before), 140)
            self.assert_legible()
            self.find("theme").click()
            self.assertEqual(self.lightness(), before)

    def test_nothing_is_wider_than_a_telephone(self):
        for width in (360, 320, 768):
            self.assert_fits(width)

    def test_paper(self):
        self.set_media("dark", "print")
        self.assertGreater(self.lightness(), 250)
        self.assertFalse(self.find("tools").is_displayed())
        self.run_script("dispatchEvent(new Event('beforeprint'))")
        self.assertEqual(self.run_script("return document.querySelectorAll('details:not([open])').length"), 0)
        self.run_script("dispatchEvent(new Event('afterprint'))")
        self.assertEqual(self.run_script("return document.querySelectorAll('details[open]').length"), 0)
        pdf = base64.b64decode(self.driver.execute_cdp_cmd("Page.printToPDF", {})["data"])
        self.assertTrue(pdf.startswith(b"%PDF"))


class WithoutScripts(PageTest):
    scripts = False

    def test_plain_list(self):
        self.assertFalse(self.find("tools").is_displayed())
        titles = [node.text for node in self.driver.find_elements(By.TAG_NAME, "h2")]
        self.assertGreaterEqual(len(titles), 12)
        self.assertIn("Notes", titles)
        cards = self.driver.find_elements(By.CLASS_NAME, "card")
        self.assertEqual(len(cards), len(titles))
        self.assertTrue(all(card.is_displayed() for card in cards))
        self.assertEqual(self.find("total").text, f"{len(cards)} packages")
        self.assertEqual(self.find("count").text, "")


class Hostile(PageTest):
    page = "hostile"

    def test_nothing_runs(self):
        self.assertIsNone(self.run_script("return window.harmed ?? null"))
        self.assertNotIn("harmed", self.driver.title)
        for language in ("de", ""):
            self.choose("language", language)
        self.find("search").send_keys("<script>")
        self.run_script("for (const fold of document.querySelectorAll('details')) fold.open = true")
        self.assertIsNone(self.run_script("return window.harmed ?? null"))
        self.assertNotIn("harmed", self.driver.title)
        self.assertEqual(self.run_script("return document.scripts.length"), 1)
        self.assertEqual(self.run_script("return document.styleSheets.length"), 1)
        self.assertEqual(self.run_script("""
            return [...document.querySelectorAll("*")].flatMap((node) => [...node.attributes])
                .filter(({ name }) => name.startsWith("on") || name === "style" || name === "autofocus")
                .map(({ name }) => name);
        """), [])

    def test_nothing_is_wider_than_a_telephone(self):
        for width in (360, 320, 768):
            self.assert_fits(width)

    def test_findings_only(self):
        wanted = [card["file"] for card in self.cards() if card["file"] != "findings0.apk"]
        self.assertEqual(len(wanted), len(self.cards()) - 1)
        self.find("only").click()
        self.assertEqual([card["file"] for card in self.shown()], wanted)
        self.search("apk findings")
        self.assertEqual(sorted(card["file"] for card in self.shown()), [f"findings{i}.apk" for i in range(1, 5)])
        self.find("only").click()
        self.assertEqual(len(self.shown()), 5)

    def test_order_of_findings(self):
        self.choose("order", "rank")
        files = [card["file"] for card in self.cards()]
        self.assertEqual([file for file in files if file.startswith("findings")],
                         [f"findings{i}.apk" for i in (4, 3, 2, 1, 0)])
        self.assertIn("unread.apk", files[:2])
        self.assertEqual(files[-1], "findings0.apk")

    def test_findings_unfold(self):
        self.search("findings3.apk")
        summaries = self.driver.find_elements(By.CSS_SELECTOR, ".card:not([hidden]) .findings summary")
        self.assertEqual([summary.text for summary in summaries], ["1 warning, 1 note"])
        details = self.driver.find_element(By.CSS_SELECTOR, ".card:not([hidden]) .findings ul")
        self.assertFalse(details.is_displayed())
        summaries[0].click()
        self.assertTrue(details.is_displayed())
        self.assertIn("The icon is drawn from XML alone.", details.text)

    def test_colours_are_legible(self):
        for scheme in ("light", "dark"):
            self.set_media(scheme)
            self.assert_legible(19)

    def test_markup_is_shown_as_text(self):
        run = "window.harmed=1;document.title='harmed'"
        titles = [card["title"] for card in self.cards()]
        for text in (f"<script>{run}</script>", f"\"><img src=x onerror=\"{run}\">", f"' autofocus onfocus='{run}",
                     f"</script></style></title><svg onload=\"{run}\">", f"--><script>{run}</script>",
                     f"]]><script>{run}</script>", "{{script}} &lt;b&gt; &#60;i&#62;",
                     "left \ufffdtfel \ufffd\ufffd[31m"):
            self.assertIn(text, titles)
        self.choose("language", "de")
        self.assertEqual(sorted(titles)[:3], sorted(card["title"] for card in self.cards())[:3])
        self.assertEqual(self.driver.title, "Made packages")


class Many(PageTest):
    """The work of 2000 packages: the nodes that a script changes, and the layouts that it requests."""

    page = "many"

    def work(self, script):
        """The records of changed nodes, and the layouts until the page is laid out after the script."""
        def layouts():
            metrics = self.driver.execute_cdp_cmd("Performance.getMetrics", {})["metrics"]
            return next(metric["value"] for metric in metrics if metric["name"] == "LayoutCount")

        self.driver.execute_cdp_cmd("Performance.enable", {})
        before = layouts()
        changes = self.run_script("""
            document.body.getBoundingClientRect();
            const observer = new MutationObserver(() => {});
            observer.observe(document, {subtree: true, childList: true, attributes: true, characterData: true});
            %s
            const count = observer.takeRecords().length;
            observer.disconnect();
            document.body.getBoundingClientRect();
            return count;
        """ % script)
        return changes, layouts() - before

    def test_work_grows_with_the_cards(self):
        cards = len(self.cards())
        self.assertEqual(cards, 2000)
        typed = "const s = document.getElementById('search'); s.value = '{}'; s.dispatchEvent(new Event('input'));"
        change = "const s = document.getElementById('{}'); s.value = '{}'; s.dispatchEvent(new Event('change'));"
        word = "programm ete 1999"
        keys = [self.work(typed.format(word[:end])) for end in range(1, len(word) + 1)]
        self.assertEqual([card["file"] for card in self.shown()], ["number1999.apk"])
        keys += [self.work(typed.format(word[:end])) for end in range(len(word) - 1, -1, -1)]
        self.assertEqual(len(self.shown()), 2000)
        others = [self.work(change.format("language", "ja")), self.work(change.format("order", "sdk"))]
        print(f"2000 packages: changes and layouts of the keys at most {max(keys)}, language {others[0]}, "
              f"order {others[1]}")
        for changes, layouts in keys + others:
            self.assertLess(changes, 10 * cards)
            self.assertLess(layouts, 10)


class Shots(PageTest):
    def shoot(self, name):
        png = self.driver.execute_cdp_cmd("Page.captureScreenshot", {"format": "png"})["data"]
        (pathlib.Path(ARGUMENTS.shots) / f"{name}.png").write_bytes(base64.b64decode(png))

    def test_pictures(self):
        self.resize(1280, 940)
        self.shoot("light")
        self.choose("language", "ar")
        self.choose("order", "rank")
        self.search("notes")
        self.press(Keys.ARROW_DOWN, Keys.ENTER)
        self.shoot("unfolded")
        self.set_media("dark")
        self.open()
        self.choose("language", "ja")
        self.shoot("dark")
        self.set_media("light")
        self.resize(360, 740)
        self.open()
        self.shoot("phone")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--hostile")
    parser.add_argument("--many")
    parser.add_argument("--shots")
    parser.add_argument("page")
    parser.parse_args(namespace=ARGUMENTS)
    for program, package in ((BROWSER, "chromium"), (DRIVER, "chromium-driver")):
        if program is None:
            sys.exit(f"catalog_browser: a program of Debian's package {package} is missing")
    try:
        start().quit()
    except WebDriverException as error:
        skip("browser", f"Chromium does not start: {error.msg}")
    tests = [Reading, Searching, Languages, ReaderOfGerman, ReaderOfAnUnknownLanguage, Sorting, Keyboard, Looks,
             WithoutScripts]
    tests += [Hostile] if ARGUMENTS.hostile else []
    tests += [Many] if ARGUMENTS.many else []
    tests += [Shots] if ARGUMENTS.shots else []
    suite = unittest.TestSuite(unittest.defaultTestLoader.loadTestsFromTestCase(test) for test in tests)
    result = unittest.TextTestRunner(verbosity=2).run(suite)
    sys.exit(0 if result.wasSuccessful() else 1)


if __name__ == "__main__":
    main()
