// SPDX-License-Identifier: GPL-3.0-or-later
// Bringing up Qt's application object for the platform's own use.
#include <QCoreApplication>
#include <QGuiApplication>
#include <string>
#include <vector>

#include "rb/Runtime.h"

namespace {

// Qt keeps a reference to argc and the argv pointers for the application's whole life.
int gArgc = 0;
std::vector<std::string> gArgStore;
std::vector<char*> gArgv;

}  // namespace

void InitRuntime(int& argc, char** argv) {
  if (QCoreApplication::instance()) return;

  gArgStore.clear();
  gArgStore.emplace_back(argc > 0 && argv && argv[0] ? argv[0] : "ledgerly");
  // With no platform asked for, none is shown: the offscreen platform measures fonts and decodes
  // pictures all the same. Given as an argument, so that no program started later inherits it.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    gArgStore.emplace_back("-platform");
    gArgStore.emplace_back("offscreen");
  }
  for (int i = 1; argv && i < argc; ++i)
    if (argv[i]) gArgStore.emplace_back(argv[i]);

  gArgv.clear();
  for (std::string& a : gArgStore) gArgv.push_back(a.data());
  gArgv.push_back(nullptr);
  gArgc = static_cast<int>(gArgStore.size());

  // Lives to the end of the process: destroying it during static destruction would outlive the
  // platform plugins it relies on.
  new QGuiApplication(gArgc, gArgv.data());
}
