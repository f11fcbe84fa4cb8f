#!/usr/bin/env bash
# Installs what is missing, builds, and sends a personalised message to the rows of examples/customers.csv through a gateway that
# runs on this machine only. Leaves nothing behind outside build/.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
log=build/demo.log
mkdir -p build
echo "Building..."
if ! scripts/build.sh release quorvel quorvel-sandbox >"$log" 2>&1; then
  tail -n 40 "$log" >&2
  exit 1
fi

bin=build/release/bin
work=build/demo
rm -rf "$work"
mkdir -p "$work"
"$bin/quorvel-sandbox" --port 0 >"$work/sandbox.log" 2>&1 &
sandbox=$!
trap 'kill "$sandbox" 2>/dev/null; wait "$sandbox" 2>/dev/null; rm -rf "$work"' EXIT
until grep -qs 'listening on' "$work/sandbox.log"; do
  kill -0 "$sandbox" || { cat "$work/sandbox.log" >&2; exit 1; }
  sleep 0.05
done
url=$(sed -n 's/^listening on //p' "$work/sandbox.log")

export QUORVEL_PASSWORD=demo
quorvel() { "$bin/quorvel" --settings "$work/settings.db" "$@"; }
account=(--crn 1001 --user demo)

echo
echo "1. The gateway is $url; the add-in reaches it as its named proxy:"
quorvel proxy --type named --host 127.0.0.1 --port "${url##*:}"
echo
echo "2. The balance before:"
quorvel balance "${account[@]}"
echo
echo "3. A message for every row of examples/customers.csv; #A#, #C# and #D# are the row's cells:"
quorvel send examples/customers.csv "${account[@]}" --to B --country-code 91 --national-length 10 \
  --message 'Dear #A#, your invoice of EUR #C# is due on #D#.' --yes
echo
echo "4. What each person would receive:"
curl -s "$url/_sandbox/messages" | python3 -c '
import json, sys
for message in json.load(sys.stdin)["messages"]:
    print("  {number:>14}  {text}".format(**message))'
echo
echo "5. The balance after:"
quorvel balance "${account[@]}"
cat <<'END'

What to try next:
  build/release/bin/quorvel send --help        every option of a send
  ... send ... --preview                       see each message and its SMS count before it goes out
  ... send ... --dry-run                       see the request without making it
  build/release/bin/quorvel-sandbox --port 8085 and `quorvel proxy --type named --host 127.0.0.1 --port 8085`
                                               keep such a gateway running to play with
END
