// SPDX-License-Identifier: GPL-3.0-or-later
// Printing a receipt or a reminder: one short letter about the invoice on the form, the same
// layout for both, which differ only in the four places of kReceipt and kReminder.
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "printing/letterhead.h"
#include "printing/pagesetup.h"
#include "printing/textstep.h"
#include "secondary/prefswindow.h"

namespace win {

using namespace printing;

namespace {

struct Letter {
  const char* title;
  Color titlecolour;
  const char* amountlabel;
  TextArea* prefswindow::*closingtext;
};

// clang-format off
//                         title          title colour  amount label     closing text
const Letter kReceipt  = {"RECEIPT...",  0x075802,     "Amount paid: ", &prefswindow::receiptfield};
const Letter kReminder = {"REMINDER...", 0xFF0000,     "Amount due: ",  &prefswindow::reminderfield};
// clang-format on

// Both say the amount of duefield, whatever has been paid.
void printletter(iwindow& form, const Letter& letter) {
  using enum Style;
  using enum Align;
  checkpaper();
  Ref<Graphics> g = OpenPrinterDialog(Module1::Labelsetup, nil);
  if (g == nil) return;

  letterhead(*g);                                                               // 1 to 6
  Draw(*g, {letter.title, 30, bolditalic, letter.titlecolour, left, 20, 140});  // 7
  const String sign = currencysign();
  win::prefswindow& prefs = *::prefswindow;

  // clang-format off
  const TextStep steps[] = {
      // text                                    size style  colour  align   x    y    wrap
      {"Invoice to:",                              18, plain, kBlack, left,   20, 170},  // 8
      {form.customername->Text(),                  18, bold,  kBlack, left,  100, 170},  // 9
      {"No: " + form.ordernumberfield->Text(),     16, plain, kBlack, right, 550, 170,   // 10
       0, !form.ordernumberfield->Text().IsEmpty()},
      {form.customeraddress->Text(),               16, plain, kBlack, left,  100, 190},  // 11
      {"Invoice date:",                            16, plain, kBlack, left,   20, 295},  // 12
      {form.datefield->Text(),                     16, bold,  kBlack, left,  130, 295},  // 13
      {"Invoice number:",                          16, plain, kBlack, left,  250, 295},  // 14
      {form.invoicenumberField->Text(),            16, bold,  kBlack, left,  400, 295},  // 15
      {letter.amountlabel + sign,                  20, bold,  kBlack, right, 465, 335},  // 16
      {form.duefield->Text(),                      20, bold,  kBlack, right, 550, 335},  // 17
      {(prefs.*letter.closingtext)->Text(),        18, plain, kBlack, left,   20, 375, 540},
  };  // 8 to 18
  // clang-format on
  Draw(*g, steps);
}

}  // namespace

bool iwindow::_printreceipt_Action() {
  printletter(*this, kReceipt);
  return false;
}

bool iwindow::_printreminder_Action() {
  printletter(*this, kReminder);
  return false;
}

}  // namespace win
