"""Every header compiles alone with the first compiler, and with each one what a host includes (baseapi/baseapi.h, the
doubles, the hostkit), which pulls in no outside library's header.

headers_alone_test.py ROOT COMPILER...
"""

import concurrent.futures
import os
import pathlib
import subprocess
import sys
import tempfile

FLAGS = ["-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Wno-missing-field-initializers", "-Werror", "-x", "c++"]
OUTSIDE = ("/boost/", "/curl/", "/openssl/", "/simdjson", "/sqlite3", "/CLI/", "/unicode/", "/rapidjson/", "/exiv2/")


def host_includes(header):
    return header in ("baseapi/baseapi.h", "baseapi/testkit/doubles.h") or header.startswith("hostkit/")


def compile_alone(root, compiler, header):
    """The files that it includes, and the compiler's complaint."""
    source = f'#include "{header}"\n#include "{header}"\n'
    with tempfile.NamedTemporaryFile("r", suffix=".d") as included:
        done = subprocess.run(
            [compiler, *FLAGS, "-I", str(root), "-fsyntax-only", "-MD", "-MF", included.name, "-"],
            input=source, capture_output=True, text=True, check=False)
        return included.read().replace("\\\n", " ").split(), done.stderr if done.returncode else ""


def main(root, compilers):
    root = pathlib.Path(root)
    headers = sorted(
        path.relative_to(root).as_posix()
        for top in ("baseapi", "hostkit", "cli", "quillboxd")
        for path in (root / top).rglob("*.h"))
    jobs = [(compiler, header) for compiler in compilers for header in headers
            if compiler == compilers[0] or host_includes(header)]
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for (compiler, header), (included, error) in zip(jobs, pool.map(lambda job: compile_alone(root, *job), jobs)):
            if error:
                failed = True
                print(f"{header} does not compile alone with {compiler}:\n{error}")
            outside = [path for path in included if any(mark in path for mark in OUTSIDE)]
            if outside and host_includes(header):
                failed = True
                print(f"{header} pulls in {outside[0]}")
    print(f"{len(headers)} headers, {len(jobs)} compilations")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
