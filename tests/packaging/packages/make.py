#!/usr/bin/env python3
# packaging/packages/make - makes the packages that the tests beside it look at, as scripts/package.sh makes them for everybody.
import os
import subprocess
import sys

from shared import ROOT, need_to_build

need_to_build()
environment = {name: value for name, value in os.environ.items() if name not in ("CFLAGS", "CXXFLAGS", "LDFLAGS")}
sys.exit(subprocess.run(["bash", ROOT / "scripts/package.sh", sys.argv[1]], env=environment).returncode)
