// SPDX-License-Identifier: GPL-3.0-or-later
#include "MenuBarView.h"

#include <QAction>
#include <QMenu>

#include "DesktopScreen.h"
#include "KeyMap.h"
#include "QtText.h"
#include "rb/String.h"

namespace desk {

MenuBarView::MenuBarView(MenuBar& bar, DesktopScreen& screen, QWidget* parent)
    : menus_(bar), screen_(screen), bar_(new QMenuBar(parent)) {
  bar_->setNativeMenuBar(false);
  for (const auto& top : menus_.Menus) {
    // "&File": the & marks the mnemonic, as in Qt.
    QMenu* menu = bar_->addMenu(Q(top->Text));
    menu->setObjectName(QString::fromStdString(top->Name));
    // Qt would drop a separator that opens a menu; Edit opens with one.
    menu->setSeparatorsCollapsible(false);
    QObject::connect(menu, &QMenu::aboutToShow, menu, [this] { Refresh(); });
    AddItems(menu, *top);
  }
  Refresh();
}

void MenuBarView::AddItems(QMenu* menu, const MenuItem& parent) {
  for (const auto& item : parent.Items) {
    if (item->IsSeparator()) {
      menu->addSeparator();
      continue;
    }
    if (!item->Items.empty()) {
      QMenu* sub = menu->addMenu(Q(item->Text));
      QObject::connect(sub, &QMenu::aboutToShow, sub, [this] { Refresh(); });
      AddItems(sub, *item);
      continue;
    }
    // The shortcut is shown after a tab and not registered with Qt: the screen delivers the key.
    QString text = Q(item->Text);
    const QKeySequence keys = ShortcutSequence(Shortcut::Parse(item->KeyboardShortcut));
    if (!keys.isEmpty()) text += QLatin1Char('\t') + keys.toString(QKeySequence::NativeText);
    QAction* action = menu->addAction(text);
    action->setObjectName(QString::fromStdString(item->Name));
    action->setMenuRole(QAction::NoRole);
    const std::string name = item->Name;
    QObject::connect(action, &QAction::triggered, action, [this, name] { screen_.ChooseItem(name); });
    actions_.emplace_back(action, item.get());
  }
}

void MenuBarView::Refresh() {
  for (auto& [action, item] : actions_) action->setEnabled(item->Enabled());
}

QAction* MenuBarView::ActionFor(const std::string& itemName) const {
  for (const auto& [action, item] : actions_)
    if (EqualsIgnoringCase(item->Name, itemName)) return action;
  return nullptr;
}

}  // namespace desk
