#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# check-parent.sh RUNNER SCENARIO-FILE...
# Runs the scenario files with --keep from inside a fresh parent folder that is also their TMPDIR,
# then checks that the parent holds the kept program folders and nothing else: whatever the
# scenarios feed it, the program creates and changes files only inside its own folder.
set -euo pipefail
runner=$1
shift

parent=$(mktemp -d "${TMPDIR:-/tmp}/ledgerly-parent-XXXXXX")
# Qt makes its runtime folder in TMPDIR when it is given none; it gets one outside the parent.
runtime=$(mktemp -d "${TMPDIR:-/tmp}/ledgerly-runtime-XXXXXX")
chmod 700 "$runtime"
trap 'rm -rf "$parent" "$runtime"' EXIT

status=0
out=$(cd "$parent" && TMPDIR="$parent" XDG_RUNTIME_DIR="$runtime" "$runner" --keep "$@") || status=$?
printf '%s\n' "$out"
if [ "$status" -ne 0 ]; then
  echo "the scenarios failed (exit $status)"
  exit 1
fi

mapfile -t kept < <(sed -n 's/^  kept //p' <<<"$out")
scenarios=$(grep -c '^PASS ' <<<"$out" || true)
if [ "${#kept[@]}" -ne "$scenarios" ]; then
  echo "$scenarios scenarios passed but ${#kept[@]} program folders were kept"
  exit 1
fi

found=0
while IFS= read -r -d '' entry; do
  ok=0
  for k in "${kept[@]}"; do
    if [ "$entry" = "$k" ]; then ok=1; fi
  done
  if [ "$ok" -eq 0 ]; then
    echo "outside every program folder: $entry"
    found=1
  fi
done < <(find "$parent" -mindepth 1 -maxdepth 1 -print0)
[ "$found" -eq 0 ] || exit 1
echo "the parent folder holds only the ${#kept[@]} program folders"
