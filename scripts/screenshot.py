"""Fills a local service with a sample drive and takes pictures of its pages; scripts/screenshot builds the programs and calls this.

screenshot.py BIN_FOLDER TARGET_FOLDER
"""

import pathlib
import sys
import tempfile

from browser import Browser, find_program
from demo_parts import Quillbox, Service
from sample_drive import fill


def take(browser, service, quillbox, target):
    browser.look("light", 1180, 1140)
    browser.open(service.address + "/")
    (target / "quillboxd_page.png").write_bytes(browser.screenshot())
    account = browser.evaluate("[...document.querySelectorAll('main a')].find(a => a.text == 'demo').href")
    folder = next(item["id"] for item in quillbox.children("root") if item["fileName"] == "Holiday")
    browser.look("dark", 860, 560)
    browser.open(account.replace("root", folder))
    (target / "quillboxd_folder.png").write_bytes(browser.screenshot())


def main(programs, target):
    with tempfile.TemporaryDirectory(prefix="quillbox-screenshot-") as name:
        folder = pathlib.Path(name)
        with Service(programs / "quillboxd", folder) as service, Browser(find_program()) as browser:
            quillbox = Quillbox(programs / "quillbox", service.address, folder)
            quillbox.sign_in()
            fill(quillbox, service.address, folder)
            take(browser, service, quillbox, target)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]))
