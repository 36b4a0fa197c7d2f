// Windows: building on first touch, showing, hiding and ShowModal, Activate, the focus, buttons and
// the mouse, and what becomes of an exception that no handler catches.
#include <QImage>
#include <QTemporaryDir>

#include "GuiApp.h"
#include "ScreenTest.h"

namespace {

std::vector<std::string> journal;

// A form as the program's windows are: fields, a list, buttons, labels, in design order.
class MainForm : public Window {
 public:
  static constexpr const char* kClassName = "MainForm";
  MainForm() : Window(kClassName) {}

  TextField *second = nullptr, *first = nullptr, *disabled = nullptr, *alsoSecond = nullptr;
  Listbox* list = nullptr;
  PushButton *ok = nullptr, *cancel = nullptr;
  CheckBox* check = nullptr;
  StaticText* link = nullptr;
  Canvas* canvas = nullptr;
  Window* touchedWhileBuilding = nullptr;

 protected:
  void CreateControls() override {
    journal.push_back("CreateControls");
    Add<StaticText>("label");
    second = Add<TextField>("second");
    second->TabIndex = 2;
    first = Add<TextField>("first");
    first->TabIndex = 1;
    disabled = Add<TextField>("disabled");
    disabled->setEnabled(false);
    alsoSecond = Add<TextField>("alsoSecond");
    alsoSecond->TabIndex = 2;
    list = Add<Listbox>("list");
    list->TabIndex = 5;
    ok = Add<PushButton>("ok");
    ok->Default = true;
    cancel = Add<PushButton>("cancel");
    cancel->Cancel = true;
    check = Add<CheckBox>("check");
    link = Add<StaticText>("link");
    canvas = Add<Canvas>("canvas");
    for (const auto& c : Controls()) {
      Control* raw = c.get();
      raw->OnOpen = [raw] { journal.push_back("Open " + raw->Name()); };
    }
    // A handler that reaches its own window while it is being built gets this same object.
    first->OnOpen = [this] {
      journal.push_back("Open first");
      touchedWhileBuilding = &WindowRegistry::Touch(kClassName);
    };
    OnOpen = [] { journal.push_back("Open MainForm"); };
    OnActivate = [] { journal.push_back("Activate MainForm"); };
    OnClose = [] { journal.push_back("Close MainForm"); };
    for (TextField* t : {first, second, alsoSecond}) {
      t->OnGotFocus = [t] { journal.push_back("GotFocus " + t->Name()); };
      t->OnLostFocus = [t] { journal.push_back("LostFocus " + t->Name()); };
    }
  }
};

// A dialog that is hidden at design, as a secondary window is after the start.
class Dialog : public Window {
 public:
  static constexpr const char* kClassName = "Dialog";
  Dialog() : Window(kClassName) {}
  TextField* entry = nullptr;

