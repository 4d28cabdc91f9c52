"""Runs a document that begins with nothing but the built project: run_from_nothing.py BUILD_FOLDER DOCUMENT

Its shell has a home that is empty but for ~/baseapi/build/release, which is the given build, and none of the project's programs
on its PATH.
"""

import pathlib
import sys
import tempfile

import story

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
from demo_parts import ENVIRONMENT  # pylint: disable=wrong-import-position


def run(build, document):
    with tempfile.TemporaryDirectory(prefix="from-nothing-") as name:
        home = pathlib.Path(name)
        builds = home / "baseapi" / "build"
        builds.mkdir(parents=True)
        (builds / "release").symlink_to(build)
        environment = {name: value for name, value in ENVIRONMENT.items() if not name.startswith(("XDG_", "CMAKE_"))}
        (home / "empty").mkdir()
        return story.tell(document.read_text(encoding="utf-8"), home / "empty", {**environment, "HOME": str(home)})


if __name__ == "__main__":
    try:
        print(f"{run(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]))} commands and files went as told")
    except story.Failed as problem:
        sys.exit(f"{sys.argv[2]}: {problem}")
