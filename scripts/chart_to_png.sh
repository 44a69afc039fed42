#!/usr/bin/env bash
# Turns a chart file into a PNG, the long side of the page across.
#
#   scripts/chart_to_png.sh crv.ps crv.png [dots per inch]
set -euo pipefail
if [ $# -lt 2 ]; then
    echo "usage: chart_to_png.sh chart.ps picture.png [dots per inch]" >&2
    exit 2
fi
# The chart turns itself to landscape on an upright page; turned back first, it lies on a page of 792 by 612 points.
gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=png16m -r"${3:-110}" -dTextAlphaBits=4 -dGraphicsAlphaBits=4 \
    -dDEVICEWIDTHPOINTS=792 -dDEVICEHEIGHTPOINTS=612 -dFIXEDMEDIA -sOutputFile="$2" \
    -c "-90 rotate -612 0 translate" -f "$1"
