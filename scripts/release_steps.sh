#!/usr/bin/env bash
# Checks that a directory has all packages of a release, with the sums of SHA256SUMS, and prints the
# steps that remain by hand. scripts/release.sh calls it.
#
#   scripts/release_steps.sh VERSION DIRECTORY    for example 1.0.0 dist
set -euo pipefail
version=${1:?a version is missing}
directory=${2:?a directory is missing}
top=$(dirname "$0")/..

fail() {
    printf 'release_steps.sh: %s\n' "$*" >&2
    exit 1
}

check_packages() {
    local name missing=()
    for name in "crv_$version-0crv1_"{amd64,arm64}.deb "crv-$version-1."{x86_64,aarch64}.rpm \
        "crv-$version-linux-"{x86_64,aarch64}.tar.gz "crv-$version-windows-x86_64.zip" \
        "crv-$version.tar.gz" "crv-$version.spdx.json"; do
        # In the list of sums too, so that the sum of each is checked.
        if ! [ -s "$directory/$name" ] || ! grep -qs "  $name\$" "$directory/SHA256SUMS"; then
            missing+=("$name")
        fi
    done
    [ ${#missing[@]} -eq 0 ] || fail "these packages were not made: ${missing[*]}"
    (cd "$directory" && sha256sum --check --strict --quiet SHA256SUMS) >&2 ||
        fail "these packages do not have the sums of $directory/SHA256SUMS"
}

# Addresses that stand in the packages and do not exist.
print_placeholders() {
    local found
    found=$(cd "$top" && grep -Eo '[^"]*[@/]crv\.invalid[^"]*' cmake/packages.cmake \
        scripts/write_spdx.py | sed 's/^\([^:]*\):/     \1: /') || return 0
    cat <<END

The packages contain addresses that do not exist. Before you publish anything, replace them, commit,
and run scripts/release.sh again; packaging/README.md tells what they are for:
$found
END
}

# Commands that download the sources of the statically linked libraries. Not "apt-get source
# NAME=VERSION", which takes 12.2.0-14+deb12u1 for 12.2.0-14.
list_library_sources() {
    local name used pool
    sed -n 's/.*"sourceInfo": "Debian source package \(.*\) \(.*\)".*/\1 \2/p' \
        "$directory/crv-$version.spdx.json" | sort -u |
        while read -r name used; do
            case $name in lib?*) pool=${name:0:4} ;; *) pool=${name:0:1} ;; esac
            echo "   dget --download-only" \
                "https://deb.debian.org/debian/pool/main/$pool/$name/${name}_${used#*:}.dsc"
        done
}

print_steps() {
    local sources sum
    sources=$(list_library_sources)
    [ -n "$sources" ] || fail "crv-$version.spdx.json names no sources of libraries"
    sum=$(sed -n "s/  crv-$version.tar.gz\$//p" "$directory/SHA256SUMS")
    cat <<END

The packages of $version are in $directory. The steps that remain:

1. Try the packages on systems that the tests do not have: the .zip on Windows, the .deb on Ubuntu,
   the .rpm on Fedora.
2. Download the sources of the linked libraries, because their licenses require to offer them in the
   same place as the packages. Run this in $directory/sources, with dget of the Debian package
   devscripts; versions that are no longer there are on https://snapshot.debian.org:
$sources
3. Sign the sums:            gpg --armor --detach-sign $directory/SHA256SUMS
4. Tag and push the commit:  git tag -s v$version && git push origin v$version
5. Publish all files of $directory, with the section $version of CHANGELOG.md.
6. Enter the address and this sum of the source archive in packaging/homebrew/crv.rb and
   packaging/conda/meta.yaml, and send them to their package managers:
     $sum
END
}

check_packages
print_placeholders
print_steps
