// SPDX-License-Identifier: GPL-3.0-or-later
// Strings: bytes with a tag, shown as UTF-8, compared without regard to case.
#include "rb/String.h"

#include <QString>
#include <QStringDecoder>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

#include "CaseFold.h"

namespace {

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

// Whether the string's characters are its bytes read as UTF-8 (else one byte is one Mac Roman
// character).
bool ReadsAsUtf8(const String& s) {
  switch (s.Encoding()) {
    case TextEncoding::UTF8:
      return true;
    case TextEncoding::MacRoman:
      return false;
    case TextEncoding::None:
      return IsValidUtf8(s.Bytes());
  }
  return true;
}

// The byte offset of character n (counted from 0), or the size when there are fewer.
std::size_t ByteOffsetOfChar(const std::string& bytes, bool utf8, Integer n) {
  if (n <= 0) return 0;
  if (!utf8) return std::min<std::size_t>(bytes.size(), static_cast<std::size_t>(n));
  Integer seen = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (!IsContinuation(bytes[i])) {
      if (seen == n) return i;
      ++seen;
    }
  }
  return bytes.size();
}

// A piece of s: a Mac Roman reading stays a Mac Roman reading, even where the piece alone would
// happen to be valid UTF-8.
String Slice(const String& s, std::size_t from, std::size_t to) {
  const bool utf8 = ReadsAsUtf8(s);
  TextEncoding tag = s.Encoding();
  if (!utf8 && tag == TextEncoding::None) tag = TextEncoding::MacRoman;
  return String::FromBytes(s.Bytes().substr(from, to - from), tag);
}

}  // namespace

std::string FoldCase(const std::string& utf8) {
  if (IsAsciiText(utf8)) {
    std::string out = utf8;
    for (char& c : out)
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return out;
  }
  // Upper case first carries the full mappings ("ß" to "SS", "ﬁ" to "FI"); folding then lowers.
  // A leading U+FEFF counts as a character, as it does everywhere else in the text.
  QStringDecoder decode(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom);
  QString q = decode(QByteArrayView(utf8.data(), static_cast<qsizetype>(utf8.size())));
  return q.normalized(QString::NormalizationForm_C).toUpper().toCaseFolded().toStdString();
}

std::string FoldCase(std::string&& utf8) {
  if (!IsAsciiText(utf8)) return FoldCase(static_cast<const std::string&>(utf8));
  for (char& c : utf8)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return std::move(utf8);
}

String::String(const char* utf8) : bytes_(utf8 ? utf8 : "") {}

String::String(const std::string& utf8) : bytes_(utf8) {}

String String::FromBytes(std::string bytes, TextEncoding encoding) {
  String s;
  s.bytes_ = std::move(bytes);
  s.encoding_ = encoding;
  return s;
}

std::string String::Utf8() const& { return ReadsAsUtf8(*this) ? bytes_ : MacRomanToUtf8(bytes_); }

std::string String::Utf8() && {
  if (ReadsAsUtf8(*this)) return std::move(bytes_);
  return MacRomanToUtf8(bytes_);
}

String& String::operator+=(const String& other) {
  if (other.bytes_.empty()) return *this;
  if (bytes_.empty()) return *this = other;
  if (encoding_ == other.encoding_) {
    bytes_ += other.bytes_;
  } else {
    bytes_ = Utf8() + other.Utf8();
    encoding_ = TextEncoding::UTF8;
  }
  return *this;
}

String operator+(const String& a, const String& b) {
  String r = a;
  r += b;
  return r;
}

bool operator==(const String& a, const String& b) {
  if (a.encoding_ == b.encoding_ && a.bytes_ == b.bytes_) return true;
  // ASCII bytes are the same characters whatever the tag.
  if (IsAsciiText(a.bytes_) && IsAsciiText(b.bytes_))
    return a.bytes_.size() == b.bytes_.size() && CompareIgnoringCase(a.bytes_, b.bytes_) == 0;
  return EqualsIgnoringCase(a.Utf8(), b.Utf8());
}

Integer Len(const String& s) {
  const std::string& b = s.Bytes();
  if (!ReadsAsUtf8(s)) return static_cast<Integer>(b.size());
  return static_cast<Integer>(
      std::count_if(b.begin(), b.end(), [](char c) { return !IsContinuation(c); }));
}

String Left(const String& s, Integer n) {
  return Slice(s, 0, ByteOffsetOfChar(s.Bytes(), ReadsAsUtf8(s), n));
}

String Mid(const String& s, Integer start, Integer length) {
  const bool utf8 = ReadsAsUtf8(s);
  const Integer first = std::max<Integer>(start, 1) - 1;
  const std::size_t from = ByteOffsetOfChar(s.Bytes(), utf8, first);
  if (length < 0) return Slice(s, from, s.Bytes().size());
  const Integer end = length > INT32_MAX - first ? INT32_MAX : first + length;
  return Slice(s, from, ByteOffsetOfChar(s.Bytes(), utf8, end));
}

