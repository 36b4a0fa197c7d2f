#include "secondary/surewindow.h"

#include "core/Module1.h"
#include "secondary/design.h"

namespace win {

namespace {

// clang-format off
const ControlDesign kDesign[] = {
    // name        index left top width height font    size tab  design text
    {"surefield",    -1, 115, 26, 298,  22, "Times", 16,  0, ""},
    {"Canvas1",      -1,  17, 26,  70,  67, nullptr,  0,  1, nullptr},
    {"cancelbutt",   -1, 115, 74,  69,  20, "Times", 14,  2, "Cancel"},
    {"acceptbutt",   -1, 344, 74,  69,  20, "Times", 14,  3, "Do it"},
};
// clang-format on

}  // namespace

surewindow::surewindow() : Window(kClassName) {
  Title = "Untitled";
  Width = 436;
  Height = 124;
  Frame = 2;
  Placement = 1;
}

void surewindow::CreateControls() {
  surefield = Add<TextField>("surefield");
  Canvas1 = Add<Canvas>("Canvas1");
  cancelbutt = Add<PushButton>("cancelbutt");
  acceptbutt = Add<PushButton>("acceptbutt");
  ApplyDesign(*this, kDesign);

  surefield->setReadOnly(true);
  surefield->Alignment = 2;
  surefield->Border = true;
  surefield->UseFocusRing = false;
  surefield->setTextColor(0x000000);
  surefield->setBackColor(0xFFFFFF);
  // The safe answer is the default: Return and Escape both say no.
  cancelbutt->Default = true;
  cancelbutt->Cancel = true;

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
