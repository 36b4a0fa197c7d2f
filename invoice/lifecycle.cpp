// SPDX-License-Identifier: GPL-3.0-or-later
// The form's life: cleared for a new invoice, opened for editing, saved, and replaced by a click in
// the list. The invoice is nothing but what the fields say; whether it holds unsaved edits is
// Module1.texthaschanged.
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/surewindow.h"

namespace win {

// Every assignment runs the field's own handlers, so the totals and the status colour follow
// along; the order is kept because it decides which of them run and what they leave behind.
void iwindow::clearform() {
  customername->setText("customer name");
  customeraddress->setText("customer address");
  datefield->setText("");
  invoicenumberField->setText("");
  comments->setText("comments");
  for (Integer i = 0; i <= 9; i++) {
    number(i)->setText("");
    description(i)->setText("");
    price(i)->setText("");
    total(i)->setText("");
  }
  grandtotal->setText("");
  vatfield->setText("");
  duefield->setText("");
  statusfield->setText("unpaid");
  ordernumberfield->setText("");
  PostageField->setText("");
  discountfield->setText("");
}

// Lifts the lock that the fields put on themselves when the window opened. Nothing locks them
// again.
void iwindow::makeeditable() {
  customername->setReadOnly(false);
  customeraddress->setReadOnly(false);
  comments->setReadOnly(false);
  for (Integer i = 0; i <= 9; i++) {
    number(i)->setReadOnly(false);
    description(i)->setReadOnly(false);
    price(i)->setReadOnly(false);
  }
  statusfield->setReadOnly(false);
  discountfield->setReadOnly(false);
}

bool iwindow::_filenew_Action() {
  ::surewindow->surefield->setText("Clear all and create new invoice?");
  ::surewindow->ShowModal();
  if (!Module1::sure) return false;

  clearform();
  makeeditable();
  datefield->setText(Module1::today);

  // The counter holds the number last handed out. It is a Single: the sum is made in Double and
  // stored back narrowed, so past 16777216 it no longer grows.
  Module1::invoicestartnumber =
      static_cast<Single>(static_cast<Double>(Module1::invoicestartnumber) + 1.0);
  invoicenumberField->setText(Format(static_cast<Double>(Module1::invoicestartnumber), "00000"));

  // The placeholder is selected so that typing replaces it; the focus stays where it is.
  customername->setSelStart(0);
  customername->setSelLength(Len(customername->Text()));
  names->setEnabled(true);
  return false;
}

// The prefsfile is written every time, also when the invoice had nothing new: that is what keeps
// the number of the last New.
bool iwindow::_filesave_Action() {
  saveinvoice();
  Module1::saveprefs();
  return false;
}

// The row goes to Module1.cellid before anything is asked, so after "Cancel" it names the row
// clicked while the form still shows the old invoice.
bool iwindow::customers_CellClick(Integer row, Integer, Integer, Integer) {
  Module1::cellid = row;
  if (Module1::texthaschanged) {
    ::surewindow->surefield->setText("There are unsaved changes!");
    ::surewindow->ShowModal();
    if (Module1::sure) loadinvoice();
  } else {
    loadinvoice();
  }
  return false;
}

}  // namespace win
