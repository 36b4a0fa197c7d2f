// Windows: building on first touch, showing, hiding and ShowModal, Activate, the focus, buttons and
// the mouse, and what becomes of an exception that no handler catches.
#include <gtest/gtest.h>

#include "TestScreen.h"
#include "rb/rb.h"

namespace {

std::vector<std::string> journal;

// A form as the program's windows are: fields, a list, buttons, labels, in design order.
class MainForm : public Window {
 public:
  static constexpr const char* kClassName = "MainForm";
  MainForm() : Window(kClassName) {}

  StaticText* label = nullptr;
  TextField* second = nullptr;
  TextField* first = nullptr;
  TextField* disabled = nullptr;
  TextField* alsoSecond = nullptr;
  Listbox* list = nullptr;
  PushButton* ok = nullptr;
  PushButton* cancel = nullptr;
  CheckBox* check = nullptr;
  StaticText* link = nullptr;
  Window* touchedWhileBuilding = nullptr;

 protected:
  void CreateControls() override {
    journal.push_back("CreateControls");
    label = Add<StaticText>("label");
    label->TabIndex = 0;
    second = Add<TextField>("second");
    second->TabIndex = 2;
    first = Add<TextField>("first");
    first->TabIndex = 1;
    disabled = Add<TextField>("disabled");
    disabled->TabIndex = 0;
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
  PushButton* closebutt = nullptr;

 protected:
  void CreateControls() override {
    entry = Add<TextField>("entry");
    closebutt = Add<PushButton>("closebutt");
    closebutt->Default = true;
    closebutt->OnAction = [this] {
      journal.push_back("closebutt");
      Hide();
    };
    OnActivate = [] { journal.push_back("Activate Dialog"); };
    OnOpen = [] { journal.push_back("Open Dialog"); };
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
                         "Open link", "Open MainForm", "GotFocus first", "Activate MainForm"}));
  EXPECT_EQ(f.touchedWhileBuilding, &f);
  EXPECT_TRUE(f.Visible());
  EXPECT_EQ(WindowRegistry::Front(), &f);
  EXPECT_EQ(screen.windowsShown, (std::vector<std::string>{"MainForm"}));

  // Every later use is the same object, and builds nothing.
  journal.clear();
  EXPECT_EQ(&*mainform, &f);
  EXPECT_EQ(WindowRegistry::Find("MainForm"), &f);
  EXPECT_TRUE(journal.empty());
  EXPECT_EQ(f.FindControl("FIRST"), f.first);
  EXPECT_EQ(f.FindControl("first", 0), nullptr);
}

TEST_F(Windows, RegisteringAClassAgainReplacesItsFactoryAndResetStartsAfresh) {
  int made = 0;
  WindowRegistry::Register("Dialog", [&] {
    ++made;
    return std::make_unique<Dialog>();
  });
  Dialog& d = *dialog;
  d.entry->setText("kept");
  EXPECT_EQ(made, 1);
  EXPECT_EQ(WindowRegistry::Built(), (std::vector<Window*>{&d}));

  WindowRegistry::ResetAll();
  EXPECT_EQ(screen.windowsDestroyed, (std::vector<std::string>{"Dialog"}));
  EXPECT_EQ(WindowRegistry::Find("Dialog"), nullptr);
  EXPECT_TRUE(WindowRegistry::Shown().empty());
  EXPECT_EQ(dialog->entry->Text().Utf8(), "");
  EXPECT_EQ(made, 2);
}

TEST_F(Windows, AHiddenWindowKeepsItsContentsAndShowModalShowsTheSameInstance) {
  Dialog& d = *dialog;
  d.entry->setText("17.5");
  d.Hide();
  EXPECT_FALSE(d.Visible());
  EXPECT_EQ(dialog->entry->Text().Utf8(), "17.5");
  journal.clear();

  bool modalWhileShown = false;
  screen.modalAnswers.push_back([&](Window& w) {
    EXPECT_EQ(&w, &d);
    EXPECT_TRUE(w.Visible());
    modalWhileShown = d.IsModalRunning();
    EXPECT_EQ(d.entry->Text().Utf8(), "17.5");
    d.entry->setText("20");
    w.UserKey(Keys::Return);
  });
  d.ShowModal();
  EXPECT_TRUE(modalWhileShown);
  EXPECT_FALSE(d.IsModalRunning());
  EXPECT_FALSE(d.Visible());
  EXPECT_EQ(journal, (std::vector<std::string>{"Activate Dialog", "closebutt"}));
  EXPECT_EQ(d.entry->Text().Utf8(), "20");
}

