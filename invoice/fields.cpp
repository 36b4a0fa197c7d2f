// SPDX-License-Identifier: GPL-3.0-or-later
// The small handlers that give the form its feel: the lock at opening, the whole text selected on
// entering a field, any key counting as an edit, the currency signs and the list's colours.
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/prefswindow.h"

namespace win {

// The fields of the invoice start read-only; a New or a load opens them (makeeditable).
void iwindow::lock(TextControl* c) { c->setReadOnly(true); }

// Entering the field selects its text, so that the first key replaces a placeholder.
void iwindow::select(TextControl* c) {
  c->setSelStart(0);
  c->setSelLength(Len(c->Text()));
}

// Any key is an edit, whatever it is and whether or not the field takes it: arrows, Tab, and keys
// in a field that is still locked mark the form too.
bool iwindow::mark() {
  Module1::texthaschanged = true;
  return false;
}

bool iwindow::customername_KeyDown(const String&) { return mark(); }

bool iwindow::customeraddress_KeyDown(const String&) { return mark(); }

bool iwindow::comments_KeyDown(const String&) { return mark(); }

bool iwindow::statusfield_KeyDown(const String&) { return mark(); }

// The order number has no key handler: its text changing is the edit.
void iwindow::ordernumberfield_TextChange() { Module1::texthaschanged = true; }

// The sign of the currency chosen in the preferences; currency_Change there rewrites all fifteen
// later on.
void iwindow::currenysign_Open(Integer index) {
  PopupMenu* currency = ::prefswindow->currency;
  currenysign(index)->setText(currency->List(currency->ListIndex()));
}

// Unpaid invoices (bold rows) in red, the others in a very dark green. The list goes on to paint
// the text itself in that colour; the string drawn here stands above the cell and is clipped away.
bool iwindow::customers_CellTextPaint(Graphics& g, Integer row, Integer, Integer, Integer) {
  if (customers->CellBold(row, 0)) {
    g.ForeColor = 0xFF0000;
  } else {
    g.ForeColor = 0x000C00;
  }
  g.DrawString(customers->Cell(row, 0), 0, -3);
  return false;
}

}  // namespace win
