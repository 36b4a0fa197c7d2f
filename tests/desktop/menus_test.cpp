// SPDX-License-Identifier: GPL-3.0-or-later
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

// Every menu in order, every item with its text and key, Edit opening with its separator; an item
// is live exactly while the platform says so, and while a modal window is in front only Quit of
// the main window's items stays live.
TEST_F(Menus, TheBarShowsEveryItemWithItsKeyLiveAsThePlatformSays) {
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
    EXPECT_EQ(a->text().contains(QLatin1Char('\t')), !item->KeyboardShortcut.empty()) << item->Name;
    EXPECT_EQ(a->isEnabled(), item->Enabled()) << item->Name;
  }
  QMenu* edit = bar->findChild<QMenu*>(QStringLiteral("EditMenu"));
  ASSERT_NE(edit, nullptr);
  QAction* first = edit->actions().value(0);
  ASSERT_TRUE(first && first->isSeparator());
  EXPECT_GT(edit->actionGeometry(first).height(), 0);

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

// A Control key in a text field goes to the live item that has it, once: Cmd+A is About, not
// Select All; a dimmed item's key does nothing; Copy and Paste carry the focused field's text
// through the system clipboard.
TEST_F(Menus, AControlKeyReachesItsLiveItemOnceEvenFromATextField) {
  StartProgram();
  auto& w = *iwindow;
  int* asked = CountShowings(*surewindow);
  WhenShown("surewindow", [this](Window&) { Key(surewindow->surefield, Qt::Key_Escape); });
  Key(w.customername, Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(*asked, 1);
  EXPECT_FALSE(surewindow->Visible());

  int* abouts = CountShowings(*about);
  const Integer selStart = w.customername->SelStart(), selLength = w.customername->SelLength();
  WhenShown("about", [this](Window& a) {
    Key(a.Focus() ? a.Focus() : a.FindControl("StaticText1"), Qt::Key_Escape);
  });
  Key(w.customername, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(*abouts, 1);
  EXPECT_EQ(w.customername->SelStart(), selStart);
  EXPECT_EQ(w.customername->SelLength(), selLength);

  const std::size_t shownBefore = WindowRegistry::Shown().size();
  const bool dirtyBefore = Module1::texthaschanged;
  Key(w.customername, Qt::Key_B, Qt::ControlModifier);
  Key(w.customername, Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
  Settle();
  EXPECT_EQ(WindowRegistry::Shown().size(), shownBefore);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(Module1::texthaschanged, dirtyBefore);

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
