// The menu bar: every item of MenuBar1, its key, live exactly while a handler can be reached.
#include <QAction>
#include <QClipboard>
#include <QMenu>
#include <QMenuBar>
#include <memory>

#include "DesktopFixture.h"
#include "MenuBarView.h"
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/about.h"
#include "secondary/surewindow.h"

namespace {

class Menus : public DesktopTest {
 protected:
  QAction* Action(const std::string& name) {
    desk::MenuBarView* menus = ViewOf(*iwindow)->Menus();
    return menus ? menus->ActionFor(name) : nullptr;
  }
  // Counts the showings of a window from its Activate event. Touching the window builds it, and
  // a window built by touch shows; it goes back off the screen first.
  int* CountShowings(Window& w) {
    w.Hide();
    auto count = std::make_shared<int>(0);
    counts_.push_back(count);
    auto inner = w.OnActivate;
    w.OnActivate = [count, inner] {
      ++*count;
      if (inner) inner();
    };
    return count.get();
  }
  std::vector<std::shared_ptr<int>> counts_;
};

TEST_F(Menus, TheBarHoldsEveryMenuInOrderWithItsKeys) {
  StartProgram();
  QMenuBar* bar = ViewOf(*iwindow)->Menus()->bar();
  QStringList titles;
  for (QAction* a : bar->actions()) titles << a->text();
  EXPECT_EQ(titles, (QStringList{"&File", "&Edit", "Print", "Help"}));
  for (MenuItem* item : App()->Menus->AllItems()) {
    if (item->IsSeparator() || !item->Items.empty()) continue;
    QAction* a = Action(item->Name);
    ASSERT_NE(a, nullptr) << item->Name;
    EXPECT_TRUE(a->text().startsWith(QString::fromStdString(item->Text.Utf8()))) << item->Name;
    if (!item->KeyboardShortcut.empty()) {
      EXPECT_TRUE(a->text().contains(QLatin1Char('\t'))) << item->Name;
    }
  }
}

TEST_F(Menus, TheEditMenuShowsTheSeparatorItOpensWith) {
  StartProgram();
  QMenu* edit = ViewOf(*iwindow)->Menus()->bar()->findChild<QMenu*>(QStringLiteral("EditMenu"));
  ASSERT_NE(edit, nullptr);
  QAction* first = edit->actions().value(0);
  ASSERT_TRUE(first && first->isSeparator());
  EXPECT_GT(edit->actionGeometry(first).height(), 0);
}

TEST_F(Menus, AShortcutReachesItsHandlerOnceEvenFromATextField) {
  StartProgram();
  int* asked = CountShowings(*surewindow);
  WhenShown("surewindow", [this](Window&) { Key(surewindow->surefield, Qt::Key_Escape); });
  Key(iwindow->customername, Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(*asked, 1);
  EXPECT_TRUE(surewindow->surefield->Text().SameAs("Clear all and create new invoice?"));
  EXPECT_FALSE(surewindow->Visible());

  // "Cmd+A" is About, not Select All, with the focus in a text field.
  int* abouts = CountShowings(*about);
  const Integer selStart = iwindow->customername->SelStart(), selLength = iwindow->customername->SelLength();
  WhenShown("about", [this](Window& w) { Key(w.Focus() ? w.Focus() : w.FindControl("StaticText1"), Qt::Key_Escape); });
  Key(iwindow->customername, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(*abouts, 1);
  EXPECT_EQ(iwindow->customername->SelStart(), selStart);
  EXPECT_EQ(iwindow->customername->SelLength(), selLength);
}

TEST_F(Menus, ADimmedItemShowsDimmedAndItsKeyDoesNothing) {
  StartProgram();
  QAction* backup = Action("filebackup");
  ASSERT_NE(backup, nullptr);
  EXPECT_FALSE(backup->isEnabled());
  EXPECT_TRUE(Action("filenew")->isEnabled());
  // Cmd+, on two items: only the live one in Help answers.
  EXPECT_FALSE(Action("editprefs")->isEnabled());
  EXPECT_TRUE(Action("appleprefs")->isEnabled());

  const std::size_t shownBefore = WindowRegistry::Shown().size();
  const bool dirtyBefore = Module1::texthaschanged;
  Key(iwindow->customername, Qt::Key_B, Qt::ControlModifier);
  Key(iwindow->customername, Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
  Settle();
  EXPECT_EQ(WindowRegistry::Shown().size(), shownBefore);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(Module1::texthaschanged, dirtyBefore);
}

TEST_F(Menus, WhileAModalWindowIsInFrontTheMainWindowsItemsAreDimmed) {
  StartProgram();
  bool newWasLive = true, quitWasLive = false;
  WhenShown("surewindow", [&](Window&) {
    newWasLive = Action("filenew")->isEnabled();
    quitWasLive = Action("FileQuit")->isEnabled();
    Key(surewindow->surefield, Qt::Key_Escape);
  });
  surewindow->ShowModal();
  EXPECT_FALSE(newWasLive);
  EXPECT_TRUE(quitWasLive);
  EXPECT_TRUE(Action("filenew")->isEnabled());
}

TEST_F(Menus, TheEditItemsActOnTheFocusedFieldThroughTheSystemClipboard) {
  StartProgram();
  auto& w = *iwindow;
  w.ordernumberfield->setText("PO-17");
  Click(w.ordernumberfield);
  w.ordernumberfield->setSelStart(0);
  w.ordernumberfield->setSelLength(Len(w.ordernumberfield->Text()));
  Key(w.ordernumberfield, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("PO-17"));
  QGuiApplication::clipboard()->setText(QStringLiteral("PO-99"));
  Key(w.ordernumberfield, Qt::Key_V, Qt::ControlModifier);
  EXPECT_TRUE(w.ordernumberfield->Text().SameAs("PO-99"));
}

}  // namespace
