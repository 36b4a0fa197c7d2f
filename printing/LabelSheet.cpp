// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/LabelSheet.h"

#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "printing/pagesetup.h"
#include "secondary/prefswindow.h"

namespace win {

LabelSheet::LabelSheet(std::string className, WindowDesign design,
                       std::span<const design::Row> controls, LineEnds paperLine, bool addressBold)
    : Window(std::move(className), std::move(design)),
      controls_(controls),
      paperLine_(paperLine),
      addressBold_(addressBold) {
  OnOpen = [this] { Event_Open(); };
}

void LabelSheet::CreateControls() {
  design::Build(*this, controls_);
  // The arrow points down, the paper's way.
  Line1->X1 = paperLine_.x1;
  Line1->Y1 = paperLine_.y1;
  Line1->X2 = paperLine_.x2;
  Line1->Y2 = paperLine_.y2;
  Line1->BorderWidth = 3;
  PopupArrow1->Facing = 3;

  for (RoundRectangle* l : label) {
    const Integer i = l->Index();
    l->OnMouseEnter = [this, i] { label_MouseEnter(i); };
    l->OnMouseExit = [this, i] { label_MouseExit(i); };
    l->OnMouseDown = [this, i](Integer x, Integer y) { return label_MouseDown(i, x, y); };
  }
  printbutt->OnAction = [this] { printbutt_Action(); };
  pagbut->OnAction = [this] { pagbut_Action(); };
  closebut->OnAction = [this] { closebut_Action(); };
}

// Only when the window is made: once it has been hidden and shown again, nothing turns the page.
void LabelSheet::Event_Open() {
  if (Module1::Labelsetup->Landscape == false) Module1::Labelsetup->Landscape = true;
}

// The hover only thickens the border; the fill is left alone.
void LabelSheet::label_MouseEnter(Integer index) { label(index)->setBorderWidth(3); }

void LabelSheet::label_MouseExit(Integer index) { label(index)->setBorderWidth(1); }

// There is never more than one red label, and once one is chosen the print stays possible.
void LabelSheet::choose(Integer index) {
  for (Integer i = 0; i <= 3; ++i) label(i)->setFillColor(i == index ? kChosen : kNotChosen);
  printbutt->setEnabled(true);
}

// The envelope's block with its origin at the chosen label, and a rule of 300. The offsets are
// read as numbers and cut to whole points; a cancelled dialog prints nothing.
void LabelSheet::printbutt_Action() {
  Ref<Graphics> g = OpenPrinterDialog(Module1::Labelsetup, nil);
  if (g == nil) return;
  g->TextFont = "geneva";
  g->TextSize = 18;
  g->Bold = true;
  const Integer top = CInt(Val(labeltop->Text()));
  const Integer left = CInt(Val(labelleft->Text()));
  g->DrawString(::iwindow->customername->Text(), left, top, 0, false);
  if (!addressBold_) g->Bold = false;
  Integer y = top + 25;
  const Integer h = g->StringHeight(::iwindow->customeraddress->Text(), 500);
  g->DrawString(::iwindow->customeraddress->Text(), left, y, 0, false);
  y = y + h - 10;
  g->DrawLine(left, y, left + 300, y);
  y = y + 15;
  g->Bold = false;
  g->TextSize = 10;
  g->Italic = true;
  g->DrawString("Return Address: " + ReplaceAll(::prefswindow->myaddress->Text(), Chr(13), " "),
                left, y, 0, false);
}

void LabelSheet::pagbut_Action() { printing::pagesetup(); }

void LabelSheet::closebut_Action() { Hide(); }

}  // namespace win
