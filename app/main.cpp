// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop program: Qt's widget application, the desktop screen, and the program's start.
#include <QApplication>

#include "DesktopStart.h"
#include "RuntimeFolder.h"
#include "SingleCopy.h"
#include "rb/rb.h"

int main(int argc, char** argv) {
  // A second copy on a folder that one holds already writes nothing there and shows nothing: it
  // brings the running copy to the front and ends.
  if (HoldProgramFolder() == FolderHold::HeldByAnother) return desk::BringRunningCopyToFront();

  desk::EnsureRuntimeFolder();
  QApplication app(argc, argv);
  app::DressApplication();
  InitRuntime(argc, argv);

  desk::DesktopScreen screen;
  SetScreen(&screen);
  desk::RunningCopy running(screen);
  app::StartOn(screen);
  const int code = app::RunLoop(screen);
  SetScreen(nullptr);
  return code;
}
