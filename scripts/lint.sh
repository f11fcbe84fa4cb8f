#!/usr/bin/env bash
# clang-tidy over all sources as the release and the Windows build compile them, or over the files that are named. Slow: a quarter
# of an hour on two cores.
set -euo pipefail
cd "$(dirname "$0")/.."
[ $# -gt 0 ] || set -- $(git ls-files -- '*.cpp')

windows=()
others=()
for file in "$@"; do
  case $file in
    hosts/excel/* | tests/excel/*) windows+=("$file") ;;
    *) others+=("$file") ;;
  esac
done

# tidy FILE... -- OPTION...
tidy() {
  local files=()
  while [ "$1" != -- ]; do
    files+=("$1")
    shift
  done
  shift
  [ ${#files[@]} -eq 0 ] || printf '%s\0' "${files[@]}" | xargs -0 -P "$(nproc)" -n 4 clang-tidy --quiet "$@"
}

if [ ${#others[@]} -gt 0 ]; then
  [ -f build/release/compile_commands.json ] || scripts/build.sh release
  tidy "${others[@]}" -- -p build/release
fi
if [ ${#windows[@]} -gt 0 ]; then
  [ -f build/windows-x64/compile_commands.json ] || scripts/windows.sh build
  library=$(x86_64-w64-mingw32-g++-posix -print-file-name=include)/c++
  tidy "${windows[@]}" -- -p build/windows-x64 --extra-arg=--target=x86_64-w64-mingw32 "--extra-arg=-isystem$library" \
    "--extra-arg=-isystem$library/x86_64-w64-mingw32" --extra-arg=-isystem/usr/x86_64-w64-mingw32/include
fi
