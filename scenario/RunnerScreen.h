// The screen that a scenario puts in front of the program: it answers what blocks from the answers
// the scenario queued with `when`, and keeps what the program showed (messages, beeps, addresses,
// unhandled exceptions, print jobs) for the checks.
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rb/rb.h"
#include "scenario/ScriptFile.h"

namespace scn {

class Runner;

// One answer queued by `when`.
struct Answer {
  enum Kind { Modal, Menu, Print, PageSetup, OpenFile };
  Kind kind = Modal;
  Where where;                   // the `when` line
  std::string written;           // the `when` line as written, for messages
  std::string window;            // Modal: the window's class
  std::vector<Command> actions;  // Modal: run while the window is shown
  bool accept = true;            // false: dismiss or cancel
  std::string text;              // Menu: the row; Print: the PDF's path; OpenFile: the path
  bool hasPaper = false;         // PageSetup ok with a page
  double paperWidth = 0, paperHeight = 0;
};

struct ShownMessage {
  std::string text;  // UTF-8, as shown
  Where where;
  bool checked = false;
};

struct ReportedException {
  std::string className;
  std::string what;
  Where where;
  bool checked = false;
};

struct PrintJob {
  std::vector<DrawOp> ops;
  std::string orientation;  // portrait, landscape, or default when the program gave no setup
};

class RunnerScreen : public Screen {
 public:
  explicit RunnerScreen(Runner& runner) : runner_(runner) {}

  void MsgBox(const String& text) override;
  void Beep() override;
  void ShowURL(const String& url) override;
  void Quit(Integer code) override;
  void UnhandledException(const RuntimeException& e) override;
  void RunModal(Window& w) override;
  Ref<FolderItem> OpenFileDialog(const String& filter) override;
  std::optional<Integer> ContextualMenu(const std::vector<String>& rows) override;
  std::unique_ptr<PageSurface> PrintDialog(const PrinterSetup* setup) override;
  bool PageSetupDialog(PrinterSetup& setup) override;

  void Queue(Answer a) { answers_.push_back(std::move(a)); }
  // The first answer still queued, if any.
  const Answer* Unused() const { return answers_.empty() ? nullptr : &answers_.front(); }

  // A new start: the counts that run "since start" begin again.
  void NoteStart();

  std::vector<ShownMessage>& Messages() { return messages_; }
  std::vector<ReportedException>& Exceptions() { return exceptions_; }
  const std::vector<PrintJob>& Jobs() const { return jobs_; }
  const std::vector<std::string>& Urls() const { return urls_; }
  int TakeBeeps() {
    int n = beeps_;
    beeps_ = 0;
    return n;
  }
  bool Ended() const { return ended_; }
  void SetEnded(bool v) { ended_ = v; }

 private:
  // The oldest queued answer of that kind, or a failure naming what came unexpected.
  Answer Take(Answer::Kind kind, const std::string& unexpected);

  Runner& runner_;
  std::deque<Answer> answers_;
  std::vector<ShownMessage> messages_;
  std::vector<ReportedException> exceptions_;
  std::vector<PrintJob> jobs_;
  std::vector<std::string> urls_;
  int beeps_ = 0;
  bool ended_ = false;
};

}  // namespace scn
