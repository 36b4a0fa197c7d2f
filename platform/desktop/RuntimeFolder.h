// SPDX-License-Identifier: GPL-3.0-or-later
// Qt wants a private runtime folder (XDG_RUNTIME_DIR); a session started without one (root's, often)
// would get a warning at every start. Header only, so that a bare Qt program can share it.
#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace desk {

// The session's own when it has one; otherwise one folder per user in /tmp, made for the user
// alone, and used only when it is a real folder (never a link), owned by the user, with mode 0700.
// A folder that fails the test is not mended: it may be someone else's trap.
inline void EnsureRuntimeFolder(const std::string& dir = "/tmp/ledgerly-runtime-" + std::to_string(geteuid())) {
  if (const char* given = std::getenv("XDG_RUNTIME_DIR"); given && *given) return;
  mkdir(dir.c_str(), 0700);
  const int fd = open(dir.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
  if (fd < 0) return;
  struct stat st {};
  const bool fit = fstat(fd, &st) == 0 && S_ISDIR(st.st_mode) && st.st_uid == geteuid() && (st.st_mode & 07777) == 0700;
  close(fd);
  if (fit) setenv("XDG_RUNTIME_DIR", dir.c_str(), 1);
}

}  // namespace desk
