// SPDX-License-Identifier: GPL-3.0-or-later
// What stops a scenario. It is thrown wherever a check fails, also from deep inside a handler of
// the program (a modal window's actions, a print dialog), so it must pass through the platform's
// handler runner untouched: it derives from nothing that the platform catches.
#pragma once

#include <string>

#include "scenario/ScriptFile.h"

namespace scn {

struct ScenarioFailure {
  Where where;
  std::string expected;
  std::string found;
};

[[noreturn]] inline void Fail(const Where& where, std::string expected, std::string found) {
  throw ScenarioFailure{where, std::move(expected), std::move(found)};
}

}  // namespace scn
