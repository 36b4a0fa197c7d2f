// SPDX-License-Identifier: GPL-3.0-or-later
// PushButton and CheckBox. Neither takes the focus: a click leaves it with the field or list that
// has it.
#include "ControlSupport.h"
#include "rb/Screen.h"
#include "rb/Window.h"

// MouseDown at the press; Action at the release unless MouseDown kept the mouse for itself.
void PushButton::UserClick(Integer x, Integer y, bool contextual) {
  if (!Enabled() || PressKeptByMouseDown(x, y, contextual)) return;
  if (Enabled()) RunHandler(OnAction);
}

void PushButton::Push() {
  if (!Enabled()) return;
  rbi::EndCellEditsOf(ParentWindow());
  RunHandler(OnAction);
}

void CheckBox::setValue(bool v) {
  if (Update(value_, v, Prop::Value)) RunHandler(OnAction);
}

void CheckBox::UserClick(Integer x, Integer y, bool contextual) {
  if (!Enabled() || PressKeptByMouseDown(x, y, contextual)) return;
  setValue(!value_);
}
