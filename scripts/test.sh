#!/usr/bin/env bash
# Installs what is missing, checks the format, builds, and runs every test: the suites, the Calc extension in the real application,
# the Excel add-in under Wine, and the suites again under the sanitizers.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

stage() {
  echo "== $1 (at $((SECONDS / 60)) min $((SECONDS % 60)) s)"
}

stage format
git ls-files -z -- '*.cpp' '*.h' | xargs -0 clang-format --dry-run -Werror

stage release
scripts/build.sh release
ctest --preset release --output-on-failure

stage Calc
scripts/calc_test.sh

stage Excel
scripts/windows.sh

stage sanitizers
scripts/build.sh asan
ctest --preset asan --output-on-failure
stage end
