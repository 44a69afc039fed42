#!/usr/bin/env bash
# Stands for crv in the cases: runs the program for Windows under Wine, by the name that it is called by here, and leaves the
# CR out of its line ends, so that the tools in a case see the lines that they see elsewhere.
#
# CRV_WINE, CRV_START_AS and CRV_PROGRAM name what is run.
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
    # One stream must stay one, or the order of its lines is lost.
    run "$@" 2>&1 | without_cr
else
    { run "$@" 2>&1 >&3 3>&- | without_cr >&2; } 3>&1 | without_cr
fi
