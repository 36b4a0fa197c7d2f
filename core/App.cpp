// SPDX-License-Identifier: GPL-3.0-or-later
// The application object: the start of the program and the file type table.
#include "core/App.h"

#include <memory>

#include "core/Module1.h"
#include "invoice/MenuBar1.h"
#include "invoice/iwindow.h"
#include "printing/Labels.h"
#include "printing/LepLabel.h"
#include "secondary/about.h"
#include "secondary/help.h"
#include "secondary/prefswindow.h"
#include "secondary/stockwindow.h"
#include "secondary/surewindow.h"

void App::Event_Open() {
  Module1::today = ReplaceAll(New<Date>()->ShortDate(), "/", "-");
  Module1::Labelsetup = New<PrinterSetup>();
  Module1::settings = Module1::Labelsetup->SetupString();
  Module1::loadprefs();
  Module1::loadlogo();
  Module1::loadstock();
}

const std::vector<FileType>& FileTypes() {
  static const std::vector<FileType> table = {
      {"text", "", "TEXT", "R*ch"},
      {"prefs", ".bin", "BINA", "LgLy"},
      {"image/gif", ".gif", "GIFf", "prvw"},
      {"image/jpeg", ".jfif;.jpe;.jpeg;.jpg", "JPEG", "prvw"},
      {"image/pict", ".pict;.pic;.pct", "PICT", "ttxt"},
  };
  return table;
}

namespace {

template <class T>
void Register() {
  if (!WindowRegistry::Known(T::kClassName)) RegisterWindowClass<T>();
}

}  // namespace

void RegisterWindows() {
  Register<win::iwindow>();
  Register<win::prefswindow>();
  Register<win::stockwindow>();
  Register<win::surewindow>();
  Register<win::about>();
  Register<win::help>();
  Register<win::Labels>();
  Register<win::LepLabel>();
}

void StartProgram() {
  FileTypes();
  RegisterWindows();
  auto app = std::make_unique<class App>();
  app->Menus = MenuBar1();
  SetApp(std::move(app));
  RunHandler([] { App()->Event_Open(); });
  // The default window: the main window opens behind the application's own start.
  RunHandler([] { iwindow.Get(); });
}

void ResetProgram() {
  WindowRegistry::ResetAll();
  Module1::Reset();
  SetApp(nullptr);
}
