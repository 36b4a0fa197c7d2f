// SPDX-License-Identifier: GPL-3.0-or-later
// PopupMenu and ContextualMenu: rows of text, one chosen.
#include "ControlSupport.h"
#include "rb/Screen.h"
#include "rb/Window.h"

void PopupMenu::AddRow(const String& text) { AddRow(String(text)); }

void PopupMenu::AddRow(String&& text) {
  if (text.Encoding() == TextEncoding::UTF8) {
    rows_.push_back(std::move(text));
  } else {
    rows_.push_back(String::FromBytes(std::move(text).Utf8(), TextEncoding::UTF8));
  }
  Changed(Prop::Rows);
}

void PopupMenu::DeleteAllRows() {
  bool hadSelection = listIndex_ != -1;
  rows_.clear();
  listIndex_ = -1;
  Changed(Prop::Rows);
  if (hadSelection) Changed(Prop::ListIndex);
}

String PopupMenu::List(Integer row) const {
  if (row < 0 || row >= ListCount()) throw OutOfBoundsException();
  return rows_[row];
}

void PopupMenu::setListIndex(Integer v) {
  if (v < -1 || v >= ListCount()) throw OutOfBoundsException();
  if (v == listIndex_) return;
  listIndex_ = v;
  Changed(Prop::ListIndex);
  RunHandler(OnChange);
}

String PopupMenu::Text() const { return listIndex_ >= 0 ? rows_[listIndex_] : String(); }

void PopupMenu::UserSelect(Integer row) {
  if (!Enabled()) return;
  setListIndex(row);
}

void ContextualMenu::AddRow(const String& text) { rows_.emplace_back(text.Utf8()); }

void ContextualMenu::DeleteAllRows() { rows_.clear(); }

String ContextualMenu::List(Integer row) const {
  if (row < 0 || row >= ListCount()) throw OutOfBoundsException();
  return rows_[row];
}

void ContextualMenu::Open() {
  std::vector<String> shown = rows_;
  std::optional<Integer> chosen = CurrentScreen().ContextualMenu(shown);
  if (!chosen || *chosen < 0 || *chosen >= static_cast<Integer>(shown.size())) return;
  String item = shown[*chosen];
  RunHandler([&] {
    if (OnAction) OnAction(item);
  });
}
