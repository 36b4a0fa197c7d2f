// Files and folders: field bytes, overwriting, reads past the end, names and listing order.
#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
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

std::string Repeat(const std::string& s, int n) {
  std::string out;
  for (int i = 0; i < n; ++i) out += s;
  return out;
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

TEST_F(FilesTest, FieldsHaveTheirByteImages) {
  struct Case {
    const char* what;
    void (*write)(BinaryStream&);
    std::string bytes;
  };
  const Case cases[] = {
      {"Single 1.0", [](BinaryStream& s) { s.WriteSingle(1.0); }, std::string("\x3F\x80\x00\x00", 4)},
      {"Double 1.0", [](BinaryStream& s) { s.WriteDouble(1.0); }, std::string("\x3F\xF0\0\0\0\0\0\0", 8)},
      {"Double -2.5", [](BinaryStream& s) { s.WriteDouble(-2.5); }, std::string("\xC0\x04\0\0\0\0\0\0", 8)},
      {"PString empty", [](BinaryStream& s) { s.WritePString(""); }, std::string(1, '\0')},
      {"PString", [](BinaryStream& s) { s.WritePString("ab"); }, "\x02" "ab"},
      {"PString UTF-8", [](BinaryStream& s) { s.WritePString("\xC2\xA3"); }, "\x02\xC2\xA3"},
      {"PString Mac Roman",
       [](BinaryStream& s) { s.WritePString(ConvertEncoding("\xC2\xA3", Encodings::MacRoman)); }, "\x01\xA3"},
      {"Boolean true", [](BinaryStream& s) { s.WriteBoolean(true); }, "\x01"},
      {"Boolean false", [](BinaryStream& s) { s.WriteBoolean(false); }, std::string(1, '\0')},
  };
  for (const Case& c : cases) {
    Ref<BinaryStream> s = Folder()->Child("field")->CreateBinaryFile("prefs");
    ASSERT_NE(s, nil) << c.what;
    c.write(*s);
    s->Close();
    EXPECT_EQ(ReadRaw(Path("field")), c.bytes) << c.what;
  }
}

TEST_F(FilesTest, FieldsReadBack) {
  Ref<FolderItem> f = Folder()->Child("ledgerlyprefs");
  Ref<BinaryStream> out = f->CreateBinaryFile("prefs");
  out->WritePString("Brown & Sons");
  out->WriteSingle(12);
  out->WriteSingle(0.1);
  out->WriteDouble(17.5);
  out->WriteBoolean(true);
  out->WritePString("");
  out->Close();

  Ref<BinaryStream> in = f->OpenAsBinaryFile(false);
  ASSERT_NE(in, nil);
  const String name = in->ReadPString();
  EXPECT_EQ(name.Bytes(), "Brown & Sons");
  EXPECT_EQ(name.Encoding(), TextEncoding::None);
  EXPECT_EQ(in->ReadSingle(), 12.0);
  EXPECT_EQ(in->ReadSingle(), static_cast<double>(0.1f));
  EXPECT_EQ(in->ReadDouble(), 17.5);
  EXPECT_TRUE(in->ReadBoolean());
  EXPECT_TRUE(in->ReadPString().IsEmpty());
  in->Close();
}

TEST_F(FilesTest, PStringKeepsTheFirst255Bytes) {
  const std::string address(300, 'x');
  Ref<BinaryStream> out = Folder()->Child("long")->CreateBinaryFile("prefs");
  out->WritePString(address);
  out->Close();
  const std::string raw = ReadRaw(Path("long"));
  ASSERT_EQ(raw.size(), 256u);
  EXPECT_EQ(static_cast<unsigned char>(raw[0]), 255);
  // The cut falls on a byte, also inside a character.
  const std::string euros = Repeat("\xE2\x82\xAC", 100);
  out = Folder()->Child("long")->CreateBinaryFile("prefs");
  out->WritePString(euros);
  out->Close();
  EXPECT_EQ(ReadRaw(Path("long")).substr(1), euros.substr(0, 255));
}

TEST_F(FilesTest, BooleanReadsTheLowestBit) {
  WriteRaw(Path("flags"), std::string("\x01\x02\x03\xFF\x00", 5));
  Ref<BinaryStream> in = Folder()->Child("flags")->OpenAsBinaryFile(false);
  EXPECT_TRUE(in->ReadBoolean());
  EXPECT_FALSE(in->ReadBoolean());
  EXPECT_TRUE(in->ReadBoolean());
  EXPECT_TRUE(in->ReadBoolean());
  EXPECT_FALSE(in->ReadBoolean());
}

TEST_F(FilesTest, SingleNarrowsOnWriting) {
  Ref<BinaryStream> out = Folder()->Child("n")->CreateBinaryFile("prefs");
  out->WriteSingle(16777217.0);  // no Single holds it
  out->WriteSingle(1e300);
  out->Close();
  Ref<BinaryStream> in = Folder()->Child("n")->OpenAsBinaryFile(false);
  EXPECT_EQ(in->ReadSingle(), static_cast<double>(static_cast<float>(16777217.0)));
  EXPECT_TRUE(std::isinf(in->ReadSingle()));
}

TEST_F(FilesTest, ShorterWriteOverLongerFileKeepsTheTail) {
  Ref<FolderItem> f = Folder()->Child("00012-16-11-2026-Brown");
  Ref<BinaryStream> out = f->CreateBinaryFile("prefs");
  out->WritePString(std::string(200, 'a'));
  out->WritePString(std::string(200, 'b'));
  out->WriteDouble(99);
  out->Close();
  const auto before = ReadRaw(f->NativePath());

  out = f->OpenAsBinaryFile(true);
  ASSERT_NE(out, nil);
  out->WritePString("short");
  out->WriteDouble(2.5);
  out->Close();
  const auto after = ReadRaw(f->NativePath());

  EXPECT_EQ(after.size(), before.size());
  EXPECT_EQ(after.substr(15), before.substr(15));
  Ref<BinaryStream> in = f->OpenAsBinaryFile(true);
  EXPECT_EQ(in->ReadPString().Bytes(), "short");
  EXPECT_EQ(in->ReadDouble(), 2.5);
}

TEST_F(FilesTest, ReadsPastTheEndGiveEmptyZeroAndFalse) {
  WriteRaw(Path("empty"), "");
  Ref<BinaryStream> in = Folder()->Child("empty")->OpenAsBinaryFile(true);
  ASSERT_NE(in, nil);
  EXPECT_TRUE(in->ReadPString().IsEmpty());
  EXPECT_EQ(in->ReadSingle(), 0);
  EXPECT_EQ(in->ReadDouble(), 0);
  EXPECT_FALSE(in->ReadBoolean());
  EXPECT_TRUE(in->ReadPString().IsEmpty());

  // A number cut short is past the end; a string cut short gives the bytes there are.
  WriteRaw(Path("cut"), std::string("\x3F\xF0\x00", 3));
  in = Folder()->Child("cut")->OpenAsBinaryFile(false);
  EXPECT_EQ(in->ReadDouble(), 0);
  EXPECT_EQ(in->ReadSingle(), 0);
  WriteRaw(Path("cut"), "\x05" "ab");
  in = Folder()->Child("cut")->OpenAsBinaryFile(false);
  EXPECT_EQ(in->ReadPString().Bytes(), "ab");
  EXPECT_TRUE(in->ReadPString().IsEmpty());
}

TEST_F(FilesTest, AWriteAfterAReadGoesRightAfterTheFieldRead) {
  WriteRaw(Path("mixed"), "\x02" "ab" "\x02" "cd" "\x02" "ef");
  Ref<BinaryStream> s = Folder()->Child("mixed")->OpenAsBinaryFile(true);
  EXPECT_EQ(s->ReadPString().Bytes(), "ab");
  s->WritePString("xy");
  EXPECT_EQ(s->ReadPString().Bytes(), "ef");
  s->Close();
  EXPECT_EQ(ReadRaw(Path("mixed")), "\x02" "ab" "\x02" "xy" "\x02" "ef");
}

TEST_F(FilesTest, ReadOnlyStreamWritesNothing) {
  WriteRaw(Path("ro"), "\x01" "x");
  Ref<BinaryStream> s = Folder()->Child("ro")->OpenAsBinaryFile(false);
  s->WritePString("yy");
  s->Close();
  EXPECT_EQ(ReadRaw(Path("ro")), "\x01" "x");
}

TEST_F(FilesTest, OpenAndCreateFailAsNil) {
  Ref<FolderItem> missing = Folder()->Child("missing");
  EXPECT_EQ(missing->OpenAsBinaryFile(false), nil);
  EXPECT_EQ(missing->OpenAsBinaryFile(true), nil);
  EXPECT_EQ(missing->OpenAsTextFile(), nil);
  EXPECT_FALSE(missing->Exists());

  Ref<FolderItem> folder = Folder()->Child("customers");
  folder->CreateAsFolder();
  EXPECT_EQ(folder->OpenAsBinaryFile(false), nil);
  EXPECT_EQ(folder->OpenAsBinaryFile(true), nil);
  EXPECT_EQ(folder->OpenAsTextFile(), nil);
  EXPECT_EQ(folder->CreateBinaryFile("prefs"), nil);
  EXPECT_EQ(folder->CreateTextFile(), nil);
  EXPECT_TRUE(folder->Directory());

  Ref<FolderItem> inMissing(New<FolderItem>(Path("nowhere/file")));
  EXPECT_EQ(inMissing->CreateBinaryFile("prefs"), nil);
  EXPECT_EQ(inMissing->CreateTextFile(), nil);

  // A nil stream raises on first use.
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

TEST_F(FilesTest, CreateEmptiesAnExistingFile) {
  WriteRaw(Path("Items"), "old content\n");
  Ref<BinaryStream> b = Folder()->Child("Items")->CreateBinaryFile("prefs");
  b->Close();
  EXPECT_EQ(ReadRaw(Path("Items")), "");
  WriteRaw(Path("Items"), "old content\n");
  Ref<TextOutputStream> t = Folder()->Child("Items")->CreateTextFile();
  t->WriteLine("new");
  t->Close();
  EXPECT_EQ(ReadRaw(Path("Items")), "new\n");
}

TEST_F(FilesTest, TextLinesReadBackWhateverTheLineEnd) {
  Ref<TextOutputStream> out = Folder()->Child("Items")->CreateTextFile();
  out->WriteLine("2");
  out->WriteLine("Widget");
  out->WriteLine("");
  out->WriteLine(ConvertEncoding("Caf\xC3\xA9", Encodings::MacRoman));
  out->Close();
  EXPECT_EQ(ReadRaw(Path("Items")), "2\nWidget\n\nCaf\x8E\n");

  Ref<TextInputStream> in = Folder()->Child("Items")->OpenAsTextFile();
  EXPECT_EQ(in->ReadLine().Bytes(), "2");
  EXPECT_EQ(in->ReadLine().Bytes(), "Widget");
  EXPECT_EQ(in->ReadLine().Bytes(), "");
  const String cafe = in->ReadLine();
  EXPECT_EQ(cafe.Encoding(), TextEncoding::None);
  EXPECT_TRUE(cafe.SameAs("Caf\xC3\xA9"));
  EXPECT_TRUE(in->AtEnd());
  EXPECT_EQ(in->ReadLine().Bytes(), "");

  WriteRaw(Path("mixed"), "cr\rcrlf\r\nlf\n\r\nlast");
  in = Folder()->Child("mixed")->OpenAsTextFile();
  for (const char* want : {"cr", "crlf", "lf", "", "last", "", ""}) EXPECT_EQ(in->ReadLine().Bytes(), want);
}

TEST_F(FilesTest, ChildIgnoresCase) {
  Folder()->Child("stock")->CreateAsFolder();
  EXPECT_EQ(OnDisk(dir_), std::vector<std::string>{"stock"});
  Ref<FolderItem> upper = Folder()->Child("Stock");
  EXPECT_TRUE(upper->Exists());
  EXPECT_TRUE(upper->Directory());
  EXPECT_EQ(upper->NativePath(), Path("stock"));
  EXPECT_EQ(upper->Name().Bytes(), "stock");

  Ref<TextOutputStream> out = Folder()->Child("STOCK")->Child("Items")->CreateTextFile();
  out->WriteLine("1");
  out->Close();
  EXPECT_EQ(OnDisk(dir_), std::vector<std::string>{"stock"});
  EXPECT_EQ(ReadRaw(Path("stock/Items")), "1\n");
  EXPECT_TRUE(Folder()->Child("stock")->Child("items")->Exists());

  // Non-ASCII letters too.
  WriteRaw(Path("\xC3\x89t\xC3\xA9"), "x");  // Été
  EXPECT_EQ(Folder()->Child("\xC3\xA9T\xC3\x89")->Name().Bytes(), "\xC3\x89t\xC3\xA9");
}

TEST_F(FilesTest, ChildPrefersTheExactName) {
  WriteRaw(Path("Stock"), "1");
  WriteRaw(Path("stock"), "2");
  EXPECT_EQ(Folder()->Child("stock")->Name().Bytes(), "stock");
  EXPECT_EQ(Folder()->Child("Stock")->Name().Bytes(), "Stock");
  EXPECT_EQ(Folder()->Child("STOCK")->Name().Bytes(), "Stock");
}

TEST_F(FilesTest, ChildOfAFolderThatIsNotThereIsNil) {
  EXPECT_EQ(Folder()->Child("Stock")->Child("Items"), nil);
  WriteRaw(Path("plain"), "x");
  EXPECT_EQ(Folder()->Child("plain")->Child("x"), nil);
  EXPECT_NE(Folder()->Child("not yet"), nil);
  EXPECT_FALSE(Folder()->Child("not yet")->Exists());
}

TEST_F(FilesTest, HostileNamesGiveNilOrStayInside) {
  const std::vector<std::string> outerBefore = OnDisk(outer_);
  for (const std::string& bad : {std::string(""), std::string("."), std::string(".."), std::string("a\0b", 3),
                                 std::string(256, 'n'), Repeat("\xC3\xA9", 128)})
    EXPECT_EQ(Folder()->Child(bad), nil) << bad.size();
  EXPECT_NE(Folder()->Child(std::string(255, 'n')), nil);

  for (const char* name : {"../x", "a/b", "/etc/passwd", "../../tmp"}) {
    Ref<FolderItem> f = Folder()->Child(name);
    ASSERT_NE(f, nil) << name;
    Ref<BinaryStream> s = f->CreateBinaryFile("prefs");
    ASSERT_NE(s, nil) << name;
    s->WritePString("x");
    s->Close();
    EXPECT_EQ(f->Name().Bytes(), name);
  }
  EXPECT_EQ(OnDisk(outer_), outerBefore);
  const std::string slash = "\xE2\x88\x95";
  EXPECT_EQ(OnDisk(dir_), (std::vector<std::string>{".." + slash + ".." + slash + "tmp", ".." + slash + "x",
                                                    "a" + slash + "b", slash + "etc" + slash + "passwd"}));
  // Listed back under the name it was given, and found again by it.
  Ref<FolderItem> folder = Folder();
  std::vector<std::string> listed;
  for (Integer i = 1; i <= folder->Count(); ++i) listed.push_back(folder->Item(i)->Name().Bytes());
  EXPECT_NE(std::find(listed.begin(), listed.end(), "a/b"), listed.end());
  EXPECT_TRUE(Folder()->Child("A/B")->Exists());
}

TEST_F(FilesTest, UntaggedNamesAreWrittenAsTheirCharacters) {
  Ref<FolderItem> f = Folder()->Child(String::FromBytes("Caf\x8E", TextEncoding::None));
  f->CreateBinaryFile("prefs")->Close();
  EXPECT_EQ(OnDisk(dir_), std::vector<std::string>{"Caf\xC3\xA9"});
}

TEST_F(FilesTest, ListingIsByNameIgnoringCaseWithHiddenEntries) {
  for (const char* name : {"b", "A", ".hidden", "C", "a", "00002-x", "00010-y", "\xC3\x89t\xC3\xA9", "Zed"})
    WriteRaw(Path(name), "");
  Folder()->Child("sub")->CreateAsFolder();
  Ref<FolderItem> folder = Folder();
  const Integer n = folder->Count();
  ASSERT_EQ(n, 10);
  std::vector<std::string> names;
  for (Integer i = 1; i <= n; ++i) names.push_back(folder->Item(i)->Name().Bytes());
  EXPECT_EQ(names, (std::vector<std::string>{".hidden", "00002-x", "00010-y", "A", "a", "b", "C", "sub", "Zed",
                                             "\xC3\x89t\xC3\xA9"}));
  EXPECT_EQ(folder->Item(0), nil);
  EXPECT_EQ(folder->Item(n + 1), nil);
  EXPECT_TRUE(folder->Item(8)->Directory());

  // Count reads the folder again.
  WriteRaw(Path("new"), "");
  EXPECT_EQ(folder->Count(), 11);
  EXPECT_EQ(Folder()->Child("empty")->Count(), 0);
}

TEST_F(FilesTest, ManyEntriesListInOrder) {
  const int n = 3000;
  for (int i = 0; i < n; ++i) WriteRaw(Path((i % 2 ? "Inv" : "inv") + std::to_string(i * 7919 % n)), "");
  Ref<FolderItem> folder = Folder();
  ASSERT_EQ(folder->Count(), n);
  std::string previous;
  for (Integer i = 1; i <= n; ++i) {
    const std::string name = folder->Item(i)->Name().Bytes();
    if (i > 1) {
      EXPECT_TRUE(LessIgnoringCase(previous, name)) << previous << " " << name;
    }
    previous = name;
  }
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

TEST_F(FilesTest, ExistsDeleteAndCreateAsFolder) {
  Ref<FolderItem> f = Folder()->Child("unpaid");
  EXPECT_FALSE(f->Exists());
  f->CreateAsFolder();
  EXPECT_TRUE(f->Exists());
  f->CreateAsFolder();  // already there: silent
  Ref<FolderItem> marker = f->Child("00012-16-11-2026-Brown");
  marker->CreateTextFile()->Close();
  EXPECT_TRUE(marker->Exists());
  EXPECT_FALSE(marker->Directory());
  f->Delete();  // not empty: silent, nothing goes
  EXPECT_TRUE(marker->Exists());
  marker->Delete();
  EXPECT_FALSE(marker->Exists());
  marker->Delete();  // gone already: silent
  f->Delete();
  EXPECT_FALSE(f->Exists());
  New<FolderItem>(Path("a/b/c"))->CreateAsFolder();  // parent missing: silent
  EXPECT_FALSE(Folder()->Child("a")->Exists());
}

TEST_F(FilesTest, AbsolutePathFindsTheSameItemAgain) {
  Ref<FolderItem> logo = Folder()->Child("logo \xC3\xA9t\xC3\xA9.png");
  WriteRaw(logo->NativePath(), "not a picture");
  const String path = logo->AbsolutePath();
  EXPECT_EQ(path.Bytes().front(), '/');

  // As the prefsfile keeps it: written as a PString, read back untagged.
  Ref<BinaryStream> out = Folder()->Child("ledgerlyprefs")->CreateBinaryFile("prefs");
  out->WritePString(path);
  out->Close();
  const String stored = Folder()->Child("ledgerlyprefs")->OpenAsBinaryFile(false)->ReadPString();
  Ref<FolderItem> again = GetFolderItem(stored, 0);
  ASSERT_NE(again, nil);
  EXPECT_TRUE(again->Exists());
  EXPECT_EQ(again->NativePath(), logo->NativePath());
  EXPECT_EQ(again->Name().Bytes(), "logo \xC3\xA9t\xC3\xA9.png");

  // A removed file is still an item, one that does not exist; a relative path is unusable.
  logo->Delete();
  EXPECT_FALSE(GetFolderItem(stored)->Exists());
  EXPECT_EQ(GetFolderItem("logo.png"), nil);
  EXPECT_EQ(GetFolderItem(std::string("/tmp/a\0b", 8)), nil);
}

TEST_F(FilesTest, EmptyPathIsTheProgramFolder) {
  EXPECT_EQ(GetFolderItem("")->NativePath(), dir_);
  EXPECT_TRUE(GetFolderItem("")->Directory());
  SetProgramFolder(dir_ + "/");
  EXPECT_EQ(GetFolderItem("")->NativePath(), dir_);
  SetProgramFolder("");
  const std::string fallback = ProgramFolderPath();
  EXPECT_FALSE(fallback.empty());
  EXPECT_EQ(::access(fallback.c_str(), W_OK), 0);
}

}  // namespace
