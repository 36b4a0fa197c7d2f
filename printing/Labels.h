// SPDX-License-Identifier: GPL-3.0-or-later
// The four-to-a-sheet label window with fixed positions: a click on a label of the picture chooses
// where on the landscape page the address block goes.
#pragma once

#include "printing/LabelSheet.h"

namespace win {

class Labels : public LabelSheet {
 public:
  static constexpr const char* kClassName = "Labels";
  Labels();

 private:
  bool label_MouseDown(Integer index, Integer x, Integer y) override;
};

}  // namespace win

inline Implicit<win::Labels> Labels;
