#include "secondary/about.h"

#include <string>

#include "secondary/credits.h"
#include "secondary/design.h"

namespace win {

namespace {

// Three paragraphs with an empty line between them; line breaks are Chr(13).
const std::string kAboutText =
    std::string("Ledgerly was written by Tobin Arle.") + "\r\r" +
    "Its aim is to be as simple to use as possible and yet be useable as an invoice programme." +
    "\r\r" + "Problems, wish list, bug reports etc. To " + credits::kContactAddress;

// clang-format off
const ControlDesign kDesign[] = {
    // name              index left  top  width height font    size tab  design text
    {"PushButton1",        -1, 199, 258,  69,  20, "Times", 12,  0, "Close"},
    {"StaticText1",        -1,  20,  20, 426, 189, "Times", 14,  1, kAboutText.c_str()},
    {"StaticTextButton1",  -1,  26, 221, 426,  25, "Times", 14,  2, credits::kDownloadPage},
};
// clang-format on

}  // namespace

about::about() : Window(kClassName) {
  Title = "About Ledgerly";
  Width = 465;
  Height = 298;
  Frame = 1;
  Placement = 1;
}

void about::CreateControls() {
  PushButton1 = Add<PushButton>("PushButton1");
  StaticText1 = Add<StaticText>("StaticText1");
  StaticTextButton1 = Add<StaticTextButton>("StaticTextButton1");
  ApplyDesign(*this, kDesign);

  PushButton1->Default = true;
  PushButton1->Cancel = true;
  StaticText1->Multiline = true;
  StaticText1->TextAlign = 1;
  StaticTextButton1->TextAlign = 1;

  PushButton1->OnAction = [this] { PushButton1_Action(); };
  StaticTextButton1->ActionEvent = [this] { StaticTextButton1_Action(); };
}

void about::PushButton1_Action() { Hide(); }

void about::StaticTextButton1_Action() { ShowURL(StaticTextButton1->Text()); }

}  // namespace win
