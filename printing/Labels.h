// The four-to-a-sheet label window with fixed positions: a click on a label of the picture chooses
// where on the landscape page the address block goes.
#pragma once

#include <array>

#include "rb/rb.h"

namespace win {

class Labels : public Window {
 public:
  static constexpr const char* kClassName = "Labels";
  Labels();

  Rectangle* Rectangle1 = nullptr;
  PushButton* printbutt = nullptr;
  PushButton* closebut = nullptr;
  PushButton* pagbut = nullptr;
  StaticText* labeltop = nullptr;
  StaticText* labelleft = nullptr;
  StaticText* labelright1 = nullptr;
  StaticText* labelright = nullptr;
  StaticText* StaticText1 = nullptr;
  Line* Line1 = nullptr;
  PopupArrow* PopupArrow1 = nullptr;
  StaticText* StaticText2 = nullptr;

  // Declared, and read and written by nothing: the window prints with Module1.Labelsetup.
  Ref<PrinterSetup> pagesetup;

  RoundRectangle* label(Integer i) const;

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
};

}  // namespace win

inline Implicit<win::Labels> Labels;
