// SPDX-License-Identifier: GPL-3.0-or-later
// The floor of the start-up: a bare Qt window that lists the names of the same folder, done the
// quick way (QDirIterator, one sort, a QListWidget whose rows all have one height), and ends as
// soon as it has been painted. The window and its list have the main window's sizes.
#include <QApplication>
#include <QDirIterator>
#include <QListWidget>
#include <QStringList>
#include <QStyleFactory>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "RuntimeFolder.h"
#include "startup_watch.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s PROGRAMFOLDER\n", argv[0]);
    return 2;
  }
  const QString folder = QString::fromLocal8Bit(argv[1]) + QStringLiteral("/customers");
  desk::EnsureRuntimeFolder();
  QApplication app(argc, argv);
  if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion")))
    QApplication::setStyle(fusion);

  QStringList names;
  QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  while (it.hasNext()) {
    it.next();
    const QString name = it.fileName();
    if (!name.startsWith(QLatin1Char('.'))) names.append(name);
  }
  std::sort(names.begin(), names.end());

  QWidget window;
  window.resize(840, 631);
  auto* list = new QListWidget(&window);
  list->setGeometry(568, 84, 253, 498);
  list->setUniformItemSizes(true);
  list->addItems(names);
  QWidget* viewport = list->viewport();
  bench::StartupWatch watch([viewport, &names](QWidget* w) {
    return w == viewport && (names.isEmpty() || w->isVisible());
  });
  window.show();
  const int code = QApplication::exec();
  return watch.Done() ? code : 3;
}
