// The four-to-a-sheet label window whose positions the user may edit.
#pragma once

#include "rb/rb.h"

namespace win {

class LepLabel : public Window {
 public:
  static constexpr const char* kClassName = "LepLabel";
  LepLabel();

 protected:
  void CreateControls() override;
};

}  // namespace win

inline Implicit<win::LepLabel> LepLabel;
