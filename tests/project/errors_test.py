"""docs/errors.md tells each code and each cause that the sources know, and no other code: errors_test.py SOURCE_FOLDER"""

import pathlib
import re
import sys

# What a programming error of the library itself would say.
OWN_FAULTS = ("too long a key in a record", "too many fields in a record")


def texts_in(sources, pattern):
    return [text for source in sources for text in re.findall(pattern, source.read_text(encoding="utf-8"))]


def problems(root):
    page = (root / "docs" / "errors.md").read_text(encoding="utf-8")
    library = sorted(root.glob("baseapi/**/*.cpp"))

    codes = re.findall(r"std::int64_t (BACKUP_\w+) = (\d+);", (root / "baseapi/core/constants.h").read_text(encoding="utf-8"))
    assert len(codes) > 20, "the codes are not found"
    for name, code in codes:
        if not re.search(rf"\b{code}\b.*`{name}`", page):
            yield f"the code {code} {name}"
    for code in set(re.findall(r"\b1000\d\d\b", page)) - {code for _, code in codes} - {"100019"}:
        yield f"no code {code}, which it tells"

    messages = texts_in(library, r'deliverFailure\(-1, "([^"]*)"') + texts_in(library, r'fatalStop\((?:std::string\()?"([^"]*)"')
    messages += texts_in(library, r'\.value_or\("([^"]*未知[^"]*)"')
    messages += texts_in(library, r'(?:reject|runtime_error)\("(The [^"]*|Not [^"]*)"')
    messages += texts_in(library, r'failed\("([^"]*)"')
    messages += texts_in(library, r'Constants::\w+,\s+"([^"]*)"') + texts_in(library, r'value_or\("([A-Z][^"]*)"\)')
    messages += texts_in([root / "cli/upload_cause.cpp"], r'(?m)^    \{"([^"]*)",')
    messages += texts_in([root / "cli/folder_causes.cpp"], r'"(\w+ failure code = |get [\w ]+ overTime)"')
    assert len(messages) > 50, "the messages are not found"
    for message in sorted(set(messages) - set(OWN_FAULTS)):
        if message.strip().rstrip(":") not in page:
            yield f'the message "{message}"'


if __name__ == "__main__":
    found = list(problems(pathlib.Path(sys.argv[1])))
    print("\n".join(f"docs/errors.md lacks {problem}" for problem in found) or "all is told")
    sys.exit(1 if found else 0)
