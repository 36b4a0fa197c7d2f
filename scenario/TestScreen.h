// SPDX-License-Identifier: GPL-3.0-or-later
// The one screen that stands in for a person everywhere but on the desktop: the scenario runner,
// the unit tests, the fuzz entries, the soak and the benchmarks put it in front of the program. It
// answers what blocks from answers queued beforehand, or from a standing answer of that kind, and
// keeps what the program showed: messages, beeps, addresses, unhandled exceptions, print jobs.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rb/rb.h"
#include "scenario/ScriptFile.h"

namespace scn {

// One answer to what blocks.
struct Answer {
  enum Kind { Modal, Menu, Print, PageSetup, OpenFile };
  Kind kind = Modal;
  Where where;          // where it was queued, for reports
  std::string written;  // as the script wrote it, for reports
  // Modal: the window it is meant for (any when empty), and what happens while it shows; that
  // must hide the window.
  std::string window;
  std::function<void(Window&)> act;
  bool accept = true;  // false: dismissed or cancelled
  // Menu: the row chosen by its text, or by its index (counted from the end when negative).
  // Print: the path of a PDF to print to as well. OpenFile: the file's path.
  std::string text;
  std::optional<Integer> row;
  bool record = true;  // Print: the job's drawing is kept in jobs
  bool hasPaper = false;  // PageSetup ok with this portrait page
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

// A defect ends the program: Defect records it and throws this, which derives from nothing the
// platform catches, so it unwinds through every handler to whoever runs the program.
struct ProgramEnded {
  std::string className;
  std::string what;
};

struct PrintJob {
  std::vector<DrawOp> ops;
  std::string orientation;  // portrait, landscape, or default when the program gave no setup
  double paperWidth = 0, paperHeight = 0;  // the paper as the job went out, turned
};

class TestScreen : public Screen {
 public:
  void MsgBox(const String& text) override;
  void Beep() override { ++beeps; }
  void ShowURL(const String& url) override { urls.push_back(url.Utf8()); }
  void Quit(Integer code) override;
  void UnhandledException(const RuntimeException& e) override;
  // Recorded with the exceptions, then ends the program by throwing ProgramEnded.
  [[noreturn]] void Defect(const std::string& className, const std::string& what) override;
  void RunModal(Window& w) override;
  Ref<FolderItem> OpenFileDialog(const String& filter) override;
  std::optional<Integer> ContextualMenu(const std::vector<String>& rows) override;
  std::unique_ptr<PageSurface> PrintDialog(const PrinterSetup* setup) override;
  bool PageSetupDialog(PrinterSetup& setup) override;
  void ControlChanged(Control& c, Prop what) override { changes.push_back({&c, what}); }

  // Taken by the next blocking call of its kind, oldest first.
  void Queue(Answer a) { queued_.push_back(std::move(a)); }
  // Given to every call of its kind that finds none queued; it stays until replaced or cleared.
  void Standing(Answer a) { standing_[a.kind] = std::move(a); }
  // The standing answers of a person who goes along with nothing: each modal window as `modal` does
  // (hidden at once by default), the print dialog confirmed onto a recording surface, the
  // contextual menu dismissed, the page setup and file-open dialogs cancelled.
  void StandAsAPassiveUser(std::function<void(Window&)> modal = nullptr);
  // The first answer still queued, if any.
  const Answer* Unused() const { return queued_.empty() ? nullptr : &queued_.front(); }
  // A new start: the counts that run "since start" begin again.
  void NoteStart();
  // What was shown, and the answers still queued, forgotten; standing answers stay.
  void Clear();

  // Where the script stands; stamped on what is recorded.
  Where now;
  // A blocking call with no answer, or an answer that does not fit. By default it is written to
  // `problems` and the call gives up (no choice, no file, nothing printed); the runner fails the
  // scenario instead.
  std::function<void(const Where& at, const std::string& expected, const std::string& found)>
      onProblem;
  // The native path of a path an answer names; as written by default.
  std::function<std::string(const std::string& path, const Where& at)> nativePath;

  std::vector<std::string> problems;
  std::vector<ShownMessage> messages;
  std::vector<ReportedException> exceptions;
  std::vector<PrintJob> jobs;
  std::vector<std::string> urls;
  std::vector<Integer> quits;
  std::vector<std::vector<std::string>> menusShown;  // the rows of each contextual menu
  std::vector<std::pair<const Control*, Prop>> changes;  // what a live screen would be told
  int beeps = 0;
  bool ended = false;  // Quit was called since the last start

 private:
  // The oldest queued answer of the kind, else the standing one; none reports a problem.
  std::optional<Answer> Take(Answer::Kind kind, const std::string& unexpected);
  void Problem(const Where& at, const std::string& expected, const std::string& found);

  std::deque<Answer> queued_;
  std::map<Answer::Kind, Answer> standing_;
};

}  // namespace scn
