#!/usr/bin/env python3
"""Only src/records defines variables that can change: no other object file has anything in a
writable section, except the variables that are listed here.

    check_state.py SRC OBJECT...    the objects that the build made, one for each source below SRC
"""
import pathlib
import re
import subprocess
import sys

LISTED = {
    "crv_Calloc",  # the allocator that tests replace
    "run_status",  # how the process ends
    "status_line", "on_interrupt",  # what is shown and must be erased
    "unfinished",  # the output that must be removed
    "utl_uses_wide_vectors",  # what the processor has
}
WRITABLE = re.compile(r"^\.(data|bss|tdata|tbss)(?!\.rel\.ro)")


def writable_symbols(obj):
    table = subprocess.run(["objdump", "-t", "-C", obj], check=True, capture_output=True, text=True)
    for line in table.stdout.splitlines():
        symbol = re.match(r"[0-9a-f]+ (.{7}) (\S+)\s+([0-9a-f]+) (.*)", line)
        if symbol and "O" in symbol.group(1) and WRITABLE.match(symbol.group(2)):
            yield symbol.group(4).strip()


def main():
    src, objects = pathlib.Path(sys.argv[1]), sys.argv[2:]
    sources = {obj: obj.rpartition("/src/")[2].removesuffix(".o") for obj in objects}
    missing = {str(path.relative_to(src)) for path in src.rglob("*.cpp")} - set(sources.values())
    faults = [f"{source}: has no object" for source in sorted(missing)
              if not is_of_another_system(source)]
    seen_in_records = 0
    for obj, source in sources.items():
        found = list(writable_symbols(obj))
        if source.startswith("records/"):
            seen_in_records += len(found)
        else:
            faults += [f"{source}: {name} can change" for name in found if name not in LISTED]
    if seen_in_records == 0:
        faults.append("no variable seen in records: the check itself is broken")
    print(*faults, sep="\n")
    sys.exit(1 if faults else 0)


def is_of_another_system(source):
    return source.endswith(("_win32.cpp", "_vms.cpp"))


if __name__ == "__main__":
    main()
