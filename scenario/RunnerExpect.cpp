// SPDX-License-Identifier: GPL-3.0-or-later
// The checks of what the program shows: controls, windows, globals, messages, the browser,
// exceptions, menus, and what it leaves on disk.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/Module1.h"
#include "scenario/Runner.h"

namespace fs = std::filesystem;

namespace scn {

namespace {

// A leaf name holding "/" is stored on disk with U+2215 in its place; it is shown as "/".
std::string ShownName(const std::string& onDisk) {
  static const std::string slash = "\xE2\x88\x95";
  std::string s = onDisk;
  std::size_t at = 0;
  while ((at = s.find(slash, at)) != std::string::npos) s.replace(at, slash.size(), "/");
  return s;
}

bool ReadBytes(const std::string& native, std::string& out) {
  std::ifstream in(native, std::ios::binary);
  if (!in) return false;
  std::stringstream ss;
  ss << in.rdbuf();
  out = ss.str();
  return true;
}

std::string Shorten(const std::string& bytes, std::size_t limit = 200) {
  if (bytes.size() <= limit) return Quote(bytes);
  return Quote(bytes.substr(0, limit)) + "... (" + std::to_string(bytes.size()) + " bytes)";
}

// A global's or a window property's text against the value written: numbers as numbers, a quoted
// text as its characters, a word as that word.
bool SameValue(const std::string& actual, const Token& expected) {
  if (expected.kind == Token::Quoted)
    return actual == expected.text || actual == Shown(expected.text);
  double want = 0, have = 0;
  if (ParseNumber(expected.text, want)) return ParseNumber(actual, have) && have == want;
  return actual == expected.text;
}

std::string ShowValue(const std::string& actual) {
  double n = 0;
  if (actual == "true" || actual == "false" || ParseNumber(actual, n)) return actual;
  return Quote(actual);
}

}  // namespace

const std::vector<Runner::Verb>& Runner::ExpectVerbs() {
  static const std::vector<Verb> verbs = {
      {"focus", &Runner::ExpectFocus, "expect focus <control>", false},
      {"msgbox", &Runner::ExpectMsgBox, "expect msgbox \"<text>\"", false},
      {"nomsgbox", &Runner::ExpectNoMsgBox, "expect nomsgbox", false},
      {"beep", &Runner::ExpectBeep, "expect beep", false},
      {"url", &Runner::ExpectUrl, "expect url \"<text>\" | expect url *", false},
      {"error", &Runner::ExpectError, "expect error \"<Name>\"", false},
      {"menu", &Runner::ExpectMenu, "expect menu <ItemName> enabled|disabled", false},
      {"file", &Runner::ExpectFile,
       "expect file <path> hex <hex>... | text \"<string>\" | contains \"<string>\" | size <n>",
       false},
      {"nofile", &Runner::ExpectNoFile, "expect nofile <path>", false},
      {"folder", &Runner::ExpectFolder, "expect folder <path>", false},
      {"entries", &Runner::ExpectEntries, "expect entries <folder> \"<name>\"...", false},
      {"pages", &Runner::ExpectPages, "expect pages <n>", false},
      {"job", &Runner::ExpectJob, "expect job portrait|landscape|default", false},
      {"drawn", &Runner::ExpectDrawn,
       "expect drawn \"<text>\" at <x> <y> [<style>] | expect drawn \"<text>\" right <edge> <y> "
       "[<style>]",
       false},
      {"nodrawn", &Runner::ExpectNoDrawn, "expect nodrawn \"<text>\"", false},
      {"line", &Runner::ExpectLine, "expect line <x1> <y1> <x2> <y2> [color RRGGBB]", false},
      {"picture", &Runner::ExpectPicture, "expect picture at <x> <y>", false},
      {"window", &Runner::ExpectWindow, "expect window <window> \"<golden file>\"", false},
      {"page", &Runner::ExpectPage, "expect page \"<golden file>\"", false},
  };
  return verbs;
}

void Runner::Expect(Args& a) {
  for (const Verb& v : ExpectVerbs()) {
    if (a.Accept(v.name)) {
      a.SetForm(v.form);
      (this->*v.handler)(a);
      return;
    }
  }
  a.SetForm(
      "expect <window>.<control>.<Property> = <value> | expect <window>.<property> = <value>");
  ExpectProperty(a);
}

void Runner::ExpectProperty(Args& a) {
  std::string text = a.Word("a property: window.control.Property or window.property");
  Target t;
  std::string error;
  if (!ParseProperty(text, t, error)) Fail(a.where(), error, text);
  a.Keyword("=");
  if (a.AtEnd()) a.Bad("a value");
  Token want = a.command().tokens[a.Position()];
  a.Name("a value");
  a.End();
  std::string expected = Render(a.command().tokens, 1);
  if (t.window == "Module1") {
    if (!t.control.empty()) Fail(a.where(), "Module1.<global>", text);
    if (dry_) return;
    std::string value;
    if (!Module1::Lookup(t.property, value))
      Fail(a.where(), "a global Module1." + t.property, "no such global");
    if (!SameValue(value, want)) Fail(a.where(), expected, ShowValue(value));
    return;
  }
  if (dry_) {
    if (!WindowRegistry::Known(t.window)) Fail(a.where(), "a window class", t.window);
    return;
  }
  if (!WindowRegistry::Known(t.window)) Fail(a.where(), "a window class", t.window);
  Window* w = WindowRegistry::Find(t.window);
  if (t.control.empty()) {
    if (t.property == "Visible") {
      Value v;
      v.kind = Value::Bool;
      v.b = w != nullptr && w->Visible();
      std::string problem;
      bool same = Matches(v, want, problem);
      if (!problem.empty()) Fail(a.where(), problem + " for Visible", RenderToken(want));
      if (!same) Fail(a.where(), expected, v.Show());
      return;
    }
    if (w == nullptr) Fail(a.where(), expected, "window " + t.window + " not built");
    std::string value;
    if (!w->OwnProperty(t.property, value))
      Fail(a.where(), expected, "no property " + t.property + " of " + t.window);
    if (!SameValue(value, want)) Fail(a.where(), expected, ShowValue(value));
    return;
  }
  if (w == nullptr) Fail(a.where(), expected, "window " + t.window + " not built");
  Control* c = w->FindControl(t.control, t.index);
  if (c == nullptr) Fail(a.where(), expected, "no control " + t.ControlName());
  Value v;
  if (!ReadProperty(*c, t.property, t.args, v, error)) Fail(a.where(), expected, error);
  std::string problem;
  bool same = Matches(v, want, problem);
  if (!problem.empty()) Fail(a.where(), problem + " for " + t.property, RenderToken(want));
  if (!same) Fail(a.where(), expected, v.Show());
}

void Runner::ExpectFocus(Args& a) {
  std::string text = a.Word("a control");
  Target t;
  std::string error;
  if (!ParseControl(text, t, error)) Fail(a.where(), error, text);
  a.End();
  if (dry_) return;
  Control& c = TargetControl(t, a.where());
  Control* has = c.ParentWindow()->Focus();
  if (has != &c) {
    Fail(
        a.where(), "focus " + text,
        "focus " + (has == nullptr ? std::string("on nothing") : t.window + "." + has->FullName()));
  }
}

void Runner::ExpectMsgBox(Args& a) {
  std::string text = a.Quoted("the message in quotes");
  a.End();
  if (dry_) return;
  for (ShownMessage& m : screen_->messages) {
    if (m.checked) continue;
    if (m.text != Shown(text)) Fail(a.where(), "msgbox " + Quote(text), "msgbox " + Quote(m.text));
    m.checked = true;
    return;
  }
  Fail(a.where(), "msgbox " + Quote(text), "no message");
}

void Runner::ExpectNoMsgBox(Args& a) {
  a.End();
  if (dry_) return;
  for (const ShownMessage& m : screen_->messages) {
    if (!m.checked) {
      Fail(a.where(), "no message",
           "msgbox " + Quote(m.text) + " at line " + std::to_string(m.where.line));
    }
  }
}

void Runner::ExpectBeep(Args& a) {
  a.End();
  if (dry_) return;
  if (screen_->beeps == 0) Fail(a.where(), "a beep", "no beep since the last check");
  screen_->beeps = 0;
}

void Runner::ExpectUrl(Args& a) {
  if (a.Accept("*")) {
    a.End();
    if (dry_) return;
    if (screen_->urls.empty()) Fail(a.where(), "url *", "no address handed to the browser");
    return;
  }
  std::string text = a.Quoted("the address in quotes, or *");
  a.End();
  if (dry_) return;
  if (screen_->urls.empty())
    Fail(a.where(), "url " + Quote(text), "no address handed to the browser");
  const std::string& last = screen_->urls.back();
  if (last != Shown(text)) Fail(a.where(), "url " + Quote(text), "url " + Quote(last));
}

void Runner::ExpectError(Args& a) {
  std::string name = a.Quoted("the exception's class in quotes");
  a.End();
  if (dry_) return;
  std::vector<ReportedException>& all = screen_->exceptions;
  std::string seen;
  for (std::size_t i = lastFrom_; i < lastTo_ && i < all.size(); ++i) {
    if (all[i].className == name && !all[i].checked) {
      all[i].checked = true;
      return;
    }
    seen += (seen.empty() ? "" : ", ") + all[i].className + (all[i].checked ? " (checked)" : "");
  }
  Fail(a.where(), "error " + Quote(name),
       seen.empty() ? "the last command ended without an unhandled exception" : "errors " + seen);
}

void Runner::ExpectMenu(Args& a) {
  std::string name = a.Word("a menu item's name");
  bool enabled = false;
  if (a.Accept("enabled")) {
    enabled = true;
  } else if (!a.Accept("disabled")) {
    a.Bad("enabled or disabled");
  }
  a.End();
  if (dry_) return;
  MenuItem* item = FindMenuItem(name, a.where());
  bool is = item->Enabled();
  if (is != enabled) {
    Fail(a.where(), "menu " + name + (enabled ? " enabled" : " disabled"),
         "menu " + name + (is ? " enabled" : " disabled"));
  }
}

void Runner::ExpectFile(Args& a) {
  std::string path = a.Name("a path");
  enum { Hex, Text, Contains, Size } mode;
  std::string want;
  long long size = 0;
  if (a.Accept("hex")) {
    mode = Hex;
    std::string digits;
    while (!a.AtEnd()) digits += a.Word("hex digits");
    if (!ParseHex(digits, want)) Fail(a.where(), "pairs of hex digits", digits);
  } else if (a.Accept("text")) {
    mode = Text;
    want = a.Quoted("the file's text in quotes");
  } else if (a.Accept("contains")) {
    mode = Contains;
    want = a.Quoted("a text in quotes");
  } else if (a.Accept("size")) {
    mode = Size;
    size = a.Int("a size in bytes");
  } else {
    a.Bad("hex, text, contains or size");
  }
  a.End();
  if (dry_) return;
  std::string native = NativePath(path, a.where());
  std::string expected = Render(a.command().tokens, 1);
  std::error_code ec;
  if (fs::is_directory(native, ec)) Fail(a.where(), expected, path + " is a folder");
  std::string have;
  if (!fs::is_regular_file(native, ec) || !ReadBytes(native, have))
    Fail(a.where(), expected, "no file " + path);
  switch (mode) {
    case Hex:
      if (have != want) {
        std::size_t at = 0;
        while (at < have.size() && at < want.size() && have[at] == want[at]) ++at;
        Fail(a.where(), expected,
             "hex " + HexText(have) + " (" + std::to_string(have.size()) +
                 " bytes, first difference at byte " + std::to_string(at) + ")");
      }
      break;
    case Text:
      if (have != want) Fail(a.where(), expected, "text " + Shorten(have));
      break;
    case Contains:
      if (have.find(want) == std::string::npos) Fail(a.where(), expected, "text " + Shorten(have));
      break;
    case Size:
      if (static_cast<long long>(have.size()) != size) {
        Fail(a.where(), expected, "size " + std::to_string(have.size()));
      }
      break;
  }
}

void Runner::ExpectNoFile(Args& a) {
  std::string path = a.Name("a path");
  a.End();
  if (dry_) return;
  NativePath(path, a.where());
  // Every on-disk path that names the same entry when case is ignored, level by level.
  std::vector<std::pair<std::string, std::string>> reached = {{folder_, ""}};
  std::size_t start = 0;
  while (start <= path.size() && !reached.empty()) {
    std::size_t slash = path.find('/', start);
    if (slash == std::string::npos) slash = path.size();
    std::string part = path.substr(start, slash - start);
    start = slash + 1;
    if (part.empty() || part == ".") continue;
    std::vector<std::pair<std::string, std::string>> next;
    for (const auto& [native, shown] : reached) {
      std::error_code ec;
      if (!fs::is_directory(native, ec)) continue;
      for (const fs::directory_entry& e : fs::directory_iterator(native, ec)) {
        std::string name = e.path().filename().string();
        if (EqualsIgnoringCase(name, part) || EqualsIgnoringCase(ShownName(name), part)) {
          next.push_back({e.path().string(), shown.empty() ? name : shown + "/" + name});
        }
      }
    }
    reached = std::move(next);
  }
  if (!reached.empty()) {
    std::string what = reached[0].second.empty() ? "." : reached[0].second;
    Fail(a.where(), "nofile " + path,
         (fs::is_directory(reached[0].first) ? "a folder " : "a file ") + what);
  }
}

void Runner::ExpectFolder(Args& a) {
  std::string path = a.Name("a path");
  a.End();
  if (dry_) return;
  std::string native = NativePath(path, a.where());
  std::error_code ec;
  if (!fs::is_directory(native, ec)) {
    Fail(a.where(), "folder " + path,
         fs::exists(native, ec) ? "a file " + path : "nothing at " + path);
  }
}

void Runner::ExpectEntries(Args& a) {
  std::string path = a.Name("a folder");
  std::vector<std::string> want;
  while (!a.AtEnd()) want.push_back(a.Name("a name"));
  if (dry_) return;
  std::string native = NativePath(path, a.where());
  std::error_code ec;
  std::string expected = Render(a.command().tokens, 1);
  if (!fs::is_directory(native, ec)) Fail(a.where(), expected, "no folder " + path);
  std::vector<std::string> have;
  for (const fs::directory_entry& e : fs::directory_iterator(native, ec)) {
    have.push_back(e.path().filename().string());
  }
  std::sort(have.begin(), have.end());
  std::sort(want.begin(), want.end());
  if (have != want) {
    std::string list;
    for (const std::string& n : have) list += " " + Quote(n);
    Fail(a.where(), expected, "entries " + path + (have.empty() ? " (empty)" : list));
  }
}

}  // namespace scn
