// TextField and TextArea: text set by code, typing, the selection, the Edit menu's paste, and the
// order of their events.
#include <gtest/gtest.h>

#include "TestScreen.h"
#include "rb/rb.h"

namespace {

class TextForm : public Window {
 public:
  static constexpr const char* kClassName = "TextForm";
  TextForm() : Window(kClassName) {}

  TextField* name = nullptr;
  TextArea* address = nullptr;
  TextField* qty = nullptr;
  TextField* price = nullptr;
  TextField* total = nullptr;
  PushButton* ok = nullptr;
  std::vector<std::string> log;

  // Every event of a field, written down as it comes.
  void Watch(TextControl* c) {
    std::string n = c->Name();
    c->OnKeyDown = [this, n](const String& key) {
      log.push_back("KeyDown " + n + " " + std::to_string(static_cast<int>(key.Bytes()[0])));
      return false;
    };
    c->OnTextChange = [this, n, c] { log.push_back("TextChange " + n + " " + c->Text().Utf8()); };
    c->OnGotFocus = [this, n] { log.push_back("GotFocus " + n); };
    c->OnLostFocus = [this, n] { log.push_back("LostFocus " + n); };
  }

 protected:
  void CreateControls() override {
    name = Add<TextField>("name");
    name->TabIndex = 0;
    address = Add<TextArea>("address");
    address->TabIndex = 1;
    qty = Add<TextField>("qty");
    qty->TabIndex = 2;
    qty->LimitText = 5;
    price = Add<TextField>("price");
    price->TabIndex = 3;
    total = Add<TextField>("total");
    total->TabIndex = 4;
    total->setReadOnly(true);
    ok = Add<PushButton>("ok");
    ok->Default = true;
    ok->OnAction = [this] { log.push_back("Action ok"); };
  }
};

Implicit<TextForm> form;

class TextControls : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    RegisterWindowClass<TextForm>();
  }
  int Count(const std::string& entry) const {
    int n = 0;
    for (const auto& e : form->log)
      if (e == entry) ++n;
    return n;
  }
};

TEST_F(TextControls, CodeThatSetsTextRunsTheWholeChainBeforeItReturns) {
  TextForm& f = *form;
  // qty drives price, which drives total: the cascade of the form's arithmetic in small.
  f.qty->OnTextChange = [&] {
    f.log.push_back("qty");
    f.price->setText(f.qty->Text() + "0");
  };
  f.price->OnTextChange = [&] {
    f.log.push_back("price");
    f.total->setText(f.price->Text() + "0");
  };
  f.total->OnTextChange = [&] { f.log.push_back("total"); };

  f.qty->setText("3");
  f.log.push_back("returned");

  EXPECT_EQ(f.log, (std::vector<std::string>{"qty", "price", "total", "returned"}));
  EXPECT_EQ(f.total->Text().Utf8(), "300");
}

TEST_F(TextControls, TheTextAlreadyThereRaisesNothing) {
  TextForm& f = *form;
  f.Watch(f.price);
  f.price->setText("paid");
  f.log.clear();
  std::size_t notices = screen.changes.size();

  f.price->setText("paid");
  EXPECT_TRUE(f.log.empty());
  EXPECT_EQ(screen.changes.size(), notices);

  // The same characters from a file in Mac Roman are the same text.
  f.price->setText("\xC3\xA9t\xC3\xA9");
  f.log.clear();
  f.price->setText(String::FromBytes("\x8Et\x8E", TextEncoding::MacRoman));
  EXPECT_TRUE(f.log.empty());

  // Strings compare without regard to case, but a field holds what it is given: capitals are a
  // change of text.
  f.price->setText("paid");
  f.log.clear();
  f.price->setText("Paid");
  EXPECT_EQ(f.log, (std::vector<std::string>{"TextChange price Paid"}));
  EXPECT_EQ(screen.ChangesOf(f.price, Prop::Text), 4);
}

TEST_F(TextControls, ReadOnlyStopsTypingButNotCode) {
  TextForm& f = *form;
  f.Watch(f.total);
  f.total->setText("12.50");
  f.SetFocus(f.total);
  f.log.clear();

  Type(f, "9");
  f.UserKey(Keys::Backspace);
  f.total->Paste("77");
  EXPECT_EQ(f.total->Text().Utf8(), "12.50");
  // The keys still reached KeyDown; only the text stayed.
  EXPECT_EQ(f.log, (std::vector<std::string>{"KeyDown total 57", "KeyDown total 8"}));

  f.total->setText("99.00");
  EXPECT_EQ(f.total->Text().Utf8(), "99.00");
  EXPECT_EQ(Count("TextChange total 99.00"), 1);
}

