// SPDX-License-Identifier: GPL-3.0-or-later
// What the two label sheet windows share: a picture of a sheet of four labels to click on, the
// offsets of the label chosen, and the Print, Page set up and Close buttons. Each window has its
// own layout and its own way of choosing.
#pragma once

#include <span>

#include "rb/rb.h"

namespace win {

class LabelSheet : public Window {
 public:
  Rectangle* Rectangle1 = nullptr;
  ControlArray<RoundRectangle, 4> label;
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

  void Event_Open();

 protected:
  // The ends of the line that, with the arrow under it, shows the paper's direction.
  struct LineEnds {
    Integer x1, y1, x2, y2;
  };
  // The window's own design and its controls' table; addressBold: whether the address prints bold,
  // like the name above it.
  LabelSheet(std::string className, WindowDesign design, std::span<const design::Row> controls,
             LineEnds paperLine, bool addressBold);

  void CreateControls() final;
  virtual bool label_MouseDown(Integer index, Integer x, Integer y) = 0;
  // The clicked label red and the others white; the print can go.
  void choose(Integer index);

  static constexpr Color kChosen = 0xFF0000;
  static constexpr Color kNotChosen = 0xFFFFFF;

 private:
  void label_MouseEnter(Integer index);
  void label_MouseExit(Integer index);
  void printbutt_Action();
  void pagbut_Action();
  void closebut_Action();

  std::span<const design::Row> controls_;
  LineEnds paperLine_;
  bool addressBold_;
};

}  // namespace win
