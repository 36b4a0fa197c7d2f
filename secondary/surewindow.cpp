// SPDX-License-Identifier: GPL-3.0-or-later
#include "secondary/surewindow.h"

#include "core/Module1.h"

namespace win {

namespace {

using namespace design;

const WindowDesign kWindow = {
    .Title = "Untitled", .Width = 436, .Height = 124, .Frame = 2, .Placement = 1};

// The question shows black on white, the defaults. The safe answer is the default button: Return
// and Escape both say no.
// clang-format off
const Row kControls[] = {
    // control                                        left  top  width  height  tab  design text  font     size  style  align      limit  back   flags
    {Bind<&surewindow::surefield>,  "surefield",  -1, 115,  26,  298,   22,     0,   "",          "Times", 16,   plain, centre,    0,     blank, ReadOnly | NoFocusRing},
    {Bind<&surewindow::Canvas1>,    "Canvas1",    -1, 17,   26,  70,    67,     1},
    {Bind<&surewindow::cancelbutt>, "cancelbutt", -1, 115,  74,  69,    20,     2,   "Cancel",    "Times", 14,   plain, unaligned, 0,     blank, Default | Cancel},
    {Bind<&surewindow::acceptbutt>, "acceptbutt", -1, 344,  74,  69,    20,     3,   "Do it",     "Times", 14},
};
// clang-format on

}  // namespace

surewindow::surewindow() : Window(kClassName, kWindow) {}

void surewindow::CreateControls() {
  design::Build(*this, kControls);
  Canvas1->OnPaint = [this](Graphics& g) { Canvas1_Paint(g); };
  cancelbutt->OnAction = [this] { cancelbutt_Action(); };
  acceptbutt->OnAction = [this] { acceptbutt_Action(); };
}

// Drawn in whatever state g comes in: no font is set for "Yikes!".
void surewindow::Canvas1_Paint(Graphics& g) {
  g.DrawStopIcon(0, 0);
  g.DrawString("Yikes!", 0, 42);
}

void surewindow::cancelbutt_Action() {
  Module1::sure = false;
  Hide();
}

void surewindow::acceptbutt_Action() {
  Module1::sure = true;
  Hide();
}

}  // namespace win
