// SPDX-License-Identifier: GPL-3.0-or-later
// The one yes-or-no question: the caller writes surefield, shows the window modally, and reads
// Module1.sure when it has gone.
#pragma once

#include "rb/rb.h"

namespace win {

class surewindow : public Window {
 public:
  static constexpr const char* kClassName = "surewindow";
  surewindow();

  TextField* surefield = nullptr;
  Canvas* Canvas1 = nullptr;
  PushButton* cancelbutt = nullptr;
  PushButton* acceptbutt = nullptr;

 protected:
  void CreateControls() override;

 private:
  void Canvas1_Paint(Graphics& g);
  void cancelbutt_Action();
  void acceptbutt_Action();
};

}  // namespace win

inline Implicit<win::surewindow> surewindow;
