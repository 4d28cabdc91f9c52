"""Every interface of the library has a double, and the testkit compiles in a host without exceptions or run-time types, with all its
warnings on: doubles_test.py ROOT COMPILER...
"""

import pathlib
import re
import subprocess
import sys

INTERFACE = re.compile(r"^class (I[A-Z]\w*) \{", re.MULTILINE)
DOUBLED = re.compile(r"public InterfaceDouble<(I\w+)>")
FLAGS = ["-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-fno-exceptions", "-fno-rtti", "-fsyntax-only", "-x", "c++"]
HEADERS = '#include "baseapi/testkit/doubles.h"\n#include "baseapi/testkit/local_service.h"\n'


def names(pattern, headers):
    return {name for header in headers for name in pattern.findall(header.read_text(encoding="utf-8"))}


def main(root, compilers):
    interfaces = names(INTERFACE, root.glob("baseapi/**/*.h"))
    assert {"IFile", "ITransfer", "ISliceFile"} <= interfaces, "these are not the library's interfaces"
    found = [f"{name} has no double" for name in sorted(interfaces - names(DOUBLED, root.glob("baseapi/testkit/*.h")))]
    for compiler in compilers:
        done = subprocess.run([compiler, *FLAGS, "-I", root, "-"], input=HEADERS,
                              capture_output=True, text=True, check=False)
        if done.returncode:
            found.append(f"{compiler}: {done.stderr}")
    print("\n".join(found) or f"{len(interfaces)} interfaces have a double")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1]), sys.argv[2:]))
