// SPDX-License-Identifier: GPL-3.0-or-later
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
  // The same marks as comparing every marker with every row, ignoring case. Both lists come from
  // their folders in the folders' order, which is by name ignoring case, so one walk down the two
  // side by side finds every match. Should either list stand in another order, the walk stops and
  // the markers are held in a set under their case-folded key instead; the marks it set are right
  // either way, as each stands on two equal names.
  const Integer rows = customers->ListCount(), markers = unpaid->ListCount();
  bool inOrder = true;
  Integer i = 0;
  std::string marker, row, previous;
  bool haveMarker = false;
  auto nextMarker = [&] {
    if (i >= markers) return haveMarker = false;
    std::string next = unpaid->List(i++).Utf8();
    if (haveMarker && CompareIgnoringCase(marker, next) > 0) inOrder = false;
    marker = std::move(next);
    return haveMarker = true;
  };
  nextMarker();
  for (Integer j = 0; j < rows && inOrder; j++) {
    row = customers->List(j).Utf8();
    if (j > 0 && CompareIgnoringCase(previous, row) > 0) {
      inOrder = false;
      break;
    }
    int order = 1;
    while (haveMarker && inOrder && (order = CompareIgnoringCase(marker, row)) < 0) nextMarker();
    if (inOrder && haveMarker && order == 0) customers->setCellBold(j, 0, true);
    previous = std::move(row);
  }
  // A marker out of order further down could have matched a row passed over.
  while (inOrder && haveMarker) nextMarker();
  if (!inOrder) {
    std::unordered_set<std::string> unpaidnames;
    unpaidnames.reserve(static_cast<std::size_t>(markers));
    for (Integer k = 0; k < markers; k++) unpaidnames.insert(FoldCase(unpaid->List(k).Utf8()));
    for (Integer j = 0; j < rows; j++) {
      if (unpaidnames.count(FoldCase(customers->List(j).Utf8())) > 0) customers->setCellBold(j, 0, true);
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
