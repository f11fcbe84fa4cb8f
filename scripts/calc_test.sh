#!/bin/sh
# Runs the Calc extension of a build in the real application: scripts/calc_test.sh [BUILD_FOLDER [TEST...]]
#
# Under a display of its own, as a user without rights, with a home folder that is deleted afterwards. Ends
# at once, saying so, where LibreOffice or another of the programs is missing. QUORVEL_CALC_SCRIPT names another
# script than the tests to be run that way (for pictures and measurements), QUORVEL_LOOK another look than gen (gtk3).
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
bin=${1:-$root/build/release}/bin
[ $# -eq 0 ] || shift

for program in soffice unopkg Xvfb openbox xdotool setpriv; do
  if ! command -v "$program" > /dev/null; then
    echo "calc_test: SKIPPED, $program is not installed" >&2
    exit 0
  fi
done
if ! /usr/bin/python3 -c 'import uno' 2> /dev/null; then
  echo "calc_test: SKIPPED, python3-uno is not installed" >&2
  exit 0
fi
if [ ! -f "$bin/quorvel.oxt" ]; then
  echo "calc_test: SKIPPED, $bin/quorvel.oxt was not built: the LibreOffice SDK is not installed" >&2
  exit 0
fi

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT INT TERM
mkdir "$home/files" "$home/work"
cp "$bin/quorvel.oxt" "$root"/examples/customers.* "$home/files"
for program in quorvel quorvel-sandbox quorvel_bench.uno.so; do
  [ ! -f "$bin/$program" ] || cp "$bin/$program" "$home/files"
done
cp "$root"/tests/calc/*.py "$home/work"
as_user=
if [ "$(id -u)" -eq 0 ]; then
  chown -R nobody "$home"
  as_user='setpriv --reuid=nobody --regid=nogroup --clear-groups'
fi

script=${QUORVEL_CALC_SCRIPT:-calc_test.py}
cd "$home/work"
# shellcheck disable=SC2086  # several words, or none
$as_user env -i PATH="$PATH" HOME="$home" TMPDIR="$home" QUORVEL_TEST_FILES="$home/files" \
  QUORVEL_OUTPUT="${QUORVEL_OUTPUT:-}" QUORVEL_LOOK="${QUORVEL_LOOK:-gen}" timeout -k 10 "${QUORVEL_CALC_LIMIT:-900}" \
  /usr/bin/python3 on_display.py "$script" "$@"
