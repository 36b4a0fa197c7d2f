// SPDX-License-Identifier: GPL-3.0-or-later
// The globals' reset and their lookup by name, both from the one list in Module1.h.
#include "core/Module1.h"

namespace Module1 {

void Reset() {
#define MODULE1_RESET(type, name, start) name = start;
  MODULE1_GLOBALS(MODULE1_RESET)
#undef MODULE1_RESET
}

bool Lookup(const std::string& name, std::string& value) {
  MODULE1_GLOBALS(NAMED_VALUE_LOOKUP)
  return false;
}

}  // namespace Module1
