// Modal windows block their caller until they are hidden; their keys and close boxes answer as
// the platform's buttons do.
#include <QImage>
#include <QPushButton>

#include "DesktopFixture.h"
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/about.h"
#include "secondary/help.h"
#include "secondary/surewindow.h"

namespace {

class Dialogs : public DesktopTest {};

TEST_F(Dialogs, ReturnOnTheQuestionAnswersCancel) {
  StartProgram();
  Module1::sure = true;  // an earlier "Do it"
  surewindow->surefield->setText("Delete everything?");
  WhenShown("surewindow", [this](Window&) { Key(surewindow->surefield, Qt::Key_Return); });
  surewindow->ShowModal();
  EXPECT_FALSE(Module1::sure);
  EXPECT_FALSE(surewindow->Visible());
  EXPECT_FALSE(ViewOf(*surewindow)->isVisible());
}

TEST_F(Dialogs, AClickOnDoItAnswersYesAndTheButtonsTakeNoFocus) {
  StartProgram();
  Module1::sure = false;
  surewindow->surefield->setText("Sure?");
  Control* focusBefore = nullptr;
  WhenShown("surewindow", [&](Window& w) {
    focusBefore = w.Focus();
    EXPECT_EQ(WidgetOf(surewindow->acceptbutt)->focusPolicy(), Qt::NoFocus);
    Click(surewindow->acceptbutt);
  });
  surewindow->ShowModal();
  EXPECT_TRUE(Module1::sure);
  EXPECT_EQ(surewindow->Focus(), focusBefore);
}

TEST_F(Dialogs, AModalWindowBlocksItsCallerUntilItIsHidden) {
  StartProgram();
  bool returned = false;
  bool sawItBlocking = false;
  WhenShown("about", [&](Window& w) {
    sawItBlocking = !returned && ViewOf(w)->isVisible() && ViewOf(w)->isModal();
    Click(w.FindControl("PushButton1"));
  });
  about->ShowModal();
  returned = true;
  EXPECT_TRUE(sawItBlocking);
  EXPECT_FALSE(about->Visible());
  EXPECT_FALSE(ViewOf(*about)->isVisible());
}

TEST_F(Dialogs, TheCloseBoxOfASecondaryWindowHidesItAndLeavesTheAnswerAlone) {
  StartProgram();
  Module1::sure = true;
  surewindow->surefield->setText("Sure?");
  WhenShown("surewindow", [this](Window& w) { ViewOf(w)->close(); });
  surewindow->ShowModal();
  EXPECT_FALSE(surewindow->Visible());
  EXPECT_TRUE(Module1::sure);
  EXPECT_TRUE(iwindow->Visible());
}

// A Frame 2 window has no title bar: a dark frame outside its designed size shows it over the
// white form, and the form inside keeps that size.
TEST_F(Dialogs, AFrame2WindowHasADarkFrameOutsideItsDesignedSize) {
  StartProgram();
  QImage shot;
  QRect form;
  WhenShown("surewindow", [&](Window& w) {
    shot = ViewOf(w)->grab().toImage();
    QWidget* f = ViewOf(w)->Form();
    form = QRect(f->mapTo(ViewOf(w), QPoint(0, 0)), f->size());
    Click(surewindow->cancelbutt);
  });
  surewindow->ShowModal();
  EXPECT_EQ(form, QRect(2, 2, surewindow->Width, surewindow->Height));
  ASSERT_EQ(shot.size(), QSize(surewindow->Width + 4, surewindow->Height + 4));
  for (QPoint p : {QPoint(0, 0), QPoint(1, 60), QPoint(shot.width() - 1, shot.height() - 2)})
    EXPECT_LT(qGray(shot.pixel(p)), 0x60) << p.x() << "," << p.y();
  EXPECT_EQ(qGray(shot.pixel(2, 2)), 0xFF);
}

// The help text is locked to all four sides and grows with its window; Close is locked to the
// bottom and keeps its distance to it. Nothing else moves.
TEST_F(Dialogs, LockedControlsFollowTheWindowsEdges) {
  StartProgram();
  QRect text, close, textBefore, closeBefore;
  WhenShown("help", [&](Window& w) {
    QWidget* t = WidgetOf(w.FindControl("EditField1"));
    QWidget* c = WidgetOf(w.FindControl("PushButton1"));
    textBefore = t->geometry();
    closeBefore = c->geometry();
    ViewOf(w)->resize(ViewOf(w)->size() + QSize(100, 80));
    Settle();
    text = t->geometry();
    close = c->geometry();
    Key(w.FindControl("EditField1"), Qt::Key_Escape);
  });
  help->ShowModal();
  EXPECT_EQ(text, textBefore.adjusted(0, 0, 100, 80));
  EXPECT_EQ(close, closeBefore.translated(0, 80));

  const QRect fieldBefore = WidgetOf(iwindow->customername)->geometry();
  ViewOf(*iwindow)->resize(ViewOf(*iwindow)->size() + QSize(100, 80));
  Settle();
  EXPECT_EQ(WidgetOf(iwindow->customername)->geometry(), fieldBefore);
}

TEST_F(Dialogs, AMessageBoxHoldsTheHandlerUntilDismissed) {
  StartProgram();
  QString shown;
  WhenDialog([&](QWidget* box) {
    for (QPushButton* b : box->findChildren<QPushButton*>()) {
      shown = box->property("text").toString();
      b->click();
      break;
    }
  });
  MsgBox("Select an item to delete");
  EXPECT_EQ(shown, QStringLiteral("Select an item to delete"));
}

}  // namespace
