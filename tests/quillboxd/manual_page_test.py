"""The manual page of quillboxd is well made and names the options that the program has: manual_page_test.py PROGRAM PAGE"""

import re
import subprocess
import sys

# "--tls CERT KEY": the option, and what stands for its values.
IN_HELP = re.compile(r"^ +(?:-\w,)?--([\w-]+)((?: [A-Z]+)*)", re.MULTILINE)
IN_PAGE = re.compile(r"^\.It (?:Fl \w , )?Fl Fl ([\w-]+)(?: Ar (.+))?$", re.MULTILINE)


def options(pattern, text):
    return {name: values.split() for name, values in pattern.findall(text)}


def complaints(page):
    """A page that is not installed on this machine may be named."""
    lint = subprocess.run(["mandoc", "-Tlint", page], capture_output=True, text=True, check=False)
    return [line for line in (lint.stdout + lint.stderr).splitlines() if "referenced manual not found" not in line]


def main(program, page):
    usage = subprocess.run([program, "--help"], capture_output=True, text=True, check=True).stdout
    in_help = options(IN_HELP, usage)
    with open(page, encoding="utf-8") as text:
        in_page = options(IN_PAGE, text.read())
    problems = complaints(page)
    if "data" not in in_help:
        problems.append(f"no options were found in {usage}")
    if in_help != in_page:
        problems.append(f"the program has the options {in_help}, the page {in_page}")
    return problems


if __name__ == "__main__":
    found = main(*sys.argv[1:])
    print("\n".join(found) or "the manual page holds")
    sys.exit(1 if found else 0)
