// SPDX-License-Identifier: GPL-3.0-or-later
// The floors: for each headless case, only the work that the case cannot do without, written
// plainly with the same libraries. Ours is measured against these in the same run.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "rb/rb.h"

namespace bench {

// What an invoicefile holds: its 48 strings in file order and the discount.
struct InvoiceFields {
  std::vector<std::string> strings;
  double discount = 0;
};

// Saving: the three folders listed as often as the saving lists them (names twice, customers,
// unpaid: each read and sorted), then the invoicefile, its marker and the prefsfile written.
void SaveFloor(const std::string& programFolder, const std::string& invoicename, const InvoiceFields& invoice,
               const std::string& prefsPath, const std::string& prefsBytes);

// Loading: one invoicefile read and parsed, and its amounts formatted as the form shows them
// (the sum of the row totals, the tax at the rate given, the amount due). Gives the amount due.
std::string LoadFloor(const std::string& path, const String& rate);

// One key in a quantity: the Val and Format calls that bring the row total, the sum, the tax and
// the amount due up to date, and nothing else. totals are the ten row totals as they stand.
std::string KeyFloor(const String& quantity, const String& price, const std::vector<String>& totals,
                     const String& rate, const String& postage, const String& discount);

// Printing: the same strings and lines, in the same fonts and at the same places, drawn straight
// with QPdfWriter into a one-page PDF. families maps the program's font names to installed ones.
void PrintFloor(const std::vector<DrawOp>& ops, const std::map<std::string, std::string>& families,
                const std::string& path, double widthPt, double heightPt);

}  // namespace bench
