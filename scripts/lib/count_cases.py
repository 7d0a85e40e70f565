"""Prints how many cases of a CTest run passed, failed and were skipped: count_cases.py REPORT

REPORT is what `ctest --output-junit` wrote. An entry that ran JUnit counts as the cases in its
summary, any other as one. An entry that failed in another way than by its cases (a crash after the
last one, say) counts as one more failure.
"""

import re
import sys
import xml.etree.ElementTree as ElementTree


def summary(output, kind):
    return sum(map(int, re.findall(r"\[ +(\d+) " + kind + r" +\]", output)))


def count(entry):
    if entry.get("status") == "notrun":
        skipped = entry.find("skipped").get("message", "").startswith("SKIP_")
        return (0, 0, 1) if skipped else (0, 1, 0)
    output = entry.findtext("system-out") or ""
    passed, skipped = summary(output, "tests successful"), summary(output, "tests skipped")
    failed = summary(output, "(?:tests failed|tests aborted|containers failed)")
    if entry.get("status") == "fail":
        return passed, max(failed, 1), skipped
    return (passed, failed, skipped) if passed else (1, failed, skipped)


entries = ElementTree.parse(sys.argv[1]).getroot().iter("testcase")
print(*map(sum, zip((0, 0, 0), *map(count, entries))))
