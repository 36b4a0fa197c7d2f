// SPDX-License-Identifier: GPL-3.0-or-later
// The about window: who wrote the program, and a link to its download page.
#pragma once

#include "rb/rb.h"
#include "secondary/StaticTextButton.h"

namespace win {

class about : public Window {
 public:
  static constexpr const char* kClassName = "about";
  about();

  PushButton* PushButton1 = nullptr;
  StaticText* StaticText1 = nullptr;
  StaticTextButton* StaticTextButton1 = nullptr;

 protected:
  void CreateControls() override;

 private:
  void PushButton1_Action();
  void StaticTextButton1_Action();
};

}  // namespace win

inline Implicit<win::about> about;
