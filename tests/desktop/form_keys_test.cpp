// Keys and clicks on the invoice form reach the platform as its own events, in its order, and the
// widgets show what the controls hold.
#include <QLineEdit>
#include <QPlainTextEdit>
#include <algorithm>

#include "DesktopFixture.h"
#include "QtText.h"
#include "core/Module1.h"
#include "invoice/iwindow.h"
#include "secondary/stockwindow.h"
#include "secondary/surewindow.h"

#include <QMenu>

namespace {

// Wraps a control's TextChange so that each one is written down as it runs.
void Record(TextControl* c, std::vector<std::string>& order) {
  auto inner = c->OnTextChange;
  c->OnTextChange = [c, inner, &order] {
    order.push_back(c->FullName());
    if (inner) inner();
  };
}

// Whether `events` holds `wanted` in this order, from position `from` on; the position after the
// last match, or npos.
std::size_t FindInOrder(const std::vector<std::string>& events, const std::vector<std::string>& wanted,
                        std::size_t from = 0) {
  std::size_t at = from;
  for (const std::string& w : wanted) {
    auto it = std::find(events.begin() + static_cast<std::ptrdiff_t>(std::min(at, events.size())), events.end(), w);
    if (it == events.end()) return std::string::npos;
    at = static_cast<std::size_t>(it - events.begin()) + 1;
  }
  return at;
}

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

TEST_F(FormKeys, QuantityAndPriceTypedReachDueThroughTheCascadeInOrder) {
  StartProgram();
  NewInvoice();
  auto& w = *iwindow;
  std::vector<std::string> order;
  for (TextControl* c : {static_cast<TextControl*>(w.number(0)), static_cast<TextControl*>(w.price(0)),
                         static_cast<TextControl*>(w.total(0)), static_cast<TextControl*>(w.grandtotal),
                         static_cast<TextControl*>(w.duefield)})
    Record(c, order);

  Click(w.number(0));
  EXPECT_EQ(w.Focus(), w.number(0));
  Type(w.number(0), "2");
  Click(w.price(0));
  EXPECT_EQ(w.Focus(), w.price(0));
  Type(w.price(0), "3.5");
  Key(w.price(0), Qt::Key_Tab);
  Settle();

  const std::size_t afterNumber = FindInOrder(order, {"number(0)", "total(0)", "grandtotal", "duefield"});
  ASSERT_NE(afterNumber, std::string::npos) << "number(0) did not drive the cascade";
  EXPECT_NE(FindInOrder(order, {"price(0)", "total(0)", "grandtotal", "duefield"}, afterNumber), std::string::npos)
      << "price(0) did not drive the cascade";

  // What the widgets show is what the controls hold, and the row total is the product typed.
  EXPECT_EQ(Shown(WidgetOf(w.number(0))), "2");
  EXPECT_EQ(Shown(WidgetOf(w.total(0))).toStdString(), Format(2 * 3.5, "00.00").Utf8());
  EXPECT_EQ(Shown(WidgetOf(w.duefield)).toStdString(), w.duefield->Text().Utf8());
  EXPECT_GE(Val(w.duefield->Text()), Val(w.total(0)->Text()));
  // Leaving the price field rewrote it through the mask, and the widget followed.
  EXPECT_EQ(Shown(WidgetOf(w.price(0))).toStdString(), w.price(0)->Text().Utf8());
  EXPECT_EQ(w.Focus(), w.number(1));
}

TEST_F(FormKeys, AKeyInALockedFieldMarksTheFormAndChangesNothing) {
  StartProgram();
  auto& w = *iwindow;
  ASSERT_TRUE(w.customername->ReadOnly());
  ASSERT_FALSE(Module1::texthaschanged);
  const String before = w.customername->Text();
  Click(w.customername);
  Type(w.customername, "x");
  EXPECT_TRUE(Module1::texthaschanged);
  EXPECT_TRUE(w.customername->Text().SameAs(before));
  EXPECT_EQ(Shown(WidgetOf(w.customername)).toStdString(), before.Utf8());
}

// Alt with a letter is for the menus: it types nothing, raises no KeyDown and marks nothing;
// with a menu's mnemonic it opens that menu. AltGr (Ctrl+Alt on some keyboards) still types.
TEST_F(FormKeys, AltChordsTypeNothingAndOpenTheMenuOfTheirMnemonic) {
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
}

TEST_F(FormKeys, LineBreaksCrossTheWidgetBoundaryAsChr13) {
  StartProgram();
  NewInvoice();
  auto& w = *iwindow;
  w.customeraddress->setText("1 High Street" + Chr(13) + "Leeds");
  Settle();
  EXPECT_EQ(Shown(WidgetOf(w.customeraddress)), QStringLiteral("1 High Street\nLeeds"));

  // Return typed at the end of the address is the platform's line break.
  Click(w.customeraddress);
  w.customeraddress->CaretToEnd();
  Key(w.customeraddress, Qt::Key_Return);
  Type(w.customeraddress, "LS1");
  EXPECT_TRUE(w.customeraddress->Text().SameAs("1 High Street" + Chr(13) + "Leeds" + Chr(13) + "LS1"));
  EXPECT_EQ(Shown(WidgetOf(w.customeraddress)), QStringLiteral("1 High Street\nLeeds\nLS1"));
}

TEST_F(FormKeys, TheMultiLineEditorSignallingTheSameTextRaisesNoTextChange) {
  StartProgram();
  auto& w = *iwindow;
  int changes = 0;
  auto inner = w.customeraddress->OnTextChange;
  w.customeraddress->OnTextChange = [&] {
    ++changes;
    if (inner) inner();
  };
  auto* editor = qobject_cast<QPlainTextEdit*>(WidgetOf(w.customeraddress));
  ASSERT_NE(editor, nullptr);
  editor->setPlainText(editor->toPlainText());
  EXPECT_EQ(changes, 0);
  w.customeraddress->setText("somewhere");
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(editor->toPlainText(), QStringLiteral("somewhere"));
}

TEST_F(FormKeys, TabWalksTheRowAndAClickOnAFieldMovesTheFocusLostBeforeGot) {
  StartProgram();
  NewInvoice();
  auto& w = *iwindow;
  std::vector<std::string> events;
  for (TextControl* c : {static_cast<TextControl*>(w.number(0)), static_cast<TextControl*>(w.description(0))}) {
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
  Key(w.number(0), Qt::Key_Tab);
  EXPECT_EQ(w.Focus(), w.description(0));
  EXPECT_EQ(ViewOf(w)->focusWidget(), WidgetOf(w.description(0)));
  const std::vector<std::string> expected = {"got number(0)", "lost number(0)", "got description(0)"};
  EXPECT_EQ(events, expected);
}

// The stock menu opens at the mouse on a right click, and on a click with Control held, and the
// row chosen fills the line.
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
      QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(menu->actions().at(row)).center());
    });
    timer->start(10);
  };
  QWidget* d0 = WidgetOf(w.description(0));
  choose(1);
  QTest::mouseClick(d0, Qt::RightButton, Qt::NoModifier, d0->rect().center());
  EXPECT_TRUE(w.description(0)->Text().SameAs("Pine bench"));
  EXPECT_TRUE(w.price(0)->Text().SameAs(stockwindow->stockbox->Cell(1, 1)));

  QWidget* d1 = WidgetOf(w.description(1));
  choose(0);
  QTest::mouseClick(d1, Qt::LeftButton, Qt::ControlModifier, d1->rect().center());
  EXPECT_TRUE(w.description(1)->Text().SameAs("Oak shelf"));
  EXPECT_EQ(QString(WidgetOf(w.description(1))->property("text").toString()), QStringLiteral("Oak shelf"));
}

}  // namespace
