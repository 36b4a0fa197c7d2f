// A screen for the unit tests of the window and control services: it records what the program
// shows, and answers what blocks from answers the test queued.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "rb/rb.h"

class TestScreen : public Screen {
 public:
  std::vector<std::string> messages;
  std::vector<std::string> urls;
  std::vector<Integer> quits;
  std::vector<std::string> errors;  // class names of the unhandled exceptions, in order
  std::vector<std::string> problems;  // a blocking call with no answer, a modal left open
  int beeps = 0;

  // The next ShowModal runs the oldest of these while the window shows; it must hide the window.
  std::deque<std::function<void(Window&)>> modalAnswers;
  // The next contextual menu takes the oldest of these: a row, or nothing for a dismissal.
  std::deque<std::optional<Integer>> menuAnswers;
  std::vector<std::vector<std::string>> menusShown;

  struct Change {
    const Control* control;
    Prop what;
  };
  std::vector<Change> changes;
  std::vector<std::string> windowsShown, windowsHidden, windowsDestroyed;

  void MsgBox(const String& text) override { messages.push_back(text.Utf8()); }
  void Beep() override { ++beeps; }
  void ShowURL(const String& url) override { urls.push_back(url.Utf8()); }
  void Quit(Integer code) override { quits.push_back(code); }
  void UnhandledException(const RuntimeException& e) override { errors.push_back(e.ClassName()); }

  void RunModal(Window& w) override {
    if (modalAnswers.empty()) {
      problems.push_back("unexpected modal " + w.ClassName());
      return;
    }
    auto answer = std::move(modalAnswers.front());
    modalAnswers.pop_front();
    answer(w);
    if (w.Visible()) problems.push_back("modal left open " + w.ClassName());
  }
  Ref<FolderItem> OpenFileDialog(const String&) override { return nil; }
  std::optional<Integer> ContextualMenu(const std::vector<String>& rows) override {
    std::vector<std::string> shown;
    for (const String& r : rows) shown.push_back(r.Utf8());
    menusShown.push_back(shown);
    if (menuAnswers.empty()) {
      problems.push_back("unexpected contextual menu");
      return std::nullopt;
    }
    std::optional<Integer> answer = menuAnswers.front();
    menuAnswers.pop_front();
    return answer;
  }
  std::unique_ptr<PageSurface> PrintDialog(const PrinterSetup*) override { return nullptr; }
  bool PageSetupDialog(PrinterSetup&) override { return false; }

  void WindowShown(Window& w) override { windowsShown.push_back(w.ClassName()); }
  void WindowHidden(Window& w) override { windowsHidden.push_back(w.ClassName()); }
  void WindowDestroyed(Window& w) override { windowsDestroyed.push_back(w.ClassName()); }
  void ControlChanged(Control& c, Prop what) override { changes.push_back({&c, what}); }

  int ChangesOf(const Control* c, Prop what) const {
    int n = 0;
    for (const Change& ch : changes)
      if (ch.control == c && ch.what == what) ++n;
    return n;
  }
};

// Each test starts with no window built, this screen in force and an empty clipboard, and leaves
// nothing behind.
class ScreenTest : public ::testing::Test {
 protected:
  void SetUp() override {
    WindowRegistry::ResetAll();
    SetScreen(&screen);
    Clipboard() = String();
  }
  void TearDown() override {
    WindowRegistry::ResetAll();
    SetScreen(nullptr);
    EXPECT_TRUE(screen.problems.empty()) << screen.problems.front();
    EXPECT_TRUE(screen.modalAnswers.empty()) << "a modal answer was not used";
    EXPECT_TRUE(screen.menuAnswers.empty()) << "a menu answer was not used";
  }

  // Types the text into the window, one key a character, as a keyboard would.
  static void Type(Window& w, const std::string& utf8) {
    for (std::size_t i = 0; i < utf8.size();) {
      std::size_t n = 1;
      while (i + n < utf8.size() && (static_cast<unsigned char>(utf8[i + n]) & 0xC0) == 0x80) ++n;
      w.UserKey(String(utf8.substr(i, n)));
      i += n;
    }
  }

  TestScreen screen;
};
