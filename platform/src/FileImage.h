// SPDX-License-Identifier: GPL-3.0-or-later
// Inside the platform: the bytes of a file as a stream sees them. Reads come from the file a block
// at a time; the first write takes the whole file into memory, and Close puts the image in place
// whole. Nothing reaches the file before that.
#pragma once

#include <sys/stat.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "Fd.h"
#include "FileSteps.h"

namespace rbi {

class FileImage {
 public:
  // An existing file, open for reading; writable when its place is given.
  FileImage(Fd file, const struct stat& st, std::optional<FilePlace> place);
  // A new, empty file, whose temporary file is made already.
  explicit FileImage(std::unique_ptr<Replacement> fresh);
  ~FileImage();
  FileImage(const FileImage&) = delete;
  FileImage& operator=(const FileImage&) = delete;

  // Up to n bytes from the position; fewer only at the end.
  std::size_t Read(void* out, std::size_t n);
  // At the position, over what is there and beyond it.
  void Write(const void* in, std::size_t n);
  // Puts the image in place if anything was written or the file is new; IOException when that
  // fails. A second Close does nothing.
  void Close();

 private:
  bool Load(std::size_t until);
  Fd file_;
  struct stat st_ {};
  std::optional<FilePlace> place_;
  std::unique_ptr<Replacement> fresh_;
  std::string data_;  // the file's first bytes, as far as read; all of it once written
  bool loadedAll_ = false;
  std::size_t pos_ = 0;
  bool dirty_ = false;
  bool closed_ = false;
};

}  // namespace rbi
