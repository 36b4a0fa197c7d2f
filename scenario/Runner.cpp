// SPDX-License-Identifier: GPL-3.0-or-later
#include "scenario/Runner.h"

#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "FileSteps.h"
#include "core/App.h"
#include "core/Module1.h"

namespace fs = std::filesystem;

namespace scn {

namespace {

// Pops the command stack however the command ends; the screen stamps what it records with the
// command running.
class StackGuard {
 public:
  StackGuard(std::vector<const Command*>& stack, const Command* c, TestScreen& screen)
      : stack_(stack), screen_(screen) {
    stack_.push_back(c);
    screen_.now = c->where;
  }
  ~StackGuard() {
    stack_.pop_back();
    screen_.now = stack_.empty() ? Where{} : stack_.back()->where;
  }

 private:
  std::vector<const Command*>& stack_;
  TestScreen& screen_;
};

std::string MakeFolder() {
  const char* tmp = std::getenv("TMPDIR");
  std::string base = (tmp != nullptr && *tmp != '\0') ? tmp : "/tmp";
  std::string pattern = base + "/ledgerly-scenario-XXXXXX";
  std::vector<char> buf(pattern.begin(), pattern.end());
  buf.push_back('\0');
  if (mkdtemp(buf.data()) == nullptr) return "";
  return std::string(buf.data());
}

bool ValidDate(int y, int m, int d) {
  if (y < 1 || m < 1 || m > 12 || d < 1) return false;
  static const int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int max = days[m - 1];
  if (m == 2 && ((y % 4 == 0 && y % 100 != 0) || y % 400 == 0)) max = 29;
  return d <= max;
}

}  // namespace

const std::vector<Runner::Verb>& Runner::Verbs() {
  static const std::vector<Verb> verbs = {
      {"today", &Runner::Today, "today YYYY-MM-DD", false},
      {"shortdate", &Runner::ShortDate, "shortdate \"<pattern>\"", false},
      {"paper", &Runner::Paper, "paper <w> <h>", false},
      {"file", &Runner::File, "file <path> hex <hex>... | file <path> text \"<string>\"", false},
      {"folder", &Runner::Folder, "folder <path>", false},
      {"remove", &Runner::Remove, "remove <path>", false},
      {"link", &Runner::Link, "link <path> \"<target>\"", false},
      {"pipe", &Runner::Pipe, "pipe <path>", false},
      {"start", &Runner::Start, "start", false},
      {"quit", &Runner::Quit, "quit", false},
      {"restart", &Runner::Restart, "restart", false},
      {"when", &Runner::When, "when modal|menu|print|pagesetup|openfile ...", false},
      {"menu", &Runner::Menu, "menu <ItemName>", true},
      {"key", &Runner::Key, "key \"<shortcut>\"", true},
      {"focus", &Runner::Focus, "focus <control>", true},
      {"tab", &Runner::Tab, "tab", true},
      {"press", &Runner::Press, "press <Key> [<count>]", true},
      {"type", &Runner::Type, "type \"<text>\"", true},
      {"paste", &Runner::Paste, "paste \"<text>\"", true},
      {"click", &Runner::Click, "click <control>", true},
      {"rightclick", &Runner::RightClick, "rightclick <control>", true},
      {"hover", &Runner::Hover, "hover <control>", true},
      {"unhover", &Runner::Unhover, "unhover <control>", true},
      {"cellclick", &Runner::CellClick, "cellclick <control> <row> [<column>]", true},
      {"select", &Runner::Select, "select <control> <row>", true},
      {"edit", &Runner::Edit, "edit <control> <row> <column> \"<text>\"", true},
      {"drag", &Runner::Drag, "drag <control> <from> <to>", true},
      {"close", &Runner::Close, "close <window>", true},
      {"expect", &Runner::Expect, "expect ...", false},
  };
  return verbs;
}

Where Runner::Current() const {
  if (stack_.empty()) return Where{};
  return stack_.back()->where;
}

// Names are found as the program's FolderItem.Child finds them: an entry of exactly that name,
// else one that differs only in case, else the name as written. Only `entries` and `nofile` look
// at the names themselves.
std::string Runner::NativePath(const std::string& path, const Where& where) const {
  if (path.empty() || path[0] == '/') Fail(where, "a path inside the program's folder", path);
  std::string native = folder_;
  std::size_t start = 0;
  while (start <= path.size()) {
    std::size_t slash = path.find('/', start);
    if (slash == std::string::npos) slash = path.size();
    std::string part = path.substr(start, slash - start);
    start = slash + 1;
    if (part == "..") Fail(where, "a path inside the program's folder", path);
    if (part.empty() || part == ".") continue;
    std::string name = part;
    std::error_code ec;
    if (!fs::exists(fs::symlink_status(native + "/" + part, ec)) && fs::is_directory(native, ec)) {
      // Of several, the first name in byte order, as Child takes it.
      std::string found;
      for (const fs::directory_entry& e : fs::directory_iterator(native, ec)) {
        std::string onDisk = e.path().filename().string();
        if (EqualsIgnoringCase(onDisk, part) && (found.empty() || onDisk < found)) found = onDisk;
      }
      if (!found.empty()) name = found;
    }
    native += "/" + name;
  }
  return native;
}

void Runner::SetFault(FaultKind kind, long step) {
  fault_ = {kind, step, 0, false};
  if (kind == FaultKind::None) {
    rbi::SetFileStepHook(nullptr);
    return;
  }
  // Steps are counted from the start of the run: the step-th write, sync or rename of a file.
  rbi::SetFileStepHook([this](rbi::FileStep) {
    if (fault_.kind == FaultKind::None) return 0;
    if (++fault_.seen < fault_.step && !fault_.failing) return 0;
    if (fault_.kind == FaultKind::Kill) ::raise(SIGKILL);
    fault_.failing = true;
    return ENOSPC;
  });
}

void Runner::ApplySettings() {
  Date::SetToday(year_, month_, day_);
  Date::SetShortDateFormat(shortDate_);
  PrinterSetup::SetDefaultPaper(paperWidth_, paperHeight_);
}

void Runner::Validate(const Command& c) {
  bool saved = dry_;
  dry_ = true;
  try {
    Execute(c);
  } catch (...) {
    dry_ = saved;
    throw;
  }
  dry_ = saved;
}

void Runner::Execute(const Command& c) {
  if (c.tokens.empty() || c.tokens[0].kind != Token::Word) {
    Fail(c.where, "a command", c.tokens.empty() ? "nothing" : RenderToken(c.tokens[0]));
  }
  const Verb* verb = nullptr;
  for (const Verb& v : Verbs()) {
    if (c.tokens[0].text == v.name) verb = &v;
  }
  if (verb == nullptr) Fail(c.where, "a command", c.tokens[0].text);
  Args a(c, 1, verb->form);
  if (dry_) {
    (this->*verb->handler)(a);
    return;
  }
  StackGuard guard(stack_, &c, *screen_);
  if (verb->action && !running_) {
    Fail(c.where, "the program running for " + c.tokens[0].text, "it is not running");
  }
  bool check = verb->handler == &Runner::Expect;
  bool runsProgram = verb->action || verb->handler == &Runner::Start ||
                     verb->handler == &Runner::Quit || verb->handler == &Runner::Restart;
  std::size_t before = screen_->exceptions.size();
  try {
    // A step is an event, as a person's key is on the desktop; a check only reads.
    if (check) {
      (this->*verb->handler)(a);
    } else {
      RunEvent([&] { (this->*verb->handler)(a); });
    }
  } catch (const RuntimeException& e) {
    Fail(c.where, Render(c.tokens, 1), std::string("reading raised ") + e.ClassName());
  } catch (const ProgramEnded& end) {
    running_ = false;
    Fail(c.where, "the program going on", "it ended on " + end.className + " (" + end.what + ")");
  }
  if (runsProgram) {
    lastFrom_ = before;
    lastTo_ = screen_->exceptions.size();
  }
  // A full disk lasts until the person has seen what it did: to the end of this command.
  if (fault_.failing) fault_.kind = FaultKind::None, fault_.failing = false;
  if (screen_->ended) running_ = false;
}

Outcome Runner::Run(const Scenario& scenario) {
  Outcome out;
  if (!scenario.error.empty()) {
    out.passed = false;
    out.failure = {scenario.errorAt, scenario.error, scenario.errorFound};
    return out;
  }
  try {
    for (const Command& c : scenario.commands) Validate(c);
  } catch (const ScenarioFailure& f) {
    out.passed = false;
    out.failure = f;
    return out;
  }

  folder_ = fixedFolder_.empty() ? MakeFolder() : fixedFolder_;
  if (!fixedFolder_.empty()) {
    std::error_code ec;
    fs::create_directories(folder_, ec);
  }
  if (folder_.empty()) {
    out.passed = false;
    out.failure = {scenario.where, "a new program folder", "mkdtemp failed"};
    return out;
  }
  screen_ = std::make_unique<TestScreen>();
  screen_->onProblem = [](const Where& at, const std::string& expected, const std::string& found) {
    Fail(at, expected, found);
  };
  screen_->nativePath = [this](const std::string& path, const Where& at) { return NativePath(path, at); };
  running_ = false;
  stack_.clear();
  modals_.clear();
  lastFrom_ = lastTo_ = 0;
  year_ = 2026, month_ = 11, day_ = 16;
  shortDate_ = "dd/MM/yyyy";
  paperWidth_ = 595, paperHeight_ = 842;

  try {
    SetProgramFolder(folder_);
    SetScreen(screen_.get());
    ResetProgram();
    ApplySettings();
    Clipboard() = String();
    for (const Command& c : scenario.commands) Execute(c);
    EndChecks();
  } catch (const ScenarioFailure& f) {
    out.passed = false;
    out.failure = f;
  } catch (const RuntimeException& e) {
    out.passed = false;
    out.failure = {Current(), "no exception in the runner",
                   std::string(e.ClassName()) + ": " + e.what()};
  } catch (const std::exception& e) {
    out.passed = false;
    out.failure = {Current(), "no exception in the runner", e.what()};
  }
  stack_.clear();
  modals_.clear();
  try {
    ResetProgram();
  } catch (...) {
    // A program state that cannot even be dropped cannot be judged either; the next scenario
    // starts from ResetProgram again.
  }
  SetScreen(nullptr);
  screen_.reset();
  if (keep_ || !fixedFolder_.empty()) {
    out.folder = folder_;
  } else {
    std::error_code ec;
    fs::remove_all(folder_, ec);
  }
  return out;
}

void Runner::EndChecks() {
  if (const Answer* a = screen_->Unused()) {
    Fail(a->where, "every queued answer taken", a->written + " still queued");
  }
  for (const ShownMessage& m : screen_->messages) {
    if (!m.checked) Fail(m.where, "every message checked", "unchecked msgbox " + Quote(m.text));
  }
  for (const ReportedException& e : screen_->exceptions) {
    if (!e.checked) {
      Fail(e.where, "every unhandled exception checked",
           "unchecked " + e.className + " (" + e.what + ")");
    }
  }
}

// The world.

void Runner::Today(Args& a) {
  std::string d = a.Word("a date YYYY-MM-DD");
  int y = 0, m = 0, day = 0;
  char tail = 0;
  if (d.size() != 10 || std::sscanf(d.c_str(), "%4d-%2d-%2d%c", &y, &m, &day, &tail) != 3 ||
      !ValidDate(y, m, day)) {
    Fail(a.where(), "a date YYYY-MM-DD (today YYYY-MM-DD)", d);
  }
  a.End();
  if (dry_) return;
  year_ = y, month_ = m, day_ = day;
  ApplySettings();
}

void Runner::ShortDate(Args& a) {
  std::string p = a.Quoted("a pattern in quotes");
  a.End();
  if (dry_) return;
  shortDate_ = p;
  ApplySettings();
}

void Runner::Paper(Args& a) {
  double w = a.Number("a width in points");
  double h = a.Number("a height in points");
  a.End();
  if (w <= 0 || h <= 0) Fail(a.where(), "a page of some size", Render(a.command().tokens));
  if (dry_) return;
  paperWidth_ = w, paperHeight_ = h;
  ApplySettings();
}

void Runner::File(Args& a) {
  std::string path = a.Name("a path");
  std::string bytes;
  if (a.Accept("hex")) {
    std::string digits;
    while (!a.AtEnd()) digits += a.Word("hex digits");
    if (!ParseHex(digits, bytes)) Fail(a.where(), "pairs of hex digits", digits);
  } else if (a.Accept("text")) {
    bytes = a.Quoted("a text in quotes");
    a.End();
  } else {
    a.Bad("hex or text");
  }
  if (dry_) return;
  fs::path native = NativePath(path, a.where());
  std::error_code ec;
  fs::create_directories(native.parent_path(), ec);
  std::ofstream f(native, std::ios::binary | std::ios::trunc);
  f.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!f) Fail(a.where(), "a file written at " + path, "it could not be written");
}