TEST_F(Windows, ActivateComesEachTimeAWindowComesToTheFront) {
  MainForm& f = *mainform;
  Dialog& d = *dialog;  // shown over the main form
  journal.clear();

  f.Show();  // the form comes back to the front
  f.Show();  // already there
  EXPECT_EQ(journal, (std::vector<std::string>{"Activate MainForm"}));

  d.Show();
  journal.clear();
  d.Hide();  // the form is in front again
  EXPECT_EQ(journal, (std::vector<std::string>{"Activate MainForm"}));
  EXPECT_EQ(WindowRegistry::Shown(), (std::vector<Window*>{&f}));

  // ShowModal brings Activate also to a window already in front. With no one to answer, the quiet
  // screen returns at once and leaves the window showing.
  SetScreen(nullptr);
  journal.clear();
  d.ShowModal();
  d.ShowModal();
  EXPECT_EQ(journal, (std::vector<std::string>{"Activate Dialog", "Activate Dialog"}));
  EXPECT_TRUE(d.Visible());
  SetScreen(&screen);
}

TEST_F(Windows, CloseRaisesCloseAndHides) {
  MainForm& f = *mainform;
  journal.clear();
  f.Close();
  EXPECT_EQ(journal, (std::vector<std::string>{"Close MainForm"}));
  EXPECT_FALSE(f.Visible());
  EXPECT_EQ(screen.windowsHidden, (std::vector<std::string>{"MainForm"}));
}

TEST_F(Windows, TabWalksTheTabIndexOrderAndWraps) {
  MainForm& f = *mainform;
  EXPECT_EQ(f.Focus(), f.first);
  journal.clear();
  std::vector<std::string> visited;
  for (int i = 0; i < 5; ++i) {
    f.UserKey(Keys::Tab);
    visited.push_back(f.Focus()->Name());
  }
  // Equal TabIndex goes by creation; the disabled field and the label are passed over.
  EXPECT_EQ(visited, (std::vector<std::string>{"second", "alsoSecond", "list", "first", "second"}));
  EXPECT_EQ(journal[0], "LostFocus first");
  EXPECT_EQ(journal[1], "GotFocus second");

  f.FocusNext(true);
  EXPECT_EQ(f.Focus(), f.first);
  journal.clear();
  f.SetFocus(f.first);
  EXPECT_TRUE(journal.empty());

  // The first showing set the focus; later showings leave it where it is.
  f.SetFocus(f.second);
  f.Hide();
  f.Show();
  EXPECT_EQ(f.Focus(), f.second);
}

