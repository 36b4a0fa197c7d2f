// SPDX-License-Identifier: GPL-3.0-or-later
#include "secondary/stockwindow.h"

#include "core/Module1.h"

namespace win {

namespace {

using namespace design;

const WindowDesign kWindow = {
    .Title = "Stock window", .Width = 469, .Height = 430, .Frame = 8, .Placement = 1};

const char* const kHowTo =
    "Click add item and then click on \">\" to enter description. Click in the price column to "
    "enter the price. Press enter when done.";

// clang-format off
const Row kControls[] = {
    // control                                           left  top  width  height  tab  design text    font      size  style  align      limit  back   flags
    {Bind<&stockwindow::stockbox>,    "stockbox",    -1, 20,   59,  427,   320,    0,   nullptr,       "Times",  14},
    {Bind<&stockwindow::addtypebutt>, "addtypebutt", -1, 20,   391, 124,   20,     1,   "Add item",    "System", 14,   plain, unaligned, 0,     blank, Default | Disabled},
    {Bind<&stockwindow::deletebutt>,  "deletebutt",  -1, 329,  391, 118,   20,     2,   "Delete item", "System", 14},
    {Bind<&stockwindow::KeepButt>,    "KeepButt",    -1, 208,  391, 50,    20,     3,   "Done",        "System", 0,    plain, unaligned, 0,     blank, Cancel},
    {Bind<&stockwindow::StaticText1>, "StaticText1", -1, 20,   8,   427,   39,     4,   kHowTo,        "Times",  14,   plain, centre,    0,     blank, Multiline},
};
// clang-format on

}  // namespace

stockwindow::stockwindow() : Window(kClassName, kWindow) {
  OnActivate = [this] { Event_Activate(); };
}

void stockwindow::CreateControls() {
  design::Build(*this, kControls);
  // Description and price; the user drags rows into the order they are saved in.
  stockbox->ColumnCount = 2;
  stockbox->ColumnWidths = "350,60";
  stockbox->HasHeading = true;
  stockbox->Headings = {"Description", "Price"};
  stockbox->EnableDragReorder = true;
  stockbox->GridLinesHorizontal = 2;
  stockbox->GridLinesVertical = 0;

  stockbox->OnGotFocus = [this] { stockbox_GotFocus(); };
  stockbox->OnLostFocus = [this] { stockbox_LostFocus(); };
  addtypebutt->OnMouseDown = [this](Integer x, Integer y) { return addtypebutt_MouseDown(x, y); };
  addtypebutt->OnAction = [this] { addtypebutt_Action(); };
  deletebutt->OnAction = [this] { deletebutt_Action(); };
  KeepButt->OnAction = [this] { KeepButt_Action(); };
}

void stockwindow::makeeditable() {
  for (Integer i = 0; i <= stockbox->ListCount() - 1; ++i) {
    stockbox->setCellType(i, 0, 3);
    stockbox->setCellType(i, 1, 3);
  }
}

// The stockfile: the highest row index, then description and price of each row, one a line. The
// folder is tested as "stock" and written through as "Stock": Child finds the one folder by both.
void stockwindow::savestock() {
  Ref<FolderItem> folder = GetFolderItem("")->Child("stock");
  if (!folder->Exists()) folder->CreateAsFolder();
  Module1::f = GetFolderItem("")->Child("Stock")->Child("Items");
  if (Module1::f == nil) return;
  Ref<TextOutputStream> t = Module1::f->CreateTextFile();
  t->WriteLine(Str(stockbox->ListCount() - 1));
  for (Integer row = 0; row <= stockbox->ListCount() - 1; ++row) {
    t->WriteLine(stockbox->Cell(row, 0));
    t->WriteLine(stockbox->Cell(row, 1));
  }
  t->Close();
}

// The load sets no cell type, so the rows it put in become editable here, at each showing.
void stockwindow::Event_Activate() { makeeditable(); }

// "Add item" works only while the list has the focus.
void stockwindow::stockbox_GotFocus() { addtypebutt->setEnabled(true); }

void stockwindow::stockbox_LostFocus() { addtypebutt->setEnabled(false); }

// Both handlers add a row, so a click adds two and the Return key, which reaches only Action, one.
bool stockwindow::addtypebutt_MouseDown(Integer, Integer) {
  stockbox->AddRow(">");
  makeeditable();
  return false;
}

void stockwindow::addtypebutt_Action() {
  stockbox->AddRow(">");
  makeeditable();
}

void stockwindow::deletebutt_Action() {
  if (stockbox->ListIndex() > -1) {
    stockbox->RemoveRow(stockbox->ListIndex());
    stockbox->Refresh();
  } else {
    MsgBox("Select an item to delete");
  }
}

// An emptied list is not saved: the old stockfile stands and the menu keeps its rows. A cell still
// being edited is ended first, keeping its text, so that what is saved is what the user sees.
void stockwindow::KeepButt_Action() {
  if (stockbox->Editing()) stockbox->EndEdit(true);
  if (stockbox->ListCount() > 0) {
    savestock();
    Module1::populatecm();
  }
  Hide();
}

}  // namespace win
