#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs the runner on each scenario file here and checks that it reports every scenario as the
# file's "# want:" lines say: "# want: pass", or "# want: <line> <piece of the message>" for a
# FAIL at that line. A "# want:" before any scenario stands for the commands before the first one.
# Also checks the closing count and that the exit code is 1 exactly when something failed.
set -u
runner=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
dir=$(cd "$2" && pwd)
cd "$dir"
problems=0
complain() {
  echo "runner self-test: $*"
  problems=$((problems + 1))
}
for f in *.scn; do
  out=$("$runner" "$f" 2>/dev/null)
  rc=$?
  wants=$(awk '
    BEGIN { name = "(before the first scenario)" }
    /^scenario "/ { name = $0; sub(/^scenario "/, "", name); sub(/"[ \t]*$/, "", name) }
    /^# want: / { w = $0; sub(/^# want: /, "", w); print name "\t" w }
  ' "$f")
  passes=0
  fails=0
  while IFS=$'\t' read -r name want; do
    [ -z "$name" ] && continue
    if [ "$want" = pass ]; then
      passes=$((passes + 1))
      grep -Fxq "PASS $f: $name" <<<"$out" || complain "$f: \"$name\" should pass"
    else
      fails=$((fails + 1))
      line=${want%% *}
      piece=${want#* }
      hit=$(grep -F "FAIL $f: $name: line $line: " <<<"$out")
      if [ -z "$hit" ]; then
        complain "$f: \"$name\" should fail at line $line"
      elif ! grep -Fq -- "$piece" <<<"$hit"; then
        complain "$f: \"$name\" fails without \"$piece\": $hit"
      fi
    fi
  done <<<"$wants"
  last=$(tail -n 1 <<<"$out")
  [ "$last" = "$passes passed, $fails failed" ] || complain "$f: closing line \"$last\", not \"$passes passed, $fails failed\""
  want_rc=0
  [ "$fails" -gt 0 ] && want_rc=1
  [ "$rc" -eq "$want_rc" ] || complain "$f: exit code $rc, not $want_rc"
  lines=$(grep -c -E '^(PASS|FAIL) ' <<<"$out")
  [ "$lines" -eq $((passes + fails)) ] || complain "$f: $lines scenario lines for $((passes + fails)) wanted"
done
if [ "$problems" -gt 0 ]; then
  echo "runner self-test: $problems problems"
  exit 1
fi
echo "runner self-test: every file reported as wanted"
