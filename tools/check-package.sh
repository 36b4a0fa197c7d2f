#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# check-package.sh BUILD
# The Debian package as a packager checks it: made by CPack; lintian with no error and no warning
# on the package and on its debug symbols; the AppStream metadata and the desktop entry valid; and
# the program, unpacked from the package, started once with no screen.
set -euo pipefail
build=$(realpath "${1:-build}")
scratch=$(mktemp -d "${TMPDIR:-/tmp}/ledgerly-package-XXXXXX")
program=
cleanup() {
  if [ -n "$program" ]; then kill "$program" 2>/dev/null || true; wait "$program" 2>/dev/null || true; fi
  rm -rf "$scratch"
}
trap cleanup EXIT

# Every source and build file opens with the licence's line.
source=$(cd "$(dirname "$0")/.." && pwd)
sources() {
  git -C "$source" ls-files '*.cpp' '*.h' '*.py' '*.sh' '*.cmake' 'CMakeLists.txt' '*/CMakeLists.txt' \
    Makefile .ci/run 2>/dev/null ||
    (cd "$source" && find . -path './build*' -prune -o -type f \( -name '*.cpp' -o -name '*.h' -o \
      -name '*.py' -o -name '*.sh' -o -name '*.cmake' -o -name CMakeLists.txt -o -name Makefile \) \
      -print && echo .ci/run)
}
missing=$(cd "$source" && sources | while IFS= read -r f; do
  head -n 3 "$f" | grep -q 'SPDX-License-Identifier: GPL-3.0-or-later' || echo "$f"
done)
[ -z "$missing" ] || { echo "without the licence's SPDX line:"; echo "$missing"; exit 1; }
echo "licence: every source and build file names it"

cd "$build"
rm -f ledgerly_*.deb ledgerly-dbgsym_*.ddeb
cpack -G DEB >"$scratch/cpack.log" || { cat "$scratch/cpack.log"; exit 1; }
deb=$(echo ledgerly_*.deb)
ddeb=$(echo ledgerly-dbgsym_*.ddeb)
echo "made $deb and $ddeb"

lintian --fail-on error,warning --info "$deb" "$ddeb"
echo "lintian: no error, no warning"

dpkg-deb -x "$deb" "$scratch/root"
appstreamcli validate --no-net "$scratch"/root/usr/share/metainfo/*.metainfo.xml
desktop-file-validate "$scratch/root/usr/share/applications/ledgerly.desktop"
echo "desktop entry: valid"
[ -e "$scratch/root/usr/share/man/man1/ledgerly.1.gz" ] || { echo "no manual page"; exit 1; }

# Unpacked, the program's folder is its own, so it keeps its data beside it. It is up once it
# listens for later copies on its folder; then, still running a second later (waiting on its
# first question), it is ended.
bin="$scratch/root/usr/bin"
mkdir -p "$scratch/home" "$scratch/runtime"
chmod 700 "$scratch/runtime"
(cd "$scratch" && HOME="$scratch/home" XDG_RUNTIME_DIR="$scratch/runtime" QT_QPA_PLATFORM=offscreen \
  exec "$bin/ledgerly") >"$scratch/out" 2>&1 &
program=$!
name="@ledgerly/$(id -u)/$(stat -c '%d:%i' "$bin")"
for _ in $(seq 300); do
  grep -qF "$name" /proc/net/unix && break
  kill -0 "$program" 2>/dev/null || { echo "the program ended at its start:"; cat "$scratch/out"; exit 1; }
  sleep 0.1
done
grep -qF "$name" /proc/net/unix || { echo "the program did not come up:"; cat "$scratch/out"; exit 1; }
sleep 1
kill -0 "$program" 2>/dev/null || { echo "the program ended after its start:"; cat "$scratch/out"; exit 1; }
echo "the unpacked program started with no screen, holding its own folder, and kept running"
