// SPDX-License-Identifier: GPL-3.0-or-later
// A print job that goes to a one-page PDF file.
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QSizeF>
#include <QString>
#include <memory>

#include "PainterSurface.h"

namespace {

class PdfSurface : public PainterSurface {
 public:
  PdfSurface(const std::string& path, double widthPt, double heightPt)
      : writer_(QString::fromStdString(path)) {
    // 72 to the inch and no margins: one unit is one point and 0, 0 is the paper's top left.
    writer_.setResolution(72);
    const QPageSize size(QSizeF(widthPt, heightPt), QPageSize::Point, QString(), QPageSize::ExactMatch);
    writer_.setPageLayout(QPageLayout(size, QPageLayout::Portrait, QMarginsF(0, 0, 0, 0), QPageLayout::Point));
    writer_.setCreator(QStringLiteral("Ledgerly"));
    painter_.begin(&writer_);
    SetPainter(&painter_);
  }
  ~PdfSurface() override { Finish(); }

 protected:
  void EndJob() override {
    if (painter_.isActive()) painter_.end();
  }

 private:
  QPdfWriter writer_;
  QPainter painter_;
};

}  // namespace

std::unique_ptr<PageSurface> MakePdfSurface(const std::string& path, double widthPt, double heightPt) {
  return std::make_unique<PdfSurface>(path, widthPt, heightPt);
}
