// Files and folders: field bytes, overwriting, reads past the end, names and listing order.
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

#include "rb/Files.h"

namespace {

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

// Every test works in a fresh folder of its own, inside another of its own, so that the outer one
// shows whether anything reached outside.
class FilesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/ledgerly-files-XXXXXX";
    ASSERT_NE(::mkdtemp(pattern), nullptr);
    outer_ = pattern;
    dir_ = outer_ + "/data";
    ASSERT_EQ(::mkdir(dir_.c_str(), 0700), 0);
    SetProgramFolder(dir_);
  }
  void TearDown() override {
    SetProgramFolder("");
    std::filesystem::remove_all(outer_);
  }
  Ref<FolderItem> Folder() { return GetFolderItem(""); }
  std::string Path(const std::string& name) { return dir_ + "/" + name; }

  std::string outer_, dir_;
};

// Each field's bytes, and what reading gives back: an untagged text, a Single narrowed on writing, a
// Boolean's lowest bit, empty values past the end and the bytes there are of a cut string.
TEST_F(FilesTest, FieldsHaveTheirBytesAndReadBack) {
  Ref<BinaryStream> out = Folder()->Child("f")->CreateBinaryFile("prefs");
  out->WritePString("ab");
  out->WritePString(ConvertEncoding("\xC2\xA3", Encodings::MacRoman));
  out->WriteSingle(1e300);
  out->WriteDouble(-2.5);
  out->WriteBoolean(true);
  out->Close();
  EXPECT_EQ(ReadRaw(Path("f")), std::string("\x02" "ab" "\x01\xA3" "\x7F\x80\0\0" "\xC0\x04\0\0\0\0\0\0" "\x01", 18));

  WriteRaw(Path("g"), std::string("\x02" "ab" "\x41\x40\0\0" "\x03\x02\xFF" "\x05" "cd", 13));
  Ref<BinaryStream> in = Folder()->Child("g")->OpenAsBinaryFile(false);
  const String name = in->ReadPString();
  EXPECT_EQ(name.Bytes(), "ab");
  EXPECT_EQ(name.Encoding(), TextEncoding::None);
  EXPECT_EQ(in->ReadSingle(), 12.0);
  EXPECT_TRUE(in->ReadBoolean());
  EXPECT_FALSE(in->ReadBoolean());
  EXPECT_TRUE(in->ReadBoolean());
  EXPECT_EQ(in->ReadPString().Bytes(), "cd");
  EXPECT_TRUE(in->ReadPString().IsEmpty());
  EXPECT_EQ(in->ReadDouble(), 0);
  EXPECT_FALSE(in->ReadBoolean());
  // A number cut short is past the end.
  WriteRaw(Path("cut"), std::string("\x3F\xF0\x00", 3));
  EXPECT_EQ(Folder()->Child("cut")->OpenAsBinaryFile(false)->ReadDouble(), 0);
}

TEST_F(FilesTest, PStringKeepsTheFirst255BytesEvenInsideACharacter) {
  std::string euros;
  for (int i = 0; i < 100; ++i) euros += "\xE2\x82\xAC";
  Ref<BinaryStream> out = Folder()->Child("long")->CreateBinaryFile("prefs");
  out->WritePString(euros);
  out->Close();
  EXPECT_EQ(ReadRaw(Path("long")), "\xFF" + euros.substr(0, 255));
}

// Written over from where the stream stands: a write after a read goes right after the field read,
// and what is not written again stays. A stream opened for reading writes nothing.
TEST_F(FilesTest, AWriteGoesOverTheFileFromWhereTheStreamStands) {
  WriteRaw(Path("mixed"), "\x02" "ab" "\x02" "cd" "\x02" "ef");
  Ref<BinaryStream> s = Folder()->Child("mixed")->OpenAsBinaryFile(true);
  EXPECT_EQ(s->ReadPString().Bytes(), "ab");
  s->WritePString("xy");
  EXPECT_EQ(s->ReadPString().Bytes(), "ef");
  s->Close();
  EXPECT_EQ(ReadRaw(Path("mixed")), "\x02" "ab" "\x02" "xy" "\x02" "ef");
  s = Folder()->Child("mixed")->OpenAsBinaryFile(true);
  s->WritePString("q");
  s->Close();
  EXPECT_EQ(ReadRaw(Path("mixed")), "\x01" "qb" "\x02" "xy" "\x02" "ef");
  s = Folder()->Child("mixed")->OpenAsBinaryFile(false);
  s->WritePString("yy");
  s->Close();
  EXPECT_EQ(ReadRaw(Path("mixed")), "\x01" "qb" "\x02" "xy" "\x02" "ef");
}

