// SPDX-License-Identifier: GPL-3.0-or-later
// The screen in force, and the quiet one that answers when none is set: nothing is shown, no
// dialog is confirmed, and an unhandled exception is written to the error stream (a defect ends
// the program after it).
#include "rb/Screen.h"

#include <cstdio>
#include <cstdlib>

namespace {

class QuietScreen : public Screen {
 public:
  void MsgBox(const String&) override {}
  void Beep() override {}
  void ShowURL(const String&) override {}
  void Quit(Integer) override {}
  void UnhandledException(const RuntimeException& e) override {
    std::fprintf(stderr, "Unhandled %s: %s\n", e.ClassName(), e.what());
  }
  [[noreturn]] void Defect(const std::string& className, const std::string& what) override {
    std::fprintf(stderr, "Unhandled %s: %s; the program ends\n", className.c_str(), what.c_str());
    std::abort();
  }
  // Nobody is there to close the window: the caller goes on at once, the window still showing.
  void RunModal(Window&) override {}
  Ref<FolderItem> OpenFileDialog(const String&) override { return nil; }
  std::optional<Integer> ContextualMenu(const std::vector<String>&) override { return std::nullopt; }
  std::unique_ptr<PageSurface> PrintDialog(const PrinterSetup*) override { return nullptr; }
  bool PageSetupDialog(PrinterSetup&) override { return false; }
};

QuietScreen& Quiet() {
  static QuietScreen quiet;
  return quiet;
}

Screen* current = nullptr;

}  // namespace

void SetScreen(Screen* screen) { current = screen; }

Screen& CurrentScreen() { return current ? *current : Quiet(); }
