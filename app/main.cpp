// The desktop program: Qt's widget application, the desktop screen, and the program's start.
#include <QApplication>
#include <QDir>
#include <QStyleFactory>

#include "DesktopScreen.h"
#include "RuntimeFolder.h"
#include "core/App.h"
#include "rb/rb.h"

int main(int argc, char** argv) {
  desk::EnsureRuntimeFolder();
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("ledgerly"));
  QApplication::setApplicationDisplayName(QStringLiteral("Ledgerly"));
  QApplication::setDesktopFileName(QStringLiteral("ledgerly"));
  if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion")))
    QApplication::setStyle(fusion);
  InitRuntime(argc, argv);

  desk::DesktopScreen screen;
  SetScreen(&screen);
  RegisterWindows();
  screen.HoldViews();
  StartProgram();
  screen.ReleaseViews();
  // A quit asked during the start (before the loop runs) ends the program here.
  const int code = screen.QuitRequested() ? screen.QuitCode() : QApplication::exec();
  SetScreen(nullptr);
  return code;
}
