// SPDX-License-Identifier: GPL-3.0-or-later
#include "PrintDialogs.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSetupDialog>
#include <QPageSize>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QStringList>
#include <map>

#include "PainterSurface.h"
#include "QtText.h"
#include "WindowView.h"

namespace desk {

namespace {

std::function<QString(const QString&)>& OpenFileHook() {
  static std::function<QString(const QString&)> hook;
  return hook;
}

// One unit is one point, and 0, 0 the paper's top left.
void PointsOnFullPage(QPrinter& printer) {
  printer.setFullPage(true);
  printer.setResolution(72);
  printer.setPageMargins(QMarginsF(0, 0, 0, 0), QPageLayout::Point);
}

void ApplySetup(QPrinter& printer, const PrinterSetup& setup) {
  const QPageSize size(QSizeF(setup.paperWidth, setup.paperHeight), QPageSize::Point, QString(),
                       QPageSize::FuzzyMatch);
  printer.setPageSize(size);
  printer.setPageOrientation(setup.Landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
}

// A print job on a printer: the page is painted as the program draws, and goes out when the job
// ends.
class PrinterSurface : public PainterSurface {
 public:
  explicit PrinterSurface(std::unique_ptr<QPrinter> printer) : printer_(std::move(printer)) {
    if (painter_.begin(printer_.get())) SetPainter(&painter_);
  }
  ~PrinterSurface() override { Finish(); }

 protected:
  void EndJob() override {
    if (painter_.isActive()) painter_.end();
  }

 private:
  std::unique_ptr<QPrinter> printer_;
  QPainter painter_;
};

const std::map<std::string, QStringList>& Extensions() {
  static const std::map<std::string, QStringList> table = {
      {"image/gif", {"*.gif"}},
      {"image/jpeg", {"*.jpg", "*.jpeg", "*.jpe", "*.jfif"}},
      {"image/tiff", {"*.tif", "*.tiff"}},
      {"image/bmp", {"*.bmp"}},
      {"image/pict", {"*.pict", "*.pic", "*.pct"}},
      {"image/png", {"*.png"}},
      {"text", {"*.txt"}},
  };
  return table;
}

}  // namespace

void SetOpenFileHook(std::function<QString(const QString&)> hook) { OpenFileHook() = std::move(hook); }

std::unique_ptr<PageSurface> RunPrintDialog(const PrinterSetup* setup, QWidget* parent) {
  auto printer = std::make_unique<QPrinter>(QPrinter::ScreenResolution);
  PointsOnFullPage(*printer);
  if (setup) ApplySetup(*printer, *setup);
  QPrintDialog dialog(printer.get(), parent);
  dialog.setOption(QAbstractPrintDialog::PrintToFile, true);
  MakeModal(dialog);
  if (dialog.exec() != QDialog::Accepted) return nullptr;
  PointsOnFullPage(*printer);
  return std::make_unique<PrinterSurface>(std::move(printer));
}

bool RunPageSetupDialog(PrinterSetup& setup, QWidget* parent) {
  QPrinter printer(QPrinter::ScreenResolution);
  PointsOnFullPage(printer);
  ApplySetup(printer, setup);
  QPageSetupDialog dialog(&printer, parent);
  MakeModal(dialog);
  if (dialog.exec() != QDialog::Accepted) return false;
  const QPageLayout layout = printer.pageLayout();
  const QSizeF paper = layout.pageSize().size(QPageSize::Point);
  setup.paperWidth = std::min(paper.width(), paper.height());
  setup.paperHeight = std::max(paper.width(), paper.height());
  setup.Landscape = layout.orientation() == QPageLayout::Landscape;
  setup.chosenByUser = true;
  return true;
}

QString NameFilterFor(const String& filter) {
  QStringList patterns;
  for (const QString& type : Q(filter).split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
    auto it = Extensions().find(type.trimmed().toLower().toStdString());
    if (it == Extensions().end()) continue;
    for (const QString& p : it->second)
      if (!patterns.contains(p)) patterns << p;
  }
  if (patterns.isEmpty()) return QStringLiteral("All files (*)");
  return QStringLiteral("Pictures (%1)").arg(patterns.join(QLatin1Char(' ')));
}

Ref<FolderItem> RunOpenFileDialog(const String& filter, QWidget* parent) {
  const QString nameFilter = NameFilterFor(filter);
  QString path;
  if (OpenFileHook()) {
    path = OpenFileHook()(nameFilter);
  } else {
    QFileDialog dialog(parent, QString(), QString(), nameFilter);
    dialog.setFileMode(QFileDialog::ExistingFile);
    MakeModal(dialog);
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) path = dialog.selectedFiles().first();
  }
  if (path.isEmpty()) return nil;
  return GetFolderItem(String(QFileInfo(path).absoluteFilePath().toStdString()));
}

void TakeDefaultPaperFromPrinter() {
  const QPrinterInfo info = QPrinterInfo::defaultPrinter();
  if (info.isNull()) return;
  const QSizeF paper = info.defaultPageSize().size(QPageSize::Point);
  if (paper.isEmpty()) return;
  PrinterSetup::SetDefaultPaper(std::min(paper.width(), paper.height()), std::max(paper.width(), paper.height()));
}

}  // namespace desk
