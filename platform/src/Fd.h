// Inside the platform: a file descriptor that closes itself, or one only borrowed.
#pragma once

#include <unistd.h>

#include <utility>

namespace rbi {

class Fd {
 public:
  Fd() = default;
  static Fd Own(int fd) { return Fd(fd, true); }
  static Fd Borrow(int fd) { return Fd(fd, false); }
  Fd(Fd&& o) noexcept : fd_(std::exchange(o.fd_, -1)), owned_(o.owned_) {}
  Fd& operator=(Fd&& o) noexcept {
    if (this != &o) {
      Reset();
      fd_ = std::exchange(o.fd_, -1);
      owned_ = o.owned_;
    }
    return *this;
  }
  Fd(const Fd&) = delete;
  Fd& operator=(const Fd&) = delete;
  ~Fd() { Reset(); }

  int get() const { return fd_; }
  explicit operator bool() const { return fd_ >= 0; }
  void Reset() {
    if (owned_ && fd_ >= 0) ::close(fd_);
    fd_ = -1;
  }

 private:
  Fd(int fd, bool owned) : fd_(fd), owned_(owned) {}
  int fd_ = -1;
  bool owned_ = false;
};

}  // namespace rbi
