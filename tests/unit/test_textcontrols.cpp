// TextField and TextArea: text set by code, typing, the selection, the Edit menu's paste, and the
// order of their events.
#include "ScreenTest.h"

namespace {

class TextForm : public Window {
 public:
  static constexpr const char* kClassName = "TextForm";
  TextForm() : Window(kClassName) {}

  TextField *name = nullptr, *qty = nullptr, *price = nullptr, *total = nullptr;
  TextArea* address = nullptr;
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
    PushButton* ok = Add<PushButton>("ok");
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
};

// Only a change of the characters shown is a change: the same word from a Mac Roman file is none,
// a capital is one.
TEST_F(TextControls, TheTextAlreadyThereRaisesNothing) {
  TextForm& f = *form;
  f.Watch(f.price);
  f.price->setText("\xC3\xA9t\xC3\xA9");
  f.price->setText(String::FromBytes("\x8Et\x8E", TextEncoding::MacRoman));
  f.price->setText("\xC3\xA9T\xC3\xA9");
  EXPECT_EQ(f.log, (std::vector<std::string>{"TextChange price \xC3\xA9t\xC3\xA9", "TextChange price \xC3\xA9T\xC3\xA9"}));
}

TEST_F(TextControls, ReadOnlyAndLimitTextBindTypingButNotCodeOrPaste) {
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

  f.SetFocus(f.qty);
  Type(f, "1234567");
  EXPECT_EQ(f.qty->Text().Utf8(), "12345");
  // A selection may be typed over as long as the result stays within the limit.
  f.qty->setSelStart(0);
  f.qty->setSelLength(2);
  Type(f, "9");
  EXPECT_EQ(f.qty->Text().Utf8(), "9345");
  f.qty->setText("1234567");
  f.qty->CaretToEnd();
  Type(f, "8");
  f.UserKey(Keys::Backspace);
  f.qty->Paste("ab");
  EXPECT_EQ(f.qty->Text().Utf8(), "123456ab");
}

TEST_F(TextControls, KeyDownComesForEveryKeyBeforeTheTextChangesAndTrueSwallowsIt) {
  TextForm& f = *form;
  f.Watch(f.name);
  f.Watch(f.address);
  f.SetFocus(f.name);
  f.log.clear();
  Type(f, "a");
  f.UserKey(Keys::Left);
  f.UserKey(Keys::Tab);
  EXPECT_EQ(f.log, (std::vector<std::string>{"KeyDown name 97", "TextChange name a", "KeyDown name 28",
                                             "KeyDown name 9", "LostFocus name", "GotFocus address"}));
  f.name->OnKeyDown = [](const String& key) { return key.Bytes() == "x" || key.Bytes() == "\t"; };
  f.SetFocus(f.name);
  Type(f, "xb");
  f.UserKey(Keys::Tab);
  EXPECT_EQ(f.name->Text().Utf8(), "ab");
  EXPECT_EQ(f.Focus(), f.name);
}

// The selection counts characters, "£" and "€" one each though they take two and three bytes.
TEST_F(TextControls, TypingReplacesTheSelectionAndTheCaretCountsCharacters) {
  TextForm& f = *form;
  f.price->setText("\xC2\xA3" "12.50");
  f.price->setSelStart(1);
  f.price->setSelLength(100);
  EXPECT_EQ(f.price->SelText().Utf8(), "12.50");
  f.SetFocus(f.price);
  f.UserKey(Keys::Home);
  f.UserKey(Keys::Delete);
  f.UserKey(Keys::End);
  f.UserKey(Keys::Left);
  Type(f, "\xE2\x82\xAC");
  EXPECT_EQ(f.price->Text().Utf8(), "12.5\xE2\x82\xAC" "0");
  EXPECT_EQ(f.price->SelStart(), 5);
}

// Return breaks the line in a text area, where the caret keeps its column from line to line; in a
// field, or in a read-only area, it pushes the Default button.
TEST_F(TextControls, ReturnBreaksTheLineInATextAreaAndPushesTheDefaultButtonElsewhere) {
  TextForm& f = *form;
  f.SetFocus(f.address);
  Type(f, "1 High St");
  f.UserKey(Keys::Return);
  Type(f, "Leeds");
  f.UserKey(Keys::Enter);
  EXPECT_EQ(f.address->Text().Bytes(), "1 High St\rLeeds\r");
  f.address->setText("abc" + Chr(13) + "de" + Chr(13) + "fghij");
  f.address->setSelStart(2);
  f.UserKey(Keys::Up);
  EXPECT_EQ(f.address->SelStart(), 0);  // from the first line, to its start
  f.address->setSelStart(4);  // "|de"
  f.UserKey(Keys::Right);
  f.UserKey(Keys::Up);
  EXPECT_EQ(f.address->SelStart(), 1);
  f.UserKey(Keys::Down);
  f.UserKey(Keys::Down);
  EXPECT_EQ(f.address->SelStart(), 8);  // "f|ghij"
  EXPECT_TRUE(f.log.empty());
  f.SetFocus(f.name);
  f.UserKey(Keys::Return);
  f.address->setReadOnly(true);
  f.SetFocus(f.address);
  f.UserKey(Keys::Return);
  EXPECT_EQ(f.log, (std::vector<std::string>{"Action ok", "Action ok"}));
  EXPECT_EQ(f.name->Text().Utf8(), "");
}

// Paste replaces the selection with no key, line breaks becoming Chr(13); the text a person typed
// into a live widget raises TextChange only when it differs.
TEST_F(TextControls, PasteAndTheLiveWidgetsTextChangeTheTextWithoutAKey) {
  TextForm& f = *form;
  f.Watch(f.address);
  f.address->setText("Mr Brown");
  f.address->setSelStart(0);
  f.address->setSelLength(2);
  f.log.clear();
  f.address->Paste("Mrs\r\nX\n");
  EXPECT_EQ(f.address->Text().Bytes(), "Mrs\rX\r Brown");
  EXPECT_EQ(f.address->SelStart(), 6);
  f.address->SetTextFromUser("a\nb", 3, 0);
  f.address->SetTextFromUser("a\rb", 1, 1);
  EXPECT_EQ(f.log, (std::vector<std::string>{"TextChange address Mrs\rX\r Brown", "TextChange address a\rb"}));
  EXPECT_EQ(f.address->SelLength(), 1);
  f.address->SetSelectionFromUser(2, 50);
  EXPECT_EQ(f.address->SelLength(), 1);
}

}  // namespace
