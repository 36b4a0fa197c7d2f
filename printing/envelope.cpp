// SPDX-License-Identifier: GPL-3.0-or-later
// Addressing a letter straight from the form: an envelope and a small label, in "geneva".
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "printing/textstep.h"
#include "secondary/prefswindow.h"

namespace win {

using namespace printing;

bool iwindow::_PrintA5envelope_Action() {
  using enum Style;
  using enum Align;
  Module1::Labelsetup->Landscape = true;  // and it stays so after the job
  Ref<Graphics> g = OpenPrinterDialog(Module1::Labelsetup, nil);
  if (g == nil) return true;

  g->TextFont = "geneva";
  Draw(*g, {customername->Text(), 18, bold, kBlack, left, 250, 250});  // 1
  // The address is measured wrapped at 500 but drawn unwrapped: the rule lies 10 above the
  // measured foot, the return address 5 below it.
  const Integer h = g->StringHeight(customeraddress->Text(), 500);        // 2
  Draw(*g, {customeraddress->Text(), 18, bold, kBlack, left, 250, 275});  // 3
  const Integer y = 275 + h - 10;
  g->DrawLine(250, y, 350, y);  // 4
  // The sender's address on one line; the business name is not printed.
  const String sender = ReplaceAll(::prefswindow->myaddress->Text(), Chr(13), " ");
  Draw(*g, {"Return Address: " + sender, 10, italic, kBlack, left, 250, y + 15});  // 5
  return true;
}

// The only print that passes no page setup: it goes out on the print dialog's own defaults. The
// portrait set here is only left behind for later jobs.
bool iwindow::_PrintPrintsmalllabel_Action() {
  Module1::Labelsetup->Landscape = false;
  Ref<Graphics> g = OpenPrinterDialog(nil, nil);
  if (g == nil) return true;

  g->TextFont = "geneva";
  g->TextSize = 12;
  g->Bold = true;
  g->DrawString(customername->Text(), 40, 10, 0, false);
  [[maybe_unused]] const Integer h = g->StringHeight(customeraddress->Text(), 500);
  g->DrawString(customeraddress->Text(), 40, 25, 0, false);
  return true;
}

}  // namespace win
