// The four-to-a-sheet label window with fixed positions.
#pragma once

#include "rb/rb.h"

namespace win {

class Labels : public Window {
 public:
  static constexpr const char* kClassName = "Labels";
  Labels();

 protected:
  void CreateControls() override;
};

}  // namespace win

inline Implicit<win::Labels> Labels;
