"""The documents of the project as their readers see them: blocks between fences, links, and the anchors of headings.

documents.py: their names, in the order of their reading
documents.py FILE: the document as Doxygen is to read it, which knows neither anchors of headings nor names of files behind the
language of a block
"""

import dataclasses
import pathlib
import re
import sys

FENCE = re.compile(r"^```([^\n`]*)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
HEADING = re.compile(r"^(#+) +(.*?) *$", re.MULTILINE)
LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")


@dataclasses.dataclass
class Block:
    """What stands between two fences. A name behind the language is that of the file that the text is."""
    line: int
    language: str
    file: str
    text: str


def blocks_of(text):
    for found in FENCE.finditer(text):
        language, _, file = found.group(1).strip().partition(" ")
        yield Block(text.count("\n", 0, found.start(2)) + 1, language, file, found.group(2))


def prose_of(text):
    return FENCE.sub("", text)


def links_of(text):
    """The targets of links and pictures, without those that stand in code."""
    return LINK.findall(re.sub(r"`[^`\n]*`", "", prose_of(text)))


def anchor_of(heading):
    """Lower case, hyphens for blanks, no other marks: so forges name headings."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def anchors_of(text):
    """What a link to the document may name behind "#"."""
    return {anchor_of(heading) for _, heading in HEADING.findall(prose_of(text))}


def documents_in(root):
    return sorted(root.glob("*.md")) + sorted((root / "docs").rglob("*.md"))


def in_order(root):
    """The first page, the index, what that leads to, and what leads on from there."""
    first = root / "README.md"
    order = [root / "docs" / "index.md"]
    for document in order:
        for link in links_of(document.read_text(encoding="utf-8")):
            path = (document.parent / link.partition("#")[0]).resolve()
            if path.suffix == ".md" and path not in (first, *order):
                order.append(path)
    return [first, *order]


def for_doxygen(text, name):
    """Gives each heading a label that no other document has, and each link to a heading its label."""

    def label(file, anchor):
        return f"{pathlib.PurePath(file).stem}_{anchor}"

    def labelled(heading):
        marks, words = heading.groups()
        return heading.group() if marks == "#" else f"{marks} {words} {{#{label(name, anchor_of(words))}}}"

    def prose(part):
        linked = re.sub(r"\]\(([^)\s:#]*)#([^)\s]+)\)", lambda link: f"](#{label(link[1] or name, link[2])})", part)
        return HEADING.sub(labelled, linked)

    done, place = "", 0
    for block in FENCE.finditer(text):
        language = block.group(1).partition(" ")[0]
        done += f"{prose(text[place:block.start()])}```{language}\n{block.group(2)}```"
        place = block.end()
    return done + prose(text[place:])


if __name__ == "__main__":
    if len(sys.argv) > 1:
        file = pathlib.Path(sys.argv[1])
        sys.stdout.write(for_doxygen(file.read_text(encoding="utf-8"), file.name))
    else:
        here = pathlib.Path().resolve()
        print("\n".join(str(document.relative_to(here)) for document in in_order(here)))
