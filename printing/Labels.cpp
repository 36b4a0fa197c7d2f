#include "printing/Labels.h"

#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "printing/pagesetup.h"
#include "secondary/design.h"
#include "secondary/prefswindow.h"

namespace win {

namespace {

constexpr Color kChosen = 0xFF0000;
constexpr Color kNotChosen = 0xFFFFFF;

// The offsets, in points on the landscape page, of the block for each label of the picture. One
// step right in the picture adds 300 to the top; one step down takes 400 from the left.
struct LabelOffsets {
  const char* labeltop;
  const char* labelleft;
};
// clang-format off
const LabelOffsets kOffsets[4] = {
    // labeltop labelleft
    {"50",  "450"},  // label(0)
    {"350", "450"},  // label(1)
    {"50",  "50"},   // label(2)
    {"350", "50"},   // label(3)
};
// clang-format on

// Controls use the "System" font unless a row names another.
// clang-format off
const ControlDesign kDesign[] = {
    // name         index left  top  width height font     size tab  text
    {"Rectangle1",    -1,  40,  56, 172, 220, nullptr,  0,  0, nullptr},
    {"label",          0,  51,  67,  71,  91, nullptr,  0,  1, nullptr},
    {"label",          1, 130,  67,  71,  91, nullptr,  0,  2, nullptr},
    {"label",          2,  51, 170,  71,  91, nullptr,  0,  3, nullptr},
    {"label",          3, 130, 170,  71,  91, nullptr,  0,  4, nullptr},
    {"printbutt",     -1, 400, 169, 183, 104, nullptr,  0,  5, "Print"},
    {"closebut",      -1, 400, 116, 183,  20, nullptr,  0,  6, "Close"},
    {"pagbut",        -1, 400,  56, 183,  20, nullptr,  0,  7, "Page set up"},
    {"labeltop",      -1, 277,  60, 100,  20, nullptr,  0,  8, "0"},
    {"labelleft",     -1, 277,  84, 100,  20, nullptr,  0,  9, "0"},
    {"labelright1",   -1, 230,  60,  35,  20, nullptr,  0, 10, "Top"},
    {"labelright",    -1, 230,  84,  35,  20, nullptr,  0, 11, "Left"},
    {"StaticText1",   -1,  40,  11, 543,  36, nullptr,  0, 12,
     "Tiger only!\rSelect a label - Standard 4 per sheet - click label to select"},
    {"Line1",         -1, 239, 169,   0,  91, nullptr,  0, 13, nullptr},
    {"PopupArrow1",   -1, 235, 263,  10,  10, nullptr,  0, 14, nullptr},
    {"StaticText2",   -1, 254, 170, 100,  20, "Times",  0, 15, "Paper direction"},
};
// clang-format on

}  // namespace

Labels::Labels() : Window(kClassName) {
  Title = "Untitled";
  Width = 603;
  Height = 300;
  Frame = 8;
  Placement = 0;
  Resizeable = true;
  CloseButton = true;
  OnOpen = [this] { Event_Open(); };
}

RoundRectangle* Labels::label(Integer i) const {
  if (i < 0 || i > 3) throw OutOfBoundsException();
  return label_[i];
}

void Labels::CreateControls() {
  Rectangle1 = Add<Rectangle>("Rectangle1");
  for (Integer i = 0; i <= 3; ++i) label_[i] = Add<RoundRectangle>("label", i);
  printbutt = Add<PushButton>("printbutt");
  closebut = Add<PushButton>("closebut");
  pagbut = Add<PushButton>("pagbut");
  labeltop = Add<StaticText>("labeltop");
  labelleft = Add<StaticText>("labelleft");
  labelright1 = Add<StaticText>("labelright1");
  labelright = Add<StaticText>("labelright");
  StaticText1 = Add<StaticText>("StaticText1");
  Line1 = Add<Line>("Line1");
  PopupArrow1 = Add<PopupArrow>("PopupArrow1");
  StaticText2 = Add<StaticText>("StaticText2");
  ApplyDesign(*this, kDesign);

  Rectangle1->FillColor = 0xFFFFFF;
  Rectangle1->BorderWidth = 1;
  for (RoundRectangle* l : label_) {
    l->OvalWidth = 16;
    l->OvalHeight = 16;
    l->setBorderWidth(1);
    l->setFillColor(kNotChosen);
  }
  printbutt->setEnabled(false);
  // Both keep Cancel as designed.
  closebut->Cancel = true;
  pagbut->Cancel = true;
  labelright1->TextAlign = 2;
  labelright->TextAlign = 2;
  StaticText1->setBold(true);
  StaticText1->Multiline = true;
  StaticText1->TextAlign = 1;
  Line1->X1 = 239;
  Line1->Y1 = 169;
  Line1->X2 = 239;
  Line1->Y2 = 260;
  Line1->BorderWidth = 3;
  PopupArrow1->Facing = 3;

  for (RoundRectangle* l : label_) {
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
void Labels::Event_Open() {
  if (Module1::Labelsetup->Landscape == false) Module1::Labelsetup->Landscape = true;
}

void Labels::label_MouseEnter(Integer index) { label(index)->setBorderWidth(3); }

void Labels::label_MouseExit(Integer index) { label(index)->setBorderWidth(1); }

bool Labels::label_MouseDown(Integer index, Integer, Integer) {
  labeltop->setText(kOffsets[index].labeltop);
  labelleft->setText(kOffsets[index].labelleft);
  label(index)->setFillColor(kChosen);
  for (Integer i = 0; i <= 3; ++i) {
    if (i != index) label(i)->setFillColor(kNotChosen);
  }
  printbutt->setEnabled(true);
  return false;
}

// The envelope's block with its origin at the chosen label, and a rule of 300.
void Labels::printbutt_Action() {
  Ref<Graphics> g = OpenPrinterDialog(Module1::Labelsetup, nil);
  if (g == nil) return;
  g->TextFont = "geneva";
  g->TextSize = 18;
  g->Bold = true;
  const Integer top = CInt(Val(labeltop->Text()));
  const Integer left = CInt(Val(labelleft->Text()));
  g->DrawString(::iwindow->customername->Text(), left, top, 0, false);
  Integer y = top + 25;
  const Integer h = g->StringHeight(::iwindow->customeraddress->Text(), 500);
  g->DrawString(::iwindow->customeraddress->Text(), left, y, 0, false);
  y = y + h - 10;
  g->DrawLine(left, y, left + 300, y);
  y = y + 15;
  g->Bold = false;  // here the address was bold as well
  g->TextSize = 10;
  g->Italic = true;
  g->DrawString("Return Address: " + ReplaceAll(::prefswindow->myaddress->Text(), Chr(13), " "),
                left, y, 0, false);
}

void Labels::pagbut_Action() { printing::pagesetup(); }

void Labels::closebut_Action() { Hide(); }

}  // namespace win
