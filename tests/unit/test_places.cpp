// SPDX-License-Identifier: GPL-3.0-or-later
// Where the program keeps its data, and the runtime folder it gives Qt.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "ProgramFolder.h"
#include "RuntimeFolder.h"
#include "TempFolder.h"

namespace {

using PlacesTest = TempFolderTest;

// (A copy in a folder of its own keeps its data beside it: the program copied into a folder by
// safety/two-copies.sh finds its preferences there and holds that folder.)
TEST(Places, AnInstalledProgramKeepsItsDataInTheUsersFolder) {
  const std::string home = "/home/someone", data = "/home/someone/.local/share/ledgerly";
  EXPECT_EQ(rbi::ProgramFolder::DataFolderFor("/usr/bin", home), data);
  EXPECT_EQ(rbi::ProgramFolder::DataFolderFor("/usr/local/bin", home), data);
  EXPECT_EQ(rbi::ProgramFolder::DataFolderFor("/opt/ledgerly", home), data);
  EXPECT_EQ(rbi::ProgramFolder::DataFolderFor("", home), data);
}

// The runtime folder is used only as a real folder of the user's own with mode 0700; a link or a
// folder with other modes planted at its name is neither followed nor mended.
TEST_F(PlacesTest, TheRuntimeFolderIsNeverTakenThroughALinkNorMended) {
  const char* saved = std::getenv("XDG_RUNTIME_DIR");
  const std::string keep = saved ? saved : "";
  auto fresh = [&](const std::string& dir) {
    ::unsetenv("XDG_RUNTIME_DIR");
    desk::EnsureRuntimeFolder(dir);
    const char* now = std::getenv("XDG_RUNTIME_DIR");
    return now ? std::string(now) : std::string();
  };
  EXPECT_EQ(fresh(dir_ + "/made"), dir_ + "/made");
  struct stat st {};
  ASSERT_EQ(::stat((dir_ + "/made").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 07777, 0700u);

  std::filesystem::create_directories(dir_ + "/target");
  ::chmod((dir_ + "/target").c_str(), 0755);
  ASSERT_EQ(::symlink((dir_ + "/target").c_str(), (dir_ + "/link").c_str()), 0);
  EXPECT_EQ(fresh(dir_ + "/link"), "");
  ASSERT_EQ(::stat((dir_ + "/target").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 07777, 0755u);

  std::filesystem::create_directories(dir_ + "/open");
  ::chmod((dir_ + "/open").c_str(), 0777);
  EXPECT_EQ(fresh(dir_ + "/open"), "");
  ASSERT_EQ(::stat((dir_ + "/open").c_str(), &st), 0);
  EXPECT_EQ(st.st_mode & 07777, 0777u);

  if (saved) ::setenv("XDG_RUNTIME_DIR", keep.c_str(), 1);
  else ::unsetenv("XDG_RUNTIME_DIR");
}

}  // namespace
