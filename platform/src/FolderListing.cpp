// SPDX-License-Identifier: GPL-3.0-or-later
// Folder listings, sorted once and then kept up to date by the kernel's notices.
#include "FolderListing.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <unordered_map>

#include "CaseFold.h"
#include "FileNames.h"
#include "rb/Files.h"

void rbi::FolderListing::Append(std::string_view name) {
  chars.append(name);
  ends.push_back(static_cast<std::uint32_t>(chars.size()));
}

void rbi::FolderListing::Insert(std::size_t at, std::string_view name) {
  const std::uint32_t begin = at == 0 ? 0 : ends[at - 1];
  chars.insert(begin, name);
  ends.insert(ends.begin() + static_cast<std::ptrdiff_t>(at), begin);
  for (std::size_t k = at; k < ends.size(); ++k) ends[k] += static_cast<std::uint32_t>(name.size());
}

void rbi::FolderListing::Erase(std::size_t at) {
  const std::uint32_t begin = at == 0 ? 0 : ends[at - 1];
  const std::uint32_t length = ends[at] - begin;
  chars.erase(begin, length);
  ends.erase(ends.begin() + static_cast<std::ptrdiff_t>(at));
  for (std::size_t k = at; k < ends.size(); ++k) ends[k] -= length;
}

namespace rbi {

namespace {

using Listing = FolderListing;

// The entries of the open folder, "." and ".." left out; empty when it can't be read.
std::vector<std::string> ReadFolder(int folder, bool* read = nullptr) {
  std::vector<std::string> names;
  DIR* dir = ReadEntries(folder);
  if (read) *read = dir != nullptr;
  if (!dir) return names;
  while (const dirent* e = ::readdir(dir)) {
    if (std::strcmp(e->d_name, ".") == 0 || std::strcmp(e->d_name, "..") == 0) continue;
    names.emplace_back(e->d_name);
  }
  ::closedir(dir);
  return names;
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
bool ChangesAreReported(int folder) {
  struct statfs fs {};
  if (::fstatfs(folder, &fs) != 0) return false;
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
// A listing is handed out only for the very folder it was read from: the caller has that folder
// open, reached with no link followed.
class ListingStore {
 public:
  static ListingStore& Instance() {
    static ListingStore store;
    return store;
  }

  std::shared_ptr<const Listing> Find(const std::string& path, int folder) {
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
    if (::fstat(folder, &st) != 0 || st.st_dev != k.dev || st.st_ino != k.ino) {
      k.listing.reset();
      return nullptr;
    }
    k.used = ++clock_;
    return k.listing;
  }

  std::shared_ptr<const Listing> Read(const std::string& path, int folder) {
    if (!Start() || !ChangesAreReported(folder))
      return std::make_shared<const Listing>(SortedListing(ReadFolder(folder)));
    // IN_ATTRIB: a folder that could not be read may become readable.
    constexpr std::uint32_t kMask = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF |
                                    IN_MOVE_SELF | IN_ATTRIB | IN_ONLYDIR | IN_DONT_FOLLOW;
    const int wd = ::inotify_add_watch(fd_, path.c_str(), kMask);
    if (wd < 0) return std::make_shared<const Listing>(SortedListing(ReadFolder(folder)));
    kept_[wd];
    Drain();
    auto found = kept_.find(wd);
    const std::uint64_t before = found == kept_.end() ? 0 : found->second.notices;
    // The watch must be on the folder that is read, not on one that a path now leads to.
    struct stat watched {}, st {};
    const bool located = ::lstat(path.c_str(), &watched) == 0 && ::fstat(folder, &st) == 0 &&
                         watched.st_dev == st.st_dev && watched.st_ino == st.st_ino;
    bool read = false;
    auto listing = std::make_shared<Listing>(SortedListing(ReadFolder(folder, &read)));
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

DIR* ReadEntries(int folder) {
  const int own = folder >= 0 ? ::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1;
  DIR* dir = own >= 0 ? ::fdopendir(own) : nullptr;
  if (!dir && own >= 0) ::close(own);
  return dir;
}

std::shared_ptr<const FolderListing> KeptListing(const std::string& path, int folder) {
  return ListingStore::Instance().Find(path, folder);
}

std::shared_ptr<const FolderListing> ReadListing(const std::string& path, int folder) {
  return ListingStore::Instance().Read(path, folder);
}

}  // namespace rbi
