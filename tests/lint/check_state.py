#!/usr/bin/env python3
"""Only src/records defines variables that can change: no other object file has anything in a writable section, but for
those that are listed here."""
import pathlib
import re
import subprocess
import sys
import tempfile

LISTED = {"crv_Calloc"}  # the allocator that tests replace
WRITABLE = re.compile(r"^\.(data|bss|tdata|tbss)(?!\.rel\.ro)")


def writable_symbols(source, src, compiler, scratch):
    obj = pathlib.Path(scratch) / "object.o"
    subprocess.run([compiler, "-std=c++20", "-fno-exceptions", "-O1", f"-I{src}", "-DCRV_BUILD_DATE=\"\"",
                    "-DCRV_BUILD_TIME=\"\"", "-c", str(source), "-o", str(obj)], check=True)
    table = subprocess.run(["objdump", "-t", str(obj)], check=True, capture_output=True, text=True).stdout
    for line in table.splitlines():
        symbol = re.match(r"[0-9a-f]+ (.{7}) (\S+)\s+([0-9a-f]+) (.*)", line)
        if symbol and "O" in symbol.group(1) and WRITABLE.match(symbol.group(2)):
            yield symbol.group(4).strip()


def main():
    src, compiler = pathlib.Path(sys.argv[1]), sys.argv[2]
    faults = []
    seen_in_records = 0
    with tempfile.TemporaryDirectory() as scratch:
        for source in sorted(src.rglob("*.cpp")):
            if source.stem.endswith(("_win32", "_vms")):
                continue
            found = list(writable_symbols(source, src, compiler, scratch))
            if source.parent.name == "records":
                seen_in_records += len(found)
            else:
                faults += [f"{source.relative_to(src)}: {name} can change" for name in found if name not in LISTED]
    if seen_in_records == 0:
        faults.append("no variable seen in records: the check itself is broken")
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
