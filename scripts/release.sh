#!/usr/bin/env bash
# Makes a release: checks that everything agrees on the version, runs the tests of the ci tier,
# makes all packages into dist/, checks that none is missing, and prints the steps that remain.
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

check_tree
check_agreement
CI=true .ci/run
scripts/package.sh dist
check_tree
scripts/release_steps.sh "$version" dist
