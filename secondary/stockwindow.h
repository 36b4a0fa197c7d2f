// SPDX-License-Identifier: GPL-3.0-or-later
// The stock catalogue: descriptions and prices that fill a line of the form. The list is the
// catalogue; there is no other copy in memory.
#pragma once

#include "rb/rb.h"

namespace win {

class stockwindow : public Window {
 public:
  static constexpr const char* kClassName = "stockwindow";
  stockwindow();

  Listbox* stockbox = nullptr;
  PushButton* addtypebutt = nullptr;
  PushButton* deletebutt = nullptr;
  PushButton* KeepButt = nullptr;
  StaticText* StaticText1 = nullptr;

  void makeeditable();
  void savestock();

  void Event_Activate();

 protected:
  void CreateControls() override;

 private:
  void stockbox_GotFocus();
  void stockbox_LostFocus();
  bool addtypebutt_MouseDown(Integer x, Integer y);
  void addtypebutt_Action();
  void deletebutt_Action();
  void KeepButt_Action();
};

}  // namespace win

inline Implicit<win::stockwindow> stockwindow;
