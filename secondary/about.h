// The about window: who wrote the program, and a link to its download page.
#pragma once

#include "rb/rb.h"

namespace win {

class about : public Window {
 public:
  static constexpr const char* kClassName = "about";
  about();

 protected:
  void CreateControls() override;
};

}  // namespace win

inline Implicit<win::about> about;
