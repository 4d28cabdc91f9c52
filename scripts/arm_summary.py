"""What came out of the tests of scripts/arm, a line for each program: arm_summary.py PROCESSOR JUNIT_FILE"""

import re
import sys
import xml.etree.ElementTree

RAN = re.compile(r"^\[==========\] (\d+) tests? from", re.MULTILINE)
PASSED = re.compile(r"^\[  PASSED  \] (\d+) tests?\.", re.MULTILINE)
SKIPPED = re.compile(r"^\[  SKIPPED \] (\d+) tests?[.,]", re.MULTILINE)


def counted(pattern, output, otherwise):
    found = pattern.findall(output)
    return int(found[-1]) if found else otherwise


def rows(file):
    for case in xml.etree.ElementTree.parse(file).getroot().iter("testcase"):
        output, status = case.findtext("system-out", ""), case.get("status")
        yield (case.get("name"), counted(RAN, output, 1), counted(PASSED, output, int(status == "run")),
               counted(SKIPPED, output, int(status == "notrun")), float(case.get("time")))


def main(processor, file):
    found = list(rows(file))
    width = max(len(name) for name, *_ in found)
    print(f"\n{processor:<{width}}    tests  passed  skipped  seconds")
    for name, ran, passed, skipped, seconds in found:
        print(f"{name:<{width}}  {ran:>7}{passed:>8}{skipped:>9}{seconds:>9.1f}")
    ran, passed, skipped = (sum(column) for column in list(zip(*found))[1:4])
    print(f"{'all':<{width}}  {ran:>7}{passed:>8}{skipped:>9}")


if __name__ == "__main__":
    main(*sys.argv[1:])
