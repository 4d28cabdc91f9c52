"""The include lines of the sources against the plan of the floors: an include points down or sideways, never up."""

import pathlib
import re
import sys

# Each folder may include itself and what stands in its row; an unlisted folder is an error.
SHARED = ["platform", "json", "core", "net", "api/records"]
ALLOWED = {
    "baseapi/platform": [],
    "baseapi/json": ["baseapi/platform"],
    "baseapi/core": ["baseapi/platform", "baseapi/json"],
    "baseapi/net": ["baseapi/platform", "baseapi/json", "baseapi/core"],
    "baseapi/api/records": ["baseapi/json", "baseapi/net"],
    # A family includes no other family: what two of them share stands in api/records.
    "baseapi/api/*": [f"baseapi/{folder}" for folder in SHARED],
    "baseapi/transfer": [f"baseapi/{folder}" for folder in SHARED] + ["baseapi/api/*"],
    "baseapi/contacts": [f"baseapi/{folder}" for folder in SHARED] + ["baseapi/api/*", "baseapi/transfer"],
    "baseapi/backup": [f"baseapi/{folder}" for folder in SHARED] + ["baseapi/api/*", "baseapi/transfer", "baseapi/contacts"],
    "baseapi/testkit": [f"baseapi/{folder}" for folder in SHARED] + ["baseapi/api/*", "baseapi/transfer", "baseapi/backup"],
    "baseapi": ["*baseapi"],  # assembly.cpp names every implementation
    "hostkit": ["*baseapi"],
    "cli": ["*baseapi", "hostkit"],
    # The other side of the wire shares no code with the library.
    "quillboxd": [],
}
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def floor_of(path):
    """The row of the table that a file or an included path belongs to."""
    folder = str(pathlib.PurePosixPath(path).parent)
    candidates = [folder] + [str(p) for p in pathlib.PurePosixPath(folder).parents]
    for candidate in candidates:
        if candidate in ALLOWED:
            return candidate
        parent = str(pathlib.PurePosixPath(candidate).parent)
        if parent + "/*" in ALLOWED:
            return candidate
    return None


def row_of(floor):
    return ALLOWED.get(floor) if floor in ALLOWED else ALLOWED.get(str(pathlib.PurePosixPath(floor).parent) + "/*")


def may_include(floor, target):
    if floor == target:
        return True
    for allowed in row_of(floor):
        if allowed == target:
            return True
        if allowed.startswith("*") and (target == allowed[1:] or target.startswith(allowed[1:] + "/")):
            return True
        if allowed.endswith("/*") and str(pathlib.PurePosixPath(target).parent) == allowed[:-2]:
            return True
    return False


def problems(root):
    for top in ["baseapi", "hostkit", "cli", "quillboxd"]:
        for path in sorted((root / top).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            name = path.relative_to(root).as_posix()
            floor = floor_of(name)
            if floor is None:
                yield f"{name}: its folder has no floor in the table"
                continue
            text = path.read_text(encoding="utf-8")
            for included in INCLUDE.findall(text):
                if not (root / included).exists():
                    yield f'{name}: includes "{included}", which is no path from the root of the project'
                    continue
                target = floor_of(included)
                if target is None or not may_include(floor, target):
                    yield f'{name}: includes "{included}", which is not below {floor}'


def self_test():
    assert floor_of("baseapi/api/files/requests.cpp") == "baseapi/api/files"
    assert floor_of("baseapi/assembly.cpp") == "baseapi"
    assert may_include("baseapi/net", "baseapi/core")
    assert not may_include("baseapi/core", "baseapi/net")
    assert not may_include("baseapi/api/files", "baseapi/api/user")
    assert may_include("baseapi/transfer", "baseapi/api/files")
    assert not may_include("baseapi/api/files", "baseapi/transfer")
    assert may_include("baseapi", "baseapi/transfer")
    assert not may_include("baseapi/transfer", "hostkit")
    assert may_include("cli", "hostkit") and may_include("cli", "baseapi/core")
    assert not may_include("quillboxd", "baseapi/json")


if __name__ == "__main__":
    self_test()
    found = list(problems(pathlib.Path(sys.argv[1])))
    print("\n".join(found) or "every include points down or sideways")
    sys.exit(1 if found else 0)
