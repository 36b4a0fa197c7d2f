// The confirmation dialog's picture, which no print job shows: the stop icon with "Yikes!" under
// it, drawn in whatever state the canvas hands over, at every repaint.
#include <gtest/gtest.h>

#include "rb/rb.h"
#include "secondary/surewindow.h"

namespace {

const std::vector<DrawOp>& Ops(Graphics& g) {
  return static_cast<RecordingSurface*>(g.Surface())->Ops();
}

TEST(SurewindowCanvas, EachRepaintDrawsTheStopIconAndYikesUnderIt) {
  RegisterWindowClass<win::surewindow>();
  for (int repaint = 0; repaint < 2; ++repaint) {
    Graphics g(std::make_unique<RecordingSurface>());
    g.TextFont = "geneva";
    g.TextSize = 9;
    surewindow->Canvas1->Paint(g);
    const std::vector<DrawOp>& ops = Ops(g);
    ASSERT_EQ(ops.size(), 2u);
    EXPECT_EQ(ops[0].kind, DrawOp::StopIcon);
    EXPECT_EQ(ops[0].x, 0);
    EXPECT_EQ(ops[0].y, 0);
    EXPECT_EQ(ops[1].kind, DrawOp::Text);
    EXPECT_EQ(ops[1].text, "Yikes!");
    EXPECT_EQ(ops[1].x, 0);
    EXPECT_EQ(ops[1].y, 42);
    EXPECT_EQ(ops[1].wrap, 0);
    EXPECT_EQ(ops[1].state.font, "geneva");
    EXPECT_EQ(ops[1].state.size, 9);
  }
  WindowRegistry::ResetAll();
}

}  // namespace
