// SPDX-License-Identifier: GPL-3.0-or-later
// The four-to-a-sheet label window whose positions the user may edit: each label of the picture
// has its own top and left offset fields, copied for printing when the label is clicked.
#pragma once

#include "printing/LabelSheet.h"

namespace win {

class LepLabel : public LabelSheet {
 public:
  static constexpr const char* kClassName = "LepLabel";
  LepLabel();

  StaticText* StaticText7 = nullptr;
  StaticText* StaticText8 = nullptr;
  StaticText* StaticText9 = nullptr;
  StaticText* StaticText6 = nullptr;
  Rectangle* Rectangle2 = nullptr;
  ControlArray<TextField, 4> lt, ll;
  StaticText* labelright11 = nullptr;
  StaticText* labelright2 = nullptr;
  StaticText* labelright111 = nullptr;
  StaticText* labelright21 = nullptr;
  StaticText* labelright1111 = nullptr;
  StaticText* labelright211 = nullptr;
  StaticText* labelright2111 = nullptr;
  StaticText* labelright11111 = nullptr;

 private:
  bool label_MouseDown(Integer index, Integer x, Integer y) override;
};

}  // namespace win

inline Implicit<win::LepLabel> LepLabel;
