// SPDX-License-Identifier: GPL-3.0-or-later
#include "scenario/TestScreen.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace scn {

namespace {

const char* KindName(Answer::Kind kind) {
  switch (kind) {
    case Answer::Modal:
      return "modal";
    case Answer::Menu:
      return "menu";
    case Answer::Print:
      return "print";
    case Answer::PageSetup:
      return "pagesetup";
    case Answer::OpenFile:
      return "openfile";
  }
  return "";
}

std::string QuotedRow(const std::string& row) { return "\"" + row + "\""; }

}  // namespace

void TestScreen::Problem(const Where& at, const std::string& expected, const std::string& found) {
  if (onProblem) onProblem(at, expected, found);
  problems.push_back(expected + " / " + found);
}

std::optional<Answer> TestScreen::Take(Answer::Kind kind, const std::string& unexpected) {
  for (auto it = queued_.begin(); it != queued_.end(); ++it) {
    if (it->kind != kind) continue;
    Answer a = std::move(*it);
    queued_.erase(it);
    return a;
  }
  if (auto s = standing_.find(kind); s != standing_.end()) return s->second;
  Problem(now, std::string("a queued \"when ") + KindName(kind) + "\"", "unexpected " + unexpected);
  return std::nullopt;
}

void TestScreen::StandAsAPassiveUser(std::function<void(Window&)> modal) {
  Answer a;
  a.kind = Answer::Modal;
  a.act = modal ? std::move(modal) : [](Window& w) { w.Hide(); };
  Standing(a);
  Answer print;
  print.kind = Answer::Print;
  Standing(print);
  for (Answer::Kind kind : {Answer::Menu, Answer::PageSetup, Answer::OpenFile}) {
    Answer no;
    no.kind = kind;
    no.accept = false;
    Standing(no);
  }
}

void TestScreen::NoteStart() {
  jobs.clear();
  urls.clear();
  ended = false;
}

void TestScreen::Clear() {
  queued_.clear();
  problems.clear();
  messages.clear();
  exceptions.clear();
  jobs.clear();
  urls.clear();
  quits.clear();
  menusShown.clear();
  changes.clear();
  beeps = 0;
  ended = false;
}

void TestScreen::MsgBox(const String& text) { messages.push_back({text.Utf8(), now, false}); }

void TestScreen::Quit(Integer code) {
  quits.push_back(code);
  ended = true;
}

void TestScreen::UnhandledException(const RuntimeException& e) {
  exceptions.push_back({e.ClassName(), e.what(), now, false});
}

void TestScreen::Defect(const std::string& className, const std::string& what) {
  exceptions.push_back({className, what, now, false});
  ended = true;
  throw ProgramEnded{className, what};
}

void TestScreen::RunModal(Window& w) {
  std::optional<Answer> a = Take(Answer::Modal, "modal " + w.ClassName());
  if (!a) return;
  if (!a->window.empty() && a->window != w.ClassName()) {
    Problem(a->where, "modal " + a->window,
            "modal " + w.ClassName() + " shown at line " + std::to_string(now.line));
    return;
  }
  if (a->act) a->act(w);
  if (w.Visible()) Problem(a->where, "modal " + w.ClassName() + " hidden after its actions", "still shown");
}

Ref<FolderItem> TestScreen::OpenFileDialog(const String&) {
  std::optional<Answer> a = Take(Answer::OpenFile, "file-open dialog");
  if (!a || !a->accept) return nil;
  const std::string native = nativePath ? nativePath(a->text, a->where) : a->text;
  std::error_code ec;
  if (!fs::exists(native, ec)) {
    Problem(a->where, "a file to open at " + a->text, "nothing there");
    return nil;
  }
  Ref<FolderItem> f = GetFolderItem(String(native));
  if (f == nil) f = New<FolderItem>(native);
  return f;
}

std::optional<Integer> TestScreen::ContextualMenu(const std::vector<String>& rows) {
  std::vector<std::string> shown;
  for (const String& r : rows) shown.push_back(r.Utf8());
  menusShown.push_back(shown);
  std::optional<Answer> a = Take(Answer::Menu, "contextual menu");
  if (!a || !a->accept) return std::nullopt;
  const Integer n = static_cast<Integer>(rows.size());
  if (a->row) {
    const Integer row = *a->row < 0 ? n + *a->row : *a->row;
    if (row < 0 || row >= n) return std::nullopt;
    return row;
  }
  // The row as the menu shows it: bytes written with no encoding are shown as the platform shows
  // them.
  const std::string wanted = String::FromBytes(a->text, TextEncoding::None).Utf8();
  std::string list;
  for (Integer i = 0; i < n; ++i) {
    if (shown[i] == wanted) return i;
    list += (list.empty() ? "" : ", ") + QuotedRow(shown[i]);
  }
  Problem(a->where, "a menu row " + QuotedRow(a->text), rows.empty() ? "no rows" : "rows " + list);
  return std::nullopt;
}

std::unique_ptr<PageSurface> TestScreen::PrintDialog(const PrinterSetup* setup) {
  std::optional<Answer> a = Take(Answer::Print, "print dialog");
  if (!a || !a->accept) return nullptr;
  // The paper of the setup, turned as the job goes out; the dialog's own page with no setup.
  PrinterSetup fallback;
  const PrinterSetup& s = setup != nullptr ? *setup : fallback;
  double w = s.paperWidth, h = s.paperHeight;
  if (s.Landscape) std::swap(w, h);
  const std::string orientation = setup == nullptr ? "default" : setup->Landscape ? "landscape" : "portrait";

  std::vector<std::unique_ptr<PageSurface>> parts;
  if (a->record) {
    parts.push_back(std::make_unique<RecordingSurface>([this, orientation, w, h](const std::vector<DrawOp>& ops) {
      jobs.push_back({ops, orientation, w, h});
    }));
  }
  if (!a->text.empty()) {
    const fs::path native = nativePath ? nativePath(a->text, a->where) : a->text;
    std::error_code ec;
    if (native.has_parent_path()) fs::create_directories(native.parent_path(), ec);
    parts.push_back(MakePdfSurface(native.string(), w, h));
  }
  if (parts.empty()) return std::make_unique<RecordingSurface>();
  if (parts.size() == 1) return std::move(parts.front());
  return std::make_unique<TeeSurface>(std::move(parts));
}

bool TestScreen::PageSetupDialog(PrinterSetup& setup) {
  std::optional<Answer> a = Take(Answer::PageSetup, "page setup dialog");
  if (!a || !a->accept) return false;
  if (a->hasPaper) {
    setup.paperWidth = a->paperWidth;
    setup.paperHeight = a->paperHeight;
    setup.Landscape = false;
  }
  setup.chosenByUser = true;
  return true;
}

}  // namespace scn
