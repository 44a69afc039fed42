#!/usr/bin/env bash
# Fuzzes every target for so many seconds, as many targets at once as there are processors.
#
#   scripts/fuzz.sh [SECONDS [TARGET...]]   by default 60 seconds and all targets
#   scripts/fuzz.sh --merge                 writes the corpus again, with the smallest set of inputs
#                                           that covers the same
#
# The fuzzers start from the corpus (tests/fuzz/corpus.tar.xz, which CMake unpacks), the seeds and
# the bugs next to it, and add new inputs to build/fuzz/corpus. An input that breaks a property is
# left in build/fuzz/findings, and the status is 1: the end of its .log says which.
set -euo pipefail
# shellcheck source=scripts/lib.sh
. "$(dirname "$0")/lib.sh"
require_tier fuzz
here=$PWD

# Whole paths: a target works in a temporary directory from its first input on.
sources=$here/tests/fuzz
programs=$here/build/fuzz/tests/fuzz
archive=$sources/corpus.tar.xz
kept=$programs/corpus
found=$here/build/fuzz/corpus
findings=$here/build/fuzz/findings

build_targets() {
    cmake --preset fuzz >/dev/null
    cmake --build --preset fuzz --parallel "$(nproc)" >/dev/null
}

list_targets() {
    local source
    for source in tests/fuzz/*_target.cpp; do basename "$source" _target.cpp; done
}

# Prints a line with the result. A finding leaves its input and the output of the fuzzer in the
# findings.
fuzz_target() {
    local target=$1 seconds=$2 log=$findings/$1.log words=() inputs=() status=0 directory
    [ -f "$sources/$target.dict" ] && words=(-dict="$sources/$target.dict")
    mkdir -p "$found/$target"
    for directory in "$kept/$target" "$sources/seeds/$target" "$sources/bugs/$target"; do
        [ -d "$directory" ] && inputs+=("$directory")
    done
    "$programs/fuzz_$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$findings/$target-" "${words[@]}" \
        "$found/$target" "${inputs[@]}" >"$log" 2>&1 || status=$?
    printf '%-14s %12s executions, %4s inputs at the start%s\n' "$target" \
        "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" \
        "$(find "${inputs[@]}" -type f | wc -l)" \
        "$([ "$status" -eq 0 ] ||
            echo ", FINDING: $(grep -m1 -E 'does not hold|ERROR' "$log" || tail -1 "$log")")"
    return "$status"
}

# Leaves the inputs that cover the most in `merged`, named by their contents.
merge_target() {
    local target=$1
    mkdir -p "$found/$target" "$merged/$target" "$kept/$target"
    "$programs/fuzz_$target" -merge=1 -use_counters=0 \
        "$merged/$target" "$kept/$target" "$found/$target" >/dev/null 2>&1
    echo "$target: $(find "$merged/$target" -type f | wc -l) inputs"
}

# The same inputs make the same archive: no owners, no times, sorted by name.
write_archive() {
    tar --sort=name --format=gnu --owner=0 --group=0 --numeric-owner --mtime=@0 --mode=u=rwX,go=rX \
        -C "$merged" -cf - . | xz -9 >"$archive.new"
    mv "$archive.new" "$archive"
    echo "$archive: $(wc -c <"$archive") bytes"
}

build_targets
mkdir -p "$findings"
if [ "${1:-}" = --merge ]; then
    merged=$(mktemp -d)
    trap 'rm -rf "$merged"' EXIT
    for target in $(list_targets); do merge_target "$target"; done
    write_archive
    exit
fi
seconds=${1:-60}
[ $# -gt 0 ] && shift
export sources programs kept found findings
export -f fuzz_target
# shellcheck disable=SC2016  # the words are for the shell that xargs starts
if [ $# -gt 0 ]; then printf '%s\n' "$@"; else list_targets; fi |
    xargs -P "$(nproc)" -I '{}' bash -c 'fuzz_target "$1" "$2"' - '{}' "$seconds"
