// SPDX-License-Identifier: GPL-3.0-or-later
#include "KeyMap.h"

#include "rb/Controls.h"

namespace desk {

bool IsTabKey(const QEvent* e) {
  if (e->type() != QEvent::KeyPress) return false;
  const int key = static_cast<const QKeyEvent*>(e)->key();
  return key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

bool IsContextual(const QMouseEvent* e) {
  return e->button() == Qt::RightButton ||
         (e->button() == Qt::LeftButton && (e->modifiers() & Qt::ControlModifier));
}

std::vector<String> PlatformKeys(const QKeyEvent& e) {
  // Alt with a key is a menu's mnemonic or nothing, and types nothing. AltGr, which types characters
  // such as the euro sign, does not come as Alt.
  if ((e.modifiers() & Qt::AltModifier) && !(e.modifiers() & Qt::ControlModifier)) return {};
  switch (e.key()) {
    case Qt::Key_Return: return {Keys::Return};
    case Qt::Key_Enter: return {Keys::Enter};
    case Qt::Key_Tab: return {Keys::Tab};
    case Qt::Key_Backspace: return {Keys::Backspace};
    case Qt::Key_Delete: return {Keys::Delete};
    case Qt::Key_Escape: return {Keys::Escape};
    case Qt::Key_Left: return {Keys::Left};
    case Qt::Key_Right: return {Keys::Right};
    case Qt::Key_Up: return {Keys::Up};
    case Qt::Key_Down: return {Keys::Down};
    case Qt::Key_Home: return {Keys::Home};
    case Qt::Key_End: return {Keys::End};
    default: break;
  }
  std::vector<String> keys;
  const QString text = e.text();
  for (int i = 0; i < text.size();) {
    const int n = (text.at(i).isHighSurrogate() && i + 1 < text.size()) ? 2 : 1;
    const QString one = text.mid(i, n);
    i += n;
    if (one.at(0).unicode() < 0x20 || one.at(0).unicode() == 0x7F) continue;
    keys.emplace_back(one.toStdString());
  }
  return keys;
}

bool IsCommandKey(const QKeyEvent& e) {
  const Qt::KeyboardModifiers m = e.modifiers();
  if (!(m & Qt::ControlModifier)) return false;
  // Ctrl+Alt typing a printable character is AltGr on keyboards that report it so.
  if ((m & Qt::AltModifier) && !e.text().isEmpty() && e.text().at(0).unicode() >= 0x20 &&
      e.text().at(0).unicode() != 0x7F)
    return false;
  switch (e.key()) {
    case Qt::Key_Control: case Qt::Key_Shift: case Qt::Key_Alt: case Qt::Key_Meta:
      return false;
    default:
      return true;
  }
}

bool IsSelectionKey(const QKeyEvent& e) {
  if (!(e.modifiers() & Qt::ShiftModifier) || (e.modifiers() & Qt::ControlModifier)) return false;
  switch (e.key()) {
    case Qt::Key_Left: case Qt::Key_Right: case Qt::Key_Up: case Qt::Key_Down:
    case Qt::Key_Home: case Qt::Key_End: case Qt::Key_PageUp: case Qt::Key_PageDown:
      return true;
    default:
      return false;
  }
}

Shortcut CommandShortcut(const QKeyEvent& e) {
  Shortcut s;
  s.cmd = true;
  s.shift = (e.modifiers() & Qt::ShiftModifier) != 0;
  s.option = (e.modifiers() & Qt::AltModifier) != 0;
  const int key = e.key();
  if (key >= Qt::Key_A && key <= Qt::Key_Z) {
    s.key = std::string(1, static_cast<char>('A' + (key - Qt::Key_A)));
  } else if (key >= Qt::Key_0 && key <= Qt::Key_9) {
    s.key = std::string(1, static_cast<char>('0' + (key - Qt::Key_0)));
  } else {
    s.key = QKeySequence(key).toString(QKeySequence::PortableText).toUpper().toStdString();
  }
  return s;
}

QKeySequence ShortcutSequence(const Shortcut& s) {
  if (s.IsEmpty()) return {};
  QString text;
  if (s.cmd) text += QStringLiteral("Ctrl+");
  if (s.option) text += QStringLiteral("Alt+");
  if (s.shift) text += QStringLiteral("Shift+");
  text += QString::fromStdString(s.key);
  return QKeySequence(text, QKeySequence::PortableText);
}

}  // namespace desk
