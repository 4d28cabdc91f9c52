"""Runs one document against a local service of its own: run_story.py BIN_FOLDER DOCUMENT"""

import os
import pathlib
import sys
import tempfile

import story

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "scripts"))
from demo_parts import ENVIRONMENT, Service  # pylint: disable=wrong-import-position


def run(programs, document):
    with tempfile.TemporaryDirectory(prefix="quillbox-story-") as name:
        folder = pathlib.Path(name)
        (folder / "here").mkdir()
        with Service(programs / "quillboxd", folder) as service:
            environment = {
                **ENVIRONMENT,
                "PATH": f"{programs}:{os.environ['PATH']}",
                "QUILLBOX_HOST": service.address,
                "QUILLBOX_STATE": str(folder / "state"),
                "TMPDIR": str(folder),
                "XDG_STATE_HOME": str(folder),
            }
            return story.tell(document.read_text(encoding="utf-8"), folder / "here", environment)


if __name__ == "__main__":
    try:
        print(f"{run(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]))} commands went as told")
    except story.Failed as problem:
        sys.exit(f"{sys.argv[2]}: {problem}")
