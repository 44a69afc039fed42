#!/usr/bin/env python3
"""The example files are those that examples/make_examples.py makes."""
import pathlib
import subprocess
import sys
import tempfile

examples = pathlib.Path(sys.argv[1])
with tempfile.TemporaryDirectory() as scratch:
    subprocess.run([sys.executable, examples / "make_examples.py", scratch], check=True)
    made = sorted(pathlib.Path(scratch).iterdir())
    stale = [p.name for p in made if (examples / p.name).read_bytes() != p.read_bytes()]
print(*(f"{name} is stale: run make_examples.py" for name in stale), sep="\n")
sys.exit(1 if stale or not made else 0)
