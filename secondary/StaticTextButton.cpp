// SPDX-License-Identifier: GPL-3.0-or-later
#include "secondary/StaticTextButton.h"

StaticTextButton::StaticTextButton(Window* window, std::string name, Integer index)
    : StaticText(window, std::move(name), index) {
  OnOpen = [this] {
    setTextFont("geneva");
    Raise(OpenEvent);
  };
  OnMouseEnter = [this] {
    setTextColor(RGB(0, 0, 255));
    setUnderline(true);
    Raise(MouseEnterEvent);
  };
  OnMouseExit = [this] {
    setTextColor(RGB(0, 0, 0));
    setUnderline(false);
    Raise(MouseExitEvent);
  };
  // Press and release raise MouseEnter, not events of their own name. Answering True is what
  // brings MouseUp here; where the pointer is then does not matter.
  OnMouseDown = [this](Integer, Integer) {
    setTextColor(RGB(255, 0, 0));
    setUnderline(true);
    Raise(MouseEnterEvent);
    return true;
  };
  OnMouseUp = [this](Integer, Integer) {
    setTextColor(RGB(0, 0, 255));
    setUnderline(true);
    Raise(MouseEnterEvent);
    Raise(ActionEvent);
  };
}

void StaticTextButton::Raise(const std::function<void()>& event) {
  if (event) event();
}
