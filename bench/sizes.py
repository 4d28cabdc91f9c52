"""Builds a preset that is made for size and prints what it takes, stripped: sizes.py [PRESET], phone without one."""

import pathlib
import re
import subprocess
import sys
from collections import Counter

SOURCE = pathlib.Path(__file__).resolve().parents[1]
SECTION = re.compile(r"^ (\.(?:text|rodata|data|bss|eh_frame|gcc_except_table)[^ ]*)\s+0x\w+\s+0x(\w+) (\S+)$")
OPERATIONS = re.compile(r"BASEAPI_OPERATIONS\(([^)]*)\)")
STRIP = re.compile(r"^CMAKE_STRIP:FILEPATH=(.*)$", re.MULTILINE)


def build(preset):
    """Gives the folder of the build."""
    subprocess.run(["cmake", "--preset", preset], cwd=SOURCE, check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", "--preset", preset, "--target", "baseapi", "baseapi_shared", "example_upload"],
                   cwd=SOURCE, check=True, stdout=sys.stderr)
    return SOURCE / "build" / preset


def strip_of(folder):
    return STRIP.search((folder / "CMakeCache.txt").read_text(encoding="utf-8")).group(1)


def stripped(strip, path, *options):
    """The size of the file without its symbols."""
    copy = path.with_suffix(".stripped")
    subprocess.run([strip, *options, "-o", copy, path], check=True)
    return copy.stat().st_size


def taken(link_map):
    """Bytes of code and data by object file, as the linker kept them."""
    text = re.sub(r"\n( \.\S+)\n\s+", r"\n\1 ", link_map.read_text(encoding="utf-8"))
    text = text[text.index("Linker script and memory map"):]
    sizes = Counter()
    for line in text.splitlines():
        if found := SECTION.match(line):
            sizes[found.group(3)] += int(found.group(2), 16)
    return sizes


def operations(family):
    """How many operations the interfaces of a family have."""
    lists = [found for header in family.glob("i_*.h")
             for found in OPERATIONS.findall(header.read_text(encoding="utf-8"))]
    return sum(names.count(",") for names in lists)


def kibibytes(size):
    return f"{size / 1024:,.1f} KiB"


def table(title, rows):
    print(f"\n{title}\n")
    width = max(len(row[0]) for row in rows)
    for name, *values in rows:
        print(f"  {name:<{width}}" + "".join(f"{value:>16}" for value in values))


def print_files(folder):
    strip = strip_of(folder)
    table("Stripped sizes, built for size", [
        ("static library", kibibytes(stripped(strip, folder / "baseapi/libbaseapi.a", "--strip-debug"))),
        ("shared library", kibibytes(stripped(strip, folder / "baseapi/libbaseapi.so"))),
        ("host that uploads a file, linked statically", kibibytes(stripped(strip, folder / "bin/example_upload"))),
    ])


def print_families(sizes):
    rows, all_size, all_count = [("family", "operations", "code and data", "an operation")], 0, 0
    for family in sorted(path for path in (SOURCE / "baseapi/api").iterdir() if path.is_dir()):
        count = operations(family)
        size = sum(bytes_ for name, bytes_ in sizes.items() if f"baseapi.dir/api/{family.name}/" in name)
        all_size, all_count = all_size + size, all_count + count
        rows.append((family.name, count, kibibytes(size), kibibytes(size / count) if count else "-"))
    table("Growth by the families of operations, in the shared library",
          rows + [("all", all_count, kibibytes(all_size), kibibytes(all_size / all_count))])


def print_folders(sizes):
    folders = Counter()
    for name, size in sizes.items():
        if found := re.search(r"baseapi\.dir/(\w+)", name):
            folders[found.group(1)] += size
    table("By folder of the library", [(name, kibibytes(size)) for name, size in folders.most_common()])


def main(preset="phone"):
    folder = build(preset)
    print_files(folder)
    sizes = taken(next((folder / "baseapi").glob("*.map")))
    # Of joined sources nobody can tell what each takes.
    if any("baseapi.dir/api/" in name for name in sizes):
        print_families(sizes)
        print_folders(sizes)


if __name__ == "__main__":
    main(*sys.argv[1:])
