// SPDX-License-Identifier: GPL-3.0-or-later
// Windows, controls and menus at the edges the program's own scenarios do not reach: the order a
// window is built in, an exception in a modal window's event, what a live screen is told, the
// keys of a text area, lists' bounds and edits, and the menu bar's fallbacks and Edit items.
#include <QImage>
#include <QTemporaryDir>

#include "GuiApp.h"
#include "ScreenTest.h"
#include "invoice/MenuBar1.h"

namespace {

std::vector<std::string> journal;

class Form : public Window {
 public:
  static constexpr const char* kClassName = "Form";
  Form() : Window(kClassName) {}

  TextField *name = nullptr, *locked = nullptr;
  TextArea* address = nullptr;
  Listbox* list = nullptr;
  Canvas* canvas = nullptr;
  Window* touchedWhileBuilding = nullptr;

 protected:
  void CreateControls() override {
    journal.push_back("CreateControls");
    name = Add<TextField>("name");
    address = Add<TextArea>("address");
    address->TabIndex = 1;
    locked = Add<TextField>("locked");
    locked->setReadOnly(true);
    list = Add<Listbox>("list");
    list->ColumnCount = 2;
    list->EnableDragReorder = true;
    PushButton* ok = Add<PushButton>("ok");
    ok->Default = true;
    ok->OnAction = [] { journal.push_back("Action ok"); };
    canvas = Add<Canvas>("canvas");
    for (const auto& c : Controls()) {
      Control* raw = c.get();
      raw->OnOpen = [raw] { journal.push_back("Open " + raw->Name()); };
    }
    // A handler that reaches its own window while it is being built gets this same object.
    address->OnOpen = [this] { touchedWhileBuilding = &WindowRegistry::Touch(kClassName); };
    OnOpen = [] { journal.push_back("Open Form"); };
    OnActivate = [] { journal.push_back("Activate Form"); };
    AddMenuHandler("filenew", [] {
      journal.push_back("filenew");
      return false;
    });
    OnClose = [] { journal.push_back("Close Form"); };
  }
};

class Dialog : public Window {
 public:
  static constexpr const char* kClassName = "Dialog";
  Dialog() : Window(kClassName) {}
  TextField* entry = nullptr;

 protected:
  void CreateControls() override {
    entry = Add<TextField>("entry");
    OnClose = [] { journal.push_back("Close Dialog"); };
  }
};

Implicit<Form> form;
Implicit<Dialog> dialog;

class Controls : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    journal.clear();
    RegisterWindowClass<Form>();
    RegisterWindowClass<Dialog>();
  }
};

TEST_F(Controls, TheFirstTouchBuildsTheWindowControlsOpenBeforeTheWindowAndItShows) {
  Form& f = *form;
  EXPECT_EQ(journal, (std::vector<std::string>{"CreateControls", "Open name", "Open locked", "Open list",
                                                "Open ok", "Open canvas", "Open Form", "Activate Form"}));
  EXPECT_EQ(f.touchedWhileBuilding, &f);
  EXPECT_EQ(f.Focus(), f.name);
  EXPECT_EQ(&*form, &f);
  EXPECT_EQ(f.FindControl("NAME"), f.name);
  // A reset drops every instance; the next touch builds afresh.
  f.name->setText("kept");
  WindowRegistry::ResetAll();
  EXPECT_EQ(WindowRegistry::Find("Form"), nullptr);
  EXPECT_EQ(form->name->Text().Utf8(), "");
}

// The events a modal window serves are outermost again: an exception stops the event it left and
// is reported there, once, and the caller of ShowModal goes on. (That one stops the whole of nested
// handlers is in hostile_prefs.scn; the other exceptions' end in the desktop's tests.)
TEST_F(Controls, AnExceptionInAModalWindowsEventStopsThatEventOnly) {
  Dialog& d = *dialog;
  d.entry->OnTextChange = [] { throw OutOfBoundsException(); };
  std::vector<std::string> reached;
  WhenModal([&](Window& w) {
    d.entry->setText("boom");
    reached = Errors();
    w.Hide();
  });
  RunHandler([&] {
    d.ShowModal();
    reached.push_back("caller goes on");
  });
  EXPECT_EQ(reached, (std::vector<std::string>{"OutOfBoundsException", "caller goes on"}));
  EXPECT_EQ(Errors(), std::vector<std::string>{"OutOfBoundsException"});
}

