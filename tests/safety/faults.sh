#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# faults.sh RUNNER ACTION
# What a saving leaves on disk when it does not end well. ACTION is save, paid, stock or prefs: the
# scenario ACTION.scn does that saving, in a folder that setup.scn filled, and ACTION-full.scn does
# it on a full disk and then once there is room again.
#  - The process killed at the k-th write, sync or rename of the saving, for every k: each file is
#    afterwards the old one or the new one, whole; the next start reads them all, and removes the
#    temporary files that were left.
#  - The disk full from the k-th step on, for every k: the error is reported, each file is the old
#    one or the new one, no temporary file is left, and the same saving succeeds once there is room.
set -euo pipefail
runner=$1
action=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d "${TMPDIR:-/tmp}/ledgerly-faults-XXXXXX")
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen

# In a shell of its own that waits for it, so that a killed run is not announced.
run() { ("$runner" "$@" >"$work/out" 2>&1; exit $?) 2>/dev/null; }
fail() {
  echo "$action: $*"
  cat "$work/out"
  exit 1
}
fresh() {
  rm -rf "$work/$1"
  cp -a "$work/old" "$work/$1"
}
# A file as it stands, the same as in another folder: both absent, or both the same bytes.
same() { { [ ! -e "$1" ] && [ ! -e "$2" ]; } || cmp -s "$1" "$2"; }
whole() {
  local dir=$1 rel
  while IFS= read -r -d '' rel; do
    case "${rel##*/}" in .ledgerly-??????) continue ;; esac
    same "$dir/$rel" "$work/old/$rel" || same "$dir/$rel" "$work/new/$rel" ||
      fail "$2: $rel is neither the old file nor the new one"
  done < <(for d in "$dir" "$work/old" "$work/new"; do (cd "$d" && find . -type f -print0); done)
}
no_temporary_files() {
  if [ -n "$(find "$1" -name '.ledgerly-*')" ]; then fail "$2: temporary files left: $(find "$1" -name '.ledgerly-*')"; fi
}

run --folder "$work/old" "$here/setup.scn" || fail "the files before could not be made"
fresh new
run --folder "$work/new" "$here/$action.scn" || fail "the saving itself failed"

k=1
while :; do
  fresh killed
  status=0
  run --folder "$work/killed" --fault "kill:$k" "$here/$action.scn" || status=$?
  [ "$status" -eq 0 ] && break  # the saving took fewer steps than k: every one has been tried
  [ "$status" -eq 137 ] || fail "killed at step $k: the runner ended with $status instead"
  whole "$work/killed" "killed at step $k"
  run --folder "$work/killed" "$here/next-start.scn" || fail "killed at step $k: the next start failed"
  no_temporary_files "$work/killed" "killed at step $k, after the next start"
  k=$((k + 1))
done
steps=$((k - 1))
# Each file the saving writes takes a write, a sync, a rename and a sync of its folder.
[ "$steps" -ge 4 ] || fail "the saving took only $steps steps"

# The files as the failed saving left them; that the error was reported at that step, that the
# form kept what was typed and that the saving succeeds once there is room, ACTION-full.scn says.
for k in $(seq 1 "$steps"); do
  fresh full
  run --folder "$work/full" --fault "full:$k" "$here/$action.scn" || true
  whole "$work/full" "disk full from step $k"
  no_temporary_files "$work/full" "disk full from step $k"
  fresh again
  run --folder "$work/again" --fault "full:$k" "$here/$action-full.scn" || fail "disk full from step $k: the saving did not succeed once there was room"
  no_temporary_files "$work/again" "disk full from step $k, saved again"
done
echo "$action: killed at each of its $steps steps, and the disk full from each: every file old or new and whole, the error reported, saved once there was room"
