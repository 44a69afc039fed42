#!/usr/bin/env bash
# The layout checks: formatting, shell scripts, and clang-tidy over the sources.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
# shellcheck source=scripts/packages.sh
. "$here/scripts/packages.sh"
need_packages "${build_packages[@]}" "${test_packages[@]}" "${layout_packages[@]}"

cd "$here"
echo "=== layout"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
git ls-files '*.sh' '*.bash' .ci/run companions/crv2picture | xargs shellcheck -x
cmake --preset release -DCRV_TESTS=ON >/dev/null
git ls-files 'src/*.cpp' | xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p build/release 2>/dev/null
# The compiler's own analyzer. It does not follow a string_view through a record that a routine returns, and takes it for a
# value that was never set; valgrind and the sanitizers look for those.
git ls-files 'src/*.cpp' | xargs -P "$(nproc)" -I '{}' g++ -std=c++20 -Isrc -O1 -fno-exceptions -fanalyzer -Werror \
    -Wno-analyzer-use-of-uninitialized-value -DCRV_BUILD_DATE='""' -DCRV_BUILD_TIME='""' -c -o /dev/null '{}'
