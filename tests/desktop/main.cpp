// The desktop tests: real widgets on Qt's offscreen platform, driven by QTest's keys and clicks.
#include <gtest/gtest.h>

#include <QApplication>
#include <QStyleFactory>

#include "core/App.h"
#include "rb/rb.h"

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion"))) QApplication::setStyle(fusion);
  InitRuntime(argc, argv);
  RegisterWindows();
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
