#!/usr/bin/env python3
"""Makes the packages for the other scripts, with scripts/package.sh."""
import os
import subprocess
import sys

from shared import ROOT, require_to_build

require_to_build()
environment = {name: value for name, value in os.environ.items()
               if name not in ("CFLAGS", "CXXFLAGS", "LDFLAGS")}
sys.exit(subprocess.call(["bash", ROOT / "scripts/package.sh", sys.argv[1]], env=environment))
