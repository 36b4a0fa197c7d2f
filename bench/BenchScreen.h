// The screen of the headless benchmarks: nothing is shown. A modal window is answered by hiding
// it, the print dialog gives a PDF job (or one that records what is drawn), and anything the
// program would tell the user is counted, since a benchmark that meets a message or an error is
// not measuring what it means to.
#pragma once

#include <string>
#include <vector>

#include "rb/rb.h"

namespace bench {

class BenchScreen : public Screen {
 public:
  enum class Print { Pdf, Record };
  Print print = Print::Pdf;
  std::string pdfPath;
  std::vector<DrawOp> recorded;
  std::vector<std::string> messages;
  std::vector<std::string> errors;

  void MsgBox(const String& text) override { messages.push_back(text.Utf8()); }
  void Beep() override {}
  void ShowURL(const String&) override {}
  void Quit(Integer) override {}
  void UnhandledException(const RuntimeException& e) override { errors.push_back(e.ClassName()); }
  void RunModal(Window& w) override { w.Hide(); }
  Ref<FolderItem> OpenFileDialog(const String&) override { return nil; }
  std::optional<Integer> ContextualMenu(const std::vector<String>&) override { return std::nullopt; }
  std::unique_ptr<PageSurface> PrintDialog(const PrinterSetup* setup) override {
    if (print == Print::Record) {
      return std::make_unique<RecordingSurface>([this](const std::vector<DrawOp>& ops) { recorded = ops; });
    }
    const double w = setup ? setup->paperWidth : 595, h = setup ? setup->paperHeight : 842;
    return MakePdfSurface(pdfPath, w, h);
  }
  bool PageSetupDialog(PrinterSetup&) override { return false; }
};

}  // namespace bench
