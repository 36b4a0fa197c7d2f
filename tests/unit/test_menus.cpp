// Menus: shortcuts as the menu table writes them, which items are live, choosing an item, the Edit
// commands on the focused field, and the platform's quit.
#include <gtest/gtest.h>

#include "TestScreen.h"
#include "rb/rb.h"

namespace {

std::vector<std::string> ran;

class MenuMain : public Window {
 public:
  static constexpr const char* kClassName = "MenuMain";
  MenuMain() : Window(kClassName) {}
  TextField* customername = nullptr;
  TextField* locked = nullptr;
  Listbox* customers = nullptr;

 protected:
  void CreateControls() override {
    customername = Add<TextField>("customername");
    locked = Add<TextField>("locked");
    locked->setReadOnly(true);
    customers = Add<Listbox>("customers");
    // Registered by names whose case differs from the items', as the program's are.
    for (const char* name : {"appleprefs", "filenew", "printreceipt", "printlabel", "PrintLabelLep",
                             "PrintPrintsmalllabel", "Pagesetup"}) {
      std::string n = name;
      AddMenuHandler(n, [n] {
        ran.push_back(n);
        return false;
      });
    }
    OnClose = [] { ran.push_back("Close MenuMain"); };
  }
};

class MenuDialog : public Window {
 public:
  static constexpr const char* kClassName = "MenuDialog";
  MenuDialog() : Window(kClassName) {}
  TextField* entry = nullptr;

 protected:
  void CreateControls() override {
    entry = Add<TextField>("entry");
    OnClose = [] { ran.push_back("Close MenuDialog"); };
  }
};

Implicit<MenuMain> mainwin;
Implicit<MenuDialog> dlg;

std::unique_ptr<MenuItem> Item(const std::string& name, const std::string& text, const std::string& key = "",
                               MenuItem::Kind kind = MenuItem::Kind::Normal) {
  return std::make_unique<MenuItem>(name, String(text), key, kind);
}

// A menu bar laid out as the program's, in part.
std::unique_ptr<MenuBar> MakeBar() {
  auto bar = std::make_unique<MenuBar>();
  MenuItem* file = bar->Append(Item("FileMenu", "&File"));
  file->Append(Item("filenew", "New invoice", "Cmd+N"));
  file->Append(Item("UntitledMenu4", "-"));
  file->Append(Item("filebackup", "Backup customer file", "Cmd+B"));
  file->Append(Item("Pagesetup", "Page set up", "Cmd+Shift+p"));
  file->Append(Item("FileQuit", "Quit ledgerly", "Cmd+Q", MenuItem::Kind::Quit));
  MenuItem* edit = bar->Append(Item("EditMenu", "&Edit"));
  edit->Append(Item("UntitledMenu1", "-"));
  edit->Append(Item("EditCut", "Cut", "Cmd+X"));
  edit->Append(Item("EditCopy", "Copy", "Cmd+C"));
  edit->Append(Item("EditPaste", "Paste", "Cmd+V"));
  edit->Append(Item("EditClear", "Clear"));
  edit->Append(Item("editprefs", "Ledgerly preferences", "Cmd+,"));
  MenuItem* print = bar->Append(Item("Printmenu", "Print"));
  print->Append(Item("PrintReceipt", "Print receipt", "Cmd+Shift+R"));
  print->Append(Item("printlabel", "Print label Tiger", "Cmd+L"));
  print->Append(Item("PrintLabelLep", "Print label Leopard", "Cmd+Option+L"));
  print->Append(Item("PrintPrintsmalllabel", "Print small label", "Cmd+Shift+l"));
  MenuItem* help = bar->Append(Item("Helpmenu", "Help"));
  help->Append(Item("appleprefs", "Ledgerly prefs", "Cmd+,", MenuItem::Kind::AppleMenu));
  return bar;
}

class Menus : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    ran.clear();
    RegisterWindowClass<MenuMain>();
    RegisterWindowClass<MenuDialog>();
    bar = MakeBar();
    SetApp(std::make_unique<Application>());
    App()->Menus = bar.get();
  }
  void TearDown() override {
    ScreenTest::TearDown();
    SetApp(nullptr);
  }
  bool Live(const std::string& name) { return bar->Find(name)->Enabled(); }
  std::unique_ptr<MenuBar> bar;
};

