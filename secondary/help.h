// SPDX-License-Identifier: GPL-3.0-or-later
// The help window: one read-only text.
#pragma once

#include "rb/rb.h"

namespace win {

class help : public Window {
 public:
  static constexpr const char* kClassName = "help";
  help();

  PushButton* PushButton1 = nullptr;
  TextArea* EditField1 = nullptr;

 protected:
  void CreateControls() override;

 private:
  void PushButton1_Action();
};

}  // namespace win

inline Implicit<win::help> help;
