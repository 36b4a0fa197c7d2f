// SPDX-License-Identifier: GPL-3.0-or-later
// Inside the platform: the program's folder, held open from its first use. Every file beneath it is
// reached from that descriptor one folder at a time, with no symbolic link followed, so nothing the
// program does lands outside it; the folder itself may be reached through a link.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Fd.h"

namespace rbi {

class ProgramFolder {
 public:
  static const std::string& Path();
  // Where a program whose executable lies in that folder keeps its data, by default.
  static std::string DataFolderFor(const std::string& executableFolder, const std::string& home);
  // The folder open, or -1 (null) when it can't be opened.
  static int Descriptor();
  static FolderRef Root();
  static void Set(const std::string& nativePath);

  // The names on the way from the program folder down to a native path; false when the path
  // lies outside the folder.
  static bool Split(const std::string& native, std::vector<std::string>& parts);
  // The folder named by the first `count` parts, each a real folder and no link; null when the
  // way is barred.
  static FolderRef OpenFolder(const std::vector<std::string>& parts, std::size_t count);

  // The lock on the folder's own descriptor: one copy of the program per folder.
  static bool TryLock(bool* heldElsewhere);
  // The temporary files that a copy which died in the middle of a saving left, in the folder and
  // the folders directly inside it.
  static void RemoveLeftovers();
  // Names the folder itself, whatever path reached it: device and inode.
  static std::string Identity();
};

}  // namespace rbi
