// SPDX-License-Identifier: GPL-3.0-or-later
// Printing the invoice on the form: one page, every element at a hand-set place, nothing computed.
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "printing/letterhead.h"
#include "printing/pagesetup.h"
#include "printing/textstep.h"
#include "secondary/credits.h"
#include "secondary/prefswindow.h"

namespace win {

using namespace printing;

namespace {

constexpr Color kGridGrey = 0xD2D2D2;
constexpr Color kTermsGrey = 0xA6A6A6;

// The columns of one lineitem row, left to right, all at the row's y.
enum class Column { number, description, sign, price, total };
struct RowColumn {
  Column what;
  Align align;
  Integer x;
};
// clang-format off
const RowColumn kRowColumns[] = {
    {Column::number,      Align::left,   20},  // 20a
    {Column::description, Align::left,   50},  // 20b, its first 50 characters
    {Column::sign,        Align::left,  405},  // 20c
    {Column::price,       Align::right, 467},  // 20d
    {Column::sign,        Align::left,  473},  // 20e
    {Column::total,       Align::right, 550},  // 20f
};
// clang-format on
constexpr Integer kFirstRowY = 295;
constexpr Integer kRowStep = 20;

// The grey grid under the rows: ten lines across from the lower block's base down, and three
// columns at fixed places.
constexpr Integer kGridLines = 10;
struct Rule {
  Integer x1, y1, x2, y2;
};
const Rule kGridColumns[] = {{47, 280, 47, 480}, {405, 280, 405, 480}, {471, 280, 471, 480}};

}  // namespace

bool iwindow::_fileprint_Action() {
  using enum Style;
  using enum Align;
  checkpaper();
  Ref<Graphics> g = OpenPrinterDialog(Module1::Labelsetup, nil);
  if (g == nil) return false;

  letterhead(*g);  // 1 to 6
  const String sign = currencysign();

  // clang-format off
  const TextStep head[] = {
      // text                            size style  colour  align   x    y
      {"Invoice to:",                      18, plain, kBlack, left,   20, 130},  // 7
      {customername->Text(),               18, bold,  kBlack, left,  100, 130},  // 8
      {"No: " + ordernumberfield->Text(),  16, plain, kBlack, right, 550, 130,   // 9
       0, !ordernumberfield->Text().IsEmpty()},
      {customeraddress->Text(),            16, plain, kBlack, left,  100, 150},  // 10
      {"Invoice date:",                    16, plain, kBlack, left,   20, 255},  // 11
      {datefield->Text(),                  16, bold,  kBlack, left,  130, 255},  // 12
      {"Invoice number:",                  16, plain, kBlack, left,  250, 255},  // 13
      {invoicenumberField->Text(),         16, bold,  kBlack, left,  400, 255},  // 14
      {"number",                           12, plain, kBlack, left,   20, 275},  // 15
      {"description",                      12, plain, kBlack, left,  200, 275},  // 16
      {"cost each",                        12, plain, kBlack, left,  418, 275},  // 17
      {"total",                            12, plain, kBlack, left,  490, 275},  // 18
  };
  // clang-format on
  Draw(*g, head);
  g->DrawLine(20, 280, 530, 280);  // 19

  // 20: all ten rows, used or not.
  Integer y = kFirstRowY;
  for (Integer i = 0; i <= 9; ++i) {
    for (const RowColumn& c : kRowColumns) {
      String text;
      switch (c.what) {
        case Column::number:
          text = number(i)->Text();
          break;
        case Column::description:
          text = ::Left(description(i)->Text(), 50);
          break;
        case Column::sign:
          text = sign;
          break;
        case Column::price:
          text = price(i)->Text();
          break;
        case Column::total:
          text = total(i)->Text();
          break;
      }
      Draw(*g, {text, 16, plain, kBlack, c.align, c.x, y});
    }
    y = y + kRowStep;
  }

  // Everything below hangs from where the rows ended; with ten rows the base is always 300.
  const Integer base = y - 195;
  g->ForeColor = kGridGrey;
  for (Integer k = 0; k < kGridLines; ++k) {
    g->DrawLine(20, base + k * kRowStep, 540, base + k * kRowStep);  // 21
  }
  for (const Rule& r : kGridColumns) g->DrawLine(r.x1, r.y1, r.x2, r.y2);  // 22
  g->ForeColor = kBlack;

  // clang-format off
  const TextStep foot[] = {
      // text                                  size style  colour      align  x    y
      {"total excluding tax/vat: " + sign,       16, plain, kBlack,     right, 465, base + 230},
      {grandtotal->Text(),                       16, plain, kBlack,     right, 550, base + 230},
      {"tax/vat content: " + sign,               16, plain, kBlack,     right, 465, base + 250},
      {vatfield->Text(),                         16, plain, kBlack,     right, 550, base + 250},
      {"Dcount/Deposit: " + sign,                16, plain, kBlack,     right, 465, base + 270},
      {discountfield->Text(),                    16, plain, kBlack,     right, 550, base + 270},
      {"Postage: " + sign,                       16, plain, kBlack,     right, 465, base + 290},
      {PostageField->Text(),                     16, plain, kBlack,     right, 550, base + 290},
      {"Amount due: " + sign,                    16, bold,  kBlack,     right, 465, base + 310},
      {duefield->Text(),                         16, bold,  kBlack,     right, 550, base + 310},
      // "comments" is the placeholder and means none; the comparison ignores case.
      {comments->Text(),                         16, plain, kBlack,     left,   20, base + 350,
       550, comments->Text() != "comments"},
      {::prefswindow->termsfield->Text(),        10, plain, kTermsGrey, left,   20, base + 450,
       520},
      {String("Ledgerly - software by Tobin Arle - ") + credits::kContactAddress,
                                                 10, plain, kBlack,     left,  150, 780},
  };  // 23 to 35
  // clang-format on
  Draw(*g, foot);
  return false;
}

bool iwindow::_Pagesetup_Action() {
  pagesetup();
  return true;
}

}  // namespace win
