// SPDX-License-Identifier: GPL-3.0-or-later
// Inside the platform: a file descriptor that closes itself.
#pragma once

#include <unistd.h>

#include <memory>
#include <utility>

namespace rbi {

class Fd {
 public:
  Fd() = default;
  static Fd Own(int fd) { return Fd(fd); }
  Fd(Fd&& o) noexcept : fd_(std::exchange(o.fd_, -1)) {}
  Fd& operator=(Fd&& o) noexcept {
    if (this != &o) {
      Reset();
      fd_ = std::exchange(o.fd_, -1);
    }
    return *this;
  }
  Fd(const Fd&) = delete;
  Fd& operator=(const Fd&) = delete;
  ~Fd() { Reset(); }

  int get() const { return fd_; }
  explicit operator bool() const { return fd_ >= 0; }
  void Reset() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
  }

 private:
  explicit Fd(int fd) : fd_(fd) {}
  int fd_ = -1;
};

// A folder held open, shared by the items found in it and the streams that write there, so that
// it stays the folder they were found in, whatever happens to the path meanwhile.
using FolderRef = std::shared_ptr<const Fd>;

}  // namespace rbi
