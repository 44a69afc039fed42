#!/usr/bin/env bash
# Installs the packages of a tier. No other script installs anything; test.sh, ci.sh, nightly.sh and
# demo.sh call this one.
#
#   scripts/setup.sh TIER             installs the missing packages of the tier
#   scripts/setup.sh TIER --list      prints all packages of the tier
#   scripts/setup.sh TIER --missing   prints those that are missing
#   scripts/setup.sh TIER --command   prints the command that installs these, if there are any
#
# Tiers: build, demo, check, test, fuzz, package, windows, targets, coverage, ci, bench, mutate,
# all-targets, nightly.
# Each includes the tiers it depends on. On systems other than Debian and Ubuntu it prints the
# needed packages by their Debian names and installs nothing.
set -euo pipefail

packages_of() {
    local tier
    case $1 in
        build) echo cmake g++ make ;;
        demo) packages_of build && echo ghostscript ;;
        check) packages_of build && echo libgtest-dev libgmock-dev python3 shellcheck codespell ;;
        test) packages_of check && echo binutils ghostscript ;;
        fuzz) packages_of build && echo clang libclang-rt-dev xz-utils ;;
        package)
            packages_of build
            echo dpkg-dev fakeroot file lintian rpm rpmlint unzip zip
            echo python3 python3-license-expression
            echo g++-aarch64-linux-gnu qemu-user-static g++-mingw-w64-x86-64-posix
            ;;
        windows)
            packages_of build
            echo g++-mingw-w64-x86-64-posix wine wine64 libgtest-dev libgmock-dev python3
            ;;
        targets)
            packages_of build
            echo libgtest-dev libgmock-dev python3 qemu-user-static
            echo g++-aarch64-linux-gnu g++-s390x-linux-gnu
            echo clang libc++-dev libc++abi-dev # the other C++ library
            ;;
        all-targets)
            packages_of targets && packages_of fuzz
            echo libbenchmark-dev
            echo g++-arm-linux-gnueabihf g++-i686-linux-gnu g++-riscv64-linux-gnu
            ;;
        coverage) packages_of test && echo gcovr ;;
        bench)
            packages_of build
            echo libbenchmark-dev python3 mawk gawk perl datamash gnuplot-nox time
            echo chromium # pages, compared with libraries of npm
            command -v npm >/dev/null || echo npm
            ;;
        ci)
            for tier in test fuzz package windows targets coverage; do packages_of "$tier"; done
            echo clang-format clang-tidy valgrind                # analysis
            echo poppler-utils librsvg2-bin parallel gnuplot-nox # pictures and the cookbook
            echo python3-pandas sqlite3                          # tables and the cookbook
            echo mandoc man-db bash-completion zsh fish          # manual page and completions
            echo cups-bsd cups-client cups-daemon                # printing
            echo chromium fonts-dejavu-core                      # pages, and their font
            echo git                                             # the checkout of a release
            echo faketime                                        # a build of another year
            ;;
        mutate) packages_of check && echo ninja-build lld ;;
        nightly)
            for tier in ci bench mutate all-targets; do packages_of "$tier"; done
            echo buildah debootstrap                 # the image, on a bare system
            echo munge slurm-client slurmctld slurmd # a cluster of one node
            ;;
        *)
            echo "setup.sh: there is no tier $1" >&2
            return 1
            ;;
    esac
}

is_debian() {
    command -v dpkg-query >/dev/null && command -v apt-get >/dev/null
}

missing_packages() {
    local known
    # Its status is not 0 when it does not know one of them.
    # shellcheck disable=SC2086  # one word for each package
    known=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' $packages 2>/dev/null) || true
    grep -vxF -e "$(sed -n 's/^installed //p' <<<"$known")" <<<"$packages" || true
}

# The command with which this user installs the packages.
install_command() {
    local command="apt-get install --no-install-recommends $*"
    if [ "$(id -u)" -eq 0 ]; then
        echo "$command"
    elif command -v sudo >/dev/null; then
        echo "sudo $command"
    else
        echo "su -c '$command'"
    fi
}

install_packages() {
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null ||
        ! "${as_root[@]}" apt-get update -qq ||
        ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "$@" >/dev/null; then
        printf 'Packages are missing. To install them:\n    %s\n' "$(install_command "$@")" >&2
        return 1
    fi
}

if [ $# -eq 0 ]; then
    sed -n '2,/^set/s/^# \{0,1\}//p' "$0" >&2
    exit 2
fi
packages=$(packages_of "$1" | tr ' ' '\n' | sort -u)
if [ "${2:-}" = --list ]; then
    echo "$packages"
elif ! is_debian; then
    [ -n "${2:-}" ] ||
        echo "Not Debian or Ubuntu, nothing is installed. Needed: ${packages//$'\n'/ }" >&2
elif [ "${2:-}" = --missing ]; then
    missing_packages
elif [ "${2:-}" = --command ]; then
    mapfile -t missing < <(missing_packages)
    [ ${#missing[@]} -eq 0 ] || install_command "${missing[@]}"
else
    found=$(missing_packages)
    if [ -n "$found" ]; then
        mapfile -t missing <<<"$found"
        begin=$SECONDS
        install_packages "${missing[@]}"
        echo "== packages of $1 (${#missing[@]} installed): $((SECONDS - begin)) s"
    fi
fi
