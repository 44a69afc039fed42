#!/usr/bin/env bash
# Builds the program and draws the example chart, as PostScript and as a PNG to look at. Without
# Ghostscript, which makes the PNG, it leaves the PostScript.
#
#   scripts/demo.sh [DIRECTORY]    leaves crv.ps and crv.png in the directory, by default "demo"
set -euo pipefail
directory=${1:+$(realpath -m "$1")}
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"
here=$PWD
directory=${directory:-$here/demo}

# A user who may not install packages may have the ones for the build, or other versions of them.
if ! scripts/setup.sh demo && ! command -v cmake >/dev/null; then
    exit 1
fi
cmake --preset release >/dev/null
cmake --build --preset release --parallel "$jobs" --target programs | tail -n 1

mkdir -p "$directory"
cp examples/run1.req "$directory"
cd "$directory"
# A finished chart ends with status 1. The printer command is left out: ':' does nothing.
status=0
CRV_PRINTCHAIN=: "$here/build/release/crv" -t "Quarter car over a bump" \
    -r 0,38:3,52:3,70:2 -f run1.req -p || status=$?
if [ "$status" -ne 1 ]; then
    echo "crv ended with status $status" >&2
    exit 1
fi
echo
if command -v gs >/dev/null; then
    "$here/companions/crv2png" crv.ps
    echo "The chart is in $directory/crv.ps and, to look at, in $directory/crv.png"
else
    echo "The chart is in $directory/crv.ps. There is no crv.png to look at, because Ghostscript" \
        "is missing."
fi
