// SPDX-License-Identifier: GPL-3.0-or-later
// Keys and clicks on the invoice form reach the platform as its own events, and the widgets show
// what the controls hold.
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>

#include "DesktopFixture.h"
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/stockwindow.h"
#include "secondary/surewindow.h"

namespace {

QString Shown(QWidget* w) {
  if (auto* line = qobject_cast<QLineEdit*>(w)) return line->text();
  if (auto* area = qobject_cast<QPlainTextEdit*>(w)) return area->toPlainText();
  return {};
}

class FormKeys : public DesktopTest {
 protected:
  // "New invoice", answered with a click on "Do it": the form is unlocked for typing.
  void NewInvoice() {
    WhenShown("surewindow", [this](Window&) { Click(surewindow->acceptbutt); });
    Key(iwindow->customername, Qt::Key_N, Qt::ControlModifier);
    ASSERT_FALSE(surewindow->Visible());
    ASSERT_FALSE(iwindow->number(0)->ReadOnly());
  }
};

// A key in a locked field marks the form and types nothing. In the rows a click or Tab moves the
// focus, LostFocus before GotFocus; the keys typed drive the totals, and every widget follows.
TEST_F(FormKeys, ClicksTabsAndKeysReachTheFormAndTheWidgetsFollow) {
  StartProgram();
  auto& w = *iwindow;
  ASSERT_TRUE(w.customername->ReadOnly());
  ASSERT_FALSE(Module1::texthaschanged);
  const String name = w.customername->Text();
  Click(w.customername);
  Type(w.customername, "x");
  EXPECT_TRUE(Module1::texthaschanged);
  EXPECT_TRUE(w.customername->Text().SameAs(name));
  EXPECT_EQ(Shown(WidgetOf(w.customername)).toStdString(), name.Utf8());

  NewInvoice();
  std::vector<std::string> events;
  for (TextControl* c :
       {static_cast<TextControl*>(w.number(0)), static_cast<TextControl*>(w.description(0))}) {
    auto got = c->OnGotFocus;
    auto lost = c->OnLostFocus;
    c->OnGotFocus = [c, got, &events] {
      events.push_back("got " + c->FullName());
      if (got) got();
    };
    c->OnLostFocus = [c, lost, &events] {
      events.push_back("lost " + c->FullName());
      if (lost) lost();
    };
  }
  Click(w.number(0));
  Type(w.number(0), "2");
  Key(w.number(0), Qt::Key_Tab);
  EXPECT_EQ(w.Focus(), w.description(0));
  EXPECT_EQ(ViewOf(w)->focusWidget(), WidgetOf(w.description(0)));
  EXPECT_EQ(events,
            (std::vector<std::string>{"got number(0)", "lost number(0)", "got description(0)"}));
  Key(w.description(0), Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(w.Focus(), w.number(0));
  Click(w.price(0));
  EXPECT_EQ(w.Focus(), w.price(0));
  Type(w.price(0), "3.5");
  Key(w.price(0), Qt::Key_Tab);
  EXPECT_EQ(w.Focus(), w.number(1));
  EXPECT_EQ(Shown(WidgetOf(w.number(0))), QStringLiteral("2"));
  EXPECT_EQ(Shown(WidgetOf(w.total(0))), QStringLiteral("07.00"));
  EXPECT_EQ(Shown(WidgetOf(w.duefield)).toStdString(), w.duefield->Text().Utf8());
}

// Alt with a letter is for the menus: it types nothing, raises no KeyDown and marks nothing; with
// a menu's mnemonic it opens that menu. AltGr (Ctrl+Alt on some keyboards) still types. Chr(13)
// is the widget's "\n" both ways, and Qt's editor setting its own text again changes nothing.
TEST_F(FormKeys, AltChordsAndLineBreaksCrossTheWidgetBoundaryAsThePlatformsKeys) {
  StartProgram();
  NewInvoice();
  auto& w = *iwindow;
  Module1::texthaschanged = false;
  int keyDowns = 0;
  auto inner = w.ordernumberfield->OnKeyDown;
  w.ordernumberfield->OnKeyDown = [&](const String& k) {
    ++keyDowns;
    return inner ? inner(k) : false;
  };
  Click(w.ordernumberfield);
  const String before = w.ordernumberfield->Text();
  for (Qt::Key k : {Qt::Key_P, Qt::Key_X, Qt::Key_H}) Key(w.ordernumberfield, k, Qt::AltModifier);
  EXPECT_TRUE(w.ordernumberfield->Text().SameAs(before));
  EXPECT_EQ(keyDowns, 0);
  EXPECT_FALSE(Module1::texthaschanged);
  QTest::sendKeyEvent(QTest::Click, WidgetOf(w.ordernumberfield), Qt::Key_E, QStringLiteral("€"),
                      Qt::ControlModifier | Qt::AltModifier);
  EXPECT_TRUE(w.ordernumberfield->Text().SameAs(before + "€"));
  QApplication::setActiveWindow(ViewOf(w));  // as the window a person types in is
  Key(w.ordernumberfield, Qt::Key_E, Qt::AltModifier);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->objectName(), QStringLiteral("EditMenu"));
  menu->close();

  int changes = 0;
  auto innerChange = w.customeraddress->OnTextChange;
  w.customeraddress->OnTextChange = [&] {
    ++changes;
    if (innerChange) innerChange();
  };
  w.customeraddress->setText("1 High Street" + Chr(13) + "Leeds");
  Settle();
  auto* editor = qobject_cast<QPlainTextEdit*>(WidgetOf(w.customeraddress));
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->toPlainText(), QStringLiteral("1 High Street\nLeeds"));
  editor->setPlainText(editor->toPlainText());
  EXPECT_EQ(changes, 1);
  Click(w.customeraddress);
  w.customeraddress->CaretToEnd();
  Key(w.customeraddress, Qt::Key_Return);
  Type(w.customeraddress, "LS1");
  EXPECT_TRUE(
      w.customeraddress->Text().SameAs("1 High Street" + Chr(13) + "Leeds" + Chr(13) + "LS1"));
  EXPECT_EQ(editor->toPlainText(), QStringLiteral("1 High Street\nLeeds\nLS1"));
}

// The stock menu opens at the mouse on a right click, and on a click with Control held, and the
// row chosen there is the one the platform is told of.
TEST_F(FormKeys, AContextualClickOnADescriptionOffersTheStockAtTheMouse) {
  StartProgram();
  NewInvoice();
  auto& w = *iwindow;
  stockwindow->stockbox->AddRow(std::vector<String>{"Oak shelf", "45.00"});
  stockwindow->stockbox->AddRow(std::vector<String>{"Pine bench", "120.00"});
  Module1::populatecm();
  auto choose = [](int row) {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, row] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (!menu) return;
      timer->stop();
      timer->deleteLater();
      QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                        menu->actionGeometry(menu->actions().at(row)).center());
    });
    timer->start(10);
  };
  QWidget* d0 = WidgetOf(w.description(0));
  choose(1);
  QTest::mouseClick(d0, Qt::RightButton, Qt::NoModifier, d0->rect().center());
  EXPECT_TRUE(w.description(0)->Text().SameAs("Pine bench"));
  QWidget* d1 = WidgetOf(w.description(1));
  choose(0);
  QTest::mouseClick(d1, Qt::LeftButton, Qt::ControlModifier, d1->rect().center());
  EXPECT_TRUE(w.description(1)->Text().SameAs("Oak shelf"));
  EXPECT_EQ(Shown(d1), QStringLiteral("Oak shelf"));
}

}  // namespace
