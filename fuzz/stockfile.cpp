// SPDX-License-Identifier: GPL-3.0-or-later
// A stockfile of any bytes: read by loadstock into the stock window and the stock menu, a menu
// choice filling a line, then written by savestock and read again to the same rows.
#include <string>
#include <vector>

#include "core/App.h"
#include "core/Module1.h"
#include "fuzz/FuzzProgram.h"
#include "fuzz/Targets.h"
#include "invoice/iwindow.h"
#include "secondary/stockwindow.h"

namespace fuzz {

namespace {

// The count line is trusted and makes that many rows, whatever the file holds; past this many the
// input only measures how fast rows are added.
constexpr Integer kMostRows = 1000;

std::vector<std::string> Rows() {
  std::vector<std::string> rows;
  for (Integer i = 0; i < stockwindow->stockbox->ListCount(); ++i) {
    rows.push_back(stockwindow->stockbox->Cell(i, 0).Utf8());
    rows.push_back(stockwindow->stockbox->Cell(i, 1).Utf8());
  }
  return rows;
}

void Load() {
  RunHandler([] { Module1::loadstock(); });
  if (!Screen().exceptions.empty()) Fail("loading a stockfile ended in " + Screen().exceptions.front().className);
}

}  // namespace

int StockFile(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const Integer count = CInt(Val(TextInputStream(bytes).ReadLine()));
  if (count > kMostRows) return -1;

  FreshProgram();
  WriteFile("Stock/Items", data, size);
  Load();
  const Integer expected = count < -1 ? 0 : count + 1;
  if (stockwindow->stockbox->ListCount() != expected) Fail("the count line was not followed");
  if (iwindow->cm->ListCount() != expected) Fail("the stock menu does not have a row per item");
  if (stockwindow->Visible()) Fail("the stock window stays on the screen after a load");
  const std::vector<std::string> rows = Rows();

  // The last row of the menu, chosen for the first line of the form.
  scn::Answer last;
  last.kind = scn::Answer::Menu;
  last.row = -1;
  Screen().Standing(last);
  iwindow->description(0)->UserClick(1, 1, true);
  if (!Screen().exceptions.empty()) Fail("a choice from the stock menu raised " + Screen().exceptions.front().className);
  if (expected > 0 && iwindow->description(0)->Text().Utf8() != rows[rows.size() - 2])
    Fail("the menu's choice did not fill the description of its row");

  RunHandler([] { stockwindow->savestock(); });
  if (!Screen().exceptions.empty()) Fail("saving the stock raised " + Screen().exceptions.front().className);
  ResetProgram();
  Load();
  if (Rows() != rows) Fail("the stock as the program wrote it reads back to other rows");

  EndProgram();
  return 0;
}

}  // namespace fuzz
