// SPDX-License-Identifier: GPL-3.0-or-later
#include "DesktopStart.h"

#include <QApplication>
#include <QStyleFactory>

#include "core/App.h"

namespace app {

void DressApplication() {
  QApplication::setApplicationName(QStringLiteral("ledgerly"));
  // No display name: the window system would add it to every title bar ("... — Ledgerly"), and
  // the windows' titles are the program's own, exactly.
  QApplication::setDesktopFileName(QStringLiteral("ledgerly"));
  if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion")))
    QApplication::setStyle(fusion);
}

void StartOn(desk::DesktopScreen& screen) {
  RegisterWindows();
  screen.HoldViews();
  StartProgram();
  screen.ReleaseViews();
}

int RunLoop(desk::DesktopScreen& screen) {
  // A quit asked during the start (before the loop runs) ends the program here.
  return screen.QuitRequested() ? screen.QuitCode() : QApplication::exec();
}

}  // namespace app