 protected:
  void CreateControls() override {
    entry = Add<TextField>("entry");
    PushButton* closebutt = Add<PushButton>("closebutt");
    closebutt->Default = true;
    closebutt->OnAction = [this] {
      journal.push_back("closebutt");
      Hide();
    };
    OnActivate = [] { journal.push_back("Activate Dialog"); };
  }
};

Implicit<MainForm> mainform;
Implicit<Dialog> dialog;

class Windows : public ScreenTest {
 protected:
  void SetUp() override {
    ScreenTest::SetUp();
    journal.clear();
    RegisterWindowClass<MainForm>();
    RegisterWindowClass<Dialog>();
  }
};

TEST_F(Windows, TheFirstTouchBuildsTheWindowControlsOpenBeforeTheWindowAndItShows) {
  EXPECT_FALSE(Implicit<MainForm>::Exists());
  MainForm& f = *mainform;
  EXPECT_EQ(journal, (std::vector<std::string>{
                         "CreateControls", "Open label", "Open second", "Open first", "Open disabled",
                         "Open alsoSecond", "Open list", "Open ok", "Open cancel", "Open check",
                         "Open link", "Open canvas", "Open MainForm", "GotFocus first", "Activate MainForm"}));
  EXPECT_EQ(f.touchedWhileBuilding, &f);
  EXPECT_EQ(WindowRegistry::Front(), &f);
  journal.clear();
  EXPECT_EQ(&*mainform, &f);
  EXPECT_TRUE(journal.empty());
  EXPECT_EQ(f.FindControl("FIRST"), f.first);
  EXPECT_EQ(f.FindControl("first", 0), nullptr);

  // A reset drops every instance; the next touch builds afresh, with a factory registered again.
  f.first->setText("kept");
  int made = 0;
  WindowRegistry::Register("MainForm", [&] {
    ++made;
    return std::make_unique<MainForm>();
  });
  WindowRegistry::ResetAll();
  EXPECT_EQ(WindowRegistry::Find("MainForm"), nullptr);
  EXPECT_EQ(mainform->first->Text().Utf8(), "");
  EXPECT_EQ(made, 1);
}

TEST_F(Windows, AHiddenWindowKeepsItsContentsAndEachShowModalActivatesTheSameInstance) {
  Dialog& d = *dialog;
  d.entry->setText("17.5");
  d.Hide();
  journal.clear();
  bool modalWhileShown = false;
  WhenModal([&](Window& w) {
    EXPECT_EQ(&w, &d);
    modalWhileShown = d.IsModalRunning() && d.Visible();
    EXPECT_EQ(d.entry->Text().Utf8(), "17.5");
    w.UserKey(Keys::Return);
  });
  d.ShowModal();
  EXPECT_TRUE(modalWhileShown);
  EXPECT_FALSE(d.IsModalRunning());
  EXPECT_FALSE(d.Visible());
  EXPECT_EQ(journal, (std::vector<std::string>{"Activate Dialog", "closebutt"}));

  // Also a window already in front is activated by ShowModal. The quiet screen, with no one to
  // answer, returns at once and leaves it showing.
  SetScreen(nullptr);
  journal.clear();
  d.ShowModal();
  d.ShowModal();
  EXPECT_EQ(journal, (std::vector<std::string>{"Activate Dialog", "Activate Dialog"}));
  SetScreen(&screen);
}

TEST_F(Windows, ActivateComesEachTimeAWindowComesToTheFrontAndCloseHides) {
  MainForm& f = *mainform;
  Dialog& d = *dialog;
  journal.clear();
  f.Show();  // back to the front
  f.Show();  // already there
  d.Show();
  d.Hide();  // the form is in front again
  EXPECT_EQ(journal, (std::vector<std::string>{"Activate MainForm", "Activate Dialog", "Activate MainForm"}));
  EXPECT_EQ(WindowRegistry::Shown(), (std::vector<Window*>{&f}));
  journal.clear();
  f.Close();
  EXPECT_EQ(journal, (std::vector<std::string>{"Close MainForm"}));
  EXPECT_FALSE(f.Visible());
}

// Equal TabIndex goes by creation; a disabled field and a label are passed over; the first showing
// set the focus and later showings leave it where it is.
TEST_F(Windows, TabWalksTheTabIndexOrderAndWraps) {
  MainForm& f = *mainform;
  journal.clear();
  std::vector<std::string> visited;
  for (int i = 0; i < 5; ++i) {
    f.UserKey(Keys::Tab);
    visited.push_back(f.Focus()->Name());
  }
  EXPECT_EQ(visited, (std::vector<std::string>{"second", "alsoSecond", "list", "first", "second"}));
  EXPECT_EQ(journal[0], "LostFocus first");
  EXPECT_EQ(journal[1], "GotFocus second");
  f.FocusNext(true);
  EXPECT_EQ(f.Focus(), f.first);
  journal.clear();
  f.SetFocus(f.first);
  EXPECT_TRUE(journal.empty());
  f.SetFocus(f.second);
  f.Hide();
  f.Show();
  EXPECT_EQ(f.Focus(), f.second);
}

TEST_F(Windows, AButtonRunsMouseDownThenActionOnAClickAndOnlyActionByItsKey) {
  MainForm& f = *mainform;
  std::vector<std::string> events;
  f.ok->OnMouseDown = [&](Integer, Integer) {
    events.push_back("MouseDown");
    return false;
  };
  f.ok->OnAction = [&] { events.push_back("Action"); };
  f.cancel->OnAction = [&] { events.push_back("Cancel"); };
  f.SetFocus(f.second);
  journal.clear();
  f.ok->UserClick();
  f.UserKey(Keys::Return);
  f.UserKey(Keys::Escape);
  EXPECT_EQ(events, (std::vector<std::string>{"MouseDown", "Action", "Action", "Cancel"}));
  // The click left the focus with the field.
  EXPECT_EQ(f.Focus(), f.second);
  EXPECT_TRUE(journal.empty());

  events.clear();
  f.ok->setEnabled(false);
  f.ok->UserClick();
  f.UserKey(Keys::Return);
  EXPECT_TRUE(events.empty());
  // MouseDown answering True keeps the release: MouseUp, and no Action.
  f.ok->setEnabled(true);
  f.ok->OnMouseDown = [&](Integer, Integer) { return true; };
  f.ok->OnMouseUp = [&](Integer, Integer) { events.push_back("MouseUp"); };
  f.ok->UserClick();
  EXPECT_EQ(events, (std::vector<std::string>{"MouseUp"}));
}

TEST_F(Windows, AClickOnAFieldTakesTheFocusAndTellsWhetherItWasContextual) {
  MainForm& f = *mainform;
  std::vector<std::string> events;
  f.second->OnMouseDown = [&](Integer x, Integer y) {
    events.push_back(std::string(IsContextualClick() ? "contextual " : "primary ") + std::to_string(x) + "," +
                     std::to_string(y));
    return false;
  };
  journal.clear();
  f.second->UserClick(4, 7, true);
  EXPECT_FALSE(IsContextualClick());
  f.second->UserClick();
  EXPECT_EQ(events, (std::vector<std::string>{"contextual 4,7", "primary 1,1"}));
  EXPECT_EQ(journal, (std::vector<std::string>{"LostFocus first", "GotFocus second"}));
  f.disabled->UserClick();
  f.link->UserClick();
  EXPECT_EQ(f.Focus(), f.second);
}

// Whatever shows a control is told of each change of a property, once, and of nothing that stays.
TEST_F(Windows, TheScreenIsToldOfEachChangeOfAPropertyOnce) {
  EnsureGuiApp();
  QTemporaryDir dir;
  QImage image(4, 3, QImage::Format_RGB32);
  ASSERT_TRUE(image.save(dir.filePath("logo.png"), "PNG"));
  MainForm& f = *mainform;
  screen.changes.clear();
  Ref<Picture> logo = GetFolderItem(String(dir.filePath("logo.png").toStdString()))->OpenAsPicture();
  for (int twice = 0; twice < 2; ++twice) {
    f.canvas->setBackdrop(logo);
    f.first->setBackColor(0xFFB0B3);
    f.first->setText("paid");
    f.link->setText("www");
    f.ok->setEnabled(false);
  }
  f.first->setReadOnly(false);
  using Change = std::pair<const Control*, Prop>;
  EXPECT_EQ(screen.changes, (std::vector<Change>{{f.canvas, Prop::Backdrop}, {f.first, Prop::BackColor},
                                                {f.first, Prop::Text}, {f.link, Prop::Text},
                                                {f.ok, Prop::Enabled}}));
}

TEST_F(Windows, AnExceptionInANestedHandlerStopsTheOuterOneAndIsReportedOnce) {
  MainForm& f = *mainform;
  std::vector<std::string> reached;
  f.second->OnTextChange = [&] {
    reached.push_back("inner");
    Ref<FolderItem> missing;
    missing->Exists();
    reached.push_back("inner after");
  };
  f.first->OnTextChange = [&] {
    reached.push_back("outer");
    f.second->setText("x");
    reached.push_back("outer after");
  };
  f.first->setText("go");
  EXPECT_EQ(reached, (std::vector<std::string>{"outer", "inner"}));
  EXPECT_EQ(Errors(), (std::vector<std::string>{"NilObjectException"}));
  // The program goes on, with what was done before the stop kept.
  EXPECT_EQ(f.second->Text().Utf8(), "x");

  // The events a modal window serves are outermost again: the caller goes on.
  Dialog& d = *dialog;
  d.entry->OnTextChange = [] { throw OutOfBoundsException(); };
  WhenModal([&](Window& w) {
    d.entry->setText("boom");
    reached.push_back("modal goes on");
    w.Hide();
  });
  RunHandler([&] {
    d.ShowModal();
    reached.push_back("caller goes on");
  });
  EXPECT_EQ(reached.back(), "caller goes on");
  EXPECT_EQ(Errors(), (std::vector<std::string>{"NilObjectException", "OutOfBoundsException"}));
  EXPECT_THROW(RunHandler([] { throw std::logic_error("a fault of the program"); }), std::logic_error);
  EXPECT_TRUE(RunHandlerBool([]() -> bool { throw OutOfBoundsException(); }, true));
}

}  // namespace