// An open of what is not there or not a plain file, and a file made where no folder takes it, give
// nil; so does a child in a folder that is not there, or in a file. A nil stream raises when used.
TEST_F(FilesTest, OpenAndCreateFailAsNil) {
  Ref<FolderItem> missing = Folder()->Child("missing"), folder = Folder()->Child("customers");
  folder->CreateAsFolder();
  EXPECT_EQ(missing->OpenAsBinaryFile(true), nil);
  EXPECT_EQ(missing->OpenAsTextFile(), nil);
  EXPECT_EQ(folder->OpenAsBinaryFile(false), nil);
  EXPECT_EQ(folder->CreateBinaryFile("prefs"), nil);
  EXPECT_EQ(folder->CreateTextFile(), nil);
  EXPECT_EQ(New<FolderItem>(Path("nowhere/file"))->CreateTextFile(), nil);
  // An item made from its whole path inside the folder is the folder's own.
  New<FolderItem>(Path("customers/x"))->CreateTextFile()->Close();
  EXPECT_TRUE(folder->Child("x")->Exists());
  EXPECT_EQ(Folder()->Child("Stock")->Child("Items"), nil);
  WriteRaw(Path("plain"), "x");
  EXPECT_EQ(Folder()->Child("plain")->Child("x"), nil);
  EXPECT_THROW(missing->OpenAsBinaryFile(true)->ReadDouble(), NilObjectException);
}

// Links and pipes beneath the program's folder: what stands there exists, and every open refuses
// it at once, for reading and writing, so that nothing is followed and nothing blocks.
TEST_F(FilesTest, LinksAndPipesAreNeverOpened) {
  WriteRaw(outer_ + "/victim", "kept");
  ASSERT_EQ(::symlink("../victim", Path("link").c_str()), 0);
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0666), 0);
  ASSERT_EQ(::symlink(outer_.c_str(), Path("folderlink").c_str()), 0);
  for (const char* name : {"link", "pipe"}) {
    Ref<FolderItem> f = Folder()->Child(name);
    EXPECT_TRUE(f->Exists()) << name;
    EXPECT_EQ(f->OpenAsBinaryFile(false), nil) << name;
    EXPECT_EQ(f->OpenAsBinaryFile(true), nil) << name;
    EXPECT_EQ(f->OpenAsTextFile(), nil) << name;
    EXPECT_EQ(f->CreateBinaryFile("prefs"), nil) << name;
    EXPECT_EQ(f->CreateTextFile(), nil) << name;
    EXPECT_EQ(f->OpenAsPicture(), nil) << name;
  }
  Ref<FolderItem> through = Folder()->Child("folderlink");
  EXPECT_TRUE(through->Exists());
  EXPECT_FALSE(through->Directory());
  EXPECT_EQ(through->Child("victim"), nil);
  EXPECT_EQ(through->Count(), 0);
  EXPECT_EQ(New<FolderItem>(Path("folderlink/victim"))->OpenAsBinaryFile(false), nil);
  New<FolderItem>(Path("folderlink/planted"))->CreateAsFolder();
  New<FolderItem>(Path("folderlink/victim"))->Delete();
  Folder()->Child("link")->Delete();  // the link itself goes, not what it points to
  EXPECT_EQ(ReadRaw(outer_ + "/victim"), "kept");
  EXPECT_EQ(OnDisk(outer_), (std::vector<std::string>{"data", "victim"}));
  // Outside the folder only a picture is read, and a path to a pipe is no usable path at all.
  EXPECT_EQ(GetFolderItem(String(outer_ + "/victim"))->OpenAsBinaryFile(false), nil);
  EXPECT_EQ(GetFolderItem(String(Path("pipe"))), nil);
}

