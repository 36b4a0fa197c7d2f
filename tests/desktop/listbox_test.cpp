// SPDX-License-Identifier: GPL-3.0-or-later
// Lists: many rows at the cost of the rows on screen, the colours of the invoice list, and the
// stock list's selection, editing in place and dragging.
#include <QImage>
#include <QTableView>

#include "DesktopFixture.h"
#include "ListboxView.h"
#include "invoice/iwindow.h"
#include "secondary/stockwindow.h"

namespace {

class Lists : public DesktopTest {
 protected:
  QTableView* Table(Listbox* list) { return qobject_cast<QTableView*>(WidgetOf(list)); }
  // Clicks a cell of a list as a person would.
  void ClickCell(Listbox* list, int row, int column) {
    QTableView* t = Table(list);
    const QRect cell = t->visualRect(t->model()->index(row, column));
    QTest::mouseClick(t->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
  }
};

// Red pixels in the band of one row.
int RedPixels(const QImage& image, const QRect& band) {
  int red = 0;
  for (int y = band.top(); y <= band.bottom() && y < image.height(); ++y)
    for (int x = band.left(); x <= band.right() && x < image.width(); ++x) {
      const QColor c = image.pixelColor(x, y);
      if (c.red() > 150 && c.green() < 90 && c.blue() < 90) ++red;
    }
  return red;
}

// The cells are drawn through the platform's CellTextPaint: an unpaid row red, the others dark.
// Ten thousand rows more cost one reset of the model, and painting costs only the rows on screen.
TEST_F(Lists, RowsShowInTheColourOfTheirHandlerAndTenThousandFillAtTheCostOfTheRowsOnScreen) {
  StartProgram();
  Listbox* list = iwindow->customers;
  auto* view = dynamic_cast<desk::ListboxView*>(screen_.ViewOf(*list));
  ASSERT_NE(view, nullptr);
  QTableView* table = Table(list);
  list->DeleteAllRows();
  list->AddRow("00001-15-03-2024-Smith");
  list->AddRow("00002-15-03-2024-Jones");
  list->setCellBold(0, 0, true);
  Settle();
  const QImage image = table->viewport()->grab().toImage();
  EXPECT_GT(RedPixels(image, table->visualRect(table->model()->index(0, 0))), 10);
  EXPECT_EQ(RedPixels(image, table->visualRect(table->model()->index(1, 0))), 0);

  const int resetsBefore = view->Resets();
  for (int i = 0; i < 10000; ++i) list->AddRow(String("invoice " + std::to_string(i)));
  Settle();
  EXPECT_EQ(view->Resets() - resetsBefore, 1);
  EXPECT_EQ(table->model()->rowCount(), list->ListCount());
  const int onScreen = table->viewport()->height() / view->RowHeight() + 2;
  const int paintedBefore = view->PaintedCells();
  table->viewport()->grab();
  EXPECT_GT(view->PaintedCells() - paintedBefore, 0);
  EXPECT_LE(view->PaintedCells() - paintedBefore, onScreen);
  // The last row is reached as cheaply.
  list->setListIndex(list->ListCount() - 1);
  const int paintedAtEnd = view->PaintedCells();
  table->viewport()->grab();
  EXPECT_LE(view->PaintedCells() - paintedAtEnd, onScreen);
  EXPECT_GE(table->rowAt(table->viewport()->height() - 2), list->ListCount() - onScreen);
}

TEST_F(Lists, StockRowsAreSelectedEditedInPlaceAndDraggedThroughThePlatform) {
  StartProgram();
  WhenShown("stockwindow", [&](Window& w) {
    auto* box = static_cast<Listbox*>(w.FindControl("stockbox"));
    box->AddRow(std::vector<String>{"Widget", "1.50"});
    box->AddRow(std::vector<String>{"Gadget", "2.00"});
    box->AddRow(std::vector<String>{"Sprocket", "3.25"});
    box->setCellType(1, 1, 3);
    Settle();

    ClickCell(box, 1, 0);
    EXPECT_EQ(box->ListIndex(), 1);
    EXPECT_EQ(w.Focus(), box);
    // A click on a cell of the selected row opens the edit; keys go into it; Return ends it.
    ClickCell(box, 1, 1);
    EXPECT_TRUE(box->Editing());
    Type(box, "4.5");
    Key(box, Qt::Key_Return);
    EXPECT_FALSE(box->Editing());
    EXPECT_TRUE(box->Cell(1, 1).SameAs("4.5"));

    // Row 0 dragged onto row 2 goes there.
    QTableView* t = Table(box);
    const QPoint from = t->visualRect(t->model()->index(0, 0)).center();
    const QPoint to = t->visualRect(t->model()->index(2, 0)).center();
    QTest::mousePress(t->viewport(), Qt::LeftButton, Qt::NoModifier, from);
    QMouseEvent move(QEvent::MouseMove, to, t->viewport()->mapToGlobal(to), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(t->viewport(), &move);
    QTest::mouseRelease(t->viewport(), Qt::LeftButton, Qt::NoModifier, to);
    EXPECT_TRUE(box->Cell(2, 0).SameAs("Widget"));
    EXPECT_TRUE(box->Cell(0, 0).SameAs("Gadget"));

    Click(w.FindControl("KeepButt"));
  });
  stockwindow->ShowModal();
}

}  // namespace
