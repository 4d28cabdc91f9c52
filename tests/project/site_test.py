"""The site of the documents is made without a warning, and each link inside it leads somewhere: site_test.py SOURCE_FOLDER"""

import html.parser
import pathlib
import subprocess
import sys
import tempfile
import urllib.parse


class Page(html.parser.HTMLParser):
    """What a page links to, and what others may link to in it."""

    def __init__(self, path):
        super().__init__()
        self.targets = set()
        self.anchors = set()
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attrs):
        for name, value in attrs:
            if name in ("id", "name"):
                self.anchors.add(value)
            elif name in ("href", "src") and value:
                self.targets.add(value)


def broken_links(site):
    pages = {path: Page(path) for path in sorted(site.rglob("*.html"))}
    assert len(pages) > 100, "pages are missing"
    for path, page in pages.items():
        for target in sorted(page.targets):
            address = urllib.parse.urlsplit(target)
            if address.scheme or address.netloc:
                continue
            place = (path.parent / urllib.parse.unquote(address.path)).resolve() if address.path else path
            anchor = urllib.parse.unquote(address.fragment)
            if not place.exists() or anchor and place in pages and anchor not in pages[place].anchors:
                yield f"{path.relative_to(site)}: {target} leads nowhere"


def main(root):
    with tempfile.TemporaryDirectory() as folder:
        made = subprocess.run([root / "scripts" / "docs", "--to", folder], check=False, text=True, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT)
        found = [made.stdout] if made.returncode != 0 else list(broken_links(pathlib.Path(folder).resolve() / "html"))
    print("\n".join(found) or "the site holds")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