// A file written is put in place whole when its stream closes, with the old one's permissions; a
// stream for writing that only read leaves the very same file.
TEST_F(FilesTest, AFileIsReplacedWholeAndOnlyWhenWritten) {
  WriteRaw(Path("inv"), "\x02" "ab" "\x01" "z");
  ASSERT_EQ(::chmod(Path("inv").c_str(), 0640), 0);
  struct stat first {}, st {};
  ASSERT_EQ(::stat(Path("inv").c_str(), &first), 0);
  Ref<BinaryStream> s = Folder()->Child("inv")->OpenAsBinaryFile(true);
  EXPECT_EQ(s->ReadPString().Bytes(), "ab");
  s->Close();
  ASSERT_EQ(::stat(Path("inv").c_str(), &st), 0);
  EXPECT_EQ(st.st_ino, first.st_ino);

  s = Folder()->Child("inv")->OpenAsBinaryFile(true);
  s->WritePString("cd");
  EXPECT_EQ(ReadRaw(Path("inv")), "\x02" "ab" "\x01" "z");  // nothing reaches the file before Close
  s->Close();
  EXPECT_EQ(ReadRaw(Path("inv")), "\x02" "cd" "\x01" "z");
  ASSERT_EQ(::stat(Path("inv").c_str(), &st), 0);
  EXPECT_NE(st.st_ino, first.st_ino);
  EXPECT_EQ(st.st_mode & 07777, 0640u);

  // A stream dropped without Close, as when an exception stops its handler, keeps what it wrote.
  Folder()->Child("marker")->CreateTextFile()->WriteLine("Brown");
  EXPECT_EQ(ReadRaw(Path("marker")), "Brown\n");
  EXPECT_EQ(OnDisk(dir_), (std::vector<std::string>{"inv", "marker"}));
}

// Holding the folder takes its lock, which a second copy finds taken, and removes the temporary
// files that a copy killed in the middle of a saving left: only those, in the folder and the
// folders directly inside it, never through a link.
TEST_F(FilesTest, HoldingTheFolderRemovesOnlyTheProgramsOwnLeftovers) {
  std::filesystem::create_directories(Path("customers/deeper"));
  std::filesystem::create_directories(outer_ + "/elsewhere");
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

  const int second = ::open(dir_.c_str(), O_RDONLY | O_DIRECTORY);
  EXPECT_NE(::flock(second, LOCK_EX | LOCK_NB), 0);
  SetProgramFolder(dir_);  // the hold goes with the descriptor
  EXPECT_EQ(::flock(second, LOCK_EX | LOCK_NB), 0);
  WriteRaw(Path(".ledgerly-Cd4eF0"), "");
  EXPECT_EQ(HoldProgramFolder(), FolderHold::HeldByAnother);
  EXPECT_TRUE(std::filesystem::exists(Path(".ledgerly-Cd4eF0")));
  ::close(second);
}

TEST_F(FilesTest, TextLinesReadBackWhateverTheLineEnd) {
  Ref<TextOutputStream> out = Folder()->Child("Items")->CreateTextFile();
  out->WriteLine("2");
  out->WriteLine(ConvertEncoding("Caf\xC3\xA9", Encodings::MacRoman));
  out->Close();
  EXPECT_EQ(ReadRaw(Path("Items")), "2\nCaf\x8E\n");
  Ref<TextInputStream> in = Folder()->Child("Items")->OpenAsTextFile();
  EXPECT_EQ(in->ReadLine().Bytes(), "2");
  const String cafe = in->ReadLine();
  EXPECT_EQ(cafe.Encoding(), TextEncoding::None);
  EXPECT_TRUE(cafe.SameAs("Caf\xC3\xA9"));
  EXPECT_TRUE(in->AtEnd());

  WriteRaw(Path("mixed"), "cr\rcrlf\r\nlf\n\r\nlast");
  in = Folder()->Child("mixed")->OpenAsTextFile();
  for (const char* want : {"cr", "crlf", "lf", "", "last", "", ""}) EXPECT_EQ(in->ReadLine().Bytes(), want);
}

// Child finds a name exactly, else one that differs only in case (the first in byte order), also
// in non-ASCII letters; a name given untagged is written as the characters it shows.
TEST_F(FilesTest, ChildFindsTheExactNameElseOneThatDiffersInCase) {
  Folder()->Child("stock")->CreateAsFolder();
  Ref<TextOutputStream> out = Folder()->Child("STOCK")->Child("Items")->CreateTextFile();
  out->WriteLine("1");
  out->Close();
  EXPECT_EQ(ReadRaw(Path("stock/Items")), "1\n");
  EXPECT_EQ(Folder()->Child("Stock")->Name().Bytes(), "stock");
  WriteRaw(Path("Stock2"), "");
  WriteRaw(Path("stock2"), "");
  EXPECT_EQ(Folder()->Child("stock2")->Name().Bytes(), "stock2");
  EXPECT_EQ(Folder()->Child("STOCK2")->Name().Bytes(), "Stock2");
  WriteRaw(Path("\xC3\x89t\xC3\xA9"), "x");  // Été
  EXPECT_EQ(Folder()->Child("\xC3\xA9T\xC3\x89")->Name().Bytes(), "\xC3\x89t\xC3\xA9");
  Folder()->Child(String::FromBytes("Caf\x8E", TextEncoding::None))->CreateBinaryFile("prefs")->Close();
  EXPECT_TRUE(std::filesystem::exists(Path("Caf\xC3\xA9")));
}

