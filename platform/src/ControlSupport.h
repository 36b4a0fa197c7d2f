// SPDX-License-Identifier: GPL-3.0-or-later
// Inside the platform: what the control, window and handler files share.
#pragma once

#include <cstddef>
#include <string>

#include "rb/Controls.h"

namespace rbi {

// Character positions in UTF-8 text: lengths and offsets count characters, not bytes.
inline bool IsContinuationByte(unsigned char b) { return (b & 0xC0) == 0x80; }

inline Integer Utf8Length(const std::string& s) {
  Integer n = 0;
  for (unsigned char b : s)
    if (!IsContinuationByte(b)) ++n;
  return n;
}

// The byte offset of character `index`, the size of the text when it has fewer characters.
inline std::size_t Utf8Offset(const std::string& s, Integer index) {
  if (index <= 0) return 0;
  Integer seen = 0;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (IsContinuationByte(static_cast<unsigned char>(s[i]))) continue;
    if (seen == index) return i;
    ++seen;
  }
  return s.size();
}

inline std::string Utf8Mid(const std::string& s, Integer start, Integer length) {
  std::size_t a = Utf8Offset(s, start);
  std::size_t b = Utf8Offset(s, start + length);
  return s.substr(a, b - a);
}

// A key that stands for text to insert: no control characters in it.
inline bool IsPrintableKey(const std::string& key) {
  if (key.empty()) return false;
  for (unsigned char b : key)
    if (b < 0x20 || b == 0x7F) return false;
  return true;
}

inline bool SameKey(const String& key, const String& named) { return key.Bytes() == named.Bytes(); }

// IsContextualClick() answers true inside this scope when `contextual` is.
class ContextualClickScope {
 public:
  explicit ContextualClickScope(bool contextual);
  ~ContextualClickScope();
  ContextualClickScope(const ContextualClickScope&) = delete;
  ContextualClickScope& operator=(const ContextualClickScope&) = delete;

 private:
  bool saved_;
};

// A click on a control takes the mouse out of any open cell edit of its window: the edit ends and
// keeps what the user typed, so code run by the click reads the cell as the user sees it.
void EndCellEditsOf(Window* window);

}  // namespace rbi
