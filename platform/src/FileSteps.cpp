// SPDX-License-Identifier: GPL-3.0-or-later
// Files put in place whole: a temporary file, synced, renamed over the old name, the folder synced.
#include "FileSteps.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <random>

#include "rb/Core.h"

namespace rbi {

namespace {

std::function<int(FileStep)>& Hook() {
  static std::function<int(FileStep)> hook;
  return hook;
}

// The step's own errno when the hook fails it, else the call's result.
template <class Call>
auto Step(FileStep step, Call call) -> decltype(call()) {
  if (Hook()) {
    if (const int error = Hook()(step); error != 0) {
      errno = error;
      return -1;
    }
  }
  return call();
}

constexpr std::string_view kPrefix = ".ledgerly-";
constexpr std::size_t kRandomChars = 6;
constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

std::string NewTemporaryName() {
  static std::mt19937_64 random{std::random_device{}() ^ static_cast<std::uint64_t>(::getpid())};
  std::string name(kPrefix);
  for (std::size_t i = 0; i < kRandomChars; ++i) name += kAlphabet[random() % (sizeof kAlphabet - 1)];
  return name;
}

}  // namespace

void SetFileStepHook(std::function<int(FileStep)> hook) { Hook() = std::move(hook); }

bool IsTemporaryName(std::string_view name) {
  if (name.size() != kPrefix.size() + kRandomChars || name.substr(0, kPrefix.size()) != kPrefix) return false;
  for (char c : name.substr(kPrefix.size()))
    if (std::strchr(kAlphabet, c) == nullptr || c == '\0') return false;
  return true;
}

std::unique_ptr<Replacement> Replacement::Begin(FilePlace place, const struct stat* old) {
  for (int attempt = 0; attempt < 100; ++attempt) {
    std::string name = NewTemporaryName();
    const int fd = ::openat(place.folder->get(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                            0666);
    if (fd < 0 && errno == EEXIST) continue;
    if (fd < 0) return nullptr;
    if (old) {
      // The new file stands in for the old one: the same permissions, and, where this process
      // may give it, the same owner.
      ::fchmod(fd, old->st_mode & 07777);
      if (::geteuid() == 0 && (old->st_uid != ::geteuid() || old->st_gid != ::getegid()))
        if (::fchown(fd, old->st_uid, old->st_gid) != 0) {
          // the file stays this process's own
        }
    }
    return std::unique_ptr<Replacement>(new Replacement(std::move(place), Fd::Own(fd), std::move(name)));
  }
  return nullptr;
}

Replacement::Replacement(FilePlace place, Fd temp, std::string tempName)
    : place_(std::move(place)), temp_(std::move(temp)), tempName_(std::move(tempName)) {}

Replacement::~Replacement() {
  if (!done_) ::unlinkat(place_.folder->get(), tempName_.c_str(), 0);
}

void Replacement::Fail(int error, const char* what) {
  if (!done_) ::unlinkat(place_.folder->get(), tempName_.c_str(), 0);
  done_ = true;
  temp_.Reset();
  throw IOException(std::string(what) + " \"" + place_.leaf + "\": " + std::strerror(error));
}

void Replacement::Commit(const std::string& bytes) {
  const char* p = bytes.data();
  std::size_t left = bytes.size();
  while (left > 0) {
    const ssize_t w = Step(FileStep::Write, [&] { return ::write(temp_.get(), p, left); });
    if (w < 0 && errno == EINTR) continue;
    if (w < 0) Fail(errno, "could not write");
    if (w == 0) Fail(EIO, "could not write");
    p += w;
    left -= static_cast<std::size_t>(w);
  }
  if (Step(FileStep::Sync, [&] { return ::fsync(temp_.get()); }) != 0) Fail(errno, "could not write");
  if (Step(FileStep::Rename, [&] {
        return ::renameat(place_.folder->get(), tempName_.c_str(), place_.folder->get(), place_.leaf.c_str());
      }) != 0)
    Fail(errno, "could not put in place");
  done_ = true;
  temp_.Reset();
  if (Step(FileStep::Sync, [&] { return ::fsync(place_.folder->get()); }) != 0) Fail(errno, "could not keep");
}

}  // namespace rbi
