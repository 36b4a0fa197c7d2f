#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the program need, when any is missing.
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
if [ "${1:-}" = "robustness" ]; then
  packages+=(clang libclang-rt-14-dev valgrind)
fi
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "installing: ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO="sudo"
  $SUDO apt-get update -qq
  # Installing CUPS must not start the system's print service: the tests bring their own cupsd.
  policy=/usr/sbin/policy-rc.d
  if [ ! -e "$policy" ]; then
    printf '#!/bin/sh\nexit 101\n' | $SUDO tee "$policy" >/dev/null && $SUDO chmod +x "$policy"
    trap '$SUDO rm -f "$policy"' EXIT
  fi
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y --no-install-recommends "${missing[@]}"
fi
