// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/pagesetup.h"

#include "core/Module1.h"

namespace printing {

namespace {
// 8 inches at 72 points to the inch: A4 and the US papers pass, A5 does not.
constexpr Integer kNarrowestPaper = 576;
}  // namespace

void checkpaper() {
  Module1::Labelsetup->Landscape = false;
  if (Module1::Labelsetup->PageWidth() < kNarrowestPaper) {
    MsgBox("Wrong paper size set, must be A4/US Legal.");
    pagesetup();
  }
}

void pagesetup() {
  Module1::Labelsetup = New<PrinterSetup>();
  if (Module1::Labelsetup->PageSetupDialog(nil)) {
    Module1::settings = Module1::Labelsetup->SetupString();
  }
}

}  // namespace printing
