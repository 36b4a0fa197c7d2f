// SPDX-License-Identifier: GPL-3.0-or-later
// Inside the platform: a folder's names in the order Item hands them out, and the store that keeps
// the listings of folders read before while the system reports no change in them.
#pragma once

#include <dirent.h>
#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace rbi {
struct FolderListing;
}

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
  void Append(std::string_view name);
  void Insert(std::size_t at, std::string_view name);
  void Erase(std::size_t at);
};

namespace rbi {

// The first place in l whose entry does not come before: by name, or by key alone.
template <class Before>
std::size_t FirstNotBefore(const FolderListing& l, Before before) {
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

// The entries of an open folder, read from the start (a descriptor of its own, so that no other
// reading shares its place); nullptr when it can't be read. closedir ends it.
DIR* ReadEntries(int folder);

// The listing kept for the folder at path, when the folder open as `folder` is the one it was
// read from and nothing changed in it since; nullptr otherwise.
std::shared_ptr<const FolderListing> KeptListing(const std::string& path, int folder);
// Reads the folder open as `folder` (at path) and keeps its listing where the system will report
// its changes.
std::shared_ptr<const FolderListing> ReadListing(const std::string& path, int folder);

}  // namespace rbi
