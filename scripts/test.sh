#!/usr/bin/env bash
# Installs what is missing, checks the format, builds, and runs every test: the suites, the same under the sanitizers, and the
# spreadsheet hosts.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

echo "== format"
git ls-files -z -- '*.cpp' '*.h' | xargs -0 clang-format --dry-run -Werror

echo "== release"
scripts/build.sh release
ctest --preset release --output-on-failure

echo "== sanitizers"
scripts/build.sh asan
ctest --preset asan --output-on-failure

if [ -x scripts/calc_test.sh ]; then
  echo "== Calc"
  scripts/calc_test.sh
fi
if [ -x scripts/windows.sh ]; then
  echo "== Excel"
  scripts/windows.sh
fi
