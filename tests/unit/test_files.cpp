// SPDX-License-Identifier: GPL-3.0-or-later
// Files and folders at the edges the program's own scenarios do not reach: field bytes past their
// limits, writing from where a stream stands, what every open refuses, names, and the listings.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "TempFolder.h"
#include "rb/Files.h"

namespace {

// A picture of one pixel, as a PNG file.
constexpr char kOnePixelPng[] =
    "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\0\x01\0\0\0\x01\x08\x02\0\0\0\x90wS\xDE\0\0\0\x0CIDATx\x9C"
    "c\xF8\xCF\xC0\0\0\x03\x01\x01\0\xC9\xFE\x92\xEF\0\0\0\0IEND\xAE\x42\x60\x82";

std::string ReadRaw(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

void WriteRaw(const std::string& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << bytes;
}

std::vector<std::string> OnDisk(const std::string& folder) {
  std::vector<std::string> names;
  for (const auto& e : std::filesystem::directory_iterator(folder)) names.push_back(e.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

// Every test works in a folder of its own inside the test's folder, so that the outer one shows
// whether anything reached outside.
class FilesTest : public TempFolderTest {
 protected:
  void SetUp() override {
    TempFolderTest::SetUp();
    data_ = dir_ + "/data";
    ASSERT_EQ(::mkdir(data_.c_str(), 0700), 0);
    SetProgramFolder(data_);
  }
  void TearDown() override {
    SetProgramFolder("");
    TempFolderTest::TearDown();
  }
  Ref<FolderItem> Folder() { return GetFolderItem(""); }
  std::string Path(const std::string& name) { return data_ + "/" + name; }

  std::string data_;
};

// A Single too big for it goes out as infinity, a PString keeps its first 255 bytes even inside a
// character, a Boolean reads its lowest bit, and a number cut short by the end reads as 0.
TEST_F(FilesTest, FieldsAtTheirLimits) {
  std::string euros;
  for (int i = 0; i < 100; ++i) euros += "\xE2\x82\xAC";
  Ref<BinaryStream> out = Folder()->Child("f")->CreateBinaryFile("prefs");
  out->WriteSingle(1e300);
  out->WriteBoolean(true);
  out->WritePString(euros);
  out->Close();
  EXPECT_EQ(ReadRaw(Path("f")), std::string("\x7F\x80\0\0" "\x01" "\xFF", 6) + euros.substr(0, 255));

  WriteRaw(Path("g"), std::string("\x03\x02" "\x3F\xF0\x00", 5));
  Ref<BinaryStream> in = Folder()->Child("g")->OpenAsBinaryFile(false);
  EXPECT_TRUE(in->ReadBoolean());
  EXPECT_FALSE(in->ReadBoolean());
  EXPECT_EQ(in->ReadDouble(), 0);
}

// A write after a read goes right after the field read, and what is not written again stays. The
// file is put in place whole when the stream closes, with the old one's permissions; a stream for
// writing that only read leaves the very same file, and one opened for reading writes nothing.
TEST_F(FilesTest, AWriteGoesOverTheFileFromWhereTheStreamStandsAndLandsWhole) {
  WriteRaw(Path("inv"), "\x02" "ab" "\x02" "cd" "\x02" "ef");
  ASSERT_EQ(::chmod(Path("inv").c_str(), 0640), 0);
  struct stat first {}, st {};
  ASSERT_EQ(::stat(Path("inv").c_str(), &first), 0);
  Ref<BinaryStream> s = Folder()->Child("inv")->OpenAsBinaryFile(true);
  EXPECT_EQ(s->ReadPString().Bytes(), "ab");
  s->Close();
  ASSERT_EQ(::stat(Path("inv").c_str(), &st), 0);
  EXPECT_EQ(st.st_ino, first.st_ino);

  s = Folder()->Child("inv")->OpenAsBinaryFile(true);
  EXPECT_EQ(s->ReadPString().Bytes(), "ab");
  s->WritePString("xy");
  EXPECT_EQ(s->ReadPString().Bytes(), "ef");
  EXPECT_EQ(ReadRaw(Path("inv")), "\x02" "ab" "\x02" "cd" "\x02" "ef");  // nothing before Close
  s->Close();
  EXPECT_EQ(ReadRaw(Path("inv")), "\x02" "ab" "\x02" "xy" "\x02" "ef");
  ASSERT_EQ(::stat(Path("inv").c_str(), &st), 0);
  EXPECT_NE(st.st_ino, first.st_ino);
  EXPECT_EQ(st.st_mode & 07777, 0640u);
  s = Folder()->Child("inv")->OpenAsBinaryFile(false);
  s->WritePString("yy");
  s->Close();
  EXPECT_EQ(ReadRaw(Path("inv")), "\x02" "ab" "\x02" "xy" "\x02" "ef");

  // A stream dropped without Close, as when an exception stops its handler, keeps what it wrote.
  Folder()->Child("marker")->CreateTextFile()->WriteLine("Brown");
  EXPECT_EQ(ReadRaw(Path("marker")), "Brown\n");
  EXPECT_EQ(OnDisk(data_), (std::vector<std::string>{"inv", "marker"}));
}

// Whatever is not a plain file of the folder's own (nothing, a folder, a link, a pipe) is refused
// at once by every open, for reading and writing, so that nothing is followed and nothing blocks;
// what stands there exists, and only what is missing can be made, where a folder takes it.
TEST_F(FilesTest, LinksAndPipesAreNeverOpened) {
  WriteRaw(dir_ + "/victim", "kept");
  ASSERT_EQ(::symlink("../victim", Path("link").c_str()), 0);
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0666), 0);
  ASSERT_EQ(::symlink(dir_.c_str(), Path("folderlink").c_str()), 0);
  Folder()->Child("folder")->CreateAsFolder();
  for (const std::string name : {"missing", "folder", "link", "pipe"}) {
    Ref<FolderItem> f = Folder()->Child(name);
    EXPECT_EQ(f->Exists(), name != "missing") << name;
    EXPECT_EQ(f->OpenAsBinaryFile(false), nil) << name;
    EXPECT_EQ(f->OpenAsBinaryFile(true), nil) << name;
    EXPECT_EQ(f->OpenAsTextFile(), nil) << name;
    EXPECT_EQ(f->OpenAsPicture(), nil) << name;
    if (name == "missing") continue;
    EXPECT_EQ(f->CreateBinaryFile("prefs"), nil) << name;
    EXPECT_EQ(f->CreateTextFile(), nil) << name;
  }
  EXPECT_EQ(New<FolderItem>(Path("nowhere/file"))->CreateTextFile(), nil);
  // An item made from its whole path inside the folder is the folder's own.
  New<FolderItem>(Path("folder/x"))->CreateTextFile()->Close();
  EXPECT_TRUE(Folder()->Child("folder")->Child("x")->Exists());

  Ref<FolderItem> through = Folder()->Child("folderlink");
  EXPECT_TRUE(through->Exists());
  EXPECT_FALSE(through->Directory());
  EXPECT_EQ(through->Child("victim"), nil);
  EXPECT_EQ(through->Count(), 0);
  EXPECT_EQ(New<FolderItem>(Path("folderlink/victim"))->OpenAsBinaryFile(false), nil);
  New<FolderItem>(Path("folderlink/planted"))->CreateAsFolder();
  New<FolderItem>(Path("folderlink/victim"))->Delete();
  Folder()->Child("link")->Delete();  // the link itself goes, not what it points to
  EXPECT_EQ(ReadRaw(dir_ + "/victim"), "kept");
  EXPECT_EQ(OnDisk(dir_), (std::vector<std::string>{"data", "victim"}));
  // Outside the folder only a picture is read, and a path to a pipe is no usable path at all; a
  // folder beside it whose name is as long is outside; a link inside the folder is not followed to
  // a picture either, however the item was made.
  EXPECT_EQ(GetFolderItem(String(dir_ + "/victim"))->OpenAsBinaryFile(false), nil);
  EXPECT_EQ(GetFolderItem(String(Path("pipe"))), nil);
  // A path keeps its bytes, whatever they are; one that came through Mac Roman is its characters.
  WriteRaw(dir_ + "/Latin\xE9", "");
  EXPECT_TRUE(GetFolderItem(String::FromBytes(dir_ + "/Latin\xE9", TextEncoding::None))->Exists());
  WriteRaw(dir_ + "/Caf\xC3\xA9", "");
  EXPECT_TRUE(GetFolderItem(String::FromBytes(dir_ + "/Caf\x8E", TextEncoding::MacRoman))->Exists());
  WriteRaw(Path("f"), "inside");
  std::filesystem::create_directories(dir_ + "/dat2");
  WriteRaw(dir_ + "/dat2/f", "outside");
  EXPECT_EQ(GetFolderItem(String(dir_ + "/dat2/f"))->OpenAsBinaryFile(false), nil);
  WriteRaw(dir_ + "/logo.png", std::string(kOnePixelPng, sizeof kOnePixelPng - 1));
  ASSERT_EQ(::symlink("../logo.png", Path("logo").c_str()), 0);
  EXPECT_NE(GetFolderItem(String(dir_ + "/logo.png"))->OpenAsPicture(), nil);
  EXPECT_EQ(GetFolderItem(String(Path("logo")))->OpenAsPicture(), nil);
  EXPECT_EQ(Folder()->Child("logo")->OpenAsPicture(), nil);
}

// Holding the folder takes its lock, which a second copy finds taken, and removes the temporary
// files that a copy killed in the middle of a saving left: only those, in the folder and the
// folders directly inside it, never through a link.
TEST_F(FilesTest, HoldingTheFolderRemovesOnlyTheProgramsOwnLeftovers) {
  std::filesystem::create_directories(Path("customers/deeper"));
  std::filesystem::create_directories(dir_ + "/elsewhere");
  ASSERT_EQ(::symlink("../elsewhere", Path("linked").c_str()), 0);
  const std::vector<std::string> left = {".ledgerly-Ab3dE9", "customers/.ledgerly-zzzzzz"};
  const std::vector<std::string> others = {
      ".ledgerly-abc", ".ledgerly-Ab3dE9x", ".ledgerly-Ab-dE9", "ledgerly-Ab3dE9x", ".stfolder",
      "customers/deeper/.ledgerly-aaaaaa", "linked/.ledgerly-bbbbbb"};
  for (const auto& name : left) WriteRaw(Path(name), "");
  for (const auto& name : others) WriteRaw(Path(name), "");
  ASSERT_EQ(HoldProgramFolder(), FolderHold::Held);
  for (const auto& name : left) EXPECT_FALSE(std::filesystem::exists(Path(name))) << name;
  for (const auto& name : others) EXPECT_TRUE(std::filesystem::exists(Path(name))) << name;

  const int second = ::open(data_.c_str(), O_RDONLY | O_DIRECTORY);
  EXPECT_NE(::flock(second, LOCK_EX | LOCK_NB), 0);
  SetProgramFolder(data_);  // the hold goes with the descriptor
  EXPECT_EQ(::flock(second, LOCK_EX | LOCK_NB), 0);
  WriteRaw(Path(".ledgerly-Cd4eF0"), "");
  EXPECT_EQ(HoldProgramFolder(), FolderHold::HeldByAnother);
  EXPECT_TRUE(std::filesystem::exists(Path(".ledgerly-Cd4eF0")));
  ::close(second);
}

// A line goes out as its bytes, tag and all, and comes back untagged whatever its line end.
TEST_F(FilesTest, TextLinesReadBackWhateverTheLineEnd) {
  Ref<TextOutputStream> out = Folder()->Child("Items")->CreateTextFile();
  out->WriteLine(ConvertEncoding("Caf\xC3\xA9", Encodings::MacRoman));
  out->Close();
  EXPECT_EQ(ReadRaw(Path("Items")), "Caf\x8E\n");
  EXPECT_TRUE(Folder()->Child("Items")->OpenAsTextFile()->ReadLine().SameAs("Caf\xC3\xA9"));

  WriteRaw(Path("mixed"), "cr\rcrlf\r\nlf\n\r\nlast");
  Ref<TextInputStream> in = Folder()->Child("mixed")->OpenAsTextFile();
  for (const char* want : {"cr", "crlf", "lf", "", "last"}) EXPECT_EQ(in->ReadLine().Bytes(), want);
  EXPECT_TRUE(in->AtEnd());
  EXPECT_EQ(in->ReadLine().Bytes(), "");
}

// Child finds a name exactly, else one that differs only in case (the first in byte order), also
// in non-ASCII letters; a name given untagged is written as the characters it shows; a "/" stays
// in the one name, whatever it says, and a path that steps back or stands still is not written.
TEST_F(FilesTest, ChildFindsTheExactNameElseOneThatDiffersInCaseAndStaysInside) {
  WriteRaw(Path("Stock2"), "");
  WriteRaw(Path("stock2"), "");
  EXPECT_EQ(Folder()->Child("stock2")->Name().Bytes(), "stock2");
  EXPECT_EQ(Folder()->Child("STOCK2")->Name().Bytes(), "Stock2");
  WriteRaw(Path("\xC3\x89t\xC3\xA9"), "x");  // Été
  EXPECT_EQ(Folder()->Child("\xC3\xA9T\xC3\x89")->Name().Bytes(), "\xC3\x89t\xC3\xA9");
  Folder()->Child(String::FromBytes("Caf\x8E", TextEncoding::None))->CreateBinaryFile("prefs")->Close();
  EXPECT_TRUE(std::filesystem::exists(Path("Caf\xC3\xA9")));

  EXPECT_EQ(New<FolderItem>(Path("./x"))->CreateBinaryFile("prefs"), nil);
  EXPECT_EQ(New<FolderItem>(Path("../x"))->CreateBinaryFile("prefs"), nil);
  Folder()->Child("../../tmp")->CreateBinaryFile("prefs")->Close();
  Folder()->Child("/etc")->CreateBinaryFile("prefs")->Close();
  EXPECT_EQ(OnDisk(dir_), std::vector<std::string>{"data"});
  EXPECT_TRUE(std::filesystem::exists(Path("..\xE2\x88\x95..\xE2\x88\x95tmp")));
  EXPECT_TRUE(std::filesystem::exists(Path("\xE2\x88\x95" "etc")));
  EXPECT_EQ(Folder()->Child("../../TMP")->Name().Bytes(), "../../tmp");
}

TEST_F(FilesTest, ListingIsByNameIgnoringCaseWithHiddenEntries) {
  for (const char* name : {"b", "A", ".hidden", "C", "a", "00002-x", "00010-y", "\xC3\x89t\xC3\xA9", "Zed"})
    WriteRaw(Path(name), "");
  Folder()->Child("sub")->CreateAsFolder();
  Ref<FolderItem> folder = Folder();
  ASSERT_EQ(folder->Count(), 10);
  std::vector<std::string> names;
  for (Integer i = 1; i <= 10; ++i) names.push_back(folder->Item(i)->Name().Bytes());
  EXPECT_EQ(names, (std::vector<std::string>{".hidden", "00002-x", "00010-y", "A", "a", "b", "C", "sub", "Zed",
                                             "\xC3\x89t\xC3\xA9"}));
  EXPECT_EQ(folder->Item(0), nil);
  EXPECT_EQ(folder->Item(11), nil);
  EXPECT_TRUE(folder->Item(8)->Directory());
  EXPECT_EQ(Folder()->Child("empty")->Count(), 0);
}

// The platform keeps listings between readings; whatever happens to the folder, from this program
// or from outside and in the same instant, the next Count and Child see the folder as it is.
TEST_F(FilesTest, ListingFollowsEveryChangeToTheFolder) {
  auto names = [](Ref<FolderItem> folder) {
    std::vector<std::string> out;
    const Integer n = folder->Count();
    for (Integer i = 1; i <= n; ++i) out.push_back(folder->Item(i)->Name().Bytes());
    return out;
  };
  Folder()->Child("inv")->CreateAsFolder();
  const std::string inv = Path("inv");
  for (const char* name : {"00002-b", "00001-a", "00003-C"}) WriteRaw(inv + "/" + name, "");
  Ref<FolderItem> held = Folder()->Child("inv");
  ASSERT_EQ(names(held), (std::vector<std::string>{"00001-a", "00002-b", "00003-C"}));

  WriteRaw(inv + "/00000-z", "");
  ::unlink((inv + "/00002-b").c_str());
  std::filesystem::rename(inv + "/00001-a", inv + "/00004-A");
  Folder()->Child("inv")->Child("00005-d")->CreateBinaryFile("prefs")->Close();
  // The item that counted before still hands out what it counted.
  EXPECT_EQ(held->Item(2)->Name().Bytes(), "00002-b");
  EXPECT_EQ(names(Folder()->Child("inv")), (std::vector<std::string>{"00000-z", "00003-C", "00004-A", "00005-d"}));
  EXPECT_EQ(Folder()->Child("inv")->Child("00003-c")->Name().Bytes(), "00003-C");
  EXPECT_EQ(Folder()->Child("inv")->Child("00004-a")->Name().Bytes(), "00004-A");
  WriteRaw(inv + "/00006-e", "");
  EXPECT_EQ(Folder()->Child("inv")->Child("00006-E")->Name().Bytes(), "00006-e");

  // The folder replaced by another of the same name, and the folder above it moved away.
  std::filesystem::rename(inv, Path("old"));
  Folder()->Child("inv")->CreateAsFolder();
  WriteRaw(inv + "/fresh", "");
  EXPECT_EQ(names(Folder()->Child("inv")), std::vector<std::string>{"fresh"});
  // The program's folder is held open: moved away, it is still the one the program works in,
  // and a new folder at its old place is left alone.
  std::filesystem::rename(data_, dir_ + "/moved");
  ASSERT_EQ(::mkdir(data_.c_str(), 0700), 0);
  EXPECT_EQ(names(Folder()), (std::vector<std::string>{"inv", "old"}));
  Folder()->Child("INV")->Child("late")->CreateBinaryFile("prefs")->Close();
  EXPECT_TRUE(std::filesystem::exists(dir_ + "/moved/inv/late"));
  EXPECT_TRUE(std::filesystem::is_empty(data_));
}

// What cannot be done is silently not done: a folder not empty deleted, a file already gone, a
// folder made where its parent is missing. An empty folder is deleted.
TEST_F(FilesTest, ADeletionOrAFolderThatCannotBeIsSilentlyNotDone) {
  Ref<FolderItem> f = Folder()->Child("unpaid");
  f->CreateAsFolder();
  WriteRaw(Path("unpaid/marker"), "");
  f->Delete();
  EXPECT_TRUE(f->Exists());
  Ref<FolderItem> marker = f->Child("marker");
  marker->Delete();
  marker->Delete();
  EXPECT_FALSE(marker->Exists());
  f->Delete();
  EXPECT_FALSE(f->Exists());
  New<FolderItem>(Path("a/b/c"))->CreateAsFolder();
  EXPECT_FALSE(Folder()->Child("a")->Exists());
}

// (With none set, the program's folder is its own: safety/two-copies.sh.)
TEST_F(FilesTest, EmptyPathIsTheProgramFolder) {
  SetProgramFolder(data_ + "/");
  EXPECT_EQ(GetFolderItem("")->NativePath(), data_);
}

}  // namespace
