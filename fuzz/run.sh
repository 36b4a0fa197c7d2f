#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# run.sh BINARY-FOLDER SECONDS TARGET...
# Runs each libFuzzer binary for SECONDS, one after the other. Inputs that find new paths go into
# BINARY-FOLDER/work/<target>; the seed corpus in fuzz/corpus/<target> is read but not written, so
# it holds what was chosen to keep. A crash, leak or broken rule is saved as
# BINARY-FOLDER/findings/<target>-...; that input belongs in fuzz/corpus/<target> once it is fixed.
set -uo pipefail
bin=$(cd "$1" && pwd)
seconds=$2
shift 2
corpus=$(cd "$(dirname "$0")/corpus" && pwd)
# The fontconfig patterns that Qt's font database keeps until the process ends are not ours: the
# leak check at the end of a run would report them once the first page has been measured.
supp=$(cd "$(dirname "$0")/../tools" && pwd)/lsan.supp

failed=()
for t in "$@"; do
  mkdir -p "$bin/work/$t" "$bin/findings"
  echo "== fuzz-$t for ${seconds}s"
  # The entries leave the working folder for a sandbox of their own, so every path is absolute.
  QT_QPA_PLATFORM=offscreen \
    ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1}" \
    UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}" \
    LSAN_OPTIONS="${LSAN_OPTIONS:-suppressions=$supp:print_suppressions=0}" \
    "$bin/fuzz-$t" -max_total_time="$seconds" -max_len=4096 -timeout=20 -rss_limit_mb=2048 \
    -print_final_stats=1 -artifact_prefix="$bin/findings/$t-" "$bin/work/$t" "$corpus/$t" \
    >"$bin/work/$t.log" 2>&1
  status=$?
  # The progress lines stay in the log; the summary and any report are shown.
  grep -v '^#[0-9]' "$bin/work/$t.log" | tail -n 60
  [ "$status" -eq 0 ] || failed+=("$t")
done
if [ ${#failed[@]} -gt 0 ]; then
  echo "findings for: ${failed[*]} (in $bin/findings)"
  exit 1
fi
echo "no findings"
