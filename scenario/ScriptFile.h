// SPDX-License-Identifier: GPL-3.0-or-later
// A scenario file read into its scenarios, with the included files put in place.
#pragma once

#include <string>
#include <vector>

#include "scenario/ScriptLexer.h"

namespace scn {

// Where a command stands. `line` is the line reported: the command's own line in the file named on
// the command line, or, for a command from an included file, the line of the outermost include;
// `origin` then names the included file and line ("common.inc:3").
struct Where {
  int line = 0;
  std::string origin;
};

struct Command {
  Where where;
  std::vector<Token> tokens;
};

struct Scenario {
  std::string name;
  Where where;
  std::vector<Command> commands;
  // Not empty when the scenario cannot run as written; it then fails at errorAt with this
  // expected / found pair.
  std::string error;
  std::string errorFound;
  Where errorAt;
};

struct Script {
  std::string file;
  std::vector<Scenario> scenarios;
};

// Reads the file and everything it includes. What cannot be read becomes a failing scenario, so
// that every fault shows in the report: commands before the first `scenario`, a line that does not
// lex, an include that cannot be found. A file that cannot be opened at all gives one such failing
// scenario too.
Script LoadScript(const std::string& path);

}  // namespace scn
