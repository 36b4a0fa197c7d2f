// SPDX-License-Identifier: GPL-3.0-or-later
// Fonts are measured and pictures decoded through the toolkit's application object, which the
// runtime makes once for the whole test program.
#pragma once

#include "rb/Runtime.h"

inline void EnsureGuiApp() {
  static int argc = 1;
  static char name[] = "unit_tests";
  static char* argv[] = {name, nullptr};
  InitRuntime(argc, argv);
}
