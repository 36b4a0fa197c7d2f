// The desktop program: Qt's widget application, the desktop screen, and the program's start.
#include <QApplication>
#include <QDir>
#include <QStyleFactory>
#include <cstdlib>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "DesktopScreen.h"
#include "core/App.h"
#include "rb/rb.h"

namespace {

// Qt wants a private runtime folder; root's session often has none.
void EnsureRuntimeFolder() {
  if (geteuid() != 0 || std::getenv("XDG_RUNTIME_DIR")) return;
  const std::string dir = "/tmp/runtime-root";
  mkdir(dir.c_str(), 0700);
  chmod(dir.c_str(), 0700);
  setenv("XDG_RUNTIME_DIR", dir.c_str(), 1);
}

}  // namespace

int main(int argc, char** argv) {
  EnsureRuntimeFolder();
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("ledgerly"));
  QApplication::setApplicationDisplayName(QStringLiteral("Ledgerly"));
  QApplication::setDesktopFileName(QStringLiteral("ledgerly"));
  if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion"))) QApplication::setStyle(fusion);
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