// A name that no file system holds as it stands gives nil; one with "/" in it stays one name in
// the folder, whatever it says; a path that steps back or stands still on its way is not written.
TEST_F(FilesTest, HostileNamesGiveNilOrStayInside) {
  for (const std::string& bad : {std::string(""), std::string("."), std::string(".."), std::string("a\0b", 3),
                                 std::string(256, 'n')})
    EXPECT_EQ(Folder()->Child(bad), nil) << bad.size();
  EXPECT_EQ(New<FolderItem>(Path("./x"))->CreateBinaryFile("prefs"), nil);
  EXPECT_EQ(New<FolderItem>(Path("../x"))->CreateBinaryFile("prefs"), nil);
  for (const char* name : {"../x", "/etc/passwd", "../../tmp"}) Folder()->Child(name)->CreateBinaryFile("prefs")->Close();
  EXPECT_EQ(OnDisk(outer_), std::vector<std::string>{"data"});
  const std::string slash = "\xE2\x88\x95";
  EXPECT_EQ(OnDisk(dir_), (std::vector<std::string>{".." + slash + ".." + slash + "tmp", ".." + slash + "x",
                                                    slash + "etc" + slash + "passwd"}));
  EXPECT_EQ(Folder()->Child("/ETC/passwd")->Name().Bytes(), "/etc/passwd");
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

  // Many names, in an order that is no order at all.
  for (int i = 0; i < 3000; ++i) WriteRaw(Path("sub/" + std::string(i % 2 ? "Inv" : "inv") + std::to_string(i * 7919 % 3000)), "");
  Ref<FolderItem> sub = Folder()->Child("sub");
  ASSERT_EQ(sub->Count(), 3000);
  for (Integer i = 2; i <= 3000; ++i)
    ASSERT_TRUE(LessIgnoringCase(sub->Item(i - 1)->Name().Bytes(), sub->Item(i)->Name().Bytes())) << i;
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
  std::filesystem::rename(dir_, outer_ + "/moved");
  ASSERT_EQ(::mkdir(dir_.c_str(), 0700), 0);
  EXPECT_EQ(names(Folder()), (std::vector<std::string>{"inv", "old"}));
  Folder()->Child("INV")->Child("late")->CreateBinaryFile("prefs")->Close();
  EXPECT_TRUE(std::filesystem::exists(outer_ + "/moved/inv/late"));
  EXPECT_TRUE(std::filesystem::is_empty(dir_));
}

// What cannot be done is silently not done: a folder not empty deleted, a file already gone, a
// folder made where its parent is missing. An empty folder is deleted.
TEST_F(FilesTest, ADeletionOrAFolderThatCannotBeIsSilentlyNotDone) {
  Ref<FolderItem> f = Folder()->Child("unpaid");
  f->CreateAsFolder();
  Ref<FolderItem> marker = f->Child("00012-16-11-2026-Brown");
  marker->CreateTextFile()->Close();
  f->Delete();
  EXPECT_TRUE(marker->Exists());
  marker->Delete();
  marker->Delete();
  EXPECT_FALSE(marker->Exists());
  f->Delete();
  EXPECT_FALSE(f->Exists());
  New<FolderItem>(Path("a/b/c"))->CreateAsFolder();
  EXPECT_FALSE(Folder()->Child("a")->Exists());
}

TEST_F(FilesTest, EmptyPathIsTheProgramFolder) {
  SetProgramFolder(dir_ + "/");
  EXPECT_EQ(GetFolderItem("")->NativePath(), dir_);
  SetProgramFolder("");
  const std::string fallback = ProgramFolderPath();
  EXPECT_FALSE(fallback.empty());
  EXPECT_EQ(::access(fallback.c_str(), W_OK), 0);
}

}  // namespace