// A symbolic link, its target written as it stands: relative to the link's own folder, or absolute.
void Runner::Link(Args& a) {
  std::string path = a.Name("a path");
  std::string target = a.Quoted("a target in quotes");
  a.End();
  if (dry_) return;
  fs::path native = NativePath(path, a.where());
  std::error_code ec;
  fs::create_directories(native.parent_path(), ec);
  fs::create_symlink(target, native, ec);
  if (ec) Fail(a.where(), "a link made at " + path, ec.message());
}

// A named pipe, which blocks whoever opens it until someone is at the other end.
void Runner::Pipe(Args& a) {
  std::string path = a.Name("a path");
  a.End();
  if (dry_) return;
  fs::path native = NativePath(path, a.where());
  std::error_code ec;
  fs::create_directories(native.parent_path(), ec);
  if (::mkfifo(native.c_str(), 0666) != 0) Fail(a.where(), "a pipe made at " + path, std::strerror(errno));
}

void Runner::Folder(Args& a) {
  std::string path = a.Name("a path");
  a.End();
  if (dry_) return;
  std::error_code ec;
  fs::create_directories(NativePath(path, a.where()), ec);
  if (!fs::is_directory(NativePath(path, a.where()))) {
    Fail(a.where(), "a folder made at " + path, "it could not be made");
  }
}

