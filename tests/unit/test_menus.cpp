// Menus, on the program's own menu bar: shortcuts as its table writes them, which items are live,
// choosing an item, the Edit commands on the focused field, and the platform's quit.
#include "ScreenTest.h"
#include "invoice/MenuBar1.h"

namespace {

std::vector<std::string> ran;

class MenuMain : public Window {
 public:
  static constexpr const char* kClassName = "MenuMain";
  MenuMain() : Window(kClassName) {}
  TextField *customername = nullptr, *locked = nullptr;
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

 protected:
  void CreateControls() override {
    Add<TextField>("entry");
    OnClose = [] { ran.push_back("Close MenuDialog"); };
  }
};

Implicit<MenuMain> mainwin;
Implicit<MenuDialog> dlg;

class Menus : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    ran.clear();
    RegisterWindowClass<MenuMain>();
    RegisterWindowClass<MenuDialog>();
    bar = BuildMenuBar1();
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

// The letter's case does not matter; one letter can carry three distinct shortcuts; Cmd is the
// Control key here and Alt is Option.
TEST(Shortcuts, TheTextOfTheMenuTableParsesToModifiersAndAKey) {
  const Shortcut s = Shortcut::Parse("Cmd+Shift+p");
  EXPECT_TRUE(s.cmd && s.shift && !s.option);
  EXPECT_EQ(s.key, "P");
  EXPECT_EQ(s, Shortcut::Parse("Cmd+Shift+P"));
  const Shortcut plain = Shortcut::Parse("Cmd+L"), shifted = Shortcut::Parse("Cmd+Shift+l"),
                 option = Shortcut::Parse("Cmd+Option+L");
  EXPECT_FALSE(plain == shifted || plain == option || shifted == option);
  EXPECT_EQ(Shortcut::Parse("Cmd++").key, "+");
  EXPECT_EQ(Shortcut::Parse("ctrl+alt+n"), Shortcut::Parse("Cmd+Option+N"));
  EXPECT_TRUE(Shortcut::Parse("").IsEmpty());
}

// Live exactly while the front window has a handler for the item: with no window only the quit,
// and a dialog in front takes the main window's items away. A dimmed item, its shortcut and an
// unknown item do nothing; a live one runs once, also where a dimmed item shares its key ("Cmd+,").
TEST_F(Menus, AnItemIsLiveExactlyWhileTheFrontWindowHasAHandlerForIt) {
  EXPECT_FALSE(Live("filenew"));
  EXPECT_TRUE(Live("FileQuit"));
  mainwin.Get();
  EXPECT_TRUE(Live("PrintReceipt"));
  EXPECT_FALSE(Live("filebackup"));
  EXPECT_FALSE(Live("UntitledMenu4"));
  EXPECT_FALSE(ChooseMenuItem("filebackup"));
  EXPECT_FALSE(PressShortcut("Cmd+B"));
  EXPECT_FALSE(ChooseMenuItem("nosuchitem"));
  EXPECT_TRUE(ChooseMenuItem("FILENEW"));
  EXPECT_TRUE(PressShortcut("Cmd+n"));
  EXPECT_TRUE(PressShortcut("Cmd+,"));
  EXPECT_TRUE(PressShortcut("Cmd+Shift+P"));
  EXPECT_TRUE(PressShortcut("Cmd+L"));
  EXPECT_TRUE(PressShortcut("Cmd+Shift+L"));
  EXPECT_TRUE(PressShortcut("Cmd+Option+l"));
  EXPECT_FALSE(PressShortcut("Cmd+Option+Shift+L"));
  EXPECT_EQ(ran, (std::vector<std::string>{"filenew", "filenew", "appleprefs", "Pagesetup", "printlabel",
                                          "PrintPrintsmalllabel", "PrintLabelLep"}));
  dlg.Get();
  EXPECT_FALSE(Live("filenew"));
  EXPECT_TRUE(Live("FileQuit"));
  dlg->Hide();
  EXPECT_TRUE(Live("filenew"));
}

// Cut, Copy, Paste and Clear serve the focused text field, through the clipboard and with no key;
// a read-only field gives its text to Copy and takes nothing; a list takes none of them.
TEST_F(Menus, TheEditItemsServeTheFocusedTextField) {
  MenuMain& w = *mainwin;
  w.SetFocus(w.customers);
  EXPECT_FALSE(Live("EditCopy"));
  EXPECT_FALSE(ChooseMenuItem("EditPaste"));
  std::vector<std::string> events;
  w.customername->setText("Brown and Sons");
  w.customername->OnKeyDown = [&](const String&) {
    events.push_back("KeyDown");
    return false;
  };
  w.customername->OnTextChange = [&] { events.push_back("TextChange"); };
  w.SetFocus(w.customername);
  w.customername->setSelStart(0);
  w.customername->setSelLength(6);
  EXPECT_TRUE(PressShortcut("Cmd+X"));
  EXPECT_EQ(Clipboard().Utf8(), "Brown ");
  w.customername->CaretToEnd();
  EXPECT_TRUE(ChooseMenuItem("EditPaste"));
  EXPECT_EQ(w.customername->Text().Utf8(), "and SonsBrown ");
  w.customername->setSelStart(0);
  w.customername->setSelLength(3);
  EXPECT_TRUE(ChooseMenuItem("EditCopy"));
  EXPECT_EQ(Clipboard().Utf8(), "and");
  EXPECT_TRUE(ChooseMenuItem("EditClear"));
  EXPECT_EQ(w.customername->Text().Utf8(), " SonsBrown ");
  EXPECT_EQ(events, (std::vector<std::string>{"TextChange", "TextChange", "TextChange"}));

  w.locked->setText("locked text");
  w.SetFocus(w.locked);
  w.locked->setSelStart(0);
  w.locked->setSelLength(6);
  EXPECT_TRUE(ChooseMenuItem("EditCopy"));
  EXPECT_EQ(Clipboard().Utf8(), "locked");
  for (const char* item : {"EditPaste", "EditCut", "EditClear"}) ChooseMenuItem(item);
  EXPECT_EQ(w.locked->Text().Utf8(), "locked text");
}

// With no menu bar of the application's, the front window's own is the one; with neither, nothing.
TEST_F(Menus, WithNoApplicationMenuBarTheFrontWindowsOwnServes) {
  SetApp(nullptr);
  EXPECT_FALSE(ChooseMenuItem("filenew"));
  mainwin->Menus = bar.get();
  EXPECT_TRUE(ChooseMenuItem("filenew"));
  EXPECT_EQ(ran, (std::vector<std::string>{"filenew"}));
}

// The quit closes the shown windows, front first, and ends the program once, also when the main
// window's Close quits by itself; a hidden window is not closed, and a later quit works again.
TEST_F(Menus, QuitClosesTheShownWindowsFrontFirstAndEndsTheProgramOnce) {
  MenuMain& w = *mainwin;
  dlg.Get();
  EXPECT_TRUE(PressShortcut("Cmd+Q"));
  EXPECT_EQ(ran, (std::vector<std::string>{"Close MenuDialog", "Close MenuMain"}));
  EXPECT_FALSE(w.Visible() || dlg->Visible());
  EXPECT_EQ(screen.quits, (std::vector<Integer>{0}));
  ran.clear();
  w.Show();
  w.OnClose = [] {
    ran.push_back("Event_Close");
    Quit(0);
    QuitProgram();
  };
  ChooseMenuItem("FileQuit");
  EXPECT_EQ(ran, (std::vector<std::string>{"Event_Close"}));
  EXPECT_EQ(screen.quits, (std::vector<Integer>{0, 0}));
}

}  // namespace
