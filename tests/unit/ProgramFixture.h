// A test of the program itself: a fresh program folder of its own, the program reset and its
// windows registered, and everything removed again afterwards.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "core/App.h"
#include "rb/rb.h"

class ProgramTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/ledgerly-program-XXXXXX";
    ASSERT_NE(::mkdtemp(pattern), nullptr);
    dir_ = pattern;
    SetProgramFolder(dir_);
    ResetProgram();
    RegisterWindows();
  }
  void TearDown() override {
    ResetProgram();
    SetProgramFolder("");
    std::filesystem::remove_all(dir_);
  }

  std::string dir_;
};
