#!/usr/bin/env bash
# Makes the packages of a release: the .deb, the .rpm and the .tar.gz for x86-64 and for 64-bit ARM,
# the .zip for Windows, the source archive, the SPDX document that lists their contents, and the
# sums of all. A package whose compiler is missing is left out.
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
version=$(project_version)

# rpmbuild rejects paths with blanks, which that of the source may have.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

make_packages() { # preset, compiler, kinds of packages
    local preset=$1 compiler=$2 kind
    shift 2
    if ! command -v "$compiler" >/dev/null; then
        echo "Left out: $* of $preset, because $compiler is not installed"
        return
    fi
    cmake --fresh --preset "$preset" >/dev/null # without variables of an earlier configuration
    cmake --build --preset "$preset" --parallel "$jobs" --target programs | tail -n 1
    # All packages have one time, that of the source; programs for Windows that are stripped too.
    SOURCE_DATE_EPOCH=$(
        sed -n 's/^set(CPACK_CRV_EPOCH "\(.*\)")$/\1/p' "build/$preset/CPackConfig.cmake"
    )
    export SOURCE_DATE_EPOCH
    for kind; do
        cpack --config "build/$preset/CPackConfig.cmake" -G "$kind" -B "$work" \
            >"build/$preset/packages.log" 2>&1 ||
            { cat "build/$preset/packages.log" >&2; return 1; }
    done
    cp "$work/"crv[-_]*.* "$directory"
    rm -rf "${work:?}"/*
}

# The files of the source, each followed by a NUL: those that git does not ignore, or in an unpacked
# source archive all that the build has not made.
list_sources() {
    if [ -e .git ]; then
        git -c safe.directory="$here" ls-files -z --cached --others --exclude-standard |
            while IFS= read -r -d '' name; do
                if [ -e "$name" ] || [ -L "$name" ]; then printf '%s\0' "$name"; fi
            done
    else
        find . \( -path ./build -o -path ./dist -o -path ./demo -o -name __pycache__ \) -prune \
            -o ! -type d -printf '%P\0'
    fi
}

make_source_archive() {
    local name=crv-$version stage=build/source
    rm -rf "$stage"
    mkdir -p "$stage/$name"
    list_sources | tar --create --null --verbatim-files-from --files-from=- |
        tar --extract --no-same-owner --directory "$stage/$name"
    echo "$SOURCE_DATE_EPOCH" >"$stage/$name/cmake/commit_time.txt"
    chmod -R u=rwX,go=rX "$stage"
    find "$stage" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
    tar --format=gnu --sort=name --owner=0 --group=0 --numeric-owner \
        --create --directory "$stage" "$name" | gzip -9n >"$directory/$name.tar.gz"
    rm -rf "$stage"
}

mkdir -p "$directory"
rm -f "$directory"/crv[-_]*.{deb,rpm,tar.gz,zip,spdx.json} "$directory/SHA256SUMS"
make_packages deb g++ DEB
make_packages static g++ TGZ RPM
make_packages deb-aarch64 aarch64-linux-gnu-g++ DEB
make_packages static-aarch64 aarch64-linux-gnu-g++ TGZ RPM
make_packages windows x86_64-w64-mingw32-g++-posix ZIP
make_source_archive
scripts/write_spdx.py "$directory"
cd "$directory"
sha256sum crv[-_]* >SHA256SUMS
ls -l
