// SPDX-License-Identifier: GPL-3.0-or-later
// Modal windows block their caller until they are hidden; their keys and close boxes answer as
// the platform's buttons do.
#include <QImage>
#include <QPushButton>

#include "DesktopFixture.h"
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/help.h"
#include "secondary/surewindow.h"

namespace {

using Dialogs = DesktopTest;

// The question is a modal dialog without a title bar: Return in its field reaches Cancel, a click
// on "Do it" answers yes and its buttons take no focus, and its close box hides it with the answer
// left alone. Its caller waits the while. A dark frame outside its designed size shows it over the
// white form, and the form inside keeps that size. A message box holds its caller the same way.
TEST_F(Dialogs, TheQuestionAndAMessageBoxBlockTheirCallerAndAnswerByKeysButtonsAndCloseBox) {
  StartProgram();
  surewindow->surefield->setText("Sure?");
  Module1::sure = true;  // an earlier "Do it"
  WhenShown("surewindow", [this](Window&) { Key(surewindow->surefield, Qt::Key_Return); });
  surewindow->ShowModal();
  EXPECT_FALSE(Module1::sure);
  EXPECT_FALSE(ViewOf(*surewindow)->isVisible());

  bool returned = false;
  Control* focusBefore = nullptr;
  QImage shot;
  QRect form;
  WhenShown("surewindow", [&](Window& w) {
    EXPECT_FALSE(returned);
    EXPECT_TRUE(ViewOf(w)->isVisible() && ViewOf(w)->isModal());
    EXPECT_EQ(WidgetOf(surewindow->acceptbutt)->focusPolicy(), Qt::NoFocus);
    focusBefore = w.Focus();
    shot = ViewOf(w)->grab().toImage();
    QWidget* f = ViewOf(w)->Form();
    form = QRect(f->mapTo(ViewOf(w), QPoint(0, 0)), f->size());
    Click(surewindow->acceptbutt);
  });
  surewindow->ShowModal();
  returned = true;
  EXPECT_TRUE(Module1::sure);
  EXPECT_EQ(surewindow->Focus(), focusBefore);
  EXPECT_EQ(form, QRect(2, 2, surewindow->Width, surewindow->Height));
  ASSERT_EQ(shot.size(), QSize(surewindow->Width + 4, surewindow->Height + 4));
  for (QPoint p : {QPoint(0, 0), QPoint(1, 60), QPoint(shot.width() - 1, shot.height() - 2)})
    EXPECT_LT(qGray(shot.pixel(p)), 0x60) << p.x() << "," << p.y();
  EXPECT_EQ(qGray(shot.pixel(2, 2)), 0xFF);

  WhenShown("surewindow", [this](Window& w) { ViewOf(w)->close(); });
  surewindow->ShowModal();
  EXPECT_FALSE(surewindow->Visible());
  EXPECT_TRUE(Module1::sure);
  EXPECT_TRUE(iwindow->Visible());

  QString shown;
  WhenDialog([&](QWidget* box) {
    shown = box->property("text").toString();
    box->findChild<QPushButton*>()->click();
  });
  MsgBox("Select an item to delete");
  EXPECT_EQ(shown, QStringLiteral("Select an item to delete"));
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

}  // namespace
