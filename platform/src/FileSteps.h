// SPDX-License-Identifier: GPL-3.0-or-later
// Inside the platform: how a file is put in place whole or not at all. The new content goes to a
// temporary file in the same folder, which is synced and renamed over the old name, and then the
// folder is synced: at whatever moment the process dies, the name holds the old file or the new
// one, whole.
#pragma once

#include <sys/stat.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Fd.h"

namespace rbi {

// The steps by which a file reaches the disk: each can fail, or be the last the process takes.
enum class FileStep { Write, Sync, Rename };

// For tests: runs before every step; an errno other than 0 fails that step with it.
void SetFileStepHook(std::function<int(FileStep)> hook);

// The temporary files' names: short, of one length, hidden (lists skip a leading "."), and of a
// pattern no other program uses, so that what a crash left can be told apart and removed.
bool IsTemporaryName(std::string_view name);

// Where a file lies: its folder, held open, and its name there.
struct FilePlace {
  FolderRef folder;
  std::string leaf;
};

// A new content for the file at a place.
class Replacement {
 public:
  // Makes the temporary file. `old` is the file it replaces, whose mode and owner the new one
  // takes; nullptr for a new name. Nullptr when the folder takes no new file.
  static std::unique_ptr<Replacement> Begin(FilePlace place, const struct stat* old);
  ~Replacement();
  Replacement(const Replacement&) = delete;
  Replacement& operator=(const Replacement&) = delete;

  // Puts the bytes in place, or raises IOException with the old file left as it was (once the
  // rename is done, a failing sync of the folder is still reported).
  void Commit(const std::string& bytes);

 private:
  Replacement(FilePlace place, Fd temp, std::string tempName);
  [[noreturn]] void Fail(int error, const char* what);
  FilePlace place_;
  Fd temp_;
  std::string tempName_;
  bool done_ = false;
};

}  // namespace rbi