TEST(Shortcuts, TheTextOfTheMenuTableParsesToModifiersAndAKey) {
  Shortcut s = Shortcut::Parse("Cmd+Shift+p");
  EXPECT_TRUE(s.cmd);
  EXPECT_TRUE(s.shift);
  EXPECT_FALSE(s.option);
  EXPECT_EQ(s.key, "P");
  EXPECT_EQ(s, Shortcut::Parse("Cmd+Shift+P"));

  // One letter, three distinct shortcuts.
  Shortcut plain = Shortcut::Parse("Cmd+L"), shifted = Shortcut::Parse("Cmd+Shift+l"),
           option = Shortcut::Parse("Cmd+Option+L");
  EXPECT_FALSE(plain == shifted);
  EXPECT_FALSE(plain == option);
  EXPECT_FALSE(shifted == option);
  EXPECT_TRUE(option.option);

  Shortcut comma = Shortcut::Parse("Cmd+,");
  EXPECT_EQ(comma.key, ",");
  EXPECT_TRUE(comma.cmd);
  EXPECT_EQ(Shortcut::Parse("Cmd++").key, "+");

  // Cmd is the Control key here; Alt is Option.
  EXPECT_EQ(Shortcut::Parse("Ctrl+N"), Shortcut::Parse("Cmd+N"));
  EXPECT_EQ(Shortcut::Parse("ctrl+alt+n"), Shortcut::Parse("Cmd+Option+N"));
  EXPECT_TRUE(Shortcut::Parse("").IsEmpty());
}

TEST_F(Menus, AnItemIsLiveExactlyWhileTheFrontWindowHasAHandlerForIt) {
  // No window yet: nothing but the quit.
  EXPECT_FALSE(Live("filenew"));
  EXPECT_TRUE(Live("FileQuit"));

  mainwin.Get();
  EXPECT_TRUE(Live("filenew"));
  EXPECT_TRUE(Live("PrintReceipt"));  // handler "printreceipt"
  EXPECT_FALSE(Live("filebackup"));
  EXPECT_FALSE(Live("editprefs"));
  EXPECT_FALSE(Live("UntitledMenu4"));

  // A dialog in front takes the main window's items away.
  dlg.Get();
  EXPECT_FALSE(Live("filenew"));
  EXPECT_TRUE(Live("FileQuit"));
  dlg->Hide();
  EXPECT_TRUE(Live("filenew"));
}

TEST_F(Menus, ADimmedItemAndItsShortcutDoNothing) {
  MenuMain& w = *mainwin;
  EXPECT_FALSE(ChooseMenuItem("filebackup"));
  EXPECT_FALSE(PressShortcut("Cmd+B"));
  EXPECT_FALSE(ChooseMenuItem("nosuchitem"));
  EXPECT_TRUE(ran.empty());
  EXPECT_TRUE(screen.quits.empty());
  EXPECT_EQ(w.customername->Text().Utf8(), "");
}

TEST_F(Menus, ChoosingALiveItemRunsItsHandlerOnTheFrontWindowOnce) {
  mainwin.Get();
  EXPECT_TRUE(ChooseMenuItem("FILENEW"));
  EXPECT_TRUE(PressShortcut("Cmd+n"));
  // "Cmd+," stands on a dimmed Edit item and on the live Help item: the live one runs, once.
  EXPECT_TRUE(PressShortcut("Cmd+,"));
  EXPECT_TRUE(PressShortcut("Cmd+Shift+P"));
  EXPECT_TRUE(PressShortcut("Cmd+L"));
  EXPECT_TRUE(PressShortcut("Cmd+Shift+L"));
  EXPECT_TRUE(PressShortcut("Cmd+Option+l"));
  EXPECT_FALSE(PressShortcut("Cmd+Option+Shift+L"));
  EXPECT_EQ(ran, (std::vector<std::string>{"filenew", "filenew", "appleprefs", "Pagesetup", "printlabel",
                                          "PrintPrintsmalllabel", "PrintLabelLep"}));
}

