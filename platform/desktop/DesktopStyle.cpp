#include "DesktopStyle.h"

#include <QApplication>
#include <QIcon>
#include <QImageReader>
#include <QPixmap>
#include <QStyleFactory>
#include <QStyleOption>

namespace desk {

namespace {

// The images that the common style gives these icons, at every size it has them.
QIcon PngIcon(const char* stem, std::initializer_list<int> sizes) {
  QIcon icon;
  for (int size : sizes) {
    QImageReader reader(QStringLiteral(":/qt-project.org/styles/commonstyle/images/%1-%2.png")
                            .arg(QLatin1String(stem))
                            .arg(size),
                        "png");
    reader.setAutoDetectImageFormat(false);
    const QImage image = reader.read();
    if (!image.isNull()) icon.addPixmap(QPixmap::fromImage(image));
  }
  return icon;
}

}  // namespace

QIcon DesktopStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
  const bool rtl = (option ? option->direction : QGuiApplication::layoutDirection()) == Qt::RightToLeft;
  QIcon made;
  if (icon == SP_ToolBarHorizontalExtensionButton) {
    made = rtl ? PngIcon("toolbar-ext-h-rtl", {8, 16, 32}) : PngIcon("toolbar-ext-h", {8, 16, 32});
  } else if (icon == SP_ToolBarVerticalExtensionButton) {
    made = PngIcon("toolbar-ext-v", {5, 10, 20});
  }
  return made.isNull() ? QProxyStyle::standardIcon(icon, option, widget) : made;
}

void UseDesktopStyle() {
  if (dynamic_cast<DesktopStyle*>(QApplication::style())) return;
  QStyle* base = QStyleFactory::create(QApplication::style()->name());
  if (base) QApplication::setStyle(new DesktopStyle(base));
}

}  // namespace desk
