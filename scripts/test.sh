#!/usr/bin/env bash
# Installs what is missing, checks the format, builds, and runs the test suites, then the same under the sanitizers.
# With --hosts also the tests that run the real spreadsheet application and the Windows add-in, which want a quiet machine.
set -euo pipefail
cd "$(dirname "$0")/.."
hosts=no
[ "${1:-}" != --hosts ] || hosts=yes
scripts/setup.sh

echo "== format"
git ls-files -z -- '*.cpp' '*.h' | xargs -0 clang-format --dry-run -Werror

echo "== release"
scripts/build.sh release
ctest --preset release --output-on-failure

echo "== sanitizers"
scripts/build.sh asan
ctest --preset asan --output-on-failure

if [ "$hosts" = yes ]; then
  echo "== Calc"
  scripts/calc_test.sh
  echo "== Excel"
  scripts/windows.sh
fi
