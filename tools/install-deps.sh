#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the Debian packages the build, the tests and the program need, when any is missing.
#   install-deps.sh              what `make run` and `make test` need
#   install-deps.sh robustness   and what the fuzzing and the soak under valgrind need
#   install-deps.sh package      and what `make check-package` needs
# Where it cannot install (not Debian, or neither root nor sudo), it says what is needed and
# leaves the rest to the build.
set -euo pipefail
packages=(
  cmake ninja-build g++ make pkg-config
  qt6-base-dev qt6-image-formats-plugins libgtest-dev libgmock-dev
  fonts-urw-base35 fonts-dejavu-core fonts-liberation
  xvfb xauth poppler-utils imagemagick clang-format ccache
  # The desktop checks under a window manager, through a screen reader's interface, and with a
  # printer of their own: openbox, xdotool, AT-SPI on a session bus, a private cupsd with cups-pdf.
  openbox xdotool dbus at-spi2-core python3-pyatspi python3-xlib
  cups-daemon cups-client printer-driver-cups-pdf
)
# `install-deps.sh robustness` adds what only the fuzzing and the soak under valgrind need; the
# sanitizer build of `make test-asan` uses g++'s own runtime.
case "${1:-}" in
  robustness) packages+=(clang libclang-rt-14-dev valgrind) ;;
  package) packages+=(dpkg-dev lintian appstream desktop-file-utils) ;;
esac
if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
  echo "install-deps: not a Debian system; these are the Debian packages needed, to be installed"
  echo "with the system's own names: ${packages[*]}"
  exit 0
fi
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  SUDO=""
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "install-deps: needed and missing (install them as root): ${missing[*]}"
      exit 0
    fi
    SUDO="sudo"
  fi
  echo "installing: ${missing[*]}"
  $SUDO apt-get update -qq
  # Installing CUPS must not start the system's print service: the tests bring their own cupsd.
  policy=/usr/sbin/policy-rc.d
  if [ ! -e "$policy" ]; then
    printf '#!/bin/sh\nexit 101\n' | $SUDO tee "$policy" >/dev/null && $SUDO chmod +x "$policy"
    trap '$SUDO rm -f "$policy"' EXIT
  fi
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y --no-install-recommends "${missing[@]}"
fi
