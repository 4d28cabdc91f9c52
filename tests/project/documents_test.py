"""The documents hold: documents_test.py SOURCE_FOLDER BIN_FOLDER

Links lead somewhere, to a heading too where they name one, docs/index.md leads to each document, directly or by another, and every
block is of a kind that something checks:

cpp             stands word for word in examples/, which every build compiles
console         is run by tests/stories, as is what stands in a document with such blocks under the name of a file
cmake           its lines stand, in their order, in a project that tests/consumers or tests/testkit builds
sh              its commands are there, with the presets and the options that it gives them
(no language)   is a drawing: the folders that it names are there
"""

import pathlib
import re
import shlex
import sys

from shell_commands import Commands, simple_commands

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
from documents import anchors_of, blocks_of, documents_in, in_order, links_of  # pylint: disable=wrong-import-position

SCRIPT = re.compile(r"\bscripts/[a-z-]+")
CMAKE_PROJECTS = ("examples", "tests/consumers", "tests/testkit")


def texts_in(root, folders, pattern):
    return [path.read_text(encoding="utf-8") for folder in folders for path in sorted((root / folder).rglob(pattern))]


def without_comment(line):
    return re.sub(r"\s*#.*", "", line).strip()


def stand_in_order(lines, text):
    standing = iter([without_comment(line) for line in text.splitlines()])
    return all(line in standing for line in lines)


class Checker:
    def __init__(self, root, programs):
        self.root = root
        self.examples = texts_in(root, ["examples"], "*.cpp") + texts_in(root, ["examples"], "*.h")
        self.projects = texts_in(root, CMAKE_PROJECTS, "CMakeLists.txt")
        self.commands = Commands(root, programs)
        self.anchors = {path: anchors_of(path.read_text(encoding="utf-8")) for path in documents_in(root)}

    def problems(self):
        for path in set(documents_in(self.root)).difference(in_order(self.root)):
            yield f"docs/index.md does not lead to {path.relative_to(self.root)}"
        for path in documents_in(self.root):
            for problem in self.problems_in(path):
                yield f"{path.relative_to(self.root)}: {problem}"

    def problems_in(self, path):
        text = path.read_text(encoding="utf-8")
        for target in links_of(text):
            if not self.leads_somewhere(path, target):
                yield f"the link to {target} leads nowhere"
        for script in SCRIPT.findall(text):
            if not (self.root / script).exists():
                yield f"names {script}, which is not there"
        blocks = list(blocks_of(text))
        if len(re.findall(r"^\s*(?:```|~~~)", text, re.MULTILINE)) != 2 * len(blocks):
            yield "a fence is indented, of tildes, or not closed, so that its block would not be checked"
        is_run = path.is_relative_to(self.root / "docs") and any(block.language == "console" for block in blocks)
        for block in blocks:
            if problem := self.problem_of(block, is_run):
                yield f"line {block.line}: {problem}"

    def leads_somewhere(self, path, target):
        if "://" in target or target.startswith("mailto:"):
            return True
        file, _, anchor = target.partition("#")
        place = (path.parent / file).resolve() if file else path
        return place.exists() and (not anchor or anchor in self.anchors.get(place, ()))

    def problem_of(self, block, is_run):
        if block.language == "console" or block.file:
            return None if is_run else "no test runs a block of this document"
        checks = {"cpp": self.problem_of_code, "cmake": self.problem_of_project, "sh": self.problem_of_commands,
                  "": self.problem_of_drawing}
        if check := checks.get(block.language):
            return check(block.text)
        return f'nothing checks blocks of the kind "{block.language}"'

    def problem_of_code(self, text):
        return None if any(text in example for example in self.examples) else f"this code stands in no example:\n{text}"

    def problem_of_project(self, text):
        lines = [line for line in map(without_comment, text.splitlines()) if line]
        if any(stand_in_order(lines, project) for project in self.projects):
            return None
        return f"these lines stand in no project that a test builds:\n{text}"

    def problem_of_commands(self, text):
        commands = simple_commands("\n".join(map(without_comment, text.splitlines())))
        found = [f"{shlex.join(command)}: {problem}" for command in commands if (problem := self.commands.problem_of(command))]
        return "\n".join(found)

    def problem_of_drawing(self, text):
        folders = re.findall(r"^([a-z/]+/)(?= )", text, re.MULTILINE)
        missing = [folder for folder in folders if not (self.root / folder).is_dir()]
        return f"draws {missing[0]}, which is not there" if missing else None


if __name__ == "__main__":
    found = list(Checker(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2])).problems())
    print("\n".join(found) or "the documents hold")
    sys.exit(1 if found else 0)
