"""What the library promises against the list of what it has promised: the symbols that the shared libraries export, and each
declaration of the public headers.

exported_api_test.py SOURCE_FOLDER NM LIBRARY... [--update]
"""

import difflib
import pathlib
import re
import subprocess
import sys

LIST = "tests/project/exported_api.txt"
HOST_INCLUDES = ["baseapi/baseapi.h", "baseapi/testkit/doubles.h", "baseapi/testkit/local_service.h",
                 "hostkit/folder_photo_library.h", "hostkit/slice_file.h", "hostkit/vcf_address_book.h"]
ADVICE = f"""
The public interface is not what {LIST} says. Where that is not meant, take it back. Where it is:
- name the change in CHANGELOG.md: "Added", or "Changed", "Deprecated" and "Removed" for what a host has to follow;
- a change that a host has to follow raises the version in CMakeLists.txt: the minor one while the major one is 0, otherwise the major
  one; where an old program must not even link, the number of the inline namespace goes up too;
- write the new list with the command of this test and --update behind it, into the same commit.
docs/public-api.md says what is promised.
"""
SHORT = [
    ("std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >", "std::string"),
    ("std::basic_string_view<char, std::char_traits<char> >", "std::string_view"),
    ("std::filesystem::__cxx11::path", "std::filesystem::path"),
    ("[abi:cxx11]", ""),
    (" >", ">"),
]


def symbols(nm, library):
    output = subprocess.run([nm, "--dynamic", "--demangle", "--defined-only", library], check=True, capture_output=True, text=True).stdout
    for line in output.splitlines():
        _, kind, name = line.split(maxsplit=2)
        if kind == "u":  # a constant of a header, of which a build without optimisation keeps a copy
            continue
        for long, short in SHORT:
            name = name.replace(long, short)
        yield name


def public_headers(root):
    waiting, found = list(HOST_INCLUDES), []
    while waiting:
        header = waiting.pop()
        if header not in found:
            found.append(header)
            waiting += re.findall(r'^#include "(.*)"', (root / header).read_text(encoding="utf-8"), re.MULTILINE)
    return found


def code_of(text):
    """Without comments, lines of the preprocessor, labels, and the project's own macros."""
    text = re.sub(r"//.*", "", text)
    text = re.sub(r"^\s*#(?:.*\\\n)*.*$", "", text, flags=re.MULTILINE)
    text = re.sub(r"\bBASEAPI_\w+\([^)]*\)|\bBASEAPI_API\b|\b(?:public|protected|private):", "", text)
    return re.sub(r"\s+", " ", text)


def closing(code, opening):
    """The place of the brace that closes the one at `opening`."""
    depth = 0
    for place in range(opening, len(code)):
        depth += {"{": 1, "}": -1}.get(code[place], 0)
        if depth == 0:
            return place
    raise ValueError("a brace is not closed")


def declarations(code, scope="", start=0):
    """Pairs of a scope and a statement in it; what functions consist of is left out, and what enumerations do is not."""
    place = start
    while place < len(code):
        if code[place] == ";":
            if head := code[start:place].strip():
                yield scope, re.sub(r"\s*\{.*\}", "", head) if not head.startswith("enum") else head
            start = place + 1
        elif code[place] == "{":
            head, end = code[start:place].strip(), closing(code, place)
            if opened := re.match(r"(?:template <.*> )?(namespace|class|struct) ((?:inline |[\w:])+)(?: final)?( : .*)?$", head):
                kind, name, _ = opened.groups()
                if kind != "namespace":
                    yield scope, head
                inner = name.replace("inline ", "")
                yield from declarations(code[place + 1:end], f"{scope}::{inner}".removeprefix("::"))
                start = end + 1
            elif "(" in head and not code[end + 1:].lstrip().startswith(";") and " = " not in head:
                yield scope, head
                start = end + 1
            place = end
        place += 1


def promised(root, nm, libraries):
    lines = []
    for library in libraries:
        lines += [f"# exported by {pathlib.Path(library).name.partition('.')[0]}", *sorted(set(symbols(nm, library))), ""]
    scopes = {}
    for header in public_headers(root):
        for scope, statement in declarations(code_of((root / header).read_text(encoding="utf-8"))):
            scopes.setdefault(scope, []).append(statement)
    for scope, statements in sorted(scopes.items()):
        # The order of a class is its layout, that of a namespace is nothing.
        ordered = sorted(statements) if scope in ("baseapi::v1", "hostkit") else statements
        lines += [f"# declared in {scope}", *ordered, ""]
    return [line + "\n" for line in lines]


def self_test():
    code = code_of("""
        namespace a::inline v1 {
        /// Words; {braces}
        struct BASEAPI_API B : C { // more
            enum class D { e, f };
            int g = 1;
            H i{60'000};
            B() : g(2) { return; }
            virtual void j(int k) = 0;
            BASEAPI_FIELDS(B, g, i)
        };
        void l();
        }
        namespace a::inline v1::m { class N final : B {}; }""")
    assert list(declarations(code)) == [
        ("a::v1", "struct B : C"), ("a::v1::B", "enum class D { e, f }"), ("a::v1::B", "int g = 1"),
        ("a::v1::B", "H i"), ("a::v1::B", "B() : g(2)"), ("a::v1::B", "virtual void j(int k) = 0"),
        ("a::v1", "void l()"), ("a::v1::m", "class N final : B")], list(declarations(code))


def main(root, nm, *libraries):
    root = pathlib.Path(root)
    update = "--update" in libraries
    now = promised(root, nm, [library for library in libraries if library != "--update"])
    if update:
        (root / LIST).write_text("".join(now), encoding="utf-8")
        return 0
    before = (root / LIST).read_text(encoding="utf-8").splitlines(keepends=True)
    difference = list(difflib.unified_diff(before, now, "promised", "there now", n=1))
    print("".join(difference) + ADVICE if difference else f"{len(now)} lines, as promised")
    return 1 if difference else 0


if __name__ == "__main__":
    self_test()
    sys.exit(main(*sys.argv[1:]))
