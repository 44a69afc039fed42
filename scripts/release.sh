#!/usr/bin/env bash
# Makes a release: checks that everything agrees on the version, runs the tests of the ci tier,
# makes all packages into dist/, and prints the steps that remain.
#
#   scripts/release.sh VERSION    for example 1.0.0
set -euo pipefail
version=${1:-}
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"

if [ $# -ne 1 ] || ! [[ $version =~ ^[0-9]+\.[0-9]+\.[0-9]+$ ]]; then
    echo "release.sh: \"$*\" is not a version: write three numbers, such as 1.0.0" >&2
    exit 2
fi

check_tree() {
    local changes
    if ! changes=$(git status --porcelain); then
        echo "release.sh: releases are made from a git checkout" >&2
        exit 1
    fi
    if [ -n "$changes" ]; then
        printf 'release.sh: these changes are not committed:\n%s\n' "$changes" >&2
        exit 1
    fi
}

check_agreement() {
    local faults
    if ! faults=$(python3 scripts/check_release.py "$version" --final); then
        printf 'release.sh: not everything is ready for %s:\n%s\n' "$version" "$faults" >&2
        exit 1
    fi
}

check_packages() {
    local name missing=()
    for name in "crv_$version-0crv1_"{amd64,arm64}.deb "crv-$version-1."{x86_64,aarch64}.rpm \
        "crv-$version-linux-"{x86_64,aarch64}.tar.gz "crv-$version-windows-x86_64.zip" \
        "crv-$version.tar.gz" "crv-$version.spdx.json"; do
        [ -s "dist/$name" ] || missing+=("$name")
    done
    if [ ${#missing[@]} -gt 0 ]; then
        echo "release.sh: these packages were not made: ${missing[*]}" >&2
        exit 1
    fi
}

# The sources of the statically linked libraries: their licenses require to offer them.
list_library_sources() {
    sed -n 's/.*"sourceInfo": "Debian source package \(.*\) \(.*\)".*/\1=\2/p' \
        "dist/crv-$version.spdx.json" | sort -u
}

print_steps() {
    local sum
    sum=$(sed -n "s/  crv-$version.tar.gz\$//p" dist/SHA256SUMS)
    cat <<END

The packages of $version are in dist/. The steps that remain:

1. Try the packages on systems that the tests do not have: the .zip on Windows, the .deb on Ubuntu,
   the .rpm on Fedora.
2. Download the sources of the linked libraries into dist/sources, from the system on which the
   packages were made; they must be offered in the same place as the packages:
$(list_library_sources | sed 's/^/     apt-get source --download-only /')
3. Sign the sums:            gpg --armor --detach-sign dist/SHA256SUMS
4. Tag and push the commit:  git tag -s v$version && git push origin v$version
5. Publish all files of dist/, with the section $version of CHANGELOG.md.
6. Enter the address and this sum of the source archive in packaging/homebrew/crv.rb and
   packaging/conda/meta.yaml, and send them to their package managers:
     $sum
END
}

check_tree
check_agreement
CI=true .ci/run
scripts/package.sh dist
check_packages
check_tree
print_steps
