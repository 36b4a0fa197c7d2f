#include "printing/LepLabel.h"

#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "printing/pagesetup.h"
#include "secondary/design.h"
#include "secondary/prefswindow.h"

namespace win {

namespace {

constexpr Color kChosen = 0xFF0000;
constexpr Color kNotChosen = 0xFFFFFF;
constexpr Color kSheetGrey = 0xBEBCBC;

// The picture is laid out unlike the one of Labels: here one step right in it takes 300 from the
// top offset and one step down adds 400 to the left. label(2) stands a point off its neighbours.
// The lt and ll rows hold each label's offsets at start, in points on the landscape page.
// Controls use the "System" font unless a row names another.
// clang-format off
const ControlDesign kDesign[] = {
    // name             index left  top  width height font    size tab  text
    {"Rectangle1",        -1,  22,  55, 172, 227, nullptr,  0,  0, nullptr},
    {"label",              0,  27, 169,  71,  91, nullptr,  0,  1, nullptr},
    {"label",              1, 117, 169,  71,  91, nullptr,  0,  2, nullptr},
    {"label",              2,  28,  66,  71,  91, nullptr,  0,  3, nullptr},
    {"label",              3, 117,  67,  71,  91, nullptr,  0,  4, nullptr},
    {"StaticText7",       -1,  33, 175,  17,  20, nullptr,  0,  5, "1."},
    {"StaticText8",       -1, 123, 175,  17,  20, nullptr,  0,  6, "2."},
    {"StaticText9",       -1,  34,  72,  17,  20, nullptr,  0,  7, "3."},
    {"StaticText6",       -1, 123,  73,  17,  20, nullptr,  0,  8, "4."},
    {"Line1",             -1, 107, 123,   0,  91, nullptr,  0,  9, nullptr},
    {"PopupArrow1",       -1, 103, 210,  10,  10, nullptr,  0, 10, nullptr},
    {"StaticText2",       -1,  59, 262, 100,  20, "Times",  0, 11, "Paper direction"},
    {"Rectangle2",        -1, 212,  55, 138, 227, nullptr,  0, 12, nullptr},
    {"lt",                 0, 261,  62,  80,  22, nullptr,  0, 13, "350"},
    {"ll",                 0, 261,  88,  80,  22, nullptr,  0, 14, "425"},
    {"lt",                 1, 261, 117,  80,  22, nullptr,  0, 15, "50"},
    {"ll",                 1, 261, 143,  80,  22, nullptr,  0, 16, "425"},
    {"lt",                 2, 261, 172,  80,  22, nullptr,  0, 17, "350"},
    {"ll",                 2, 261, 198,  80,  22, nullptr,  0, 18, "25"},
    {"lt",                 3, 261, 227,  80,  22, nullptr,  0, 19, "50"},
    {"ll",                 3, 261, 253,  80,  22, nullptr,  0, 20, "25"},
    {"labelright1",       -1, 220,  63,  35,  20, nullptr,  0, 21, "Top"},
    {"labelright",        -1, 220,  88,  35,  20, nullptr,  0, 22, "Left"},
    {"labelright11",      -1, 223, 118,  35,  20, nullptr,  0, 23, "Top"},
    {"labelright2",       -1, 223, 143,  35,  20, nullptr,  0, 24, "Left"},
    {"labelright111",     -1, 224, 173,  35,  20, nullptr,  0, 25, "Top"},
    {"labelright21",      -1, 224, 198,  35,  20, nullptr,  0, 26, "Left"},
    {"labelright1111",    -1, 224, 229,  35,  20, nullptr,  0, 27, "Top"},
    {"labelright211",     -1, 224, 254,  35,  20, nullptr,  0, 28, "Left"},
    {"labelright2111",    -1, 223, 286,  35,  20, nullptr,  0, 29, "Left"},
    {"labelleft",         -1, 261, 286,  30,  20, nullptr,  0, 30, "00"},
    {"labelright11111",   -1, 289, 286,  27,  20, nullptr,  0, 31, "Top"},
    {"labeltop",          -1, 319, 286,  30,  20, nullptr,  0, 32, "00"},
    {"printbutt",         -1, 371, 177, 217, 105, nullptr,  0, 33, "Print"},
    {"pagbut",            -1, 371,  56, 217,  20, nullptr,  0, 34, "Page set up"},
    {"closebut",          -1, 371, 111, 217,  20, nullptr,  0, 35, "Close"},
    {"StaticText1",       -1,  22,   7, 561,  41, nullptr,  0, 36,
     "Leopard Only\rSelect a label - Standard 4 per sheet - click label to select"},
};
// clang-format on

}  // namespace

LepLabel::LepLabel() : Window(kClassName) {
  Title = "Leopard Labeler for 4 up label sheets";
  Width = 608;
  Height = 323;
  Frame = 8;
  Placement = 1;
  Resizeable = false;
  MaximizeButton = false;
  MinimizeButton = false;
  CloseButton = true;
  OnOpen = [this] { Event_Open(); };
}

RoundRectangle* LepLabel::label(Integer i) const {
  if (i < 0 || i > 3) throw OutOfBoundsException();
  return label_[i];
}

TextField* LepLabel::lt(Integer i) const {
  if (i < 0 || i > 3) throw OutOfBoundsException();
  return lt_[i];
}

TextField* LepLabel::ll(Integer i) const {
  if (i < 0 || i > 3) throw OutOfBoundsException();
  return ll_[i];
}

void LepLabel::CreateControls() {
  Rectangle1 = Add<Rectangle>("Rectangle1");
  for (Integer i = 0; i <= 3; ++i) label_[i] = Add<RoundRectangle>("label", i);
  StaticText7 = Add<StaticText>("StaticText7");
  StaticText8 = Add<StaticText>("StaticText8");
  StaticText9 = Add<StaticText>("StaticText9");
  StaticText6 = Add<StaticText>("StaticText6");
  Line1 = Add<Line>("Line1");
  PopupArrow1 = Add<PopupArrow>("PopupArrow1");
  StaticText2 = Add<StaticText>("StaticText2");
  Rectangle2 = Add<Rectangle>("Rectangle2");
  for (Integer i = 0; i <= 3; ++i) {
    lt_[i] = Add<TextField>("lt", i);
    ll_[i] = Add<TextField>("ll", i);
  }
  labelright1 = Add<StaticText>("labelright1");
  labelright = Add<StaticText>("labelright");
  labelright11 = Add<StaticText>("labelright11");
  labelright2 = Add<StaticText>("labelright2");
  labelright111 = Add<StaticText>("labelright111");
  labelright21 = Add<StaticText>("labelright21");
  labelright1111 = Add<StaticText>("labelright1111");
  labelright211 = Add<StaticText>("labelright211");
  labelright2111 = Add<StaticText>("labelright2111");
  labelleft = Add<StaticText>("labelleft");
  labelright11111 = Add<StaticText>("labelright11111");
  labeltop = Add<StaticText>("labeltop");
  printbutt = Add<PushButton>("printbutt");
  pagbut = Add<PushButton>("pagbut");
  closebut = Add<PushButton>("closebut");
  StaticText1 = Add<StaticText>("StaticText1");
  ApplyDesign(*this, kDesign);

  Rectangle1->FillColor = kSheetGrey;
  Rectangle2->FillColor = kSheetGrey;
  for (RoundRectangle* l : label_) {
    l->OvalWidth = 16;
    l->OvalHeight = 16;
    l->setBorderWidth(1);
    l->setFillColor(kNotChosen);
  }
  StaticText2->TextAlign = 1;
  Line1->X1 = 107;
  Line1->Y1 = 123;
  Line1->X2 = 107;
  Line1->Y2 = 214;
  Line1->BorderWidth = 3;
  PopupArrow1->Facing = 3;
  for (Integer i = 0; i <= 3; ++i) {
    for (TextField* f : {lt_[i], ll_[i]}) {
      f->setBackColor(0xFFFFFF);
      f->Border = true;
      f->LimitText = 0;
    }
  }
  for (StaticText* caption :
       {labelright1, labelright, labelright11, labelright2, labelright111, labelright21,
        labelright1111, labelright211, labelright2111, labelright11111}) {
    caption->TextAlign = 2;
  }
  printbutt->setEnabled(false);
  // Both keep Cancel as designed.
  pagbut->Cancel = true;
  closebut->Cancel = true;
  StaticText1->setBold(true);
  StaticText1->Multiline = true;
  StaticText1->TextAlign = 1;

  // lt and ll have no handlers: an edit shows in labeltop and labelleft at the next click only.
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
void LepLabel::Event_Open() {
  if (Module1::Labelsetup->Landscape == false) Module1::Labelsetup->Landscape = true;
}

void LepLabel::label_MouseEnter(Integer index) { label(index)->setBorderWidth(3); }

void LepLabel::label_MouseExit(Integer index) { label(index)->setBorderWidth(1); }

bool LepLabel::label_MouseDown(Integer index, Integer, Integer) {
  label(index)->setFillColor(kChosen);
  lt(index)->setBackColor(kChosen);
  ll(index)->setBackColor(kChosen);
  labeltop->setText(lt(index)->Text());
  labelleft->setText(ll(index)->Text());
  for (Integer i = 0; i <= 3; ++i) {
    if (i == index) continue;
    label(i)->setFillColor(kNotChosen);
    lt(i)->setBackColor(kNotChosen);
    ll(i)->setBackColor(kNotChosen);
  }
  printbutt->setEnabled(true);
  return false;
}

// The envelope's block with its origin at the chosen label, and a rule of 300. The offsets are
// read as numbers and cut to whole points.
void LepLabel::printbutt_Action() {
  Ref<Graphics> g = OpenPrinterDialog(Module1::Labelsetup, nil);
  if (g == nil) return;
  g->TextFont = "geneva";
  g->TextSize = 18;
  g->Bold = true;
  const Integer top = CInt(Val(labeltop->Text()));
  const Integer left = CInt(Val(labelleft->Text()));
  g->DrawString(::iwindow->customername->Text(), left, top, 0, false);
  g->Bold = false;  // here the address is plain
  Integer y = top + 25;
  const Integer h = g->StringHeight(::iwindow->customeraddress->Text(), 500);
  g->DrawString(::iwindow->customeraddress->Text(), left, y, 0, false);
  y = y + h - 10;
  g->DrawLine(left, y, left + 300, y);
  y = y + 15;
  g->TextSize = 10;
  g->Italic = true;
  g->DrawString("Return Address: " + ReplaceAll(::prefswindow->myaddress->Text(), Chr(13), " "),
                left, y, 0, false);
}

void LepLabel::pagbut_Action() { printing::pagesetup(); }

void LepLabel::closebut_Action() { Hide(); }

}  // namespace win
