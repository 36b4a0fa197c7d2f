// SPDX-License-Identifier: GPL-3.0-or-later
// What every control has: its place in the window, its type and colours, and the mouse.
#include "ControlSupport.h"
#include "rb/Screen.h"
#include "rb/Window.h"

Control::Control(Window* window, std::string name, Integer index)
    : window_(window), name_(std::move(name)), index_(index) {}

Control::~Control() = default;

std::string Control::FullName() const {
  if (index_ < 0) return name_;
  return name_ + "(" + std::to_string(index_) + ")";
}

void Control::Changed(Prop what) { CurrentScreen().ControlChanged(*this, what); }

void Control::setEnabled(bool v) { Update(enabled_, v, Prop::Enabled); }

void Control::setVisible(bool v) { Update(visible_, v, Prop::Visible); }

void Control::setTextFont(const String& v) {
  if (font_.SameAs(v)) return;
  font_ = String(v.Utf8());
  Changed(Prop::Font);
}

void Control::setTextSize(Double v) { Update(size_, v, Prop::Font); }

void Control::setBold(bool v) { Update(bold_, v, Prop::Font); }

void Control::setItalic(bool v) { Update(italic_, v, Prop::Font); }

void Control::setUnderline(bool v) { Update(underline_, v, Prop::Font); }

void Control::setTextColor(Color v) { Update(textColor_, v, Prop::TextColor); }

void Control::setBackColor(Color v) { Update(backColor_, v, Prop::BackColor); }

// Press and release. MouseDown answering True keeps the release for the control itself (MouseUp);
// otherwise the platform goes on as usual, and a field takes the focus.
void Control::UserClick(Integer x, Integer y, bool contextual) {
  if (!Enabled() || PressKeptByMouseDown(x, y, contextual)) return;
  if (AcceptsFocus() && window_) window_->SetFocus(this);
}

bool Control::PressKeptByMouseDown(Integer x, Integer y, bool contextual) {
  rbi::EndCellEditsOf(window_);
  bool answered = false;
  {
    rbi::ContextualClickScope scope(contextual);
    answered = RunHandlerBool([&] { return OnMouseDown ? OnMouseDown(x, y) : false; });
  }
  if (answered) {
    RunHandler([&] {
      if (OnMouseUp) OnMouseUp(x, y);
    });
  }
  return answered;
}

void Control::UserMouseEnter() { RunHandler(OnMouseEnter); }

void Control::UserMouseExit() { RunHandler(OnMouseExit); }

namespace rbi {

void EndCellEditsOf(Window* window) {
  if (!window) return;
  for (const auto& c : window->Controls()) {
    if (auto* list = dynamic_cast<Listbox*>(c.get()); list && list->Editing()) list->EndEdit(true);
  }
}

}  // namespace rbi
