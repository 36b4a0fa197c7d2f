#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# two-copies.sh LEDGERLY
# The program started twice on one folder. The second copy touches nothing, shows nothing, brings
# the first to the front and ends with 0; when the first does not answer (stopped), the second
# says so on one line and ends with 1 after five seconds.
set -euo pipefail
program=$1
folder=$(mktemp -d "${TMPDIR:-/tmp}/ledgerly-copies-XXXXXX")
runtime=$(mktemp -d "${TMPDIR:-/tmp}/ledgerly-runtime-XXXXXX")
first=
cleanup() {
  if [ -n "$first" ]; then kill -CONT "$first" 2>/dev/null || true; kill "$first" 2>/dev/null || true; wait "$first" 2>/dev/null || true; fi
  rm -rf "$folder" "$runtime"
}
trap cleanup EXIT
fail() { echo "$*"; exit 1; }
export QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$runtime
cp "$program" "$folder/ledgerly"
: >"$folder/ledgerlyprefs"  # preferences there, so that the first copy starts without a question

(cd "$folder" && exec ./ledgerly) &
first=$!
# The first copy listens once it holds the folder: its socket is named by the folder's device and
# inode.
name="@ledgerly/$(id -u)/$(stat -c '%d:%i' "$folder")"
for _ in $(seq 200); do
  grep -qF "$name" /proc/net/unix && break
  kill -0 "$first" 2>/dev/null || fail "the first copy ended"
  sleep 0.1
done
grep -qF "$name" /proc/net/unix || fail "the first copy never came up"

listing() { (cd "$folder" && find . -printf '%p %y %s %T@\n' | sort); }
before=$(listing)
status=0
(cd "$folder" && timeout 20 ./ledgerly) >"$runtime/out" 2>"$runtime/err" || status=$?
[ "$status" -eq 0 ] || fail "the second copy ended with $status: $(cat "$runtime/err")"
[ ! -s "$runtime/err" ] || fail "the second copy wrote: $(cat "$runtime/err")"
[ "$before" = "$(listing)" ] || fail "the folder changed: $(diff <(echo "$before") <(listing))"

kill -STOP "$first"
status=0
(cd "$folder" && timeout 20 ./ledgerly) >"$runtime/out" 2>"$runtime/err" || status=$?
kill -CONT "$first"
[ "$status" -eq 1 ] || fail "with the first copy stopped, the second ended with $status"
[ "$(wc -l <"$runtime/err")" -eq 1 ] || fail "the second copy wrote: $(cat "$runtime/err")"
[ "$before" = "$(listing)" ] || fail "the folder changed: $(diff <(echo "$before") <(listing))"
kill -0 "$first" || fail "the first copy did not live through it"
echo "the second copy brought the first to the front and ended; with the first stopped it said: $(cat "$runtime/err")"