void Runner::Remove(Args& a) {
  std::string path = a.Name("a path");
  a.End();
  if (dry_) return;
  std::string native = NativePath(path, a.where());
  if (native == folder_) Fail(a.where(), "something inside the program's folder", path);
  std::error_code ec;
  if (!fs::exists(fs::symlink_status(native, ec))) {
    Fail(a.where(), "a file or folder to remove at " + path, "nothing there");
  }
  fs::remove_all(native, ec);
}

// The program's life.

// As a new launch of the program: whatever an earlier run left in memory is gone.
void Runner::DoStart() {
  ResetProgram();
  screen_->NoteStart();
  ApplySettings();
  SetProgramFolder(folder_);
  if (HoldProgramFolder() == FolderHold::HeldByAnother)
    Fail(Current(), "the program's folder free to start in", "another copy holds it");
  SetScreen(screen_.get());
  running_ = true;
  StartProgram();
}

void Runner::DoQuit(const Where& where) {
  ChooseMenuItem("FileQuit");
  if (!screen_->ended) Fail(where, "the program ends", "it is still running");
  running_ = false;
}

void Runner::Start(Args& a) {
  a.End();
  if (dry_) return;
  if (running_) Fail(a.where(), "start while the program is not running", "it is running");
  DoStart();
}

