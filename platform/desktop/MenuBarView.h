// SPDX-License-Identifier: GPL-3.0-or-later
// The program's menu bar as a QMenuBar. Items show their shortcut; the key itself is caught by
// the screen and goes to PressShortcut's rule, so each press runs one live item once.
#pragma once

#include <QMenuBar>
#include <utility>
#include <vector>

#include "rb/Menu.h"

class QAction;

namespace desk {

class DesktopScreen;

class MenuBarView {
 public:
  MenuBarView(MenuBar& bar, DesktopScreen& screen, QWidget* parent);
  QMenuBar* bar() const { return bar_; }
  // Each item enabled exactly as the platform says now.
  void Refresh();
  QAction* ActionFor(const std::string& itemName) const;

 private:
  void AddItems(QMenu* menu, const MenuItem& parent);
  MenuBar& menus_;
  DesktopScreen& screen_;
  QMenuBar* bar_;
  std::vector<std::pair<QAction*, MenuItem*>> actions_;
};

}  // namespace desk
