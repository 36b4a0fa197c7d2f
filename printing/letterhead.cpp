// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/letterhead.h"

#include "printing/textstep.h"
#include "secondary/prefswindow.h"

namespace printing {

void letterhead(Graphics& g) {
  using enum Style;
  using enum Align;
  auto& prefs = *::prefswindow;
  g.TextFont = "times";
  // clang-format off
  const TextStep steps[] = {
      // text                        size style   colour  align   x   y
      {prefs.mybusinessname->Text(), 28, italic, kBlack, left,  20, 30},  // 1
      {prefs.myaddress->Text(),      14, italic, kBlack, left,  20, 50},  // 2
      {prefs.myemail->Text(),        14, italic, kBlack, left, 200, 65},  // 3
      {prefs.mywebb->Text(),         14, italic, kBlack, left, 200, 80},  // 4
  };
  // clang-format on
  Draw(g, steps);
  // 5: the logo at its own size; with none loaded the Backdrop is nil and nothing is drawn.
  g.DrawPicture(prefs.canvas1->Backdrop(), 410, 5, -10000, -10000, 0, 0, -10000, -10000);
  g.DrawLine(20, 110, 530, 110);  // 6
}

String currencysign() {
  PopupMenu* currency = ::prefswindow->currency;
  return currency->List(currency->ListIndex());
}

}  // namespace printing