String Chr(Integer code) {
  if (code < 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return String();
  const auto c = static_cast<std::uint32_t>(code);
  std::string out;
  AppendUtf8(out, c);
  return String(out);
}

String ReplaceAll(const String& s, const String& find, const String& with) {
  if (find.IsEmpty() || s.IsEmpty()) return s;
  // Bytes can be replaced as they stand when all three read the same way; otherwise the work is
  // done on the characters shown.
  const bool sameReading = s.Encoding() == find.Encoding() && s.Encoding() == with.Encoding() &&
                           s.Encoding() != TextEncoding::None;
  const std::string text = sameReading ? s.Bytes() : s.Utf8();
  const std::string what = sameReading ? find.Bytes() : find.Utf8();
  const std::string by = sameReading ? with.Bytes() : with.Utf8();
  std::string out;
  out.reserve(text.size());
  std::size_t pos = 0;
  for (std::size_t hit; (hit = text.find(what, pos)) != std::string::npos;
       pos = hit + what.size()) {
    out.append(text, pos, hit - pos);
    out += by;
  }
  out.append(text, pos, std::string::npos);
  return String::FromBytes(std::move(out), sameReading ? s.Encoding() : TextEncoding::UTF8);
}

String ConvertEncoding(const String& s, TextEncoding encoding) {
  switch (encoding) {
    case TextEncoding::MacRoman:
      return String::FromBytes(Utf8ToMacRoman(s.Utf8()), TextEncoding::MacRoman);
    case TextEncoding::UTF8:
      return String::FromBytes(s.Utf8(), TextEncoding::UTF8);
    case TextEncoding::None:
      return String::FromBytes(s.Bytes(), TextEncoding::None);
  }
  return s;
}

bool IsValidUtf8(const std::string& bytes) {
  const auto* p = reinterpret_cast<const unsigned char*>(bytes.data());
  const auto* end = p + bytes.size();
  while (p < end) {
    const unsigned char b = *p;
    if (b < 0x80) {
      ++p;
      continue;
    }
    int extra;
    std::uint32_t c;
    if (b >= 0xC2 && b <= 0xDF) {
      extra = 1;
      c = b & 0x1F;
    } else if (b >= 0xE0 && b <= 0xEF) {
      extra = 2;
      c = b & 0x0F;
    } else if (b >= 0xF0 && b <= 0xF4) {
      extra = 3;
      c = b & 0x07;
    } else {
      return false;
    }
    if (end - p <= extra) return false;
    for (int i = 1; i <= extra; ++i) {
      if ((p[i] & 0xC0) != 0x80) return false;
      c = (c << 6) | (p[i] & 0x3F);
    }
    // Over-long forms, surrogates and values past the last code point.
    if ((extra == 2 && c < 0x800) || (extra == 3 && c < 0x10000) || c > 0x10FFFF ||
        (c >= 0xD800 && c <= 0xDFFF))
      return false;
    p += extra + 1;
  }
  return true;
}

bool EqualsIgnoringCase(const std::string& utf8a, const std::string& utf8b) {
  if (utf8a == utf8b) return true;
  if (IsAsciiText(utf8a) && IsAsciiText(utf8b)) return CompareIgnoringCase(utf8a, utf8b) == 0;
  return FoldCase(utf8a) == FoldCase(utf8b);
}

int CompareIgnoringCase(const std::string& utf8a, const std::string& utf8b) {
  if (IsAsciiText(utf8a) && IsAsciiText(utf8b)) {
    auto lower = [](char c) {
      const auto u = static_cast<unsigned char>(c);
      return u >= 'A' && u <= 'Z' ? static_cast<unsigned char>(u - 'A' + 'a') : u;
    };
    const std::size_t n = std::min(utf8a.size(), utf8b.size());
    for (std::size_t k = 0; k < n; ++k) {
      const unsigned char a = lower(utf8a[k]), b = lower(utf8b[k]);
      if (a != b) return a < b ? -1 : 1;
    }
    return utf8a.size() < utf8b.size() ? -1 : utf8a.size() > utf8b.size() ? 1 : 0;
  }
  const int c = FoldCase(utf8a).compare(FoldCase(utf8b));
  return c < 0 ? -1 : c > 0 ? 1 : 0;
}

bool LessIgnoringCase(const std::string& utf8a, const std::string& utf8b) {
  const std::string ka = FoldCase(utf8a), kb = FoldCase(utf8b);
  if (ka != kb) return ka < kb;
  return utf8a < utf8b;
}

bool IsAsciiText(std::string_view s) {
  const char* p = s.data();
  std::size_t n = s.size();
  for (; n >= 8; p += 8, n -= 8) {
    std::uint64_t word;
    std::memcpy(&word, p, 8);
    if (word & 0x8080808080808080ULL) return false;
  }
  for (; n > 0; ++p, --n)
    if (static_cast<unsigned char>(*p) >= 0x80) return false;
  return true;
}
