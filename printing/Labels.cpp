// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/Labels.h"

namespace win {

namespace {

using namespace design;

const WindowDesign kWindow = {
    .Title = "Untitled", .Width = 603, .Height = 300, .Frame = 8, .Placement = 0,
    .Resizeable = true, .CloseButton = true};

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

const char* const kNote =
    "Tiger only!\rSelect a label - Standard 4 per sheet - click label to select";

// Controls use the "System" font unless a row names another. The four labels are white with a
// border of 1 and round corners of 16, as a RoundRectangle is made; both Cancel buttons stay.
const Row kControls[] = {
    // control                                      left  top  width  height  tab  text               font      size  style  align      limit  back   flags
    {Bind<&Labels::Rectangle1>,  "Rectangle1",  -1, 40,   56,  172,   220,    0},
    {Bind<&Labels::label>,       "label",       0,  51,   67,  71,    91,     1},
    {Bind<&Labels::label>,       "label",       1,  130,  67,  71,    91,     2},
    {Bind<&Labels::label>,       "label",       2,  51,   170, 71,    91,     3},
    {Bind<&Labels::label>,       "label",       3,  130,  170, 71,    91,     4},
    {Bind<&Labels::printbutt>,   "printbutt",   -1, 400,  169, 183,   104,    5,   "Print",           nullptr,  0,    plain, unaligned, 0,     blank, Disabled},
    {Bind<&Labels::closebut>,    "closebut",    -1, 400,  116, 183,   20,     6,   "Close",           nullptr,  0,    plain, unaligned, 0,     blank, Cancel},
    {Bind<&Labels::pagbut>,      "pagbut",      -1, 400,  56,  183,   20,     7,   "Page set up",     nullptr,  0,    plain, unaligned, 0,     blank, Cancel},
    {Bind<&Labels::labeltop>,    "labeltop",    -1, 277,  60,  100,   20,     8,   "0"},
    {Bind<&Labels::labelleft>,   "labelleft",   -1, 277,  84,  100,   20,     9,   "0"},
    {Bind<&Labels::labelright1>, "labelright1", -1, 230,  60,  35,    20,     10,  "Top",             nullptr,  0,    plain, right},
    {Bind<&Labels::labelright>,  "labelright",  -1, 230,  84,  35,    20,     11,  "Left",            nullptr,  0,    plain, right},
    {Bind<&Labels::StaticText1>, "StaticText1", -1, 40,   11,  543,   36,     12,  kNote,             nullptr,  0,    bold,  centre,    0,     blank, Multiline},
    {Bind<&Labels::Line1>,       "Line1",       -1, 239,  169, 0,     91,     13},
    {Bind<&Labels::PopupArrow1>, "PopupArrow1", -1, 235,  263, 10,    10,     14},
    {Bind<&Labels::StaticText2>, "StaticText2", -1, 254,  170, 100,   20,     15,  "Paper direction", "Times"},
};
// clang-format on

}  // namespace

Labels::Labels()
    : LabelSheet(kClassName, kWindow, kControls, {239, 169, 239, 260}, /*addressBold=*/true) {}

bool Labels::label_MouseDown(Integer index, Integer, Integer) {
  labeltop->setText(kOffsets[index].labeltop);
  labelleft->setText(kOffsets[index].labelleft);
  choose(index);
  return false;
}

}  // namespace win
