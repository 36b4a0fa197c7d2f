// The desktop program: Qt's widget application, the desktop screen, and the program's start.
#include <QApplication>

#include "DesktopStart.h"
#include "RuntimeFolder.h"
#include "rb/rb.h"

int main(int argc, char** argv) {
  desk::EnsureRuntimeFolder();
  QApplication app(argc, argv);
  app::DressApplication();
  InitRuntime(argc, argv);

  desk::DesktopScreen screen;
  SetScreen(&screen);
  app::StartOn(screen);
  const int code = app::RunLoop(screen);
  SetScreen(nullptr);
  return code;
}
