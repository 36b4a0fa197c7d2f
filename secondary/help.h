// The help window: one read-only text.
#pragma once

#include "rb/rb.h"

namespace win {

class help : public Window {
 public:
  static constexpr const char* kClassName = "help";
  help();

 protected:
  void CreateControls() override;
};

}  // namespace win

inline Implicit<win::help> help;
