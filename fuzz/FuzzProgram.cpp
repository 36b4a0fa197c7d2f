// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/FuzzProgram.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "core/App.h"

namespace fs = std::filesystem;

namespace fuzz {

namespace {

std::string& Sandbox() {
  static std::string path;
  return path;
}

std::string& Program() {
  static std::string path;
  return path;
}

}  // namespace

scn::TestScreen& Screen() {
  static scn::TestScreen screen;
  return screen;
}

void Init() {
  if (!Sandbox().empty()) return;
  static int argc = 1;
  static char name[] = "ledgerly-fuzz";
  static char* argv[] = {name, nullptr};
  InitRuntime(argc, argv);
  RegisterWindows();

  const char* tmp = std::getenv("TMPDIR");
  std::string pattern = std::string(tmp != nullptr && *tmp != '\0' ? tmp : "/tmp") +
                        "/ledgerly-fuzz-XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) Fail("no sandbox folder could be made");
  Sandbox() = pattern;
  Program() = pattern + "/program";
  fs::create_directory(Program());
  // A relative path in the program would land here, where CheckSandbox sees it.
  if (::chdir(Sandbox().c_str()) != 0) Fail("cannot enter the sandbox " + Sandbox());
  // The sandbox goes with the process, however it ends short of a crash.
  std::atexit([] {
    std::error_code ec;
    fs::remove_all(Sandbox(), ec);
  });
}

void FreshProgram() {
  Init();
  ResetProgram();
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(Program(), ec)) fs::remove_all(entry.path(), ec);
  SetProgramFolder(Program());
  Date::SetToday(2026, 11, 16);
  Date::SetShortDateFormat("dd/MM/yyyy");
  Clipboard() = String();
  scn::TestScreen& screen = Screen();
  screen.Clear();
  screen.StandAsAPassiveUser();
  SetScreen(&screen);
}

void EndProgram() {
  ResetProgram();
  CheckSandbox();
}

const std::string& ProgramFolder() { return Program(); }

std::string InProgram(const std::string& relative) { return Program() + "/" + relative; }

void WriteFile(const std::string& relative, const std::uint8_t* data, std::size_t size) {
  const fs::path path = InProgram(relative);
  fs::create_directories(path.parent_path());
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

std::string ReadFile(const std::string& relative) {
  std::ifstream in(InProgram(relative), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void CheckSandbox() {
  std::error_code ec;
  for (const auto& entry : fs::directory_iterator(Sandbox(), ec)) {
    if (entry.path().filename() != "program")
      Fail("an entry appeared outside the program folder: " + entry.path().string());
  }
}

void Fail(const std::string& what) {
  std::fprintf(stderr, "fuzz: %s\n", what.c_str());
  std::abort();
}

}  // namespace fuzz
