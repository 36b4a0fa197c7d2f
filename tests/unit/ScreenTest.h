// SPDX-License-Identifier: GPL-3.0-or-later
// The tests of windows and controls: each starts with no window built, the test screen in front and
// an empty clipboard, and ends with every answer taken and nothing left behind.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "rb/rb.h"
#include "scenario/TestScreen.h"

class ScreenTest : public ::testing::Test {
 protected:
  void SetUp() override {
    WindowRegistry::ResetAll();
    SetScreen(&screen);
    Clipboard() = String();
  }
  void TearDown() override {
    WindowRegistry::ResetAll();
    SetScreen(nullptr);
    for (const std::string& p : screen.problems) ADD_FAILURE() << p;
    EXPECT_EQ(screen.Unused(), nullptr) << "an answer was not taken";
  }

  // The next ShowModal runs `act` while the window shows.
  void WhenModal(std::function<void(Window&)> act) {
    scn::Answer a;
    a.act = std::move(act);
    screen.Queue(a);
  }
  std::vector<std::string> Errors() const {
    std::vector<std::string> out;
    for (const auto& e : screen.exceptions) out.push_back(e.className);
    return out;
  }

  scn::TestScreen screen;
};
