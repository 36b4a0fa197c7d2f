// SPDX-License-Identifier: GPL-3.0-or-later
// The streams of files: big-endian fields in binary files, lines in text files.
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "FileImage.h"
#include "rb/Files.h"

// ---- The image of a file ------------------------------------------------------------------

namespace rbi {

FileImage::FileImage(Fd file, const struct stat& st, std::optional<FilePlace> place)
    : file_(std::move(file)), st_(st), place_(std::move(place)) {}

FileImage::FileImage(std::unique_ptr<Replacement> fresh) : fresh_(std::move(fresh)), loadedAll_(true), dirty_(true) {}

FileImage::~FileImage() {
  // A stream dropped without Close, as when an exception stopped its handler, keeps what it wrote.
  try {
    Close();
  } catch (const IOException&) {
    // the old file stays; there is no one left to tell
  }
}

// An invoice is 49 fields: read one by one from the system they would cost a hundred calls, so
// the file is read a block at a time and the fields are handed out of it.
bool FileImage::Load(std::size_t until) {
  constexpr std::size_t kBlock = 8192;
  while (!loadedAll_ && data_.size() < until) {
    const std::size_t had = data_.size();
    data_.resize(had + kBlock);
    ssize_t r;
    do {
      r = file_ ? ::read(file_.get(), data_.data() + had, kBlock) : 0;
    } while (r < 0 && errno == EINTR);
    data_.resize(had + (r > 0 ? static_cast<std::size_t>(r) : 0));
    if (r <= 0) loadedAll_ = true;
  }
  return data_.size() >= until;
}

std::size_t FileImage::Read(void* out, std::size_t n) {
  Load(pos_ + n);
  const std::size_t take = pos_ < data_.size() ? std::min(n, data_.size() - pos_) : 0;
  std::memcpy(out, data_.data() + pos_, take);
  pos_ += take;
  return take;
}

void FileImage::Write(const void* in, std::size_t n) {
  if (closed_ || (!place_ && !fresh_)) return;  // a stream for reading writes nothing
  if (!dirty_) {
    Load(SIZE_MAX);  // the bytes beyond the last one written stay as they are
    dirty_ = true;
  }
  if (data_.size() < pos_ + n) data_.resize(pos_ + n);
  std::memcpy(data_.data() + pos_, in, n);
  pos_ += n;
}

void FileImage::Close() {
  if (closed_) return;
  closed_ = true;
  file_.Reset();
  if (!dirty_) return;
  std::unique_ptr<Replacement> r = std::move(fresh_);
  if (!r) {
    const std::string leaf = place_->leaf;
    r = Replacement::Begin(std::move(*place_), &st_);
    if (!r) throw IOException("could not make a file beside \"" + leaf + "\": " + std::strerror(errno));
  }
  r->Commit(data_);
}

}  // namespace rbi

// ---- BinaryStream --------------------------------------------------------------------------

namespace {

// A field of the file, big-endian: what it holds, 0 when the file ends before the field does.
template <class Bits>
Bits ReadField(rbi::FileImage& file) {
  unsigned char b[sizeof(Bits)];
  if (file.Read(b, sizeof b) != sizeof b) return 0;
  Bits bits = 0;
  for (unsigned char byte : b) bits = static_cast<Bits>((bits << 8) | byte);
  return bits;
}

template <class Bits>
void WriteField(rbi::FileImage& file, Bits bits) {
  unsigned char b[sizeof(Bits)];
  for (std::size_t i = 0; i < sizeof(Bits); ++i)
    b[i] = static_cast<unsigned char>(bits >> (8 * (sizeof(Bits) - 1 - i)));
  file.Write(b, sizeof b);
}

// A Double narrowed to a Single, rounding to nearest; beyond the Single's range, infinity.
float Narrow(double v) {
  constexpr double kOverflow = 340282356779733661637539395458142568448.0;  // FLT_MAX + half an ulp
  if (std::isfinite(v) && std::fabs(v) > FLT_MAX) {
    const float big = std::fabs(v) >= kOverflow ? INFINITY : FLT_MAX;
    return std::signbit(v) ? -big : big;
  }
  return static_cast<float>(v);
}

}  // namespace

FileStream::FileStream(std::unique_ptr<rbi::FileImage> file) : file_(std::move(file)) {}

FileStream::~FileStream() = default;

void FileStream::Close() { file_->Close(); }

// A length byte with fewer bytes after it than it says gives the bytes that are there.
String BinaryStream::ReadPString() {
  const auto length = ReadField<std::uint8_t>(file());
  std::string bytes(length, '\0');
  bytes.resize(file().Read(bytes.data(), length));
  return String::FromBytes(std::move(bytes), TextEncoding::None);
}

void BinaryStream::WritePString(const String& s) {
  const std::size_t n = std::min<std::size_t>(s.Bytes().size(), 255);
  std::string field(1, static_cast<char>(n));
  field.append(s.Bytes(), 0, n);
  file().Write(field.data(), field.size());
}

Double BinaryStream::ReadSingle() { return std::bit_cast<float>(ReadField<std::uint32_t>(file())); }

void BinaryStream::WriteSingle(Double v) { WriteField(file(), std::bit_cast<std::uint32_t>(Narrow(v))); }

Double BinaryStream::ReadDouble() { return std::bit_cast<double>(ReadField<std::uint64_t>(file())); }

void BinaryStream::WriteDouble(Double v) { WriteField(file(), std::bit_cast<std::uint64_t>(v)); }

bool BinaryStream::ReadBoolean() { return (ReadField<std::uint8_t>(file()) & 1) != 0; }

void BinaryStream::WriteBoolean(bool v) { WriteField<std::uint8_t>(file(), v ? 1 : 0); }

// ---- Text streams --------------------------------------------------------------------------

TextInputStream::TextInputStream(std::string contents) : data_(std::move(contents)) {}

String TextInputStream::ReadLine() {
  if (pos_ >= data_.size()) return String::FromBytes("", TextEncoding::None);
  std::size_t end = data_.find_first_of("\r\n", pos_);
  if (end == std::string::npos) end = data_.size();
  String line = String::FromBytes(data_.substr(pos_, end - pos_), TextEncoding::None);
  pos_ = end;
  if (pos_ < data_.size()) {
    const bool cr = data_[pos_++] == '\r';
    if (cr && pos_ < data_.size() && data_[pos_] == '\n') ++pos_;
  }
  return line;
}

void TextOutputStream::WriteLine(const String& text) {
  std::string line = text.Bytes();
  line += '\n';
  file().Write(line.data(), line.size());
}
