"""The service's pages in a real browser: pages_in_browser_test.py BIN_FOLDER

Ends with status 77 where no browser is installed.
"""

import contextlib
import http.server
import json
import pathlib
import sys
import tempfile
import threading
import unittest
import urllib.request

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
from browser import Browser, find_program  # pylint: disable=wrong-import-position
from demo_parts import Quillbox, Service  # pylint: disable=wrong-import-position
from sample_drive import fill  # pylint: disable=wrong-import-position

SKIPPED = 77
LOOKS = [(scheme, width) for scheme in ("light", "dark") for width in (360, 1180)]

# Each kind of text, with its colour and the first colour behind it.
COLOURS = """
[...new Set(['h1', 'h2', 'main a', 'header a', 'caption', 'thead th', 'tbody th', 'tr:nth-child(even) td', '.good', '.bad', 'footer'])]
  .map(kind => [kind, document.querySelector(kind)]).filter(([, element]) => element).map(([kind, element]) => {
    let behind = element
    while (getComputedStyle(behind).backgroundColor == 'rgba(0, 0, 0, 0)') behind = behind.parentElement
    return [kind, getComputedStyle(element).color, getComputedStyle(behind).backgroundColor]
  })
"""
FOCUS = """
(() => {
  const element = document.activeElement, box = element.getBoundingClientRect(), style = getComputedStyle(element)
  return {text: element.textContent, inMain: document.querySelector('main').contains(element), isBody: element == document.body,
    seen: box.width > 10 && box.height > 10 && style.outlineStyle == 'solid' && parseFloat(style.outlineWidth) >= 2}
})()
"""


def luminance(colour):
    """Relative luminance of "rgb(1, 2, 3)", as the accessibility guidelines define it."""
    parts = [int(part) / 255 for part in colour.removeprefix("rgb(").removesuffix(")").split(",")]
    red, green, blue = (part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4 for part in parts)
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue


def contrast(one, other):
    darker, lighter = sorted((luminance(one), luminance(other)))
    return (lighter + 0.05) / (darker + 0.05)


class OtherSite(http.server.BaseHTTPRequestHandler):
    """An empty page from somewhere else."""

    def do_GET(self):  # pylint: disable=invalid-name
        self.send_response(200)
        self.send_header("Content-Type", "text/html")
        self.end_headers()
        self.wfile.write(b"<!DOCTYPE html><title>Another site</title>")

    def log_message(self, *_):  # pylint: disable=arguments-differ
        pass