TEST_F(TextControls, LimitTextBindsTypingButNotCodeOrPaste) {
  TextForm& f = *form;
  f.SetFocus(f.qty);
  Type(f, "1234567");
  EXPECT_EQ(f.qty->Text().Utf8(), "12345");

  // A selection may be typed over as long as the result stays within the limit.
  f.qty->setSelStart(0);
  f.qty->setSelLength(2);
  Type(f, "9");
  EXPECT_EQ(f.qty->Text().Utf8(), "9345");

  f.qty->setText("1234567");
  EXPECT_EQ(f.qty->Text().Utf8(), "1234567");
  f.qty->CaretToEnd();
  Type(f, "8");
  EXPECT_EQ(f.qty->Text().Utf8(), "1234567");
  f.UserKey(Keys::Backspace);
  EXPECT_EQ(f.qty->Text().Utf8(), "123456");

  f.qty->Paste("abcdef");
  EXPECT_EQ(f.qty->Text().Utf8(), "123456abcdef");
}

TEST_F(TextControls, KeyDownComesForEveryKeyAndBeforeTheTextChanges) {
  TextForm& f = *form;
  f.Watch(f.name);
  f.Watch(f.address);
  f.SetFocus(f.name);
  f.log.clear();

  Type(f, "a");
  f.UserKey(Keys::Left);
  f.UserKey(Keys::Right);
  f.UserKey(Keys::Tab);

  EXPECT_EQ(f.log, (std::vector<std::string>{"KeyDown name 97", "TextChange name a", "KeyDown name 28",
                                             "KeyDown name 29", "KeyDown name 9", "LostFocus name",
                                             "GotFocus address"}));
  EXPECT_EQ(f.name->Text().Utf8(), "a");
  EXPECT_EQ(f.Focus(), f.address);
}

TEST_F(TextControls, KeyDownAnsweringTrueSwallowsTheKey) {
  TextForm& f = *form;
  f.name->OnKeyDown = [](const String& key) { return key.Bytes() == "x" || key.Bytes() == "\t"; };
  f.SetFocus(f.name);
  Type(f, "axb");
  f.UserKey(Keys::Tab);
  EXPECT_EQ(f.name->Text().Utf8(), "ab");
  EXPECT_EQ(f.Focus(), f.name);
}

TEST_F(TextControls, TypingReplacesTheSelectionAndCountsCharacters) {
  TextForm& f = *form;
  // The select behaviour of the form: entering the field selects all of it.
  f.name->OnGotFocus = [&] {
    f.name->setSelStart(0);
    f.name->setSelLength(Len(f.name->Text()));
  };
  f.name->setText("customer name");
  f.SetFocus(f.total);
  f.UserKey(Keys::Tab);  // round to the first field
  ASSERT_EQ(f.Focus(), f.name);
  EXPECT_EQ(f.name->SelStart(), 0);
  EXPECT_EQ(f.name->SelLength(), 13);
  Type(f, "Brown");
  EXPECT_EQ(f.name->Text().Utf8(), "Brown");
  EXPECT_EQ(f.name->SelStart(), 5);
  EXPECT_EQ(f.name->SelLength(), 0);

  // "£" is one character of two bytes.
  f.price->setText("\xC2\xA3" "12.50");
  f.price->setSelStart(1);
  f.price->setSelLength(2);
  EXPECT_EQ(f.price->SelText().Utf8(), "12");
  f.price->setSelStart(0);
  f.price->setSelLength(100);
  EXPECT_EQ(f.price->SelLength(), 6);
  // Entering a field with no GotFocus of its own leaves the caret at the end, nothing selected.
  f.SetFocus(f.price);
  EXPECT_EQ(f.price->SelStart(), 6);
  EXPECT_EQ(f.price->SelLength(), 0);
  f.UserKey(Keys::Home);
  f.UserKey(Keys::Delete);
  EXPECT_EQ(f.price->Text().Utf8(), "12.50");
  f.UserKey(Keys::End);
  f.UserKey(Keys::Backspace);
  f.UserKey(Keys::Left);
  f.UserKey(Keys::Left);
  Type(f, "\xE2\x82\xAC");
  EXPECT_EQ(f.price->Text().Utf8(), "12\xE2\x82\xAC.5");
  EXPECT_EQ(f.price->SelStart(), 3);
}

TEST_F(TextControls, LostFocusThatRewritesTheTextRunsTextChangeBeforeTheNextGotFocus) {
  TextForm& f = *form;
  f.Watch(f.price);
  f.Watch(f.total);
  f.total->setReadOnly(false);
  f.price->OnLostFocus = [&] {
    f.log.push_back("LostFocus price");
    f.price->setText(Format(Val(f.price->Text()), "00.00"));
    f.log.push_back("LostFocus price done");
  };
  f.SetFocus(f.price);
  Type(f, "3.5");
  f.log.clear();

  f.SetFocus(f.total);
  EXPECT_EQ(f.log, (std::vector<std::string>{"LostFocus price", "TextChange price 03.50",
                                             "LostFocus price done", "GotFocus total"}));
}