// Whatever shows a control is told of each change of a property, once, and of nothing that stays.
TEST_F(Controls, TheScreenIsToldOfEachChangeOfAPropertyOnce) {
  EnsureGuiApp();
  QTemporaryDir dir;
  ASSERT_TRUE(QImage(4, 3, QImage::Format_RGB32).save(dir.filePath("logo.png"), "PNG"));
  Ref<Picture> logo = GetFolderItem(String(dir.filePath("logo.png").toStdString()))->OpenAsPicture();
  Form& f = *form;
  screen.changes.clear();
  for (int twice = 0; twice < 2; ++twice) {
    f.canvas->setBackdrop(logo);
    f.name->setBackColor(0xFFB0B3);
    f.name->setText("\xC3\xA9t\xC3\xA9");
    f.name->setText(String::FromBytes("\x8Et\x8E", TextEncoding::MacRoman));  // the same characters
    f.list->setEnabled(false);
  }
  f.locked->setReadOnly(true);
  f.name->setSelStart(f.name->SelStart());
  f.name->setSelLength(1);
  f.UserKey(Keys::Delete);
  StaticText label(&f, "label", -1);
  label.setText("a");
  label.setText("a");
  f.list->AddRow("x");
  f.list->setCellBold(0, 1, true);
  f.list->setCellBold(0, 1, true);
  f.list->DeleteAllRows();
  using Change = std::pair<const Control*, Prop>;
  EXPECT_EQ(screen.changes, (std::vector<Change>{{f.canvas, Prop::Backdrop}, {f.name, Prop::BackColor},
                                                {f.name, Prop::Text}, {f.list, Prop::Enabled},
                                                {f.name, Prop::Selection}, {f.name, Prop::Text},
                                                {f.name, Prop::Selection}, {&label, Prop::Text},
                                                {f.list, Prop::Rows}, {f.list, Prop::Cell},
                                                {f.list, Prop::Rows}}));
  // A canvas paints its backdrop at the picture's own size, then whatever its handler paints.
  RecordingSurface* surface = new RecordingSurface();
  Graphics g{std::unique_ptr<PageSurface>(surface)};
  f.canvas->Paint(g);
  ASSERT_EQ(surface->Ops().size(), 1u);
  EXPECT_EQ(surface->Ops()[0].kind, DrawOp::PictureOp);
  EXPECT_EQ(surface->Ops()[0].width, 4);
  EXPECT_EQ(std::make_pair(surface->Ops()[0].x, surface->Ops()[0].y), std::make_pair(0, 0));
}

