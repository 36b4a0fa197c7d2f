// SPDX-License-Identifier: GPL-3.0-or-later
// Runs scenarios against the real program: each in a new program folder with a fresh program
// state, its commands one by one, its checks at their lines.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rb/rb.h"
#include "scenario/Args.h"
#include "scenario/Properties.h"
#include "scenario/ScenarioFailure.h"
#include "scenario/ScriptFile.h"
#include "scenario/TestScreen.h"

namespace scn {

struct Outcome {
  bool passed = true;
  ScenarioFailure failure;
  std::string folder;  // the program folder, when kept
};

// A fault of the disk, for the tests of what a saving leaves behind: the process killed at a
// step of writing a file, or the disk full from that step on.
enum class FaultKind { None, Kill, Full };

class Runner {
 public:
  explicit Runner(bool keepFolders) : keep_(keepFolders) {}

  // Every scenario runs in this folder, as it is, and the folder stays.
  void UseFolder(const std::string& folder) { fixedFolder_ = folder; }
  // From the step-th write, sync or rename of a file in the run: the process is killed there, or
  // that step and every later one fails with a full disk until the command it happened in ends.
  void SetFault(FaultKind kind, long step);

  Outcome Run(const Scenario& scenario);

  // Snapshots are read from, or with `writeGolden` written to, paths relative to this folder: the
  // folder of the file whose scenarios run.
  void SetScriptFolder(const std::string& folder) { scriptFolder_ = folder; }
  void WriteGolden(bool on) { writeGolden_ = on; }

  // Where the scenario stands: the innermost command running.
  Where Current() const;
  // The native path of a scenario path inside the program folder.
  std::string NativePath(const std::string& path, const Where& where) const;

 private:
  using Handler = void (Runner::*)(Args&);
  struct Verb {
    const char* name;
    Handler handler;
    const char* form;
    bool action;  // a user action: the program must run, and it may end in an exception
  };
  static const std::vector<Verb>& Verbs();
  static const std::vector<Verb>& ExpectVerbs();

  void Execute(const Command& c);
  void Validate(const Command& c);
  void EndChecks();
  void ApplySettings();

  // The world.
  void Today(Args& a);
  void ShortDate(Args& a);
  void Paper(Args& a);
  void File(Args& a);
  void Folder(Args& a);
  void Remove(Args& a);
  void Link(Args& a);
  void Pipe(Args& a);
  // The program's life.
  void Start(Args& a);
  void Quit(Args& a);
  void Restart(Args& a);
  void DoStart();
  void DoQuit(const Where& where);
  // Answers.
  void When(Args& a);
  // What the user does.
  void Menu(Args& a);
  void Key(Args& a);
  void Focus(Args& a);
  void Tab(Args& a);
  void Press(Args& a);
  void Type(Args& a);
  void Paste(Args& a);
  void Click(Args& a);
  void RightClick(Args& a);
  void Hover(Args& a);
  void Unhover(Args& a);
  void CellClick(Args& a);
  void Select(Args& a);
  void Edit(Args& a);
  void Drag(Args& a);
  void Close(Args& a);
  // Checks.
  void Expect(Args& a);
  void ExpectProperty(Args& a);
  void ExpectFocus(Args& a);
  void ExpectMsgBox(Args& a);
  void ExpectNoMsgBox(Args& a);
  void ExpectBeep(Args& a);
  void ExpectUrl(Args& a);
  void ExpectError(Args& a);
  void ExpectMenu(Args& a);
  void ExpectFile(Args& a);
  void ExpectNoFile(Args& a);
  void ExpectFolder(Args& a);
  void ExpectEntries(Args& a);
  void ExpectPages(Args& a);
  void ExpectJob(Args& a);
  void ExpectDrawn(Args& a);
  void ExpectNoDrawn(Args& a);
  void ExpectLine(Args& a);
  void ExpectPicture(Args& a);
  void ExpectWindow(Args& a);
  void ExpectPage(Args& a);
  // The snapshot against its golden file, or written to it.
  void CompareGolden(Args& a, const std::string& file, const std::string& snapshot);

  // Runs a modal window's actions while it is shown, as events served by its modal loop.
  void RunModalActions(Window& w, const std::vector<Command>& actions);

  // Helpers for actions.
  Window& TargetWindow(const std::string& name, const Where& where);
  Control& TargetControl(const Target& t, const Where& where);
  Control& ActionControl(Args& a);
  // The control of a command that names one and nothing more; nil in a dry run, once checked.
  Control* LoneControl(Args& a);
  Window& FrontWindow(const Where& where);
  void SendKey(Window& w, const String& key);
  const PrintJob& LastJob(const Where& where);
  MenuItem* FindMenuItem(const std::string& name, const Where& where);

  bool keep_;
  std::string fixedFolder_;
  struct Fault {
    FaultKind kind = FaultKind::None;
    long step = 0, seen = 0;
    bool failing = false;
  } fault_;
  bool dry_ = false;  // true while commands are only read, before the scenario runs
  std::unique_ptr<TestScreen> screen_;
  std::string scriptFolder_ = ".";
  bool writeGolden_ = false;
  std::string folder_;
  bool running_ = false;
  std::vector<const Command*> stack_;
  std::vector<Window*> modals_;
  // The unhandled exceptions reported during the last command that was not a check.
  std::size_t lastFrom_ = 0, lastTo_ = 0;
  // The world's settings, kept for a restart.
  int year_ = 2026, month_ = 11, day_ = 16;
  std::string shortDate_ = "dd/MM/yyyy";
  double paperWidth_ = 595, paperHeight_ = 842;
};

}  // namespace scn
