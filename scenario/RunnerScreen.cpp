#include "scenario/RunnerScreen.h"

#include <filesystem>

#include "scenario/Properties.h"
#include "scenario/Runner.h"
#include "scenario/ScenarioFailure.h"

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

}  // namespace

Answer RunnerScreen::Take(Answer::Kind kind, const std::string& unexpected) {
  for (auto it = answers_.begin(); it != answers_.end(); ++it) {
    if (it->kind != kind) continue;
    Answer a = std::move(*it);
    answers_.erase(it);
    return a;
  }
  Fail(runner_.Current(), std::string("a queued \"when ") + KindName(kind) + "\"",
       "unexpected " + unexpected);
}

void RunnerScreen::NoteStart() {
  jobs_.clear();
  urls_.clear();
}

void RunnerScreen::MsgBox(const String& text) {
  messages_.push_back({text.Utf8(), runner_.Current(), false});
}

void RunnerScreen::Beep() { ++beeps_; }

void RunnerScreen::ShowURL(const String& url) { urls_.push_back(url.Utf8()); }

void RunnerScreen::Quit(Integer) { ended_ = true; }

void RunnerScreen::UnhandledException(const RuntimeException& e) {
  exceptions_.push_back({e.ClassName(), e.what(), runner_.Current(), false});
}

void RunnerScreen::RunModal(Window& w) {
  Answer a = Take(Answer::Modal, "modal " + w.ClassName());
  if (a.window != w.ClassName()) {
    Where now = runner_.Current();
    Fail(a.where, "modal " + a.window,
         "modal " + w.ClassName() + " shown at line " + std::to_string(now.line));
  }
  runner_.RunModalActions(w, a);
  if (w.Visible()) Fail(a.where, "modal " + a.window + " hidden after its actions", "still shown");
}

Ref<FolderItem> RunnerScreen::OpenFileDialog(const String&) {
  Answer a = Take(Answer::OpenFile, "file-open dialog");
  if (!a.accept) return nil;
  std::string native = runner_.NativePath(a.text, a.where);
  std::error_code ec;
  if (!fs::exists(native, ec)) Fail(a.where, "a file to open at " + a.text, "nothing there");
  Ref<FolderItem> f = GetFolderItem(String(native));
  if (f == nil) f = New<FolderItem>(native);
  return f;
}

std::optional<Integer> RunnerScreen::ContextualMenu(const std::vector<String>& rows) {
  Answer a = Take(Answer::Menu, "contextual menu");
  if (!a.accept) return std::nullopt;
  std::string wanted = Shown(a.text);
  std::string shown;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::string row = rows[i].Utf8();
    if (row == wanted) return static_cast<Integer>(i);
    shown += (shown.empty() ? "" : ", ") + Quote(row);
  }
  Fail(a.where, "a menu row " + Quote(a.text), rows.empty() ? "no rows" : "rows " + shown);
}

std::unique_ptr<PageSurface> RunnerScreen::PrintDialog(const PrinterSetup* setup) {
  Answer a = Take(Answer::Print, "print dialog");
  if (!a.accept) return nullptr;
  std::string orientation = setup == nullptr   ? "default"
                            : setup->Landscape ? "landscape"
                                               : "portrait";
  auto recording =
      std::make_unique<RecordingSurface>([this, orientation](const std::vector<DrawOp>& ops) {
        jobs_.push_back({ops, orientation});
      });
  if (a.text.empty()) return recording;

  // Printed to a PDF as well: the paper of the setup, turned as the job goes out.
  PrinterSetup fallback;
  const PrinterSetup& s = setup != nullptr ? *setup : fallback;
  double w = s.paperWidth, h = s.paperHeight;
  if (s.Landscape) std::swap(w, h);
  fs::path native = runner_.NativePath(a.text, a.where);
  std::error_code ec;
  fs::create_directories(native.parent_path(), ec);
  std::vector<std::unique_ptr<PageSurface>> parts;
  parts.push_back(std::move(recording));
  parts.push_back(MakePdfSurface(native.string(), w, h));
  return std::make_unique<TeeSurface>(std::move(parts));
}

bool RunnerScreen::PageSetupDialog(PrinterSetup& setup) {
  Answer a = Take(Answer::PageSetup, "page setup dialog");
  if (!a.accept) return false;
  if (a.hasPaper) {
    setup.paperWidth = a.paperWidth;
    setup.paperHeight = a.paperHeight;
    setup.Landscape = false;
  }
  setup.chosenByUser = true;
  return true;
}

}  // namespace scn
