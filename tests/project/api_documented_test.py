"""Every public type and function has a docstring: api_documented_test.py SOURCE_FOLDER

Public is what baseapi/baseapi.h brings, hostkit, and what tests hosts. What says nothing that its type does not say needs none: constructors,
destructors, operators, and what overrides a documented function.
"""

import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree


def text_of(element):
    return "".join(element.itertext()).strip()


def documented(definition):
    return any(text_of(definition.find(part)) for part in ("briefdescription", "detaileddescription"))


def needs_words(member, type_name):
    name = member.findtext("name")
    if member.get("kind") not in ("function", "enum", "typedef") or member.get("prot") == "private":
        return False
    return not (name.lstrip("~") == type_name or name.startswith("operator") or member.find("reimplements") is not None)


def place_of(definition):
    location = definition.find("location")
    return f"{location.get('file')}:{location.get('line')}"


def undocumented(xml):
    for path in sorted(xml.glob("*.xml")):
        for compound in ElementTree.parse(path).iter("compounddef"):
            if compound.get("prot") == "private" or compound.get("kind") in ("file", "dir", "page"):
                continue
            name = compound.findtext("compoundname").partition("<")[0].rstrip()
            if compound.get("kind") in ("class", "struct") and not documented(compound):
                yield f"{place_of(compound)}: {name}"
            for member in compound.iter("memberdef"):
                if needs_words(member, name.split("::")[-1]) and not documented(member):
                    yield f"{place_of(member)}: {name}::{member.findtext('name')}"


def main(root):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([root / "scripts" / "docs", "--xml", folder], check=True)
        found = sorted(set(undocumented(pathlib.Path(folder, "xml"))))
    print("\n".join(found) or "all is documented")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
