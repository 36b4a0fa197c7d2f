// SPDX-License-Identifier: GPL-3.0-or-later
// Names on disk and their order.
#include "FileNames.h"

#include <algorithm>

#include "CaseFold.h"

namespace rbi {

namespace {

constexpr char kStoredSlash[] = "\xE2\x88\x95";

std::string ReplaceEvery(std::string s, const std::string& what, const std::string& by) {
  for (std::size_t pos = 0; (pos = s.find(what, pos)) != std::string::npos; pos += by.size())
    s.replace(pos, what.size(), by);
  return s;
}

int CompareKeys(std::string_view a, std::string_view b) {
  const bool plainA = IsAsciiText(a), plainB = IsAsciiText(b);
  if (plainA && plainB) return CompareLowered(a, b);
  const std::string keyA = plainA ? std::string(a) : KeyOf(a), keyB = plainB ? std::string(b) : KeyOf(b);
  return CompareLowered(keyA, keyB);
}

}  // namespace

std::string StoredName(const std::string& utf8) { return ReplaceEvery(utf8, "/", kStoredSlash); }

std::string ShownName(const std::string& onDisk) { return ReplaceEvery(onDisk, kStoredSlash, "/"); }

String NameString(std::string bytes) {
  const TextEncoding tag = IsValidUtf8(bytes) ? TextEncoding::UTF8 : TextEncoding::None;
  return String::FromBytes(std::move(bytes), tag);
}

unsigned char LowerAscii(char c) {
  const auto u = static_cast<unsigned char>(c);
  return u >= 'A' && u <= 'Z' ? static_cast<unsigned char>(u - 'A' + 'a') : u;
}

// The key of an ASCII text is the text with its letters lowered, which this does as it goes, and
// lowering a key changes nothing.
int CompareLowered(std::string_view a, std::string_view b) {
  const std::size_t n = std::min(a.size(), b.size());
  for (std::size_t k = 0; k < n; ++k) {
    const unsigned char ca = LowerAscii(a[k]), cb = LowerAscii(b[k]);
    if (ca != cb) return ca < cb ? -1 : 1;
  }
  return a.size() < b.size() ? -1 : a.size() > b.size() ? 1 : 0;
}

std::string KeyOf(std::string_view onDisk) {
  const std::string shown = ShownName(std::string(onDisk));
  return FoldCase(IsValidUtf8(shown) ? shown : MacRomanToUtf8(shown));
}

int CompareWithKey(std::string_view entry, const std::string& key) {
  return IsAsciiText(entry) ? CompareLowered(entry, key) : CompareLowered(KeyOf(entry), key);
}

bool ListedBefore(std::string_view a, std::string_view b) {
  const int byKey = CompareKeys(a, b);
  return byKey != 0 ? byKey < 0 : a < b;
}

}  // namespace rbi
