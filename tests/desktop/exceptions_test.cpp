// One rule for what a handler leaves, the same on the desktop and on the test screen: the
// runtime's three exceptions stop the event and are reported, and the program goes on; any other
// exception is a defect, reported, and the program ends. The handler is customername's KeyDown;
// a key reaches it on the desktop through the field's widget, on the test screen as a scenario's
// step does.
#include <csignal>
#include <functional>
#include <stdexcept>

#include "DesktopFixture.h"
#include "core/App.h"
#include "invoice/iwindow.h"
#include "scenario/TestScreen.h"

namespace {

class Exceptions : public DesktopTest {
 protected:
  // The program started on the test screen instead, its name field open and focused: focusing it
// selects its text, as the start does on the desktop.
  void StartOnTestScreen() {
    ResetProgram();  // with the desktop still in front, so that the windows' widgets go too
    test_.StandAsAPassiveUser();
    SetScreen(&test_);
    ::StartProgram();
    OpenName();
    iwindow->SetFocus(iwindow->customername);
  }
  static void OpenName() { iwindow->customername->setReadOnly(false); }
  static void Raise(std::function<void()> raise) {
    iwindow->customername->OnKeyDown = [raise](const String&) -> bool {
      raise();
      return false;
    };
  }
  static void KeyOnTestScreen(const char* key) {
    RunEvent([key] { iwindow->UserKey(key); });
  }

  scn::TestScreen test_;
};

const std::pair<const char*, std::function<void()>> kRuntimes[] = {
    {"NilObjectException", [] { throw NilObjectException(); }},
    {"OutOfBoundsException", [] { throw OutOfBoundsException(); }},
    {"IOException", [] { throw IOException("no room"); }},
};

TEST_F(Exceptions, TheRuntimesOwnAreReportedAndTheProgramGoesOnAlikeOnBothScreens) {
  StartProgram();
  OpenName();
  iwindow->SetFocus(iwindow->customername);
  std::vector<std::string> onDesktop;
  for (const auto& [name, raise] : kRuntimes) {
    QString shown;
    WhenDialog([&shown](QWidget* box) {
      shown = box->property("text").toString();
      box->close();
    });
    Raise(raise);
    Type(iwindow->customername, "z");
    onDesktop.push_back(shown.contains(QString::fromLatin1(name)) ? name : shown.toStdString());
  }
  iwindow->customername->OnKeyDown = nullptr;
  Type(iwindow->customername, "y");
  EXPECT_TRUE(iwindow->Visible());
  const std::string typedOnDesktop = iwindow->customername->Text().Utf8();

  StartOnTestScreen();
  for (const auto& [name, raise] : kRuntimes) {
    Raise(raise);
    KeyOnTestScreen("z");
  }
  iwindow->customername->OnKeyDown = nullptr;
  KeyOnTestScreen("y");
  std::vector<std::string> onTestScreen;
  for (const scn::ReportedException& e : test_.exceptions) onTestScreen.push_back(e.className);

  const std::vector<std::string> all = {"NilObjectException", "OutOfBoundsException", "IOException"};
  EXPECT_EQ(onDesktop, all);
  EXPECT_EQ(onTestScreen, all);
  // Each handler stopped, and the key it was raised for went on as keys do.
  EXPECT_EQ(typedOnDesktop, "zzzy");
  EXPECT_EQ(iwindow->customername->Text().Utf8(), typedOnDesktop);
  EXPECT_FALSE(test_.ended);
}

TEST_F(Exceptions, AnyOtherEndsTheProgramWithAReportOnBothScreens) {
  const auto defect = [] { throw std::logic_error("a fault of the program"); };

  // The desktop shows the report, and the process ends.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        StartProgram();
        OpenName();
        WhenDialog([](QWidget* box) { box->close(); });
        Raise(defect);
        Type(iwindow->customername, "z");
      },
      testing::KilledBySignal(SIGABRT), "std::logic_error was not handled");

  // The test screen records it and ends the program there and then: nothing after it runs.
  StartOnTestScreen();
  Raise(defect);
  bool after = false;
  EXPECT_THROW(RunEvent([&after] {
                 iwindow->UserKey("z");
                 after = true;
               }),
               scn::ProgramEnded);
  EXPECT_FALSE(after);
  EXPECT_TRUE(test_.ended);
  ASSERT_EQ(test_.exceptions.size(), 1u);
  EXPECT_EQ(test_.exceptions[0].className, "std::logic_error");
}

}  // namespace
