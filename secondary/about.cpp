// SPDX-License-Identifier: GPL-3.0-or-later
#include "secondary/about.h"

#include <string>

#include "secondary/credits.h"

namespace win {

namespace {

using namespace design;

const WindowDesign kWindow = {
    .Title = "About Ledgerly", .Width = 465, .Height = 298, .Frame = 1, .Placement = 1};

// Three paragraphs with an empty line between them; line breaks are Chr(13).
const std::string kAboutText =
    std::string("Ledgerly was written by Tobin Arle.") + "\r\r" +
    "Its aim is to be as simple to use as possible and yet be useable as an invoice programme." +
    "\r\r" + "Problems, wish list, bug reports etc. To " + credits::kContactAddress;

// The link takes the face "geneva" when it opens.
// clang-format off
const Row kControls[] = {
    // control                                                 left  top  width  height  tab  design text             font     size  style  align      limit  back   flags
    {Bind<&about::PushButton1>,       "PushButton1",       -1, 199,  258, 69,    20,     0,   "Close",                "Times", 12,   plain, unaligned, 0,     blank, Default | Cancel},
    {Bind<&about::StaticText1>,       "StaticText1",       -1, 20,   20,  426,   189,    1,   kAboutText.c_str(),     "Times", 14,   plain, centre,    0,     blank, Multiline},
    {Bind<&about::StaticTextButton1>, "StaticTextButton1", -1, 26,   221, 426,   25,     2,   credits::kDownloadPage, "Times", 14,   plain, centre},
};
// clang-format on

}  // namespace

about::about() : Window(kClassName, kWindow) {}

void about::CreateControls() {
  design::Build(*this, kControls);
  PushButton1->OnAction = [this] { PushButton1_Action(); };
  StaticTextButton1->ActionEvent = [this] { StaticTextButton1_Action(); };
}

void about::PushButton1_Action() { Hide(); }

void about::StaticTextButton1_Action() { ShowURL(StaticTextButton1->Text()); }

}  // namespace win