TEST_F(TextControls, ReturnBreaksTheLineInATextAreaAndPushesTheDefaultButtonElsewhere) {
  TextForm& f = *form;
  f.SetFocus(f.address);
  Type(f, "1 High St");
  f.UserKey(Keys::Return);
  Type(f, "Leeds");
  f.UserKey(Keys::Enter);
  EXPECT_EQ(f.address->Text().Bytes(), "1 High St\rLeeds\r");
  EXPECT_EQ(Count("Action ok"), 0);

  // The caret keeps its column from line to line.
  f.address->setText("abc" + Chr(13) + "de" + Chr(13) + "fghij");
  f.address->setSelStart(4);  // "|de"
  f.UserKey(Keys::Right);
  f.UserKey(Keys::Up);
  EXPECT_EQ(f.address->SelStart(), 1);
  f.UserKey(Keys::Down);
  f.UserKey(Keys::Down);
  EXPECT_EQ(f.address->SelStart(), 8);  // "f|ghij"

  f.SetFocus(f.name);
  f.UserKey(Keys::Return);
  EXPECT_EQ(Count("Action ok"), 1);
  EXPECT_EQ(f.name->Text().Utf8(), "");

  // A read-only text area has nothing to do with the key: the button takes it.
  f.address->setReadOnly(true);
  f.SetFocus(f.address);
  f.UserKey(Keys::Return);
  EXPECT_EQ(Count("Action ok"), 2);
}

TEST_F(TextControls, TextWithLineBreaksSetByCodeComesBackWithChr13) {
  TextForm& f = *form;
  String text = "Brown Ltd" + Chr(13) + "1 High St";
  f.address->setText(text);
  EXPECT_EQ(f.address->Text().Bytes(), "Brown Ltd\r1 High St");
  EXPECT_EQ(Len(f.address->Text()), 19);
}

TEST_F(TextControls, PasteReplacesTheSelectionWithoutAKey) {
  TextForm& f = *form;
  f.Watch(f.name);
  f.name->setText("Mr Brown");
  f.name->setSelStart(0);
  f.name->setSelLength(2);
  f.log.clear();
  f.name->Paste("Mrs");
  EXPECT_EQ(f.name->Text().Utf8(), "Mrs Brown");
  EXPECT_EQ(f.name->SelStart(), 3);
  EXPECT_EQ(f.log, (std::vector<std::string>{"TextChange name Mrs Brown"}));

  // Pasted lines in a text area break with Chr(13).
  f.address->Paste("a\r\nb\nc");
  EXPECT_EQ(f.address->Text().Bytes(), "a\rb\rc");
}

TEST_F(TextControls, TheLiveWidgetsTextRaisesTextChangeOnlyWhenItDiffers) {
  TextForm& f = *form;
  f.Watch(f.address);
  f.address->SetTextFromUser("a\nb", 3, 0);
  EXPECT_EQ(f.address->Text().Bytes(), "a\rb");
  f.address->SetTextFromUser("a\rb", 1, 1);
  EXPECT_EQ(f.log, (std::vector<std::string>{"TextChange address a\rb"}));
  EXPECT_EQ(f.address->SelStart(), 1);
  EXPECT_EQ(f.address->SelLength(), 1);
  f.address->SetSelectionFromUser(2, 50);
  EXPECT_EQ(f.address->SelStart(), 2);
  EXPECT_EQ(f.address->SelLength(), 1);
}

TEST_F(TextControls, PropertiesTellTheScreenOnlyWhenTheyChange) {
  TextForm& f = *form;
  screen.changes.clear();
  f.price->setBackColor(0xFFB0B3);
  f.price->setBackColor(0xFFB0B3);
  f.price->setReadOnly(true);
  f.price->setReadOnly(true);
  f.price->setEnabled(true);
  f.price->setTextFont("Times");
  f.price->setTextFont("Times");
  EXPECT_EQ(screen.ChangesOf(f.price, Prop::BackColor), 1);
  EXPECT_EQ(screen.ChangesOf(f.price, Prop::ReadOnly), 1);
  EXPECT_EQ(screen.ChangesOf(f.price, Prop::Enabled), 0);
  EXPECT_EQ(screen.ChangesOf(f.price, Prop::Font), 1);
  EXPECT_EQ(f.price->BackColor(), Color(0xFFB0B3));
}

}  // namespace