// Return breaks the line in a text area, where Up and Down keep the caret's column from line to
// line, and pushes the Default button elsewhere, unless it is disabled or hidden; a paste's line
// breaks become Chr(13); the text from a live widget raises TextChange only when it differs, and
// its selection is held to the text.
TEST_F(Controls, TheKeysAndPastesOfATextArea) {
  Form& f = *form;
  journal.clear();
  f.SetFocus(f.address);
  f.address->setText("abc" + Chr(13) + "de");
  f.address->setSelStart(2);
  f.UserKey(Keys::Up);
  EXPECT_EQ(f.address->SelStart(), 0);
  f.UserKey(Keys::End);
  f.UserKey(Keys::Return);
  f.address->Paste("fg\r\nh\n");
  f.address->setSelStart(5);  // "d|e"
  f.UserKey(Keys::Down);
  EXPECT_EQ(f.address->SelStart(), 8);  // "f|g"
  f.UserKey(Keys::Up);
  f.UserKey(Keys::Up);
  EXPECT_EQ(f.address->SelStart(), 1);
  f.address->setSelLength(2);
  f.UserKey(Keys::Right);  // to the selection's end, then one on
  f.UserKey(Keys::Right);
  EXPECT_EQ(f.address->SelStart(), 4);
  EXPECT_EQ(f.address->Text().Bytes(), "abc\rde\rfg\rh\r");
  f.address->setSelStart(12);
  f.UserKey(Keys::Return);
  f.UserKey(Keys::Up);  // onto the empty line above
  EXPECT_EQ(f.address->SelStart(), 12);
  int changes = 0;
  f.address->OnTextChange = [&] { ++changes; };
  f.address->SetTextFromUser("a\nb", 3, 0);
  EXPECT_EQ(changes, 1);
  f.address->SetTextFromUser("a\rb", 1, 1);
  EXPECT_EQ(changes, 1);
  f.address->SetSelectionFromUser(1, 50);
  EXPECT_EQ(f.address->SelLength(), 2);
  f.SetFocus(f.name);
  f.UserKey(Keys::Return);
  EXPECT_EQ(journal, (std::vector<std::string>{"Action ok"}));
  f.FindControl("ok")->setEnabled(false);
  f.UserKey(Keys::Return);
  f.FindControl("ok")->setEnabled(true);
  f.FindControl("ok")->setVisible(false);
  f.UserKey(Keys::Return);
  EXPECT_EQ(journal.size(), 1u);
}

// A row the list does not have is out of bounds, however it is asked for; a cell type left unset
// is 0; an edit opened by code has the keyboard and keeps what was typed when another opens or
// another row is chosen; Escape gives an edit up; a click below the last row chooses nothing; a
// dragged row takes its cells, types and the selection along; Up and Down walk the rows, one at
// a time, and stop at the first; in an edit an arrow ends the whole selection, opening it again
// goes on with it, Backspace takes a whole character, and leaving the list keeps it; a list
// without reordering takes no drag. A popup's rows are bounded too.
TEST_F(Controls, ListsKeepTheirBoundsTheirEditsAndTheirRowsThroughADrag) {
  Form& f = *form;
  Listbox* list = f.list;
  for (const char* row : {"a", "b", "c"}) list->AddRow(row);
  EXPECT_EQ(list->CellType(2, 1), 0);
  list->setCellType(1, 1, 3);
  EXPECT_EQ(list->CellType(1, 0), 0);
  EXPECT_THROW(list->List(3), OutOfBoundsException);
  EXPECT_THROW(list->Cell(-1, 0), OutOfBoundsException);
  EXPECT_THROW(list->setCellBold(3, 0, true), OutOfBoundsException);
  EXPECT_THROW(list->CellBold(3, 0), OutOfBoundsException);
  EXPECT_THROW(list->RemoveRow(3), OutOfBoundsException);
  list->BeginEdit(1, 1);
  EXPECT_EQ(f.Focus(), list);
  f.UserKey("3");
  list->BeginEdit(1, 0);
  f.UserKey("B");
  f.UserKey(Keys::Escape);
  EXPECT_EQ(list->Cell(1, 1).Utf8(), "3");
  EXPECT_EQ(list->Cell(1, 0).Utf8(), "b");
  list->BeginEdit(0, 1);
  f.UserKey("4");
  list->setListIndex(2);
  EXPECT_EQ(list->Cell(0, 1).Utf8(), "4");
  int clicks = 0;
  list->OnCellClick = [&](Integer, Integer, Integer, Integer) {
    ++clicks;
    return false;
  };
  list->UserCellClick(3, 0);
  EXPECT_EQ(clicks, 0);
  EXPECT_EQ(list->ListIndex(), -1);
  list->setCellBold(1, 0, true);
  list->setListIndex(1);
  list->UserDrag(1, 2);
  EXPECT_EQ(list->List(2).Utf8(), "b");
  EXPECT_TRUE(list->CellBold(2, 0));
  EXPECT_EQ(list->CellType(2, 1), 3);
  EXPECT_EQ(list->ListIndex(), 2);
  f.UserKey(Keys::Up);
  EXPECT_EQ(list->ListIndex(), 1);
  list->UserDrag(2, 1);  // onto the selected row, which moves down with its selection
  EXPECT_EQ(list->ListIndex(), 2);
  for (const String& key : {Keys::Up, Keys::Up, Keys::Up, Keys::Down}) f.UserKey(key);
  EXPECT_EQ(list->ListIndex(), 1);
  list->RemoveRow(1);  // the selected row: nothing is selected
  EXPECT_EQ(list->ListIndex(), -1);
  list->BeginEdit(0, 0);
  f.UserKey(Keys::Right);  // the arrow ends the whole selection: what is typed goes after it
  f.UserKey("x");
  list->BeginEdit(0, 0);  // the edit already open goes on
  EXPECT_EQ(list->Cell(0, 0).Utf8() + "x", list->EditText().Utf8());
  list->EndEdit(false);
  list->BeginEdit(0, 0);
  for (const String& key : {String("z"), String("\xC3\xA9"), Keys::Backspace}) f.UserKey(key);
  f.SetFocus(f.name);  // leaving the list keeps its open edit
  EXPECT_FALSE(list->Editing());
  EXPECT_EQ(list->Cell(0, 0).Utf8(), "z");
  list->EnableDragReorder = false;
  list->UserDrag(0, 1);
  EXPECT_EQ(list->Cell(0, 0).Utf8(), "z");
  PopupMenu popup(&f, "popup", -1);
  popup.AddRow("only");
  EXPECT_THROW(popup.List(1), OutOfBoundsException);
}

