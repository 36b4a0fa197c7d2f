// SPDX-License-Identifier: GPL-3.0-or-later
// Files and folders: where an item lies, and what may be done to it there.
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CaseFold.h"
#include "FileImage.h"
#include "FileNames.h"
#include "FolderListing.h"
#include "PictureImpl.h"
#include "ProgramFolder.h"
#include "rb/Files.h"

using rbi::Fd;
using rbi::FilePlace;
using rbi::ProgramFolder;

namespace {

std::string Join(const std::string& folder, std::string_view name) {
  if (folder == "/") return "/" + std::string(name);
  std::string path;
  path.reserve(folder.size() + 1 + name.size());
  path.append(folder).append(1, '/').append(name);
  return path;
}

std::string CurrentFolder() {
  std::vector<char> buf(PATH_MAX);
  while (!::getcwd(buf.data(), buf.size())) {
    if (errno != ERANGE) return "/";
    buf.resize(buf.size() * 2);
  }
  return buf.data();
}

std::string LeafOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

// An item as a folder, open. Beneath the program's folder with no link on the way, and then
// `inside` is set; outside it, as the system finds it, for reading only.
rbi::FolderRef OpenAsFolder(const std::string& path, const rbi::FolderRef& folder, bool* inside) {
  *inside = true;
  if (folder) {
    const int fd = ::openat(folder->get(), LeafOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    return fd >= 0 ? std::make_shared<const Fd>(Fd::Own(fd)) : nullptr;
  }
  std::vector<std::string> parts;
  if (ProgramFolder::Split(path, parts)) return ProgramFolder::OpenFolder(parts, parts.size());
  *inside = false;
  const int fd = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  return fd >= 0 ? std::make_shared<const Fd>(Fd::Own(fd)) : nullptr;
}

// The folder that holds an item beneath the program's folder, open with no link on the way, and
// the item's name there. Nothing for the program's folder itself and for what lies outside it.
std::optional<FilePlace> PlaceOf(const std::string& path, const rbi::FolderRef& folder) {
  if (folder) return FilePlace{folder, LeafOf(path)};
  std::vector<std::string> parts;
  if (!ProgramFolder::Split(path, parts) || parts.empty()) return std::nullopt;
  rbi::FolderRef held = ProgramFolder::OpenFolder(parts, parts.size() - 1);
  if (!held) return std::nullopt;
  return FilePlace{std::move(held), std::move(parts.back())};
}

bool EntryState(const FilePlace& p, struct stat* st) {
  return ::fstatat(p.folder->get(), p.leaf.c_str(), st, AT_SYMLINK_NOFOLLOW) == 0;
}

Fd Checked(int fd, struct stat* st) {
  if (fd < 0) return Fd();
  Fd owned = Fd::Own(fd);
  if (::fstat(fd, st) != 0 || !S_ISREG(st->st_mode)) return Fd();
  return owned;
}

// A plain file opened: never a link, and never a pipe or a device, which could block or answer
// to being opened; those are refused before the open and checked again after it.
Fd OpenPlainFile(const FilePlace& p, int access, struct stat* st) {
  if (!EntryState(p, st) || !S_ISREG(st->st_mode)) return Fd();
  int fd;
  do {
    fd = ::openat(p.folder->get(), p.leaf.c_str(), access | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  } while (fd < 0 && errno == EINTR);
  return Checked(fd, st);
}

std::string ReadAll(int fd) {
  std::string contents;
  char buf[65536];
  for (;;) {
    const ssize_t r = ::read(fd, buf, sizeof buf);
    if (r < 0 && errno == EINTR) continue;
    if (r <= 0) break;
    contents.append(buf, static_cast<std::size_t>(r));
  }
  return contents;
}

// A new file, or a new content for the plain file at a place that this process may write; nil
// for anything else, and when the folder takes no new file.
std::unique_ptr<rbi::FileImage> CreateImage(const std::string& path, const rbi::FolderRef& folder) {
  std::optional<FilePlace> place = PlaceOf(path, folder);
  if (!place) return nullptr;
  struct stat st {};
  const bool had = EntryState(*place, &st);
  if (had) {
    if (!S_ISREG(st.st_mode)) return nullptr;
    const int test = ::openat(place->folder->get(), place->leaf.c_str(),
                              O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (test < 0) return nullptr;
    ::close(test);
  }
  auto fresh = rbi::Replacement::Begin(std::move(*place), had ? &st : nullptr);
  if (!fresh) return nullptr;
  return std::make_unique<rbi::FileImage>(std::move(fresh));
}

}  // namespace

FolderItem::FolderItem(std::string nativePath) : path_(std::move(nativePath)) {
  if (path_.empty() || path_[0] != '/') path_ = Join(CurrentFolder(), path_);
  while (path_.size() > 1 && path_.back() == '/') path_.pop_back();
}

FolderItem::FolderItem(std::string nativePath, std::shared_ptr<const rbi::Fd> folder)
    : path_(std::move(nativePath)), folder_(std::move(folder)) {}

Ref<FolderItem> FolderItem::Child(const String& name) {
  const std::string onDisk = rbi::StoredName(name.Utf8());
  if (onDisk.empty() || onDisk == "." || onDisk == ".." || onDisk.size() > rbi::kMaxNameBytes ||
      onDisk.find('\0') != std::string::npos)
    return nil;
  bool inside = false;
  const rbi::FolderRef self = OpenAsFolder(path_, folder_, &inside);
  if (!self) return nil;
  // An item found beneath the program's folder keeps the folder it was found in.
  auto child = [&](std::string_view leaf) {
    return New<FolderItem>(Join(path_, leaf), inside ? self : nullptr);
  };
  struct stat st {};
  if (::fstatat(self->get(), onDisk.c_str(), &st, AT_SYMLINK_NOFOLLOW) == 0) return child(onDisk);

  // An entry whose name differs only in case is this child; of several, the lowest by bytes. A
  // new invoice's name is looked for here in a folder of thousands: in a kept listing the names of
  // the same key stand together, else the entries are compared as they are read, and only a name
  // that is not plain ASCII is folded.
  const std::string key = FoldCase(onDisk);
  const std::string shownKey = rbi::KeyOf(onDisk);
  auto same = [&key, &shownKey](std::string_view n) {
    return IsAsciiText(n) ? n.size() == key.size() && rbi::CompareLowered(n, key) == 0 : rbi::KeyOf(n) == shownKey;
  };
  std::string found;
  bool any = false;
  auto consider = [&](std::string_view n) {
    if (same(n) && (!any || n < std::string_view(found))) {
      found.assign(n);
      any = true;
    }
  };
  if (const auto listing = rbi::KeptListing(path_, self->get())) {
    std::size_t at = rbi::FirstNotBefore(*listing, [&shownKey](std::string_view entry) {
      return rbi::CompareWithKey(entry, shownKey) < 0;
    });
    for (; at < listing->size() && rbi::CompareWithKey((*listing)[at], shownKey) == 0; ++at) consider((*listing)[at]);
  } else if (DIR* dir = rbi::ReadEntries(self->get())) {
    while (const dirent* e = ::readdir(dir)) {
      const std::string_view n(e->d_name);
      if (n != "." && n != "..") consider(n);
    }
    ::closedir(dir);
  }
  return child(any ? found : onDisk);
}

void FolderItem::LoadListing() {
  bool inside = false;
  const rbi::FolderRef self = OpenAsFolder(path_, folder_, &inside);
  listing_ = self ? rbi::KeptListing(path_, self->get()) : nullptr;
  if (!listing_) listing_ = self ? rbi::ReadListing(path_, self->get()) : std::make_shared<const rbi::FolderListing>();
  listedFolder_ = inside ? self : nullptr;
  listed_ = true;
}

// Count takes the folder as it stands now; Item hands out from the listing that Count (or the
// first Item) took, so a loop of Count then Item(1) to Item(n) sees one listing throughout.
Integer FolderItem::Count() {
  LoadListing();
  return static_cast<Integer>(std::min<std::size_t>(listing_->size(), INT32_MAX));
}

Ref<FolderItem> FolderItem::Item(Integer i) {
  if (!listed_) LoadListing();
  if (i < 1 || static_cast<std::size_t>(i) > listing_->size()) return nil;
  return New<FolderItem>(Join(path_, (*listing_)[static_cast<std::size_t>(i) - 1]), listedFolder_);
}

// True for whatever stands at the name, a link included; it is the opening that refuses.
bool FolderItem::Exists() {
  struct stat st {};
  if (!folder_) {
    std::vector<std::string> parts;
    if (!ProgramFolder::Split(path_, parts)) return ::stat(path_.c_str(), &st) == 0;
    if (parts.empty()) return ProgramFolder::Descriptor() >= 0;
  }
  const std::optional<FilePlace> place = PlaceOf(path_, folder_);
  return place && EntryState(*place, &st);
}

bool FolderItem::Directory() {
  bool inside = false;
  return OpenAsFolder(path_, folder_, &inside) != nullptr;
}

String FolderItem::Name() {
  if (path_ == "/") return String();
  std::string leaf = path_.substr(path_.rfind('/') + 1);
  // Plain ASCII holds no stored slash and is UTF-8 as it stands.
  if (IsAsciiText(leaf)) return String::FromBytes(std::move(leaf), TextEncoding::UTF8);
  return rbi::NameString(rbi::ShownName(leaf));
}

String FolderItem::AbsolutePath() { return rbi::NameString(path_); }

void FolderItem::Delete() {
  if (const std::optional<FilePlace> place = PlaceOf(path_, folder_)) {
    if (::unlinkat(place->folder->get(), place->leaf.c_str(), 0) != 0 && errno == EISDIR)
      ::unlinkat(place->folder->get(), place->leaf.c_str(), AT_REMOVEDIR);
  }
}

void FolderItem::CreateAsFolder() {
  if (const std::optional<FilePlace> place = PlaceOf(path_, folder_)) ::mkdirat(place->folder->get(), place->leaf.c_str(), 0777);
}

// A file that can be read but not written can't be opened for writing, and one opened for
// writing is only replaced once something is written to it.
Ref<BinaryStream> FolderItem::OpenAsBinaryFile(bool write) {
  std::optional<FilePlace> place = PlaceOf(path_, folder_);
  if (!place) return nil;
  struct stat st {};
  Fd fd = OpenPlainFile(*place, write ? O_RDWR : O_RDONLY, &st);
  if (!fd) return nil;
  std::optional<FilePlace> writeTo;
  if (write) writeTo = std::move(place);
  return New<BinaryStream>(std::make_unique<rbi::FileImage>(std::move(fd), st, std::move(writeTo)));
}

Ref<BinaryStream> FolderItem::CreateBinaryFile(const String& /*typeName*/) {
  auto image = CreateImage(path_, folder_);
  if (!image) return nil;
  return New<BinaryStream>(std::move(image));
}

Ref<TextInputStream> FolderItem::OpenAsTextFile() {
  const std::optional<FilePlace> place = PlaceOf(path_, folder_);
  if (!place) return nil;
  struct stat st {};
  const Fd fd = OpenPlainFile(*place, O_RDONLY, &st);
  if (!fd) return nil;
  return New<TextInputStream>(ReadAll(fd.get()));
}

Ref<TextOutputStream> FolderItem::CreateTextFile() {
  auto image = CreateImage(path_, folder_);
  if (!image) return nil;
  return New<TextOutputStream>(std::move(image));
}

// The one thing read from outside the program's folder: the logo, wherever the person keeps it.
Ref<Picture> FolderItem::OpenAsPicture() {
  std::vector<std::string> parts;
  struct stat st {};
  Fd fd;
  if (!folder_ && !ProgramFolder::Split(path_, parts)) {
    fd = Checked(::open(path_.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC), &st);
  } else if (const std::optional<FilePlace> place = PlaceOf(path_, folder_)) {
    fd = OpenPlainFile(*place, O_RDONLY, &st);
  }
  if (!fd) return nil;
  return DecodePicture(ReadAll(fd.get()));
}

// ---- Locating ------------------------------------------------------------------------------

// A path that names a pipe, socket or device can't be used: it is no file and no folder.
Ref<FolderItem> GetFolderItem(const String& path, Integer /*mode*/) {
  if (path.IsEmpty()) return New<FolderItem>(ProgramFolder::Path());
  // A path keeps its bytes as AbsolutePath gave them, also after a trip through a file.
  const std::string native = path.Encoding() == TextEncoding::MacRoman ? path.Utf8() : path.Bytes();
  if (native[0] != '/' || native.find('\0') != std::string::npos) return nil;
  struct stat st {};
  if (::stat(native.c_str(), &st) == 0 && !S_ISREG(st.st_mode) && !S_ISDIR(st.st_mode)) return nil;
  return New<FolderItem>(native);
}

void SetProgramFolder(const std::string& nativePath) { ProgramFolder::Set(nativePath); }

std::string ProgramFolderPath() { return ProgramFolder::Path(); }

FolderHold HoldProgramFolder() {
  bool elsewhere = false;
  if (ProgramFolder::TryLock(&elsewhere)) {
    ProgramFolder::RemoveLeftovers();
    return FolderHold::Held;
  }
  return elsewhere ? FolderHold::HeldByAnother : FolderHold::Unavailable;
}