TEST_F(Menus, TheEditItemsServeTheFocusedTextField) {
  MenuMain& w = *mainwin;
  w.SetFocus(w.customers);
  EXPECT_FALSE(Live("EditCopy"));
  EXPECT_FALSE(ChooseMenuItem("EditPaste"));

  std::vector<std::string> events;
  w.customername->OnKeyDown = [&](const String&) {
    events.push_back("KeyDown");
    return false;
  };
  w.customername->OnTextChange = [&] { events.push_back("TextChange"); };
  w.customername->setText("Brown and Sons");
  events.clear();
  w.SetFocus(w.customername);
  EXPECT_TRUE(Live("EditCut"));
  EXPECT_TRUE(Live("EditClear"));

  w.customername->setSelStart(0);
  w.customername->setSelLength(6);
  EXPECT_TRUE(PressShortcut("Cmd+X"));
  EXPECT_EQ(Clipboard().Utf8(), "Brown ");
  EXPECT_EQ(w.customername->Text().Utf8(), "and Sons");
  w.customername->CaretToEnd();
  EXPECT_TRUE(ChooseMenuItem("EditPaste"));
  EXPECT_EQ(w.customername->Text().Utf8(), "and SonsBrown ");
  // Paste is no key.
  EXPECT_EQ(events, (std::vector<std::string>{"TextChange", "TextChange"}));

  w.customername->setSelStart(0);
  w.customername->setSelLength(3);
  EXPECT_TRUE(ChooseMenuItem("EditCopy"));
  EXPECT_EQ(Clipboard().Utf8(), "and");
  EXPECT_TRUE(ChooseMenuItem("EditClear"));
  EXPECT_EQ(w.customername->Text().Utf8(), " SonsBrown ");

  // A read-only field gives its text to Copy but takes nothing from Paste, Cut or Clear.
  w.locked->setText("locked text");
  w.SetFocus(w.locked);
  w.locked->setSelStart(0);
  w.locked->setSelLength(6);
  EXPECT_TRUE(ChooseMenuItem("EditCopy"));
  EXPECT_EQ(Clipboard().Utf8(), "locked");
  ChooseMenuItem("EditPaste");
  ChooseMenuItem("EditCut");
  ChooseMenuItem("EditClear");
  EXPECT_EQ(w.locked->Text().Utf8(), "locked text");
}

TEST_F(Menus, QuitClosesTheShownWindowsFrontFirstAndEndsTheProgramOnce) {
  MenuMain& w = *mainwin;
  MenuDialog& d = *dlg;
  EXPECT_TRUE(PressShortcut("Cmd+Q"));
  EXPECT_EQ(ran, (std::vector<std::string>{"Close MenuDialog", "Close MenuMain"}));
  EXPECT_FALSE(w.Visible());
  EXPECT_FALSE(d.Visible());
  EXPECT_EQ(screen.quits, (std::vector<Integer>{0}));
}

TEST_F(Menus, AMainWindowThatQuitsInItsCloseEventIsNotQuitTwice) {
  MenuMain& w = *mainwin;
  dlg->Hide();  // a hidden window is not closed
  w.OnClose = [] {
    ran.push_back("Event_Close");
    Quit(0);
    QuitProgram();  // the quit does not start over
  };
  ChooseMenuItem("FileQuit");
  EXPECT_EQ(ran, (std::vector<std::string>{"Event_Close"}));
  EXPECT_EQ(screen.quits, (std::vector<Integer>{0}));

  // Quitting again later works as before.
  w.Show();
  w.OnClose = nullptr;
  QuitProgram();
  EXPECT_EQ(screen.quits, (std::vector<Integer>{0, 0}));
}

}  // namespace
