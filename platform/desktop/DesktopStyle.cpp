// SPDX-License-Identifier: GPL-3.0-or-later
#include "DesktopStyle.h"

#include <QApplication>
#include <QIcon>
#include <QIconEngine>
#include <QPainter>
#include <QImageReader>
#include <QPixmap>
#include <QStyleFactory>
#include <QStyleOption>

namespace desk {

namespace {

// The images that the common style gives these icons, at every size it has them, read the first
// time the icon is drawn: the overflow arrows show only when the menus do not fit.
class PngIconEngine : public QIconEngine {
 public:
  PngIconEngine(QString stem, QList<int> sizes) : stem_(std::move(stem)), sizes_(std::move(sizes)) {}
  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    Load().paint(painter, rect, Qt::AlignCenter, mode, state);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return Load().pixmap(size, mode, state);
  }
  QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return Load().actualSize(size, mode, state);
  }
  QIconEngine* clone() const override { return new PngIconEngine(stem_, sizes_); }

 private:
  const QIcon& Load() {
    if (!loaded_) {
      loaded_ = true;
      for (int size : sizes_) {
        QImageReader reader(QStringLiteral(":/qt-project.org/styles/commonstyle/images/%1-%2.png").arg(stem_).arg(size),
                            "png");
        reader.setAutoDetectImageFormat(false);
        const QImage image = reader.read();
        if (!image.isNull()) icon_.addPixmap(QPixmap::fromImage(image));
      }
    }
    return icon_;
  }
  QString stem_;
  QList<int> sizes_;
  bool loaded_ = false;
  QIcon icon_;
};

QIcon PngIcon(const char* stem, QList<int> sizes) {
  return QIcon(new PngIconEngine(QString::fromLatin1(stem), std::move(sizes)));
}

}  // namespace

QIcon DesktopStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
  const bool rtl = (option ? option->direction : QGuiApplication::layoutDirection()) == Qt::RightToLeft;
  if (icon == SP_ToolBarHorizontalExtensionButton)
    return rtl ? PngIcon("toolbar-ext-h-rtl", {8, 16, 32}) : PngIcon("toolbar-ext-h", {8, 16, 32});
  if (icon == SP_ToolBarVerticalExtensionButton) return PngIcon("toolbar-ext-v", {5, 10, 20});
  return QProxyStyle::standardIcon(icon, option, widget);
}

void UseDesktopStyle() {
  if (dynamic_cast<DesktopStyle*>(QApplication::style())) return;
  QStyle* base = QStyleFactory::create(QApplication::style()->name());
  if (base) QApplication::setStyle(new DesktopStyle(base));
}

}  // namespace desk
