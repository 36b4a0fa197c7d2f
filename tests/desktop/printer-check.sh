#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# A printer on the test machine: a cupsd of the test's own (its own configuration folder and
# socket, reached through CUPS_SERVER; the system's CUPS is never asked) with a cups-pdf queue as
# its default. The print tests run against it and must pass; the queue must have received no job.
# The queue is stopped, so a job that reached it would wait there and never print.
#   printer-check.sh DESKTOP_TESTS
set -euo pipefail
tests=$1
dir=$(mktemp -d)
pid=
finish() {
  [ -n "$pid" ] && kill "$pid" 2>/dev/null && wait "$pid" 2>/dev/null
  rm -rf "$dir"
}
trap finish EXIT
mkdir -p "$dir"/{spool,cache,state,tmp,log,ppd}
cat >"$dir/cups-files.conf" <<EOF
ServerRoot $dir
RequestRoot $dir/spool
CacheDir $dir/cache
StateDir $dir/state
TempDir $dir/tmp
AccessLog $dir/log/access_log
ErrorLog $dir/log/error_log
PageLog $dir/log/page_log
SystemGroup root
Sandboxing Relaxed
EOF
cat >"$dir/cupsd.conf" <<EOF
Listen $dir/cups.sock
Browsing No
BrowseLocalProtocols none
WebInterface No
DefaultAuthType None
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order allow,deny
    Allow all
  </Limit>
</Policy>
EOF
cupsd -f -c "$dir/cupsd.conf" -s "$dir/cups-files.conf" &
pid=$!
export CUPS_SERVER=$dir/cups.sock
unset PRINTER LPDEST
# lpstat -r ends with 0 whether or not the scheduler runs: its words tell.
ready() { [ -S "$dir/cups.sock" ] && lpstat -r 2>/dev/null | grep -q "scheduler is running"; }
for _ in $(seq 400); do ready && break; sleep 0.05; done
ready || { echo "FAIL: the test's cupsd did not come up"; cat "$dir/log/error_log" 2>/dev/null; exit 1; }

queue=ledgerly-test-pdf
lpadmin -p "$queue" -E -v cups-pdf:/ -P /usr/share/ppd/cups-pdf/CUPS-PDF_opt.ppd
lpadmin -d "$queue"
cupsdisable "$queue"
lpstat -d | grep -q "$queue" || { echo "FAIL: $queue is not the default printer"; exit 1; }

"$tests" --gtest_filter='Printing.*'

jobs=$(lpstat -W all -o "$queue" | wc -l)
echo "jobs received by $queue: $jobs"
[ "$jobs" -eq 0 ] || { echo "FAIL: a test sent a job to the printer"; exit 1; }
