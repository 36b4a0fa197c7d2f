// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop program started as app/main.cpp starts it, for the start-up benchmark. Two things
// differ: the program folder is the one named on the command line, and the process ends as soon
// as the main window has been painted with its list of invoices filled in.
#include <QApplication>
#include <QHeaderView>
#include <QTableView>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "DesktopScreen.h"
#include "DesktopStart.h"
#include "ListboxView.h"
#include "RuntimeFolder.h"
#include "WindowView.h"
#include "invoice/iwindow.h"
#include "rb/rb.h"
#include "startup_watch.h"

namespace {

// Painted: a paint of the main window has happened, the list shows the rows the program put in
// it, and (when there are rows) some of them have been drawn.
bool MainWindowPainted(desk::DesktopScreen& screen, QWidget* painted) {
  Window* w = WindowRegistry::Find(win::iwindow::kClassName);
  if (!w) return false;
  QWidget* view = screen.ViewOf(*w);
  if (!view || painted->window() != view) return false;
  Listbox* list = iwindow->customers;
  auto* lv = dynamic_cast<desk::ListboxView*>(screen.ViewOf(*list));
  auto* table = lv ? qobject_cast<QTableView*>(lv->widget()) : nullptr;
  if (!table) return false;
  return table->verticalHeader()->count() == list->ListCount() &&
         (list->ListCount() == 0 || lv->PaintedCells() > 0);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s PROGRAMFOLDER\n", argv[0]);
    return 2;
  }
  const std::string folder = argv[1];
  desk::EnsureRuntimeFolder();
  QApplication app(argc, argv);
  app::DressApplication();
  InitRuntime(argc, argv);
  SetProgramFolder(folder);

  desk::DesktopScreen screen;
  SetScreen(&screen);
  bench::StartupWatch watch([&screen](QWidget* w) { return MainWindowPainted(screen, w); });
  app::StartOn(screen);
  const int code = app::RunLoop(screen);
  SetScreen(nullptr);
  return watch.Done() ? code : 3;
}
