// The colours of the invoice list: a bold row (an unpaid invoice) paints red, any other a very dark
// green. The handler also draws the row's text above the cell, where clipping takes it away, and
// leaves the painting of the text to the list.
#include <string>

#include "ProgramFixture.h"
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "rb/rb.h"

namespace {

class CustomersListTest : public ProgramTest {
 protected:
  static const std::vector<DrawOp>& Ops(Graphics& g) {
    return static_cast<RecordingSurface*>(g.Surface())->Ops();
  }
};

TEST_F(CustomersListTest, UnpaidRowsPaintRedTheOthersDarkGreenAndTheTextIsDrawnAboveTheCell) {
  Listbox* list = iwindow->customers;
  list->AddRow("00001-16-11-2026-Brown");
  list->AddRow("00002-16-11-2026-Green");
  list->setCellBold(0, 0, true);

  Graphics unpaid(std::make_unique<RecordingSurface>());
  EXPECT_EQ(list->PaintCellText(unpaid, 0, 0), Color(0xFF0000));
  const std::vector<DrawOp>& ops = Ops(unpaid);
  ASSERT_EQ(ops.size(), 1u);
  EXPECT_EQ(ops[0].kind, DrawOp::Text);
  EXPECT_EQ(ops[0].text, "00001-16-11-2026-Brown");
  EXPECT_EQ(ops[0].x, 0);
  EXPECT_EQ(ops[0].y, -3);
  EXPECT_EQ(ops[0].wrap, 0);
  EXPECT_EQ(ops[0].color, Color(0xFF0000));

  Graphics paid(std::make_unique<RecordingSurface>());
  EXPECT_EQ(list->PaintCellText(paid, 1, 0), Color(0x000C00));
}

}  // namespace