void Runner::Quit(Args& a) {
  a.End();
  if (dry_) return;
  if (!running_) Fail(a.where(), "quit while the program runs", "it is not running");
  DoQuit(a.where());
}

void Runner::Restart(Args& a) {
  a.End();
  if (dry_) return;
  if (!running_) Fail(a.where(), "restart while the program runs", "it is not running");
  DoQuit(a.where());
  DoStart();
}

// Answers to what blocks.

void Runner::When(Args& a) {
  Answer ans;
  ans.where = a.where();
  ans.written = Render(a.command().tokens);
  if (a.Accept("modal")) {
    a.SetForm("when modal <window> do <action> [; <action>]...");
    ans.kind = Answer::Modal;
    ans.window = a.Word("a window");
    a.Keyword("do");
    std::vector<Token> rest = a.Rest();
    std::vector<Command> actions;
    std::vector<Token> cur;
    for (std::size_t i = 0; i < rest.size(); ++i) {
      // A modal answer among the actions takes every action after it as its own.
      bool nestedModal = cur.empty() && rest[i].IsWord("when") && i + 1 < rest.size() &&
                         rest[i + 1].IsWord("modal");
      if (nestedModal) {
        cur.assign(rest.begin() + static_cast<std::ptrdiff_t>(i), rest.end());
        break;
      }
      if (rest[i].kind == Token::Semicolon) {
        if (cur.empty()) a.Bad("an action before each ';'");
        actions.push_back({a.where(), cur});
        cur.clear();
      } else {
        cur.push_back(rest[i]);
      }
    }
    if (cur.empty()) a.Bad("an action after do and after each ';'");
    actions.push_back({a.where(), cur});
    if (dry_) {
      if (!WindowRegistry::Known(ans.window)) Fail(a.where(), "a window class", ans.window);
      for (const Command& c : actions) Validate(c);
      return;
    }
    ans.act = [this, actions](Window& w) { RunModalActions(w, actions); };
  } else if (a.Accept("menu")) {
    a.SetForm("when menu choose \"<text>\" | when menu dismiss");
    ans.kind = Answer::Menu;
    if (a.Accept("choose")) {
      ans.text = a.Quoted("the row's text in quotes");
    } else if (a.Accept("dismiss")) {
      ans.accept = false;
    } else {
      a.Bad("choose or dismiss");
    }
    a.End();
  } else if (a.Accept("print")) {
    a.SetForm("when print ok | when print cancel | when print pdf \"<path>\"");
    ans.kind = Answer::Print;
    if (a.Accept("ok")) {
    } else if (a.Accept("cancel")) {
      ans.accept = false;
    } else if (a.Accept("pdf")) {
      ans.text = a.Name("a path");
      if (ans.text.empty()) a.Bad("a path");
    } else {
      a.Bad("ok, cancel or pdf");
    }
    a.End();
  } else if (a.Accept("pagesetup")) {
    a.SetForm("when pagesetup ok [<w> <h>] | when pagesetup cancel");
    ans.kind = Answer::PageSetup;
    if (a.Accept("ok")) {
      if (!a.AtEnd()) {
        ans.hasPaper = true;
        ans.paperWidth = a.Number("a width in points");
        ans.paperHeight = a.Number("a height in points");
      }
    } else if (a.Accept("cancel")) {
      ans.accept = false;
    } else {
      a.Bad("ok or cancel");
    }
    a.End();
  } else if (a.Accept("openfile")) {
    a.SetForm("when openfile \"<path>\" | when openfile cancel");
    ans.kind = Answer::OpenFile;
    if (a.Accept("cancel")) {
      ans.accept = false;
    } else {
      ans.text = a.Name("a path or cancel");
    }
    a.End();
  } else {
    a.Bad("modal, menu, print, pagesetup or openfile");
  }
  if (dry_) return;
  screen_->Queue(std::move(ans));
}

void Runner::RunModalActions(Window& w, const std::vector<Command>& actions) {
  modals_.push_back(&w);
  struct Pop {
    std::vector<Window*>& v;
    ~Pop() { v.pop_back(); }
  } pop{modals_};
  // The modal loop serves these as events of their own.
  OutermostScope scope;
  for (const Command& c : actions) Execute(c);
}

}  // namespace scn