// A shortcut's forms no menu item uses: "+" as the key, the Control and Alt names, none at all.
TEST(Shortcuts, TheOtherFormsOfAShortcutParse) {
  EXPECT_EQ(Shortcut::Parse("Cmd++").key, "+");
  EXPECT_EQ(Shortcut::Parse("ctrl+alt+n"), Shortcut::Parse("Cmd+Option+N"));
  EXPECT_TRUE(Shortcut::Parse("").IsEmpty());
}

// With no menu bar of the application's, the front window's own serves; with neither, nothing.
// Cut and Clear serve the focused text field through the clipboard; a read-only field gives its
// text to Copy and takes nothing. The quit closes the shown windows, front first, and ends the
// program once.
TEST_F(Controls, TheMenuBarsFallbackTheEditItemsAndTheQuit) {
  std::unique_ptr<MenuBar> bar = BuildMenuBar1();
  SetApp(nullptr);
  EXPECT_FALSE(ChooseMenuItem("filenew"));
  Form& f = *form;
  f.Menus = bar.get();
  EXPECT_TRUE(ChooseMenuItem("FILENEW"));
  EXPECT_EQ(journal.back(), "filenew");
  f.name->setText("Brown and Sons");
  f.name->setSelStart(0);
  f.name->setSelLength(6);
  EXPECT_TRUE(PressShortcut("Cmd+X"));
  EXPECT_EQ(Clipboard().Utf8(), "Brown ");
  f.name->setSelLength(3);
  EXPECT_TRUE(ChooseMenuItem("EditClear"));
  EXPECT_EQ(Clipboard().Utf8(), "Brown ");
  EXPECT_EQ(f.name->Text().Utf8(), " Sons");
  f.locked->setText("locked text");
  f.SetFocus(f.locked);
  f.locked->setSelStart(0);
  f.locked->setSelLength(6);
  for (const char* item : {"EditCopy", "EditPaste", "EditCut", "EditClear"}) ChooseMenuItem(item);
  EXPECT_EQ(Clipboard().Utf8(), "locked");
  EXPECT_EQ(f.locked->Text().Utf8(), "locked text");
  dialog.Get();
  journal.clear();
  EXPECT_TRUE(PressShortcut("Cmd+Q"));
  EXPECT_EQ(journal, (std::vector<std::string>{"Close Dialog", "Activate Form", "Close Form"}));
  EXPECT_EQ(screen.quits, (std::vector<Integer>{0}));
  f.Menus = nullptr;
}

}  // namespace
