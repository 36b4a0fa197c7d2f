// SPDX-License-Identifier: GPL-3.0-or-later
// ledgerly-scenario [--keep] [--golden] [--folder DIR] [--fault kill:N|full:N] FILE...
// Runs every scenario of the files against the program with no screen, one line per scenario, and
// a closing count.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "core/App.h"
#include "rb/rb.h"
#include "scenario/Runner.h"
#include "scenario/ScriptFile.h"

namespace {

void Usage(std::ostream& out) {
  out << "usage: ledgerly-scenario [--keep] [--golden] [--folder DIR] [--fault kill:N|full:N] FILE...\n"
         "  --keep          keep each scenario's folder and print where it is\n"
         "  --golden        write the snapshots of `expect window` and `expect page` as golden files\n"
         "  --folder DIR    run every scenario in DIR as it stands (made if missing), and keep it\n"
         "  --fault kill:N  kill the process at the Nth write, sync or rename of a file\n"
         "  --fault full:N  fail that step and the later ones of its command with a full disk\n";
}

bool ParseFault(const std::string& text, scn::FaultKind& kind, long& step) {
  const auto colon = text.find(':');
  if (colon == std::string::npos) return false;
  const std::string what = text.substr(0, colon), n = text.substr(colon + 1);
  if (what == "kill") kind = scn::FaultKind::Kill;
  else if (what == "full") kind = scn::FaultKind::Full;
  else return false;
  char* end = nullptr;
  step = std::strtol(n.c_str(), &end, 10);
  return !n.empty() && *end == '\0' && step > 0;
}

std::string Location(const scn::Where& where) {
  std::string s = "line " + std::to_string(where.line) + ": ";
  if (!where.origin.empty()) s += where.origin + ": ";
  return s;
}

}  // namespace

int main(int argc, char** argv) {
  InitRuntime(argc, argv);
  bool keep = false, golden = false;
  std::string folder;
  scn::FaultKind fault = scn::FaultKind::None;
  long step = 0;
  std::vector<std::string> files;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--keep") {
      keep = true;
    } else if (arg == "--golden") {
      golden = true;
    } else if (arg == "--folder" && i + 1 < argc) {
      folder = argv[++i];
    } else if (arg == "--fault" && i + 1 < argc) {
      if (!ParseFault(argv[++i], fault, step)) {
        Usage(std::cerr);
        return 2;
      }
    } else if (arg == "-h" || arg == "--help") {
      Usage(std::cout);
      return 0;
    } else if (!arg.empty() && arg[0] == '-') {
      Usage(std::cerr);
      return 2;
    } else {
      files.push_back(arg);
    }
  }
  if (files.empty()) {
    Usage(std::cerr);
    return 2;
  }

  RegisterWindows();
  scn::Runner runner(keep);
  if (!folder.empty()) runner.UseFolder(folder);
  runner.SetFault(fault, step);
  runner.WriteGolden(golden);
  int passed = 0, failed = 0;
  for (const std::string& file : files) {
    scn::Script script = scn::LoadScript(file);
    runner.SetScriptFolder(std::filesystem::path(file).parent_path().string());
    if (script.scenarios.empty()) {
      std::cout << "FAIL " << file << ": (no scenario): line 0: a scenario / none" << std::endl;
      ++failed;
      continue;
    }
    for (const scn::Scenario& s : script.scenarios) {
      scn::Outcome o = runner.Run(s);
      if (o.passed) {
        ++passed;
        std::cout << "PASS " << file << ": " << s.name << std::endl;
      } else {
        ++failed;
        std::cout << "FAIL " << file << ": " << s.name << ": " << Location(o.failure.where)
                  << o.failure.expected << " / " << o.failure.found << std::endl;
      }
      if (keep && !o.folder.empty()) std::cout << "  kept " << o.folder << std::endl;
    }
  }
  std::cout << passed << " passed, " << failed << " failed" << std::endl;
  return failed == 0 ? 0 : 1;
}
