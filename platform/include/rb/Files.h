// Files, folders and streams.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rb/Core.h"
#include "rb/String.h"

class BinaryStream;
class TextInputStream;
namespace rbi {
struct FolderListing;
}
class TextOutputStream;
class Picture;

// A place in the file system that need not exist. Making one touches nothing on the disk.
//
// Names: Child matches names without regard to case (an existing entry whose name differs only in
// case is found before a new name is made) and never reaches outside its folder. A "/" in a leaf
// name is stored on disk as U+2215 and Name gives "/" back. The empty name, ".", "..", a name
// with a NUL byte and a name over 255 bytes on disk give nil.
class FolderItem {
 public:
  explicit FolderItem(std::string nativePath);

  Ref<FolderItem> Child(const String& name);
  Ref<FolderItem> Item(Integer i);  // counted from 1, in the order of the names ignoring case
  Integer Count();                  // hidden entries included
  bool Exists();
  bool Directory();
  String Name();
  String AbsolutePath();
  void Delete();
  void CreateAsFolder();
  Ref<BinaryStream> OpenAsBinaryFile(bool write);
  Ref<BinaryStream> CreateBinaryFile(const String& typeName);
  Ref<TextInputStream> OpenAsTextFile();
  Ref<TextOutputStream> CreateTextFile();
  Ref<Picture> OpenAsPicture();

  const std::string& NativePath() const { return path_; }

 private:
  void LoadListing();
  std::string path_;
  bool listed_ = false;
  // On-disk names, sorted; shared with the platform's store of listings and never changed.
  std::shared_ptr<const rbi::FolderListing> listing_;
};

// "" gives the program's folder; otherwise what AbsolutePath gave, or nil.
Ref<FolderItem> GetFolderItem(const String& path, Integer mode = 0);
// The file-open dialog; nil when cancelled.
Ref<FolderItem> GetOpenFolderItem(const String& filter);

// The program's folder: the folder of the executable, or, where that is not writable, the user's
// data folder for the program. Tests and the scenario runner set it.
void SetProgramFolder(const std::string& nativePath);
std::string ProgramFolderPath();

// Big-endian fields: PString, Single, Double, Boolean. Reads past the end give "", 0 and False.
class BinaryStream {
 public:
  BinaryStream(int fd, bool writable);
  ~BinaryStream();
  BinaryStream(const BinaryStream&) = delete;
  BinaryStream& operator=(const BinaryStream&) = delete;

  String ReadPString();
  void WritePString(const String& s);  // the first 255 bytes
  Double ReadSingle();
  void WriteSingle(Double v);
  Double ReadDouble();
  void WriteDouble(Double v);
  bool ReadBoolean();
  void WriteBoolean(bool v);
  void Close();

 private:
  bool ReadBytes(void* out, std::size_t n);
  void WriteBytes(const void* in, std::size_t n);
  std::size_t ReadAhead(void* out, std::size_t n);
  int fd_ = -1;
  bool writable_ = false;
  // Reads are taken from the file a block at a time; a write first puts the file back where the
  // reading stands.
  std::string readAhead_;
  std::size_t readPos_ = 0;
};

class TextInputStream {
 public:
  explicit TextInputStream(std::string contents);
  // The next line without its line end (LF, CRLF or CR); "" past the end.
  String ReadLine();
  bool AtEnd() const { return pos_ >= data_.size(); }
  void Close() {}

 private:
  std::string data_;
  std::size_t pos_ = 0;
};

class TextOutputStream {
 public:
  explicit TextOutputStream(int fd);
  ~TextOutputStream();
  TextOutputStream(const TextOutputStream&) = delete;
  TextOutputStream& operator=(const TextOutputStream&) = delete;
  void WriteLine(const String& text);  // the bytes, then LF
  void Close();

 private:
  int fd_ = -1;
};
