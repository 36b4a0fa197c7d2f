// The stock catalogue: descriptions and prices that fill a line of the form.
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

 protected:
  void CreateControls() override;
};

}  // namespace win

inline Implicit<win::stockwindow> stockwindow;
