"""The library registers nothing to be destroyed when main has been left: its threads may still be at work then."""

import subprocess
import sys


def undefined_symbols(nm, libraries):
    """Pairs of an object file and a symbol that it takes from elsewhere."""
    output = subprocess.run([nm, "--print-file-name", "--undefined-only", *libraries],
                            check=True, capture_output=True, text=True).stdout
    return [(words[0], words[-1]) for words in map(str.split, output.splitlines()) if len(words) > 1]


def main(nm, libraries):
    symbols = undefined_symbols(nm, libraries)
    assert any(symbol == "pthread_sigmask" for _, symbol in symbols), "these are not the library's symbols"
    found = [file for file, symbol in symbols if symbol in ("__cxa_atexit", "atexit", "on_exit")]
    for file in found:
        print(file, "has a static object with a destructor; make it a reference to one that is never destroyed")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
