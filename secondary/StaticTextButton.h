// SPDX-License-Identifier: GPL-3.0-or-later
// A line of text that behaves like a link: black and plain at rest, blue and underlined under the
// pointer, red while pressed. It takes the platform's mouse events for itself and raises events of
// its own for the window that holds it.
#pragma once

#include <functional>

#include "rb/rb.h"

class StaticTextButton : public StaticText {
 public:
  StaticTextButton(Window* window, std::string name, Integer index);

  // Its own events; one the window leaves empty does nothing.
  std::function<void()> OpenEvent;
  std::function<void()> MouseEnterEvent;
  std::function<void()> MouseExitEvent;
  std::function<void()> ActionEvent;

 private:
  void Raise(const std::function<void()>& event);
};
