// SPDX-License-Identifier: GPL-3.0-or-later
// A test of the program itself: a fresh program folder of its own, the program reset and its
// windows registered, and everything removed again afterwards.
#pragma once

#include "TempFolder.h"
#include "core/App.h"
#include "rb/rb.h"

class ProgramTest : public TempFolderTest {
 protected:
  void SetUp() override {
    TempFolderTest::SetUp();
    SetProgramFolder(dir_);
    ResetProgram();
    RegisterWindows();
  }
  void TearDown() override {
    ResetProgram();
    SetProgramFolder("");
    TempFolderTest::TearDown();
  }
};
