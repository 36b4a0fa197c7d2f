// SPDX-License-Identifier: GPL-3.0-or-later
// The program's widget style: the one the program asked for (Fusion), with one difference in how
// it gets there. The menu bar's overflow arrows are read as PNG, and only when they are first
// drawn; asked for in the ordinary way, every menu bar made would load each image format plugin
// on the system to learn that a PNG file is a PNG, which takes longer than building the window.
#pragma once

#include <QProxyStyle>

namespace desk {

class DesktopStyle : public QProxyStyle {
 public:
  explicit DesktopStyle(QStyle* base) : QProxyStyle(base) {}
  QIcon standardIcon(StandardPixmap icon, const QStyleOption* option = nullptr,
                     const QWidget* widget = nullptr) const override;
};

// Wraps the application's present style, once.
void UseDesktopStyle();

}  // namespace desk
