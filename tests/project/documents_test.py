"""The documents hold: links lead somewhere, scripts they name exist, and their C++ stands word for word in examples/, which the
build compiles.
"""

import pathlib
import re
import sys

LINK = re.compile(r"\[[^\]]*\]\(([^)#\s]+)(?:#[^)]*)?\)")
BLOCK = re.compile(r"^```cpp\n(.*?)^```$", re.MULTILINE | re.DOTALL)
SCRIPT = re.compile(r"\bscripts/[a-z-]+")


def problems(root):
    examples = [path.read_text(encoding="utf-8") for path in sorted((root / "examples").rglob("*.[ch]*")) if path.suffix in (".cpp", ".h")]
    for document in sorted(root.glob("*.md")) + sorted((root / "docs").rglob("*.md")):
        name = document.relative_to(root)
        text = document.read_text(encoding="utf-8")
        for target in LINK.findall(text):
            if "://" not in target and not target.startswith("mailto:") and not (document.parent / target).exists():
                yield f"{name}: the link to {target} leads nowhere"
        for script in SCRIPT.findall(text):
            if not (root / script).exists():
                yield f"{name}: names {script}, which is not there"
        for block in BLOCK.findall(text):
            if not any(block in example for example in examples):
                yield f"{name}: this code stands in no example:\n{block}"


if __name__ == "__main__":
    found = list(problems(pathlib.Path(sys.argv[1])))
    print("\n".join(found) or "the documents hold")
    sys.exit(1 if found else 0)
