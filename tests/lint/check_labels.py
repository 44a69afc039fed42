#!/usr/bin/env python3
"""Every test has one label: the part of its name before the first slash.

    check_labels.py CTEST BUILD
"""
import json
import subprocess
import sys

LABELS = {
    "unit", "cases", "fuzz", "lint", "docs", "faults", "bounds", "pipes", "terminal", "render",
    "pictures", "page", "tables", "shells", "packages", "printer", "valgrind", "windows", "targets",
    "nightly",
}


def main():
    ctest, build = sys.argv[1:3]
    listed = subprocess.run([ctest, "--test-dir", build, "--show-only=json-v1"], check=True,
                            capture_output=True)
    tests = json.loads(listed.stdout)["tests"]
    faults = []
    for test in tests:
        properties = {each["name"]: each["value"] for each in test.get("properties", [])}
        labels = properties.get("LABELS", [])
        if labels != [test["name"].split("/")[0]] or not LABELS.issuperset(labels):
            faults.append(f"{test['name']} has the labels {labels}")
    print(*faults, sep="\n")
    sys.exit(1 if faults or not tests else 0)


if __name__ == "__main__":
    main()
