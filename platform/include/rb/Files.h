// SPDX-License-Identifier: GPL-3.0-or-later
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
class FileImage;
class Fd;
}
class TextOutputStream;
class Picture;

// A place in the file system that need not exist. Making one touches nothing on the disk.
//
// Names: Child matches names without regard to case (an existing entry whose name differs only in
// case is found before a new name is made) and never reaches outside its folder. A "/" in a leaf
// name is stored on disk as U+2215 and Name gives "/" back. The empty name, ".", "..", a name
// with a NUL byte and a name over 255 bytes on disk give nil.
//
// Safety: beneath the program's folder no symbolic link is followed, for reading or writing: an
// open of a link, or of anything reached through one, gives nil, as does an open of a pipe, socket
// or device (so nothing blocks), while Exists tells the truth about the entry itself. Nothing is
// opened, made or removed outside the program's folder; the one thing read from outside is a
// picture. A file written is put in place whole when its stream closes: the old file stays until
// the new one is complete on disk (see BinaryStream).
class FolderItem {
 public:
  explicit FolderItem(std::string nativePath);
  // For the platform: an item found in a folder beneath the program's folder, held open.
  FolderItem(std::string nativePath, std::shared_ptr<const rbi::Fd> folder);

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
  // The folder this item was found in, beneath the program's folder, with no link on the way;
  // null when not known (the item is found again from the program's folder) or outside it.
  std::shared_ptr<const rbi::Fd> folder_;
  // This item as a folder, when it was listed beneath the program's folder: its entries' folder.
  std::shared_ptr<const rbi::Fd> listedFolder_;
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

// One copy of the program per folder. The hold is a lock on the folder's own descriptor, so it
// leaves no entry behind and ends with the process. Once held, the temporary files of a copy that
// died in the middle of a saving are removed.
enum class FolderHold { Held, HeldByAnother, Unavailable };
FolderHold HoldProgramFolder();

// A stream on the image of a file in memory. One for writing puts the image in place whole at
// Close (through a temporary file, synced and renamed over the old one) and raises IOException
// when that fails, the old file left as it was. One opened for writing that wrote nothing leaves
// the file untouched. One dropped without Close still puts what it wrote in place.
class FileStream {
 public:
  explicit FileStream(std::unique_ptr<rbi::FileImage> file);
  ~FileStream();
  FileStream(const FileStream&) = delete;
  FileStream& operator=(const FileStream&) = delete;
  void Close();

 protected:
  rbi::FileImage& file() const { return *file_; }

 private:
  std::unique_ptr<rbi::FileImage> file_;
};

// Big-endian fields: PString, Single, Double, Boolean. Reads past the end give "", 0 and False.
class BinaryStream : public FileStream {
 public:
  using FileStream::FileStream;
  String ReadPString();
  void WritePString(const String& s);  // the first 255 bytes
  Double ReadSingle();
  void WriteSingle(Double v);
  Double ReadDouble();
  void WriteDouble(Double v);
  bool ReadBoolean();
  void WriteBoolean(bool v);
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

class TextOutputStream : public FileStream {
 public:
  using FileStream::FileStream;
  void WriteLine(const String& text);  // the bytes, then LF
};
