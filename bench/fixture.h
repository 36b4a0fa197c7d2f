// SPDX-License-Identifier: GPL-3.0-or-later
// A program folder as a business leaves it after years of use: many invoicefiles, half of them
// unpaid with their markers, a name book, and a prefsfile. The files are written here byte for
// byte from their formats, without the program's own code, so that a fault in the program cannot
// hide in the fixture.
#pragma once

#include <string>

namespace bench {

// The invoicename of the invoice numbered i (from 1): "00042-16-11-2026-Customer3".
std::string InvoiceName(int i, int n);
// The customer of invoice i; there are n / 20 of them (at least one).
std::string CustomerName(int i, int n);
int CustomerCount(int n);

// Makes folder a program folder with n invoicefiles in customers, a marker in unpaid for every
// other one, n / 20 namefiles in names and a prefsfile whose last number is n. A folder that
// already holds the same fixture is kept as it is.
void MakeFixture(const std::string& folder, int n);

// Removes a folder and everything in it.
void RemoveTree(const std::string& folder);

}  // namespace bench
