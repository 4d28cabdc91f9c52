"""Every header compiles alone, and what a host includes (baseapi/baseapi.h, the hostkit) pulls in no outside library's header.

headers_alone_test.py ROOT COMPILER...
"""

import concurrent.futures
import os
import pathlib
import subprocess
import sys

FLAGS = ["-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Wno-missing-field-initializers", "-Werror", "-x", "c++"]
OUTSIDE = ("/boost/", "/curl/", "/openssl/", "/simdjson", "/sqlite3", "/CLI/", "/unicode/", "/rapidjson/", "/exiv2/")


def compile_alone(root, compiler, header):
    source = f'#include "{header}"\n#include "{header}"\n'
    done = subprocess.run(
        [compiler, *FLAGS, "-I", str(root), "-M", "-"], input=source, capture_output=True, text=True, check=False)
    if done.returncode == 0:
        syntax = subprocess.run(
            [compiler, *FLAGS, "-I", str(root), "-fsyntax-only", "-"],
            input=source, capture_output=True, text=True, check=False)
        if syntax.returncode == 0:
            return header, done.stdout.replace("\\\n", " ").split(), ""
        return header, [], syntax.stderr
    return header, [], done.stderr


def main(root, compilers):
    root = pathlib.Path(root)
    headers = sorted(
        path.relative_to(root).as_posix()
        for top in ("baseapi", "hostkit", "cli", "quillboxd")
        for path in (root / top).rglob("*.h"))
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        jobs = [pool.submit(compile_alone, root, compiler, header) for compiler in compilers for header in headers]
        for job in jobs:
            header, included, error = job.result()
            if error:
                failed = True
                print(f"{header} does not compile alone:\n{error}")
            if header == "baseapi/baseapi.h" or header.startswith("hostkit/"):
                outside = [path for path in included if any(mark in path for mark in OUTSIDE)]
                if outside:
                    failed = True
                    print(f"{header} pulls in {outside[0]}")
    print(f"{len(headers)} headers, {len(compilers)} compilers")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
