// SPDX-License-Identifier: GPL-3.0-or-later
// The invoice's figures. Each step reads the text of the field before it and writes the next one
// through the mask "00.00", so a figure is rounded to the cent every time it passes a field.
// Setting a text runs that field's TextChange at once: a quantity or a price drives its row total,
// the row totals drive grandtotal, and grandtotal, the discount and the postage drive Calculate.
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/prefswindow.h"

namespace win {

namespace {
const char* const kAmount = "00.00";
}  // namespace

// Quantity times unit price, into the row's total.
void iwindow::rowtotal(Integer index) {
  Double quantity = Val(number(index)->Text());
  Double each = Val(price(index)->Text());
  total(index)->setText(Format(quantity * each, kAmount));
}

// A quantity set from code is not an edit: the key handler marks the form, not this one.
void iwindow::number_TextChange(Integer index) { rowtotal(index); }

bool iwindow::number_KeyDown(Integer, const String&) {
  Module1::texthaschanged = true;
  return false;
}

// A price counts as an edit however it changes, also when the stock menu or the reformatting on
// leaving the field sets it.
void iwindow::price_TextChange(Integer index) {
  rowtotal(index);
  Module1::texthaschanged = true;
}

void iwindow::price_LostFocus(Integer index) {
  price(index)->setText(Format(Val(price(index)->Text()), kAmount));
}

void iwindow::description_TextChange(Integer) { Module1::texthaschanged = true; }

// All ten rows, whichever one changed, adding the totals as they stand, rounded to the cent.
void iwindow::total_TextChange(Integer) {
  Double sum = 0;
  for (Integer k = 0; k <= 9; k++) sum += Val(total(k)->Text());
  grandtotal->setText(Format(sum, kAmount));
}

void iwindow::grandtotal_TextChange() { Calculate(); }

// The discount and the postage behave alike: leaving the field writes its text back as an
// amount, any key marks the form, and a contextual click sets it to nothing.
void iwindow::reformat(TextField* field) { field->setText(Format(Val(field->Text()), kAmount)); }

bool iwindow::zero(TextField* field) {
  if (IsContextualClick()) {
    field->setText("00.00");
    Module1::texthaschanged = true;
  }
  return false;
}

void iwindow::discountfield_TextChange() { Calculate(); }
void iwindow::discountfield_LostFocus() { reformat(discountfield); }
bool iwindow::discountfield_KeyDown(const String&) { return mark(); }
bool iwindow::discountfield_MouseDown(Integer, Integer) { return zero(discountfield); }

void iwindow::PostageField_TextChange() { Calculate(); }
void iwindow::PostageField_LostFocus() { reformat(PostageField); }
bool iwindow::PostageField_KeyDown(const String&) { return mark(); }
bool iwindow::PostageField_MouseDown(Integer, Integer) { return zero(PostageField); }

// Tax on grandtotal at the rate the preferences hold now, then the amount due. Postage is added
// after tax and untaxed; the discount comes off last and does not reduce the tax.
void iwindow::Calculate() {
  Double rate = Val(::prefswindow->vatamountfield->Text());
  Double net = Val(grandtotal->Text());
  // Divide first, then multiply: the order settles amounts near half a cent (1.00 at 17.5 is
  // 0.17500000000000002 this way and shows 00.18).
  Double hundredth = net / 100.0;
  Double tax = hundredth * rate;
  vatfield->setText(Format(tax, kAmount));

  // The amount due is built from the texts, so it uses the tax as shown.
  Double shownnet = Val(grandtotal->Text());
  Double shownvat = Val(vatfield->Text());
  Double postage = Val(PostageField->Text());
  Double discount = Val(discountfield->Text());
  Double due = ((shownnet + shownvat) + postage) - discount;
  duefield->setText(Format(due, kAmount));
}

}  // namespace win
