// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop tests: real widgets on Qt's offscreen platform, driven by QTest's keys and clicks.
#include <gtest/gtest.h>

#include <QApplication>
#include <QStyleFactory>

#include "core/App.h"
#include "rb/rb.h"

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // No printer of the machine's: only the printer check gives the tests a CUPS of their own.
  if (qEnvironmentVariableIsEmpty("CUPS_SERVER")) qputenv("CUPS_SERVER", "/nonexistent/cups.sock");
  QApplication app(argc, argv);
  if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion"))) QApplication::setStyle(fusion);
  InitRuntime(argc, argv);
  RegisterWindows();
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
