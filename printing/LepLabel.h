// The four-to-a-sheet label window whose positions the user may edit: each label of the picture
// has its own top and left offset fields, copied for printing when the label is clicked.
#pragma once

#include <array>

#include "rb/rb.h"

namespace win {

class LepLabel : public Window {
 public:
  static constexpr const char* kClassName = "LepLabel";
  LepLabel();

  Rectangle* Rectangle1 = nullptr;
  StaticText* StaticText7 = nullptr;
  StaticText* StaticText8 = nullptr;
  StaticText* StaticText9 = nullptr;
  StaticText* StaticText6 = nullptr;
  Line* Line1 = nullptr;
  PopupArrow* PopupArrow1 = nullptr;
  StaticText* StaticText2 = nullptr;
  Rectangle* Rectangle2 = nullptr;
  StaticText* labelright1 = nullptr;
  StaticText* labelright = nullptr;
  StaticText* labelright11 = nullptr;
  StaticText* labelright2 = nullptr;
  StaticText* labelright111 = nullptr;
  StaticText* labelright21 = nullptr;
  StaticText* labelright1111 = nullptr;
  StaticText* labelright211 = nullptr;
  StaticText* labelright2111 = nullptr;
  StaticText* labelleft = nullptr;
  StaticText* labelright11111 = nullptr;
  StaticText* labeltop = nullptr;
  PushButton* printbutt = nullptr;
  PushButton* pagbut = nullptr;
  PushButton* closebut = nullptr;
  StaticText* StaticText1 = nullptr;

  // Declared, and read and written by nothing: the window prints with Module1.Labelsetup.
  Ref<PrinterSetup> pagesetup;

  RoundRectangle* label(Integer i) const;
  TextField* lt(Integer i) const;
  TextField* ll(Integer i) const;

  void Event_Open();

 protected:
  void CreateControls() override;

 private:
  void label_MouseEnter(Integer index);
  void label_MouseExit(Integer index);
  bool label_MouseDown(Integer index, Integer x, Integer y);
  void printbutt_Action();
  void pagbut_Action();
  void closebut_Action();

  std::array<RoundRectangle*, 4> label_{};
  std::array<TextField*, 4> lt_{}, ll_{};
};

}  // namespace win

inline Implicit<win::LepLabel> LepLabel;
