// SPDX-License-Identifier: GPL-3.0-or-later
// The stockfile Stock/Items and the stock menu cm that is built from stockbox.
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/stockwindow.h"

namespace Module1 {

void loadstock() {
  f = GetFolderItem("")->Child("Stock")->Child("Items");
  if (f != nil && f->Exists()) {
    Ref<TextInputStream> t = f->OpenAsTextFile();
    // The count line is trusted: the reader does not look for the end of the file.
    Integer n = CInt(Val(t->ReadLine()));
    for (Integer i = 0; i <= n; i++) {
      stockwindow->stockbox->AddRow("");
      stockwindow->stockbox->setCell(i, 0, t->ReadLine());
      stockwindow->stockbox->setCell(i, 1, t->ReadLine());
    }
    t->Close();
    populatecm();
  }
  // Touching the window built it, and a window built by a touch shows itself.
  stockwindow->Hide();
}

void populatecm() {
  iwindow->cm->DeleteAllRows();
  // The number in front is the only way back from a chosen row to its stock item.
  for (Integer i = 0; i < stockwindow->stockbox->ListCount(); i++) {
    iwindow->cm->AddRow(Str(i) + "-" + stockwindow->stockbox->List(i));
  }
}

}  // namespace Module1

namespace win {

bool iwindow::description_MouseDown(Integer index, Integer x, Integer y) {
  (void)x;
  (void)y;
  if (IsContextualClick()) {
    id = index;
    cm->Open();
  }
  return false;
}

void iwindow::cm_Action(const String& item) {
  // Val stops at the first "-", so a description with a hyphen of its own still finds its row.
  Integer n = CInt(Val(item));
  description(id)->setText(::stockwindow->stockbox->Cell(n, 0));
  price(id)->setText(::stockwindow->stockbox->Cell(n, 1));
}

}  // namespace win