class PagesInBrowser(unittest.TestCase):
    programs = None

    @classmethod
    def setUpClass(cls):
        with contextlib.ExitStack() as stack:
            folder = pathlib.Path(stack.enter_context(tempfile.TemporaryDirectory(prefix="quillbox-pages-")))
            cls.address = stack.enter_context(Service(cls.programs / "quillboxd", folder)).address
            quillbox = Quillbox(cls.programs / "quillbox", cls.address, folder)
            quillbox.sign_in()
            fill(quillbox, cls.address, folder)
            items = {item["fileName"]: item["id"] for item in quillbox.children("root")}
            cls.browser = stack.enter_context(Browser(find_program()))
            cls.browser.look("light", 1180)
            cls.browser.open(cls.address + "/")
            account = cls.browser.evaluate("[...document.querySelectorAll('main a')].find(a => a.text == 'demo').href")
            cls.folder = account.replace("root", items["Holiday"])
            cls.pages = [cls.address + "/", account, cls.folder] + [
                f"{cls.address}/_dev/pages/{page}" for page in ("accounts", "backups", "requests", "folders/9/root")]
            cls.addClassCleanup(stack.pop_all().close)

    def asked(self, path):
        with urllib.request.urlopen(self.address + path, timeout=30) as answer:
            return json.load(answer)

    def test_no_page_is_wider_than_its_window(self):
        for scheme, width in LOOKS:
            self.browser.look(scheme, width)
            for page in self.pages:
                with self.subTest(page=page, width=width):
                    self.browser.open(page)
                    self.assertLessEqual(self.browser.evaluate("document.documentElement.scrollWidth"), width)

    def test_every_text_stands_out_from_its_ground(self):
        for scheme, width in LOOKS:
            self.browser.look(scheme, width)
            for page in self.pages:
                self.browser.open(page)
                colours = self.browser.evaluate(COLOURS)
                self.assertGreaterEqual(len(colours), 3)
                for kind, text, ground in colours:
                    with self.subTest(page=page, scheme=scheme, kind=kind):
                        self.assertGreaterEqual(contrast(text, ground), 4.5)
                        self.assertEqual(luminance(text) > luminance(ground), scheme == "dark")

    def test_the_overview_has_all_its_tables(self):
        self.browser.open(self.pages[0])
        rows = "document.querySelector('section[aria-labelledby={}] tbody').rows.length"
        counts = {name: self.browser.evaluate(rows.format(name)) for name in ("accounts", "backups", "locks", "requests", "faults")}
        self.assertEqual(counts, {"accounts": 7, "backups": 2, "locks": 1, "requests": 20, "faults": 2})

    def test_pictures_are_shown(self):
        self.browser.look("light", 1180, 1200)
        self.browser.open(self.folder)
        sizes = self.browser.evaluate(
            "Promise.all([...document.images].map(image => image.decode().then(() => [image.naturalWidth, image.width])))")
        self.assertEqual(sizes, [[160, 48]] * 12)
        self.browser.open(self.browser.evaluate("document.querySelector('.item').parentElement.href"))
        self.assertEqual(self.browser.evaluate("document.contentType"), "image/png")
        self.assertEqual(self.browser.evaluate("document.images[0].naturalWidth"), 160)

    def test_the_keyboard_skips_to_the_content(self):
        self.browser.open(self.pages[0])
        self.browser.press("Tab")
        focus = self.browser.evaluate(FOCUS)
        self.assertEqual(focus["text"], "Skip to the content")
        self.assertTrue(focus["seen"])
        self.browser.press("Enter")
        self.assertEqual(self.browser.evaluate("location.hash"), "#main")
        self.browser.press("Tab")
        self.assertTrue(self.browser.evaluate(FOCUS)["inMain"])

    def test_the_keyboard_reaches_every_link_and_its_focus_is_seen(self):
        for scheme in ("light", "dark"):
            self.browser.look(scheme, 1180)
            self.browser.open(self.folder)
            reached = []
            self.browser.press("Tab")
            while not (focus := self.browser.evaluate(FOCUS))["isBody"] and len(reached) < 100:
                self.assertTrue(focus["seen"], focus)
                reached.append(focus["text"])
                self.browser.press("Tab")
            links = self.browser.evaluate("[...document.querySelectorAll('a')].map(a => a.text)")
            self.assertGreater(len(links), 12)
            self.assertEqual([text for text in reached if text in links], links)

    def test_looking_is_no_request_of_a_client(self):
        before = len(self.asked("/_dev/requests")["requests"])
        for page in self.pages:
            self.browser.open(page)
        self.assertEqual(len(self.asked("/_dev/requests")["requests"]), before)

    def test_another_site_neither_plans_nor_reads_nor_embeds(self):
        planned = self.asked("/_dev/faults")
        self.browser.open(self.folder)
        picture = self.browser.evaluate("document.images[0].src")
        with http.server.ThreadingHTTPServer(("127.0.0.1", 0), OtherSite) as site:
            threading.Thread(target=site.serve_forever).start()
            try:
                self.browser.open(f"http://localhost:{site.server_port}/")
                # Such a request is sent without asking, and its answer is hidden.
                kind = self.browser.evaluate(
                    f"fetch('{self.address}/_dev/faults', {{method: 'POST', mode: 'no-cors', body: "
                    """JSON.stringify({path: '*', kind: 'reset'})}).then(answer => answer.type)""")
                self.assertEqual(kind, "opaque")
                read = self.browser.evaluate(f"fetch('{self.address}/').then(() => 'read', () => 'kept')")
                self.assertEqual(read, "kept")
                shown = self.browser.evaluate(
                    f"Object.assign(new Image(), {{src: '{picture}'}}).decode().then(() => 'shown', () => 'kept')")
                self.assertEqual(shown, "kept")
            finally:
                site.shutdown()
        self.assertEqual(self.asked("/_dev/faults"), planned)


if __name__ == "__main__":
    if not find_program():
        print("no browser is installed: scripts/setup installs chromium-headless-shell")
        sys.exit(SKIPPED)
    PagesInBrowser.programs = pathlib.Path(sys.argv.pop(1)).resolve()
    unittest.main(verbosity=2)
