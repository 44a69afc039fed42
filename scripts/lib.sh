#!/usr/bin/env bash
# Sourced by the other scripts: stages, builds and runs of tests. Changes to the top directory.
#
# Each stage prints one line with its time. The output of its commands goes to build/logs, and is
# shown if they fail.

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
jobs=$(nproc 2>/dev/null || echo 2)

# require_tier TIER: ends the script when packages of the tier are missing.
require_tier() {
    local command
    command=$(scripts/setup.sh "$1" --command)
    [ -z "$command" ] && return
    printf 'Packages are missing. To install them:\n    %s\n' "$command" >&2
    exit 1
}

# stage NAME COMMAND...: runs the command; the script ends when it fails.
stage() {
    local name=$1 log begin=$SECONDS status=0
    shift
    log=build/logs/${name//[^a-zA-Z0-9]/_}.log
    mkdir -p build/logs
    # Not in an if or before ||, where `set -e` has no effect in functions.
    set +e
    (set -e; "$@") >"$log" 2>&1
    status=$?
    set -e
    if [ "$status" -ne 0 ]; then
        echo "== $name: FAILED after $((SECONDS - begin)) s (build/logs/${log##*/})"
        tail -n 200 "$log"
        exit 1
    fi
    echo "== $name: $((SECONDS - begin)) s"
}

# build PRESET [CMAKE-OPTION...]: configures and builds with tests. Warnings are shown, and are
# errors in CI.
build() {
    local preset=$1
    shift
    stage "build $preset" build_quietly "$preset" -DCRV_TESTS=ON "$@"
    grep -hE 'warning:' "build/logs/build_${preset//[^a-zA-Z0-9]/_}.log" || true
}

build_quietly() {
    local preset=$1
    shift
    cmake --preset "$preset" -DCRV_WERROR="${CI:-OFF}" "$@"
    cmake --build --preset "$preset" --parallel "$jobs"
}

# run_tests NAME PRESET [LABELS [CTEST-OPTION...]]: runs tests of a build, those of its test preset
# or those with the labels (a regular expression). Shows what failed and what was skipped, and why;
# a skipped test counts as failed when `strict` is set, unless scripts/allowed_skips.txt has it.
run_tests() {
    local name=$1 preset=$2 labels=${3:-} report tests
    shift $(($# < 3 ? $# : 3))
    if [ -n "$labels" ]; then
        tests=(--test-dir "build/$preset" -L "^($labels)\$")
    else
        tests=(--preset "$preset")
    fi
    report=build/logs/${name//[^a-zA-Z0-9]/_}.xml
    mkdir -p build/logs
    rm -f "$report"
    ctest "${tests[@]}" --no-tests=error --parallel "$jobs" --output-junit "$PWD/$report" "$@" \
        >"${report%.xml}.log" 2>&1 || true
    python3 scripts/report_tests.py "$name" "$report" build/logs/counts ${strict:+--strict} ||
        exit 1
}

# start_counting and print_count: the sum of all tests in between, as the last line of a script.
start_counting() {
    mkdir -p build/logs
    rm -f build/logs/counts
}

print_count() {
    awk '{ passed += $1; failed += $2; skipped += $3 }
         END { printf "%d passed, %d failed, %d skipped\n", passed, failed, skipped }' \
        build/logs/counts
}

# project_version: prints the version of the project, which stands in CMakeLists.txt.
project_version() {
    sed -n 's/^project(crv VERSION \([^ ]*\) .*/\1/p' CMakeLists.txt
}
