"""What came out of the tests of scripts/arm, a line for each program: arm_summary.py PROCESSOR JUNIT_FILE"""

import re
import sys
import xml.etree.ElementTree
from collections import defaultdict

RAN = re.compile(r"^\[==========\] (\d+) tests? from", re.MULTILINE)
PASSED = re.compile(r"^\[  PASSED  \] (\d+) tests?\.", re.MULTILINE)
SKIPPED = re.compile(r"^\[  SKIPPED \] (\d+) tests?[.,]", re.MULTILINE)


def counted(pattern, output, otherwise):
    found = pattern.findall(output)
    return int(found[-1]) if found else otherwise


def rows(file):
    """Tests, passed, skipped and seconds by program, whose tests are spread over several processes."""
    programs = defaultdict(lambda: (0, 0, 0, 0.0))
    for case in xml.etree.ElementTree.parse(file).getroot().iter("testcase"):
        output, status = case.findtext("system-out", ""), case.get("status")
        counts = (counted(RAN, output, 1), counted(PASSED, output, int(status == "run")),
                  counted(SKIPPED, output, int(status == "notrun")), float(case.get("time")))
        name = re.sub(r"\.\d+$", "", case.get("name"))
        programs[name] = tuple(map(sum, zip(programs[name], counts)))
    return programs


def main(processor, file):
    found = rows(file)
    found["all"] = tuple(map(sum, zip(*found.values())))
    width = max(map(len, found))
    print(f"\n{processor:<{width}}    tests  passed  skipped  seconds")
    for name, (ran, passed, skipped, seconds) in found.items():
        print(f"{name:<{width}}  {ran:>7}{passed:>8}{skipped:>9}{seconds:>9.1f}")


if __name__ == "__main__":
    main(*sys.argv[1:])
