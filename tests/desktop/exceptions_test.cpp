// SPDX-License-Identifier: GPL-3.0-or-later
// One rule for what a handler leaves: the runtime's three exceptions stop the event and are
// reported, and the program goes on; any other exception is a defect, reported, and the program
// ends. The handler is customername's KeyDown, reached through the field's widget. The test screen
// ends the program on a defect as the desktop does; it reports the runtime's own as the scenarios
// that raise them show.
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
  // The started program's name field, open, focused and raising as told.
  static void Raise(std::function<void()> raise) {
    iwindow->customername->setReadOnly(false);
    iwindow->SetFocus(iwindow->customername);
    iwindow->customername->OnKeyDown = [raise](const String&) -> bool {
      raise();
      return false;
    };
  }
  scn::TestScreen test_;
};

const std::pair<const char*, std::function<void()>> kRuntimes[] = {
    {"NilObjectException", [] { throw NilObjectException(); }},
    {"OutOfBoundsException", [] { throw OutOfBoundsException(); }},
    {"IOException", [] { throw IOException("no room"); }},
};

TEST_F(Exceptions, TheRuntimesOwnAreReportedByNameAndTheProgramGoesOn) {
  StartProgram();
  std::vector<std::string> shownFor;
  for (const auto& [name, raise] : kRuntimes) {
    QString shown;
    WhenDialog([&shown](QWidget* box) {
      shown = box->property("text").toString();
      box->close();
    });
    Raise(raise);
    Type(iwindow->customername, "z");
    shownFor.push_back(shown.contains(QString::fromLatin1(name)) ? name : shown.toStdString());
  }
  EXPECT_EQ(shownFor, (std::vector<std::string>{"NilObjectException", "OutOfBoundsException",
                                                "IOException"}));
  iwindow->customername->OnKeyDown = nullptr;
  Type(iwindow->customername, "y");
  // Each handler stopped, and the key it was raised for went on as keys do.
  EXPECT_EQ(iwindow->customername->Text().Utf8(), "zzzy");
}

TEST_F(Exceptions, AnyOtherEndsTheProgramWithAReportOnBothScreens) {
  const auto defect = [] { throw std::logic_error("a fault of the program"); };

  // The desktop shows the report, and the process ends.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        StartProgram();
        WhenDialog([](QWidget* box) { box->close(); });
        Raise(defect);
        Type(iwindow->customername, "z");
      },
      testing::KilledBySignal(SIGABRT), "std::logic_error was not handled");

  // The test screen records it and ends the program there and then: nothing after it runs.
  ResetProgram();  // with the desktop still in front, so that the windows' widgets go too
  test_.StandAsAPassiveUser();
  SetScreen(&test_);
  ::StartProgram();
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
