#!/usr/bin/env bash
# Makes the packages: the .deb, the .tar.gz with a program that needs no library, the .zip for
# Windows where that can be compiled, and the sums of all.
#
#   scripts/package.sh [DIRECTORY]    leaves them in the directory, by default "dist"
set -euo pipefail
# Permissions come from the umask, times in the .zip from the time zone, and the order of lists from
# the language.
umask 022
export TZ=UTC LC_ALL=C
directory=${1:+$(realpath -m "$1")}
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"
require_tier package
here=$PWD
directory=${directory:-$here/dist}

make_package() { # preset, kind of package
    cmake --preset "$1" >/dev/null
    cmake --build --preset "$1" --parallel "$(nproc)" --target crv | tail -n 1
    rm -rf "build/$1/packages"
    # All packages have one time, that of the source; programs for Windows that are stripped too.
    SOURCE_DATE_EPOCH=$(
        sed -n 's/^set(CPACK_CRV_EPOCH "\(.*\)")$/\1/p' "build/$1/CPackConfig.cmake"
    )
    export SOURCE_DATE_EPOCH
    cpack --config "build/$1/CPackConfig.cmake" -G "$2" -B "$here/build/$1/packages" \
        >"build/$1/packages.log" 2>&1 || { cat "build/$1/packages.log" >&2; return 1; }
    cp "build/$1/packages/"*.* "$directory"
}

mkdir -p "$directory"
rm -f "$directory"/crv[-_]*.{deb,tar.gz,zip} "$directory/SHA256SUMS"
make_package deb DEB
make_package static TGZ
if ! cmake --list-presets | grep -q '"windows"'; then
    echo "The .zip for Windows is left out: there is no preset for it"
elif ! command -v x86_64-w64-mingw32-g++-posix >/dev/null; then
    echo "The .zip for Windows is left out: x86_64-w64-mingw32-g++-posix is not installed"
else
    make_package windows ZIP
fi
cd "$directory"
sha256sum crv[-_]* >SHA256SUMS
ls -l
