#!/usr/bin/env bash
# Sourced by the other scripts: installs what they need.
#
#   need_packages PACKAGE...   installs the Debian packages that are missing (Debian and Ubuntu; elsewhere it says what
#                              to install and goes on)

need_packages() {
    local missing=() package
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "Not a Debian or Ubuntu machine: please see to it that these are installed, by whatever name: $*" >&2
        return 0
    fi
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Please install as root: ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" \
        >/dev/null
}

# shellcheck disable=SC2034  # for whoever sources this
build_packages=(cmake g++ make)
# shellcheck disable=SC2034
chart_packages=(ghostscript)
# shellcheck disable=SC2034
picture_packages=(poppler-utils librsvg2-bin parallel gnuplot-nox)
# shellcheck disable=SC2034
test_packages=(libgtest-dev libgmock-dev python3 binutils valgrind)
# shellcheck disable=SC2034
windows_packages=(g++-mingw-w64-x86-64-posix wine wine64 libgtest-dev libgmock-dev python3)
# shellcheck disable=SC2034
layout_packages=(clang-format clang-tidy shellcheck)
# shellcheck disable=SC2034  # the manual page and the completions are tried where they are used
shell_packages=(mandoc man-db bash-completion zsh fish)
# shellcheck disable=SC2034
bench_packages=(libbenchmark-dev python3 mawk gawk perl datamash miller gnuplot-nox time)
# shellcheck disable=SC2034
fuzz_packages=(clang libclang-rt-dev)
# shellcheck disable=SC2034
coverage_packages=(gcovr)
# shellcheck disable=SC2034
package_packages=(dpkg-dev fakeroot file lintian unzip zip)
# shellcheck disable=SC2034
printer_packages=(cups-bsd cups-client cups-daemon)
# shellcheck disable=SC2034
mutate_packages=(ninja-build lld)