TEST_F(Windows, APushButtonRunsMouseDownAndActionOnAClickAndOnlyActionByItsKey) {
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
  EXPECT_EQ(events, (std::vector<std::string>{"MouseDown", "Action"}));
  // The click left the focus with the field: no LostFocus came.
  EXPECT_EQ(f.Focus(), f.second);
  EXPECT_TRUE(journal.empty());

  events.clear();
  f.UserKey(Keys::Return);
  f.UserKey(Keys::Escape);
  EXPECT_EQ(events, (std::vector<std::string>{"Action", "Cancel"}));

  // A disabled button does nothing, by mouse or by key.
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

TEST_F(Windows, AButtonDisabledByTheListLeavingFocusStaysUsableThroughAClick) {
  // The stock window's "Add item": live only while the list has the focus.
  MainForm& f = *mainform;
  int added = 0;
  f.list->OnGotFocus = [&] { f.ok->setEnabled(true); };
  f.list->OnLostFocus = [&] { f.ok->setEnabled(false); };
  f.ok->OnMouseDown = [&](Integer, Integer) {
    ++added;
    return false;
  };
  f.ok->OnAction = [&] { ++added; };
  f.ok->setEnabled(false);
  f.list->UserCellClick(0, 0);
  EXPECT_TRUE(f.ok->Enabled());
  f.ok->UserClick();
  EXPECT_EQ(added, 2);
  f.UserKey(Keys::Return);
  EXPECT_EQ(added, 3);
  f.first->UserClick();
  EXPECT_FALSE(f.ok->Enabled());
}

TEST_F(Windows, AClickOnAFieldTakesTheFocusAndTellsWhetherItWasContextual) {
  MainForm& f = *mainform;
  std::vector<std::string> events;
  f.second->OnMouseDown = [&](Integer x, Integer y) {
    events.push_back(std::string(IsContextualClick() ? "contextual " : "primary ") +
                     std::to_string(x) + "," + std::to_string(y));
    return false;
  };
  journal.clear();
  f.second->UserClick(4, 7, true);
  EXPECT_FALSE(IsContextualClick());
  EXPECT_EQ(f.Focus(), f.second);
  f.second->UserClick();
  EXPECT_EQ(events, (std::vector<std::string>{"contextual 4,7", "primary 1,1"}));
  EXPECT_EQ(journal, (std::vector<std::string>{"LostFocus first", "GotFocus second"}));

  // A link-like label: MouseDown answers True, MouseUp follows, the focus stays.
  f.link->OnMouseDown = [&](Integer, Integer) {
    f.link->setTextColor(RGB(255, 0, 0));
    return true;
  };
  f.link->OnMouseUp = [&](Integer, Integer) { f.link->setTextColor(RGB(0, 0, 255)); };
  f.link->OnMouseEnter = [&] { f.link->setUnderline(true); };
  f.link->OnMouseExit = [&] { f.link->setUnderline(false); };
  f.link->UserMouseEnter();
  f.link->UserClick();
  EXPECT_EQ(f.link->TextColor(), RGB(0, 0, 255));
  EXPECT_TRUE(f.link->Underline());
  f.link->UserMouseExit();
  EXPECT_FALSE(f.link->Underline());
  EXPECT_EQ(f.Focus(), f.second);

  // A disabled field takes no click.
  f.disabled->UserClick();
  EXPECT_EQ(f.Focus(), f.second);
}

TEST_F(Windows, ACheckBoxRaisesActionWhenItsValueChanges) {
  MainForm& f = *mainform;
  int actions = 0;
  f.check->OnAction = [&] { ++actions; };
  f.check->setValue(false);
  EXPECT_EQ(actions, 0);
  f.check->setValue(true);
  EXPECT_EQ(actions, 1);
  f.check->UserClick();
  EXPECT_FALSE(f.check->Value());
  EXPECT_EQ(actions, 2);
}

TEST_F(Windows, AnExceptionInANestedHandlerStopsTheOuterOneAndIsReportedOnce) {
  MainForm& f = *mainform;
  std::vector<std::string> reached;
  f.second->OnTextChange = [&] {
    Ref<FolderItem> missing;
    reached.push_back("inner");
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
  EXPECT_EQ(screen.errors, (std::vector<std::string>{"NilObjectException"}));

  // The program goes on, with what was done before the stop kept.
  EXPECT_EQ(f.second->Text().Utf8(), "x");
  reached.clear();
  f.second->OnTextChange = nullptr;
  f.first->setText("again");
  EXPECT_EQ(reached, (std::vector<std::string>{"outer", "outer after"}));
  EXPECT_EQ(screen.errors.size(), 1u);
}

TEST_F(Windows, EventsServedByAModalAreOutermost) {
  Dialog& d = *dialog;
  d.Hide();
  std::vector<std::string> reached;
  d.entry->OnTextChange = [] { throw NilObjectException(); };
  screen.modalAnswers.push_back([&](Window& w) {
    d.entry->setText("boom");
    reached.push_back("modal goes on");
    w.Hide();
  });
  RunHandler([&] {
    d.ShowModal();
    reached.push_back("caller goes on");
  });
  EXPECT_EQ(reached, (std::vector<std::string>{"modal goes on", "caller goes on"}));
  EXPECT_EQ(screen.errors, (std::vector<std::string>{"NilObjectException"}));
}

TEST_F(Windows, RunHandlerLetsAnythingButARuntimeExceptionThrough) {
  EXPECT_THROW(RunHandler([] { throw std::logic_error("a fault of the program"); }), std::logic_error);
  EXPECT_TRUE(RunHandlerBool([] { return true; }));
  EXPECT_TRUE(RunHandlerBool([]() -> bool { throw OutOfBoundsException(); }, true));
  EXPECT_EQ(screen.errors, (std::vector<std::string>{"OutOfBoundsException"}));
}

}  // namespace
