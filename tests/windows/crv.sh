#!/usr/bin/env bash
# Is crv in the cases: runs the program for Windows under Wine by the same name, and removes CR from
# its output, so that the tools in a case get the lines that they get elsewhere.
#
# CRV_WINE, CRV_START_AS and CRV_PROGRAM are the programs.
set -o pipefail

name=$0
[ "${name##*/}" = crv ] && name=crv # found through PATH

run() {
    "$CRV_WINE" "$CRV_START_AS" "$name" "$@"
}

without_cr() {
    sed 's/\r$//'
}

if [ /dev/stdout -ef /dev/stderr ]; then
    # A common stream must stay one, or the order of its lines is lost.
    run "$@" 2>&1 | without_cr
else
    { run "$@" 2>&1 >&3 3>&- | without_cr >&2; } 3>&1 | without_cr
fi
