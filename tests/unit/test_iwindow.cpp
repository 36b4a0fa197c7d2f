// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's own services: the marks of the unpaid ledger, where a row of customers is bold
// exactly when some marker in unpaid has its name, ignoring case (what comparing every marker with
// every row would mark); and its control arrays, which know their bounds.
#include <algorithm>
#include <string>
#include <vector>

#include "ProgramFixture.h"
#include "invoice/iwindow.h"
#include "printing/LepLabel.h"

namespace {

class MainWindowTest : public ProgramTest {
 protected:
  // The marks as the ledger defines them: every marker against every row.
  static std::vector<bool> Expected() {
    std::vector<bool> marks(iwindow->customers->ListCount(), false);
    for (Integer i = 0; i < iwindow->unpaid->ListCount(); i++)
      for (Integer j = 0; j < iwindow->customers->ListCount(); j++)
        if (iwindow->customers->List(j) == iwindow->unpaid->List(i)) marks[j] = true;
    return marks;
  }
  static std::vector<bool> Marks() {
    std::vector<bool> marks;
    for (Integer j = 0; j < iwindow->customers->ListCount(); j++)
      marks.push_back(iwindow->customers->CellBold(j, 0));
    return marks;
  }
};

// Names that meet only when case is folded in full, names that sort next to each other, markers
// with no invoice, and two invoices whose names differ only in case.
const std::vector<std::string> kInvoices = {"00001-16-11-2026-Brown",
                                            "00002-16-11-2026-brown",
                                            "00002-16-11-2026-Brown",
                                            "00003-16-11-2026-\xC3\x96"
                                            "d\xC3\xB6n",  // Ödön
                                            "00004-16-11-2026-Stra\xC3\x9F"
                                            "e",  // Straße
                                            "00005-16-11-2026-Green",
                                            "00010-16-11-2026-Zed",
                                            "00011-16-11-2026-zed"};
const std::vector<std::string> kMarkers = {"00001-16-11-2026-BROWN",
                                           "00003-16-11-2026-\xC3\xB6"
                                           "D\xC3\x96"
                                           "N",  // öDÖN
                                           "00004-16-11-2026-STRASSE",
                                           "00006-16-11-2026-Gone",  // its invoice was deleted
                                           "00011-16-11-2026-ZED"};

// The lists as their folders fill them; in another order; and in order but for the markers, the
// one that breaks their order coming last.
TEST_F(MainWindowTest, ListsInAnyOrderAreMarkedAsEveryMarkerAgainstEveryRowWouldMarkThem) {
  for (const std::string& name : kInvoices) Write("customers/" + name, "x");
  for (const std::string& name : kMarkers) Write("unpaid/" + name, "x");
  iwindow->getcustomers();
  iwindow->getunpaid();
  ASSERT_EQ(iwindow->customers->ListCount(), static_cast<Integer>(kInvoices.size()));
  std::vector<std::string> invoices = kInvoices, markers = kMarkers;
  std::reverse(invoices.begin(), invoices.end());
  std::rotate(markers.begin(), markers.begin() + 2, markers.end());
  const std::vector<std::vector<std::string>> others[] = {{invoices, markers}, {{"a", "b", "c"}, {"c", "A"}}};
  const long marked[] = {4, 4, 2};
  for (int k = 0; k < 3; ++k) {
    if (k > 0) {
      iwindow->customers->DeleteAllRows();
      iwindow->unpaid->DeleteAllRows();
      for (const std::string& name : others[k - 1][0]) iwindow->customers->AddRow(String(name));
      for (const std::string& name : others[k - 1][1]) iwindow->unpaid->AddRow(String(name));
    }
    iwindow->markthem();
    const std::vector<bool> marks = Marks();
    EXPECT_EQ(marks, Expected()) << k;
    EXPECT_EQ(std::count(marks.begin(), marks.end(), true), marked[k]) << k;
  }
}

// The program never asks for a row past the tenth or a sign past the fifteenth; a fault that did
// would be reported as the platform reports a row a list does not have.
TEST_F(MainWindowTest, TheControlArraysRaiseOutOfBoundsPastTheirEnds) {
  win::iwindow& w = *iwindow;
  for (Integer i : {-1, 10}) {
    EXPECT_THROW(w.number(i), OutOfBoundsException) << i;
    EXPECT_THROW(w.description(i), OutOfBoundsException) << i;
    EXPECT_THROW(w.price(i), OutOfBoundsException) << i;
    EXPECT_THROW(w.total(i), OutOfBoundsException) << i;
  }
  EXPECT_EQ(w.total(9)->Index(), 9);
  EXPECT_EQ(w.currenysign(14)->Index(), 14);
  EXPECT_THROW(w.currenysign(15), OutOfBoundsException);
  EXPECT_THROW(w.currenysign(-1), OutOfBoundsException);
  win::LepLabel& sheet = *LepLabel;
  for (Integer i : {-1, 4}) {
    EXPECT_THROW(sheet.label(i), OutOfBoundsException) << i;
    EXPECT_THROW(sheet.lt(i), OutOfBoundsException) << i;
    EXPECT_THROW(sheet.ll(i), OutOfBoundsException) << i;
  }
}

}  // namespace
