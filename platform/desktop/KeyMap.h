// SPDX-License-Identifier: GPL-3.0-or-later
// A person's key presses in the platform's terms: the keys that KeyDown receives, and the menu
// shortcuts. Control stands for the Command key of the menu table.
#pragma once

#include <QKeyEvent>
#include <QMouseEvent>
#include <QKeySequence>
#include <string>
#include <vector>

#include "rb/Menu.h"
#include "rb/String.h"

namespace desk {

// The platform keys one key press gives: one named key (Keys::Return and the rest), or each
// character of the typed text. Empty for a key the platform has no name for, and for Alt with a
// key.
std::vector<String> PlatformKeys(const QKeyEvent& e);

// Tab or Shift+Tab as it comes to a widget, before Qt's own focus chain would take it: the widgets
// hand it on as a key like any other.
bool IsTabKey(const QEvent* e);
// A press that asks for a contextual menu: the right button, or the left one with Control.
bool IsContextual(const QMouseEvent* e);

// Control held down, without the AltGr combination that types characters on some keyboards.
bool IsCommandKey(const QKeyEvent& e);
// Shift with a key that moves the caret: the widget extends its selection itself.
bool IsSelectionKey(const QKeyEvent& e);
// The shortcut a command key press makes, as Shortcut::Parse would read it.
Shortcut CommandShortcut(const QKeyEvent& e);
// The key sequence shown beside a menu item: Cmd is Ctrl, Option is Alt.
QKeySequence ShortcutSequence(const Shortcut& s);

}  // namespace desk
