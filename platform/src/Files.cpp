// Files and folders on a POSIX file system, and the streams that read and write them.
#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <numeric>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "CaseFold.h"
#include "PictureImpl.h"
#include "rb/Files.h"

namespace {

// A "/" cannot stand in a file name, so names keep it as DIVISION SLASH (U+2215), which looks the
// same.
constexpr char kStoredSlash[] = "\xE2\x88\x95";
constexpr std::size_t kMaxNameBytes = 255;

std::string ReplaceEvery(std::string s, const std::string& what, const std::string& by) {
  for (std::size_t pos = 0; (pos = s.find(what, pos)) != std::string::npos; pos += by.size())
    s.replace(pos, what.size(), by);
  return s;
}

std::string ShownName(const std::string& onDisk) { return ReplaceEvery(onDisk, kStoredSlash, "/"); }

String NameString(std::string bytes) {
  const TextEncoding tag = IsValidUtf8(bytes) ? TextEncoding::UTF8 : TextEncoding::None;
  return String::FromBytes(std::move(bytes), tag);
}

unsigned char LowerAscii(char c) {
  const auto u = static_cast<unsigned char>(c);
  return u >= 'A' && u <= 'Z' ? static_cast<unsigned char>(u - 'A' + 'a') : u;
}

// Compares two texts as their case-folded keys compare, where each is either a key already or
// plain ASCII: the key of an ASCII text is the text with its letters lowered, and lowering a
// key changes nothing.
int CompareLowered(std::string_view a, std::string_view b) {
  const std::size_t n = std::min(a.size(), b.size());
  for (std::size_t k = 0; k < n; ++k) {
    const unsigned char ca = LowerAscii(a[k]), cb = LowerAscii(b[k]);
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

std::string Join(const std::string& folder, std::string_view name) {
  if (folder == "/") return "/" + std::string(name);
  std::string path;
  path.reserve(folder.size() + 1 + name.size());
  path.append(folder).append(1, '/').append(name);
  return path;
}

bool IsFolder(const std::string& path) {
  struct stat st {};
  return ::stat(path.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool IsRegularFile(const std::string& path) {
  struct stat st {};
  return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

// The entries of a folder, "." and ".." left out; empty when it can't be read.
std::vector<std::string> ReadFolder(const std::string& path, bool* read = nullptr) {
  std::vector<std::string> names;
  DIR* dir = ::opendir(path.c_str());
  if (read) *read = dir != nullptr;
  if (!dir) return names;
  while (const dirent* e = ::readdir(dir)) {
    if (std::strcmp(e->d_name, ".") == 0 || std::strcmp(e->d_name, "..") == 0) continue;
    names.emplace_back(e->d_name);
  }
  ::closedir(dir);
  return names;
}

int OpenFile(const std::string& path, int flags) {
  int fd;
  do {
    fd = ::open(path.c_str(), flags | O_CLOEXEC, 0666);
  } while (fd < 0 && errno == EINTR);
  return fd;
}

// Writes all of it, or as much as the system takes; a failed write is not reported.
void WriteAll(int fd, const char* p, std::size_t n) {
  while (fd >= 0 && n > 0) {
    const ssize_t w = ::write(fd, p, n);
    if (w < 0 && errno == EINTR) continue;
    if (w <= 0) return;
    p += w;
    n -= static_cast<std::size_t>(w);
  }
}

// Reads up to n bytes; fewer only at the end of the file.
std::size_t ReadUpTo(int fd, void* out, std::size_t n) {
  auto* p = static_cast<char*>(out);
  std::size_t got = 0;
  while (fd >= 0 && got < n) {
    const ssize_t r = ::read(fd, p + got, n - got);
    if (r < 0 && errno == EINTR) continue;
    if (r <= 0) break;
    got += static_cast<std::size_t>(r);
  }
  return got;
}

std::string CurrentFolder() {
  std::vector<char> buf(PATH_MAX);
  while (!::getcwd(buf.data(), buf.size())) {
    if (errno != ERANGE) return "/";
    buf.resize(buf.size() * 2);
  }
  return buf.data();
}

std::string HomeFolder() {
  if (const char* home = std::getenv("HOME"); home && *home) return home;
  if (const passwd* pw = ::getpwuid(::getuid()); pw && pw->pw_dir) return pw->pw_dir;
  return "/tmp";
}

void MakeFolders(const std::string& path) {
  for (std::size_t pos = 1; pos != std::string::npos;) {
    pos = path.find('/', pos + 1);
    ::mkdir(path.substr(0, pos).c_str(), 0777);
  }
}

// The folder of the executable when it can be written; otherwise the user's data folder for
// the program, made if it is missing.
std::string DefaultProgramFolder() {
  std::vector<char> buf(PATH_MAX + 1);
  const ssize_t n = ::readlink("/proc/self/exe", buf.data(), buf.size() - 1);
  if (n > 0) {
    std::string exe(buf.data(), static_cast<std::size_t>(n));
    const auto slash = exe.rfind('/');
    std::string dir = slash == 0 ? "/" : exe.substr(0, slash);
    if (slash != std::string::npos && ::access(dir.c_str(), W_OK) == 0) return dir;
  }
  const std::string data = HomeFolder() + "/.local/share/ledgerly";
  MakeFolders(data);
  return data;
}

std::string& ProgramFolderOverride() {
  static std::string path;
  return path;
}

}  // namespace

// A folder's names in their order, one after another in one block of memory: a listing of a
// hundred thousand invoices is walked from end to end at every saving, and names read in the
// order they lie in memory cost a fraction of names scattered over the heap.
struct rbi::FolderListing {
  std::string chars;
  std::vector<std::uint32_t> ends;  // where each name ends in chars

  std::size_t size() const { return ends.size(); }
  std::string_view operator[](std::size_t i) const {
    const std::uint32_t begin = i == 0 ? 0 : ends[i - 1];
    return std::string_view(chars).substr(begin, ends[i] - begin);
  }
  void Append(std::string_view name) {
    chars.append(name);
    ends.push_back(static_cast<std::uint32_t>(chars.size()));
  }
  void Insert(std::size_t at, std::string_view name) {
    const std::uint32_t begin = at == 0 ? 0 : ends[at - 1];
    chars.insert(begin, name);
    ends.insert(ends.begin() + static_cast<std::ptrdiff_t>(at), begin);
    for (std::size_t k = at; k < ends.size(); ++k) ends[k] += static_cast<std::uint32_t>(name.size());
  }
  void Erase(std::size_t at) {
    const std::uint32_t begin = at == 0 ? 0 : ends[at - 1];
    const std::uint32_t length = ends[at] - begin;
    chars.erase(begin, length);
    ends.erase(ends.begin() + static_cast<std::ptrdiff_t>(at));
    for (std::size_t k = at; k < ends.size(); ++k) ends[k] -= length;
  }
};

namespace {

using Listing = rbi::FolderListing;

// The place of a name in a folder's listing: the shown name with case folded away, ties by the
// bytes. An ASCII name's key is the name with its letters lowered, which CompareLowered does as it
// goes; only other names have their key made.
// A name that is not UTF-8 shows as Mac Roman (Name), and is found again by what it shows.
std::string KeyOf(std::string_view name) {
  const std::string shown = ShownName(std::string(name));
  return FoldCase(IsValidUtf8(shown) ? shown : MacRomanToUtf8(shown));
}

int CompareKeys(std::string_view a, std::string_view b) {
  const bool plainA = IsAsciiText(a), plainB = IsAsciiText(b);
  if (plainA && plainB) return CompareLowered(a, b);
  const std::string keyA = plainA ? std::string(a) : KeyOf(a), keyB = plainB ? std::string(b) : KeyOf(b);
  return CompareLowered(keyA, keyB);
}

// Compares an entry's key with a key already made.
int CompareWithKey(std::string_view entry, const std::string& key) {
  return IsAsciiText(entry) ? CompareLowered(entry, key) : CompareLowered(KeyOf(entry), key);
}

bool ListedBefore(std::string_view a, std::string_view b) {
  const int byKey = CompareKeys(a, b);
  return byKey != 0 ? byKey < 0 : a < b;
}

// The first place in l whose entry does not come before: by name, or by key alone.
template <class Before>
std::size_t FirstNotBefore(const Listing& l, Before before) {
  std::size_t lo = 0, hi = l.size();
  while (lo < hi) {
    const std::size_t mid = lo + (hi - lo) / 2;
    if (before(l[mid])) {
      lo = mid + 1;
    } else {
      hi = mid;
    }
  }
  return lo;
}

Listing SortedListing(std::vector<std::string> names) {
  constexpr std::uint32_t kOwnKey = UINT32_MAX;
  std::vector<std::string> keys;
  std::vector<std::uint32_t> keyOf(names.size(), kOwnKey);
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (IsAsciiText(names[i])) continue;
    keyOf[i] = static_cast<std::uint32_t>(keys.size());
    keys.push_back(KeyOf(names[i]));
  }
  auto keyFor = [&](std::uint32_t i) -> const std::string& {
    return keyOf[i] == kOwnKey ? names[i] : keys[keyOf[i]];
  };
  // Sorted by the first eight bytes of the key held as a number, which settles nearly every
  // comparison without a visit to the names; equal beginnings compare in full.
  struct Entry {
    std::uint64_t head;
    std::uint32_t index;
  };
  std::vector<Entry> order(names.size());
  for (std::uint32_t i = 0; i < order.size(); ++i) {
    const std::string& key = keyFor(i);
    std::uint64_t head = 0;
    for (std::size_t k = 0; k < 8; ++k) head = (head << 8) | (k < key.size() ? LowerAscii(key[k]) : 0);
    order[i] = {head, i};
  }
  std::sort(order.begin(), order.end(), [&](const Entry& a, const Entry& b) {
    if (a.head != b.head) return a.head < b.head;
    const int byKey = CompareLowered(keyFor(a.index), keyFor(b.index));
    if (byKey != 0) return byKey < 0;
    return names[a.index] < names[b.index];
  });
  Listing listing;
  std::size_t total = 0;
  for (const std::string& n : names) total += n.size();
  listing.chars.reserve(total);
  listing.ends.reserve(names.size());
  for (const Entry& e : order) listing.Append(names[e.index]);
  return listing;
}

// File systems whose every change passes through this machine's kernel, and so is reported.
bool ChangesAreReported(const std::string& path) {
  struct statfs fs {};
  if (::statfs(path.c_str(), &fs) != 0) return false;
  switch (static_cast<unsigned long>(fs.f_type)) {
    case 0xEF53UL:      // ext2, ext3, ext4
    case 0x58465342UL:  // xfs
    case 0x9123683EUL:  // btrfs
    case 0x01021994UL:  // tmpfs
    case 0xF2F52010UL:  // f2fs
    case 0x858458F6UL:  // ramfs
      return true;
    default: return false;
  }
}

// Listings of folders read before, kept while the system reports no change in them. A saving
// lists the same three folders each time, and a folder of a hundred thousand invoices takes
// longer to read and sort than all the rest of the saving; with the listing kept, a file made or
// removed is put into it or taken out, and the folder is not read again.
//
// The kernel's notices (inotify) are exact: a change, made by this program or any other, is
// queued before the call that made it returns, so a listing is handed out only after every
// waiting notice has been applied. A folder is watched from before its reading, so a change during
// the reading is not lost; a folder that moved, went, or whose notices overflowed is read again.
class ListingStore {
 public:
  static ListingStore& Instance() {
    static ListingStore store;
    return store;
  }

  // The listing of the folder at path as it stands now, if it is kept.
  std::shared_ptr<const Listing> Find(const std::string& path) {
    if (!Start()) return nullptr;
    Drain();
    const auto w = watchOf_.find(path);
    if (w == watchOf_.end()) return nullptr;
    const auto found = kept_.find(w->second);
    if (found == kept_.end()) return nullptr;
    Kept& k = found->second;
    if (!k.listing || k.path != path) return nullptr;
    // The path may lead elsewhere now, if a folder above it was moved.
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0 || st.st_dev != k.dev || st.st_ino != k.ino) {
      k.listing.reset();
      return nullptr;
    }
    k.used = ++clock_;
    return k.listing;
  }

  // Reads the folder and keeps its listing where the system will report its changes.
  std::shared_ptr<const Listing> Read(const std::string& path) {
    if (!Start() || !ChangesAreReported(path)) return std::make_shared<const Listing>(SortedListing(ReadFolder(path)));
    // IN_ATTRIB: a folder that could not be read may become readable.
    constexpr std::uint32_t kMask = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF |
                                    IN_MOVE_SELF | IN_ATTRIB | IN_ONLYDIR;
    const int wd = ::inotify_add_watch(fd_, path.c_str(), kMask);
    if (wd < 0) return std::make_shared<const Listing>(SortedListing(ReadFolder(path)));
    kept_[wd];
    Drain();
    auto found = kept_.find(wd);
    const std::uint64_t before = found == kept_.end() ? 0 : found->second.notices;
    struct stat st {};
    const bool located = ::stat(path.c_str(), &st) == 0;
    bool read = false;
    auto listing = std::make_shared<Listing>(SortedListing(ReadFolder(path, &read)));
    Drain();
    found = kept_.find(wd);
    if (found == kept_.end()) return listing;
    Kept& k = found->second;
    if (!located || !read || k.notices != before) {
      k.listing.reset();  // changed while it was read: read again next time
      return listing;
    }
    if (!k.path.empty() && k.path != path) watchOf_.erase(k.path);
    k.path = path;
    k.dev = st.st_dev;
    k.ino = st.st_ino;
    k.listing = listing;
    k.used = ++clock_;
    watchOf_[path] = wd;
    Trim();
    return listing;
  }

 private:
  struct Kept {
    std::string path;
    dev_t dev = 0;
    ino_t ino = 0;
    std::shared_ptr<Listing> listing;  // null: to be read again
    std::uint64_t notices = 0;
    std::uint64_t used = 0;
  };

  bool Start() {
    if (!tried_) {
      tried_ = true;
      fd_ = ::inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    }
    return fd_ >= 0;
  }

  void Drain() {
    alignas(inotify_event) char buf[16384];
    for (;;) {
      const ssize_t n = ::read(fd_, buf, sizeof buf);
      if (n <= 0) return;
      for (ssize_t at = 0; at < n;) {
        const auto* e = reinterpret_cast<const inotify_event*>(buf + at);
        at += static_cast<ssize_t>(sizeof(inotify_event) + e->len);
        Apply(*e);
      }
    }
  }

  void Apply(const inotify_event& e) {
    if (e.mask & IN_Q_OVERFLOW) {
      for (auto& [wd, k] : kept_) k.listing.reset(), ++k.notices;
      return;
    }
    const auto found = kept_.find(e.wd);
    if (found == kept_.end()) return;
    Kept& k = found->second;
    ++k.notices;
    if (e.mask & IN_IGNORED) {
      const auto w = watchOf_.find(k.path);
      if (w != watchOf_.end() && w->second == e.wd) watchOf_.erase(w);
      kept_.erase(found);
      return;
    }
    if (!k.listing) return;
    const std::string name = e.len > 0 ? std::string(e.name) : std::string();
    if (name.empty()) {
      k.listing.reset();  // the folder itself moved, went, or changed its permissions
      return;
    }
    if (!(e.mask & (IN_CREATE | IN_MOVED_TO | IN_DELETE | IN_MOVED_FROM))) return;  // an entry's attributes
    // A listing still held by a FolderItem stays as it was; the store goes on with a copy.
    if (k.listing.use_count() > 1) k.listing = std::make_shared<Listing>(*k.listing);
    Listing& l = *k.listing;
    const std::size_t at = FirstNotBefore(l, [&name](std::string_view entry) { return ListedBefore(entry, name); });
    const bool there = at < l.size() && l[at] == name;
    if (e.mask & (IN_CREATE | IN_MOVED_TO)) {
      if (!there) l.Insert(at, name);
    } else if (there) {
      l.Erase(at);
    }
  }

  // Few folders are in use at once; the store keeps the listings of the latest.
  void Trim() {
    constexpr std::size_t kKeep = 16;
    while (kept_.size() > kKeep) {
      auto oldest = kept_.begin();
      for (auto it = kept_.begin(); it != kept_.end(); ++it)
        if (it->second.used < oldest->second.used) oldest = it;
      const int wd = oldest->first;
      const auto w = watchOf_.find(oldest->second.path);
      if (w != watchOf_.end() && w->second == wd) watchOf_.erase(w);
      kept_.erase(oldest);
      ::inotify_rm_watch(fd_, wd);
    }
  }

  bool tried_ = false;
  int fd_ = -1;
  std::unordered_map<int, Kept> kept_;           // by watch
  std::unordered_map<std::string, int> watchOf_;  // by path
  std::uint64_t clock_ = 0;
};

}  // namespace

// ---- FolderItem ----------------------------------------------------------------------------

FolderItem::FolderItem(std::string nativePath) : path_(std::move(nativePath)) {
  if (path_.empty() || path_[0] != '/') path_ = Join(CurrentFolder(), path_);
  while (path_.size() > 1 && path_.back() == '/') path_.pop_back();
}

Ref<FolderItem> FolderItem::Child(const String& name) {
  const std::string onDisk = ReplaceEvery(name.Utf8(), "/", kStoredSlash);
  if (onDisk.empty() || onDisk == "." || onDisk == ".." || onDisk.size() > kMaxNameBytes ||
      onDisk.find('\0') != std::string::npos)
    return nil;

  // An entry found inside this item shows that it is a folder; only a miss needs to ask.
  const std::string exact = Join(path_, onDisk);
  struct stat st {};
  if (::lstat(exact.c_str(), &st) == 0) return New<FolderItem>(exact);
  if (!IsFolder(path_)) return nil;

  // An entry whose name differs only in case is this child; of several, the lowest by bytes. A
  // new invoice's name is looked for here in a folder of thousands: in a kept listing the names of
  // the same key stand together, else the entries are compared as they are read, and only a name
  // that is not plain ASCII is folded.
  const std::string key = FoldCase(onDisk);
  const std::string shownKey = KeyOf(onDisk);
  auto same = [&key, &shownKey](std::string_view n) {
    return IsAsciiText(n) ? n.size() == key.size() && CompareLowered(n, key) == 0 : KeyOf(n) == shownKey;
  };
  std::string found;
  bool any = false;
  auto consider = [&](std::string_view n) {
    if (same(n) && (!any || n < std::string_view(found))) {
      found.assign(n);
      any = true;
    }
  };
  if (const auto listing = ListingStore::Instance().Find(path_)) {
    std::size_t at = FirstNotBefore(*listing, [&shownKey](std::string_view entry) {
      return CompareWithKey(entry, shownKey) < 0;
    });
    for (; at < listing->size() && CompareWithKey((*listing)[at], shownKey) == 0; ++at) consider((*listing)[at]);
  } else if (DIR* dir = ::opendir(path_.c_str())) {
    while (const dirent* e = ::readdir(dir)) {
      const std::string_view n(e->d_name);
      if (n != "." && n != "..") consider(n);
    }
    ::closedir(dir);
  }
  return New<FolderItem>(Join(path_, any ? found : onDisk));
}

void FolderItem::LoadListing() {
  listing_ = ListingStore::Instance().Find(path_);
  if (!listing_) listing_ = ListingStore::Instance().Read(path_);
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
  return New<FolderItem>(Join(path_, (*listing_)[static_cast<std::size_t>(i) - 1]));
}

bool FolderItem::Exists() {
  struct stat st {};
  return ::stat(path_.c_str(), &st) == 0;
}

bool FolderItem::Directory() { return IsFolder(path_); }

String FolderItem::Name() {
  if (path_ == "/") return String();
  std::string leaf = path_.substr(path_.rfind('/') + 1);
  // Plain ASCII holds no stored slash and is UTF-8 as it stands.
  if (IsAsciiText(leaf)) return String::FromBytes(std::move(leaf), TextEncoding::UTF8);
  return NameString(ShownName(leaf));
}

String FolderItem::AbsolutePath() { return NameString(path_); }

void FolderItem::Delete() {
  if (::unlink(path_.c_str()) != 0) ::rmdir(path_.c_str());
}

void FolderItem::CreateAsFolder() { ::mkdir(path_.c_str(), 0777); }

Ref<BinaryStream> FolderItem::OpenAsBinaryFile(bool write) {
  // Checked before opening, so that a folder or a pipe never gets as far as an open.
  if (!IsRegularFile(path_)) return nil;
  const int fd = OpenFile(path_, write ? O_RDWR : O_RDONLY);
  if (fd < 0) return nil;
  return New<BinaryStream>(fd, write);
}

Ref<BinaryStream> FolderItem::CreateBinaryFile(const String& /*typeName*/) {
  const int fd = OpenFile(path_, O_RDWR | O_CREAT | O_TRUNC);
  if (fd < 0) return nil;
  return New<BinaryStream>(fd, true);
}

Ref<TextInputStream> FolderItem::OpenAsTextFile() {
  if (!IsRegularFile(path_)) return nil;
  const int fd = OpenFile(path_, O_RDONLY);
  if (fd < 0) return nil;
  std::string contents;
  char buf[65536];
  for (std::size_t n; (n = ReadUpTo(fd, buf, sizeof buf)) > 0;) contents.append(buf, n);
  ::close(fd);
  return New<TextInputStream>(std::move(contents));
}

Ref<TextOutputStream> FolderItem::CreateTextFile() {
  const int fd = OpenFile(path_, O_WRONLY | O_CREAT | O_TRUNC);
  if (fd < 0) return nil;
  return New<TextOutputStream>(fd);
}

Ref<Picture> FolderItem::OpenAsPicture() { return DecodePicture(path_); }

// ---- Locating ------------------------------------------------------------------------------

Ref<FolderItem> GetFolderItem(const String& path, Integer /*mode*/) {
  if (path.IsEmpty()) return New<FolderItem>(ProgramFolderPath());
  // A path keeps its bytes as AbsolutePath gave them, also after a trip through a file.
  const std::string native = path.Encoding() == TextEncoding::MacRoman ? path.Utf8() : path.Bytes();
  if (native[0] != '/' || native.find('\0') != std::string::npos) return nil;
  return New<FolderItem>(native);
}

void SetProgramFolder(const std::string& nativePath) { ProgramFolderOverride() = nativePath; }

std::string ProgramFolderPath() {
  if (!ProgramFolderOverride().empty()) return ProgramFolderOverride();
  static const std::string fallback = DefaultProgramFolder();
  return fallback;
}

// ---- BinaryStream --------------------------------------------------------------------------

namespace {

template <class U>
void PutBigEndian(unsigned char* out, U bits) {
  for (std::size_t i = 0; i < sizeof(U); ++i)
    out[i] = static_cast<unsigned char>(bits >> (8 * (sizeof(U) - 1 - i)));
}

template <class U>
U GetBigEndian(const unsigned char* in) {
  U bits = 0;
  for (std::size_t i = 0; i < sizeof(U); ++i) bits = static_cast<U>((bits << 8) | in[i]);
  return bits;
}

// A Double narrowed to a Single, rounding to nearest; beyond the Single's range, infinity.
float Narrow(double v) {
  constexpr double kOverflow = 340282356779733661637539395458142568448.0;  // FLT_MAX + half an ulp
  if (std::isfinite(v) && std::fabs(v) > FLT_MAX) {
    const float big = std::fabs(v) >= kOverflow ? INFINITY : FLT_MAX;
    return std::signbit(v) ? -big : big;
  }
  return static_cast<float>(v);
}

}  // namespace

BinaryStream::BinaryStream(int fd, bool writable) : fd_(fd), writable_(writable) {}

BinaryStream::~BinaryStream() { Close(); }

// An invoice is 49 fields: read one by one from the system they would cost a hundred calls, so
// the stream reads a block and hands the fields out of it.
std::size_t BinaryStream::ReadAhead(void* out, std::size_t n) {
  constexpr std::size_t kBlock = 8192;
  auto* p = static_cast<char*>(out);
  std::size_t got = 0;
  while (got < n) {
    if (readPos_ == readAhead_.size()) {
      if (fd_ < 0) break;
      readAhead_.resize(kBlock);
      ssize_t r;
      do {
        r = ::read(fd_, readAhead_.data(), kBlock);
      } while (r < 0 && errno == EINTR);
      readAhead_.resize(r > 0 ? static_cast<std::size_t>(r) : 0);
      readPos_ = 0;
      if (r <= 0) break;
    }
    const std::size_t take = std::min(n - got, readAhead_.size() - readPos_);
    std::memcpy(p + got, readAhead_.data() + readPos_, take);
    readPos_ += take;
    got += take;
  }
  return got;
}

bool BinaryStream::ReadBytes(void* out, std::size_t n) { return ReadAhead(out, n) == n; }

void BinaryStream::WriteBytes(const void* in, std::size_t n) {
  if (!writable_) return;
  if (readPos_ < readAhead_.size()) {
    ::lseek(fd_, -static_cast<off_t>(readAhead_.size() - readPos_), SEEK_CUR);
  }
  readAhead_.clear();
  readPos_ = 0;
  WriteAll(fd_, static_cast<const char*>(in), n);
}

// A length byte with fewer bytes after it than it says gives the bytes that are there.
String BinaryStream::ReadPString() {
  unsigned char length = 0;
  if (!ReadBytes(&length, 1)) return String::FromBytes("", TextEncoding::None);
  std::string bytes(length, '\0');
  bytes.resize(ReadAhead(bytes.data(), length));
  return String::FromBytes(std::move(bytes), TextEncoding::None);
}

void BinaryStream::WritePString(const String& s) {
  const std::size_t n = std::min<std::size_t>(s.Bytes().size(), 255);
  std::string field(1, static_cast<char>(n));
  field.append(s.Bytes(), 0, n);
  WriteBytes(field.data(), field.size());
}

Double BinaryStream::ReadSingle() {
  unsigned char b[4];
  if (!ReadBytes(b, sizeof b)) return 0;
  return std::bit_cast<float>(GetBigEndian<std::uint32_t>(b));
}

void BinaryStream::WriteSingle(Double v) {
  unsigned char b[4];
  PutBigEndian(b, std::bit_cast<std::uint32_t>(Narrow(v)));
  WriteBytes(b, sizeof b);
}

Double BinaryStream::ReadDouble() {
  unsigned char b[8];
  if (!ReadBytes(b, sizeof b)) return 0;
  return std::bit_cast<double>(GetBigEndian<std::uint64_t>(b));
}

void BinaryStream::WriteDouble(Double v) {
  unsigned char b[8];
  PutBigEndian(b, std::bit_cast<std::uint64_t>(v));
  WriteBytes(b, sizeof b);
}

bool BinaryStream::ReadBoolean() {
  unsigned char b = 0;
  return ReadBytes(&b, 1) && (b & 1) != 0;
}

void BinaryStream::WriteBoolean(bool v) {
  const unsigned char b = v ? 1 : 0;
  WriteBytes(&b, 1);
}

// Every field goes to the system as it is written, so there is nothing left to flush.
void BinaryStream::Close() {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
}

// ---- Text streams --------------------------------------------------------------------------

TextInputStream::TextInputStream(std::string contents) : data_(std::move(contents)) {}

String TextInputStream::ReadLine() {
  if (pos_ >= data_.size()) return String::FromBytes("", TextEncoding::None);
  std::size_t end = data_.find_first_of("\r\n", pos_);
  if (end == std::string::npos) end = data_.size();
  String line = String::FromBytes(data_.substr(pos_, end - pos_), TextEncoding::None);
  pos_ = end;
  if (pos_ < data_.size()) {
    const bool cr = data_[pos_++] == '\r';
    if (cr && pos_ < data_.size() && data_[pos_] == '\n') ++pos_;
  }
  return line;
}

TextOutputStream::TextOutputStream(int fd) : fd_(fd) {}

TextOutputStream::~TextOutputStream() { Close(); }

void TextOutputStream::WriteLine(const String& text) {
  std::string line = text.Bytes();
  line += '\n';
  WriteAll(fd_, line.data(), line.size());
}

void TextOutputStream::Close() {
  if (fd_ >= 0) ::close(fd_);
  fd_ = -1;
}
