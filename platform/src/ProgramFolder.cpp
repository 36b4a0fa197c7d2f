// SPDX-License-Identifier: GPL-3.0-or-later
// The program's folder: where it is, the descriptor it is reached through, and the hold on it.
#include "ProgramFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "FileSteps.h"
#include "FolderListing.h"
#include "rb/Files.h"

namespace rbi {

namespace {

std::string HomeFolder() {
  if (const char* home = std::getenv("HOME"); home && *home) return home;
  if (const passwd* pw = ::getpwuid(::getuid()); pw && pw->pw_dir) return pw->pw_dir;
  return "/tmp";
}

// Made for the user alone, as a data folder is.
void MakeFolders(const std::string& path) {
  for (std::size_t pos = 1; pos != std::string::npos;) {
    pos = path.find('/', pos + 1);
    ::mkdir(path.substr(0, pos).c_str(), 0700);
  }
}

bool Within(const std::string& path, const std::string& folder) {
  return path == folder || path.compare(0, folder.size() + 1, folder + "/") == 0;
}

std::string ExecutableFolder() {
  std::vector<char> buf(PATH_MAX + 1);
  const ssize_t n = ::readlink("/proc/self/exe", buf.data(), buf.size() - 1);
  if (n <= 0) return std::string();
  const std::string exe(buf.data(), static_cast<std::size_t>(n));
  const auto slash = exe.rfind('/');
  return slash == std::string::npos ? std::string() : slash == 0 ? "/" : exe.substr(0, slash);
}

std::string DefaultPath() {
  const std::string folder = ProgramFolder::DataFolderFor(ExecutableFolder(), HomeFolder());
  MakeFolders(folder);
  return folder;
}

struct State {
  std::string path;
  bool opened = false;
  FolderRef root;  // items and streams may hold it on after the folder is changed
};

State& Current() {
  static State state;
  return state;
}

void RemoveLeftoversIn(int folder, bool descend) {
  DIR* dir = ReadEntries(folder);
  if (!dir) return;
  std::vector<std::string> inner;
  while (const dirent* e = ::readdir(dir)) {
    const std::string name = e->d_name;
    if (name == "." || name == "..") continue;
    if (IsTemporaryName(name)) {
      ::unlinkat(folder, name.c_str(), 0);
    } else if (descend && (e->d_type == DT_DIR || e->d_type == DT_UNKNOWN)) {
      inner.push_back(name);
    }
  }
  ::closedir(dir);
  for (const std::string& name : inner) {
    const int sub = ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (sub < 0) continue;
    RemoveLeftoversIn(sub, false);
    ::close(sub);
  }
}

}  // namespace

// A copy of the program in a folder of its own keeps its data there. An installed program (under
// /usr or /opt), or one whose folder it cannot write, keeps it in the user's data folder for the
// program; for root as for anyone.
std::string ProgramFolder::DataFolderFor(const std::string& executableFolder, const std::string& home) {
  const bool installed = Within(executableFolder, "/usr") || Within(executableFolder, "/opt");
  if (!executableFolder.empty() && !installed && ::access(executableFolder.c_str(), W_OK) == 0) return executableFolder;
  return home + "/.local/share/ledgerly";
}

const std::string& ProgramFolder::Path() {
  State& s = Current();
  if (s.path.empty()) s.path = DefaultPath();
  return s.path;
}

FolderRef ProgramFolder::Root() {
  State& s = Current();
  if (!s.opened) {
    s.opened = true;
    const int fd = ::open(Path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) s.root = std::make_shared<const Fd>(Fd::Own(fd));
  }
  return s.root;
}

int ProgramFolder::Descriptor() {
  const FolderRef root = Root();
  return root ? root->get() : -1;
}

// The hold goes with the last holder of the old descriptor.
void ProgramFolder::Set(const std::string& nativePath) {
  State& s = Current();
  s.root.reset();
  s.opened = false;
  s.path = nativePath.empty() ? std::string() : FolderItem(nativePath).NativePath();
}

bool ProgramFolder::Split(const std::string& native, std::vector<std::string>& parts) {
  parts.clear();
  const std::string& root = Path();
  if (native == root) return true;
  const std::size_t skip = root == "/" ? 1 : root.size() + 1;
  if (native.size() <= skip || native.compare(0, root.size(), root) != 0 || native[skip - 1] != '/') return false;
  for (std::size_t at = skip; at <= native.size();) {
    std::size_t slash = native.find('/', at);
    if (slash == std::string::npos) slash = native.size();
    std::string part = native.substr(at, slash - at);
    // A path that steps back or stands still on its way is not followed.
    if (part.empty() || part == "." || part == "..") return false;
    parts.push_back(std::move(part));
    at = slash + 1;
  }
  return true;
}

FolderRef ProgramFolder::OpenFolder(const std::vector<std::string>& parts, std::size_t count) {
  FolderRef at = Root();
  for (std::size_t i = 0; at && i < count; ++i) {
    const int next = ::openat(at->get(), parts[i].c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    at = next >= 0 ? std::make_shared<const Fd>(Fd::Own(next)) : nullptr;
  }
  return at;
}

bool ProgramFolder::TryLock(bool* heldElsewhere) {
  *heldElsewhere = false;
  const int root = Descriptor();
  if (root < 0) return false;
  int r;
  do {
    r = ::flock(root, LOCK_EX | LOCK_NB);
  } while (r != 0 && errno == EINTR);
  if (r != 0) *heldElsewhere = errno == EWOULDBLOCK;
  return r == 0;
}

void ProgramFolder::RemoveLeftovers() {
  if (Descriptor() >= 0) RemoveLeftoversIn(Descriptor(), true);
}

std::string ProgramFolder::Identity() {
  struct stat st {};
  if (Descriptor() < 0 || ::fstat(Descriptor(), &st) != 0) return std::string();
  return std::to_string(static_cast<unsigned long long>(st.st_dev)) + ":" +
         std::to_string(static_cast<unsigned long long>(st.st_ino));
}

}  // namespace rbi
