// The unpaid ledger: one marker file per unpaid invoice in the folder unpaid, and the marks on the
// rows of customers.
#include <string>
#include <unordered_set>

#include "core/Module1.h"
#include "invoice/iwindow.h"

namespace win {

void iwindow::getunpaid() { fill(unpaid, "unpaid"); }

void iwindow::saveunpaid() {
  Module1::f = GetFolderItem("")->Child("unpaid");
  if (!Module1::f->Exists()) Module1::f->CreateAsFolder();
  if (Module1::f->Exists()) {
    Module1::f = Module1::f->Child(invoicename());
    Ref<TextOutputStream> t = Module1::f->CreateTextFile();
    t->WriteLine(customername->Text());
    t->Close();
  }
}

void iwindow::paid() {
  // The marker goes by the row last picked, not by the invoice on the form.
  Module1::f = GetFolderItem("")->Child("unpaid")->Child(customers->List(Module1::cellid));
  if (Module1::f->Exists()) Module1::f->Delete();
}

void iwindow::markthem() {
  // The same marks as comparing every marker with every row, ignoring case, in one pass over each
  // list: the markers are held under their case-folded key.
  std::unordered_set<std::string> unpaidnames;
  unpaidnames.reserve(static_cast<std::size_t>(unpaid->ListCount()));
  for (Integer i = 0; i < unpaid->ListCount(); i++) {
    unpaidnames.insert(FoldCase(unpaid->List(i).Utf8()));
  }
  for (Integer j = 0; j < customers->ListCount(); j++) {
    if (unpaidnames.count(FoldCase(customers->List(j).Utf8())) > 0) {
      customers->setCellBold(j, 0, true);
    }
  }
  customers->InvalidateCell(-1, -1);
}

void iwindow::statusfield_TextChange() {
  if (statusfield->Text() == "unpaid") {
    statusfield->setBackColor(0xFFB0B3);
  } else if (statusfield->Text() == "paid") {
    statusfield->setBackColor(0x4EFF9A);
  }
}

void iwindow::unpaid_Change() {
  customername->setText(unpaid->Text());
  Module1::cellid = unpaid->ListIndex();
  getaddresses();
}

}  // namespace win
