#!/usr/bin/env bash
# Replaces crv, crv-csv and so on in the cases: runs the Windows program under Wine with the name of
# this call, and removes the CR from its line ends for the tools in a case.
#
# CRV_WINE, CRV_START_AS and CRV_PROGRAM are the paths of Wine, start_as.exe and the program crv;
# the others are beside it.
set -o pipefail

name=$0
case ${name##*/} in # found through PATH
    crv) name=crv ;;
    crv-*)
        name=${name##*/}
        export CRV_PROGRAM=${CRV_PROGRAM%/*}/$name.exe
        ;;
esac

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
