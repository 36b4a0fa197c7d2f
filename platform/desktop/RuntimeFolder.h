// Qt wants a private runtime folder (XDG_RUNTIME_DIR); root's session often has none, and Qt would
// then warn at every start. Header only, so that a bare Qt program can share it.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace desk {

inline void EnsureRuntimeFolder() {
  if (geteuid() != 0 || std::getenv("XDG_RUNTIME_DIR")) return;
  const std::string dir = "/tmp/runtime-root";
  mkdir(dir.c_str(), 0700);
  chmod(dir.c_str(), 0700);
  setenv("XDG_RUNTIME_DIR", dir.c_str(), 1);
}

}  // namespace desk
