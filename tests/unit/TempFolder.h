// SPDX-License-Identifier: GPL-3.0-or-later
// A fresh folder of the test's own, removed with everything in it afterwards.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

class TempFolderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/ledgerly-test-XXXXXX";
    ASSERT_NE(::mkdtemp(pattern), nullptr);
    dir_ = pattern;
  }
  void TearDown() override { std::filesystem::remove_all(dir_); }
  // The bytes as a file at a path inside the folder, with the folders on its way; its whole path.
  std::string Write(const std::string& relative, const std::string& bytes) {
    const std::filesystem::path p = std::filesystem::path(dir_) / relative;
    std::filesystem::create_directories(p.parent_path());
    std::ofstream(p, std::ios::binary) << bytes;
    return p.string();
  }

  std::string dir_;
};
