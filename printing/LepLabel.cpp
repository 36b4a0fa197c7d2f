// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/LepLabel.h"

namespace win {

namespace {

using namespace design;

const WindowDesign kWindow = {
    .Title = "Leopard Labeler for 4 up label sheets", .Width = 608, .Height = 323, .Frame = 8,
    .Placement = 1, .Resizeable = false, .CloseButton = true, .MaximizeButton = false,
    .MinimizeButton = false};

constexpr Color kSheetGrey = 0xBEBCBC;

const char* const kNote =
    "Leopard Only\rSelect a label - Standard 4 per sheet - click label to select";

// The picture is laid out unlike the one of Labels: here one step right in it takes 300 from the
// top offset and one step down adds 400 to the left. label(2) stands a point off its neighbours.
// The lt and ll rows hold each label's offsets at start, in points on the landscape page; they
// are white with a border and no text limit, as a TextField is made. Controls use the "System"
// font unless a row names another; the labels are made as on Labels, and both Cancel buttons stay.
// clang-format off
const Row kControls[] = {
    // control                                                left  top  width  height  tab  text               font     size  style  align      limit  back         flags
    {Bind<&LepLabel::Rectangle1>,      "Rectangle1",      -1, 22,   55,  172,   227,    0,   nullptr,           nullptr, 0,    plain, unaligned, 0,     kSheetGrey},
    {Bind<&LepLabel::label>,           "label",           0,  27,   169, 71,    91,     1},
    {Bind<&LepLabel::label>,           "label",           1,  117,  169, 71,    91,     2},
    {Bind<&LepLabel::label>,           "label",           2,  28,   66,  71,    91,     3},
    {Bind<&LepLabel::label>,           "label",           3,  117,  67,  71,    91,     4},
    {Bind<&LepLabel::StaticText7>,     "StaticText7",     -1, 33,   175, 17,    20,     5,   "1."},
    {Bind<&LepLabel::StaticText8>,     "StaticText8",     -1, 123,  175, 17,    20,     6,   "2."},
    {Bind<&LepLabel::StaticText9>,     "StaticText9",     -1, 34,   72,  17,    20,     7,   "3."},
    {Bind<&LepLabel::StaticText6>,     "StaticText6",     -1, 123,  73,  17,    20,     8,   "4."},
    {Bind<&LepLabel::Line1>,           "Line1",           -1, 107,  123, 0,     91,     9},
    {Bind<&LepLabel::PopupArrow1>,     "PopupArrow1",     -1, 103,  210, 10,    10,     10},
    {Bind<&LepLabel::StaticText2>,     "StaticText2",     -1, 59,   262, 100,   20,     11,  "Paper direction", "Times", 0,    plain, centre},
    {Bind<&LepLabel::Rectangle2>,      "Rectangle2",      -1, 212,  55,  138,   227,    12,  nullptr,           nullptr, 0,    plain, unaligned, 0,     kSheetGrey},
    {Bind<&LepLabel::lt>,              "lt",              0,  261,  62,  80,    22,     13,  "350"},
    {Bind<&LepLabel::ll>,              "ll",              0,  261,  88,  80,    22,     14,  "425"},
    {Bind<&LepLabel::lt>,              "lt",              1,  261,  117, 80,    22,     15,  "50"},
    {Bind<&LepLabel::ll>,              "ll",              1,  261,  143, 80,    22,     16,  "425"},
    {Bind<&LepLabel::lt>,              "lt",              2,  261,  172, 80,    22,     17,  "350"},
    {Bind<&LepLabel::ll>,              "ll",              2,  261,  198, 80,    22,     18,  "25"},
    {Bind<&LepLabel::lt>,              "lt",              3,  261,  227, 80,    22,     19,  "50"},
    {Bind<&LepLabel::ll>,              "ll",              3,  261,  253, 80,    22,     20,  "25"},
    {Bind<&LepLabel::labelright1>,     "labelright1",     -1, 220,  63,  35,    20,     21,  "Top",             nullptr, 0,    plain, right},
    {Bind<&LepLabel::labelright>,      "labelright",      -1, 220,  88,  35,    20,     22,  "Left",            nullptr, 0,    plain, right},
    {Bind<&LepLabel::labelright11>,    "labelright11",    -1, 223,  118, 35,    20,     23,  "Top",             nullptr, 0,    plain, right},
    {Bind<&LepLabel::labelright2>,     "labelright2",     -1, 223,  143, 35,    20,     24,  "Left",            nullptr, 0,    plain, right},
    {Bind<&LepLabel::labelright111>,   "labelright111",   -1, 224,  173, 35,    20,     25,  "Top",             nullptr, 0,    plain, right},
    {Bind<&LepLabel::labelright21>,    "labelright21",    -1, 224,  198, 35,    20,     26,  "Left",            nullptr, 0,    plain, right},
    {Bind<&LepLabel::labelright1111>,  "labelright1111",  -1, 224,  229, 35,    20,     27,  "Top",             nullptr, 0,    plain, right},
    {Bind<&LepLabel::labelright211>,   "labelright211",   -1, 224,  254, 35,    20,     28,  "Left",            nullptr, 0,    plain, right},
    {Bind<&LepLabel::labelright2111>,  "labelright2111",  -1, 223,  286, 35,    20,     29,  "Left",            nullptr, 0,    plain, right},
    {Bind<&LepLabel::labelleft>,       "labelleft",       -1, 261,  286, 30,    20,     30,  "00"},
    {Bind<&LepLabel::labelright11111>, "labelright11111", -1, 289,  286, 27,    20,     31,  "Top",             nullptr, 0,    plain, right},
    {Bind<&LepLabel::labeltop>,        "labeltop",        -1, 319,  286, 30,    20,     32,  "00"},
    {Bind<&LepLabel::printbutt>,       "printbutt",       -1, 371,  177, 217,   105,    33,  "Print",           nullptr, 0,    plain, unaligned, 0,     blank,       Disabled},
    {Bind<&LepLabel::pagbut>,          "pagbut",          -1, 371,  56,  217,   20,     34,  "Page set up",     nullptr, 0,    plain, unaligned, 0,     blank,       Cancel},
    {Bind<&LepLabel::closebut>,        "closebut",        -1, 371,  111, 217,   20,     35,  "Close",           nullptr, 0,    plain, unaligned, 0,     blank,       Cancel},
    {Bind<&LepLabel::StaticText1>,     "StaticText1",     -1, 22,   7,   561,   41,     36,  kNote,             nullptr, 0,    bold,  centre,    0,     blank,       Multiline},
};
// clang-format on

}  // namespace

LepLabel::LepLabel()
    : LabelSheet(kClassName, kWindow, kControls, {107, 123, 107, 214}, /*addressBold=*/false) {}

// The clicked label's own offset fields turn red with it, and their texts are what prints.
bool LepLabel::label_MouseDown(Integer index, Integer, Integer) {
  labeltop->setText(lt(index)->Text());
  labelleft->setText(ll(index)->Text());
  for (Integer i = 0; i <= 3; ++i) {
    lt(i)->setBackColor(i == index ? kChosen : kNotChosen);
    ll(i)->setBackColor(i == index ? kChosen : kNotChosen);
  }
  choose(index);
  return false;
}

}  // namespace win
