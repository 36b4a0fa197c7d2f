// SPDX-License-Identifier: GPL-3.0-or-later
// The copies of the program on one folder meet on a local socket in the abstract namespace, named
// by the user and the folder's device and inode: it leaves no file anywhere, and goes with the
// process.
#include "SingleCopy.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <QWidget>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <thread>

#include "DesktopScreen.h"
#include "ProgramFolder.h"
#include "WindowView.h"
#include "rb/Files.h"
#include "rb/Window.h"

namespace desk {

namespace {

constexpr char kRaised = 'R';

socklen_t Address(sockaddr_un& addr) {
  const std::string name = "ledgerly/" + std::to_string(::getuid()) + "/" + rbi::ProgramFolder::Identity();
  std::memset(&addr, 0, sizeof addr);
  addr.sun_family = AF_UNIX;
  // A leading NUL puts the name in the abstract namespace.
  const std::size_t n = std::min(name.size(), sizeof addr.sun_path - 1);
  std::memcpy(addr.sun_path + 1, name.data(), n);
  return static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + n);
}

// The other end is this user's own process, not one that took the name first.
bool SameUser(int fd) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return ::getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::getuid();
}

// One try: true when the running copy said it came to the front.
bool AskOnce(const std::chrono::steady_clock::time_point deadline) {
  const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (fd < 0) return false;
  sockaddr_un addr{};
  const socklen_t size = Address(addr);
  bool raised = false;
  if (::connect(fd, reinterpret_cast<const sockaddr*>(&addr), size) == 0 && SameUser(fd)) {
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(deadline - std::chrono::steady_clock::now());
    timeval wait{static_cast<time_t>(std::max<long long>(0, left.count()) / 1000000),
                 static_cast<suseconds_t>(std::max<long long>(0, left.count()) % 1000000)};
    ::setsockopt(fd, SOL_SOCKET, SO_RCVTIMEO, &wait, sizeof wait);
    char answer = 0;
    raised = ::read(fd, &answer, 1) == 1 && answer == kRaised;
  }
  ::close(fd);
  return raised;
}

}  // namespace

int BringRunningCopyToFront() {
  using namespace std::chrono;
  // The running copy may still be starting, its lock taken and its socket not yet open.
  const auto deadline = steady_clock::now() + seconds(5);
  while (steady_clock::now() < deadline) {
    if (AskOnce(deadline)) return 0;
    std::this_thread::sleep_for(milliseconds(50));
  }
  std::fprintf(stderr, "ledgerly: another copy holds %s and did not answer within five seconds\n",
               ProgramFolderPath().c_str());
  return 1;
}

RunningCopy::RunningCopy(DesktopScreen& screen) : screen_(screen) {
  listening_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  sockaddr_un addr{};
  const socklen_t size = Address(addr);
  if (listening_ < 0 || ::bind(listening_, reinterpret_cast<const sockaddr*>(&addr), size) != 0 ||
      ::listen(listening_, 8) != 0) {
    if (listening_ >= 0) ::close(listening_);
    listening_ = -1;
    return;
  }
  notifier_ = std::make_unique<QSocketNotifier>(listening_, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { Answer(); });
}

RunningCopy::~RunningCopy() {
  notifier_.reset();
  if (listening_ >= 0) ::close(listening_);
}

void RunningCopy::Answer() {
  for (;;) {
    const int fd = ::accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC);
    if (fd < 0) return;
    if (SameUser(fd)) {
      if (Window* main = WindowRegistry::Find("iwindow")) {
        if (QWidget* view = screen_.ViewOf(*main)) {
          if (view->isMinimized()) view->showNormal();
          view->raise();
          view->activateWindow();
        }
      }
      // A modal window stays in front of the main window.
      if (QWidget* front = screen_.FrontWidget()) {
        front->raise();
        front->activateWindow();
      }
      const char raised = kRaised;
      // The other copy may have given up waiting: no SIGPIPE for that.
      if (::send(fd, &raised, 1, MSG_NOSIGNAL) != 1) {
        // it has gone already
      }
    }
    ::close(fd);
  }
}

}  // namespace desk
