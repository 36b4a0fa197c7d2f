// The Mac Roman character set: comments are stored in it, and bytes read from a file that are not
// UTF-8 are shown as it.
#include <QList>
#include <QString>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <utility>

#include "CaseFold.h"
#include "rb/String.h"

namespace {

// Codes 0x80 to 0xFF; the lower half is ASCII.
constexpr std::array<char16_t, 128> kHighHalf = {
    0x00C4, 0x00C5, 0x00C7, 0x00C9, 0x00D1, 0x00D6, 0x00DC, 0x00E1,  // 80
    0x00E0, 0x00E2, 0x00E4, 0x00E3, 0x00E5, 0x00E7, 0x00E9, 0x00E8,  // 88
    0x00EA, 0x00EB, 0x00ED, 0x00EC, 0x00EE, 0x00EF, 0x00F1, 0x00F3,  // 90
    0x00F2, 0x00F4, 0x00F6, 0x00F5, 0x00FA, 0x00F9, 0x00FB, 0x00FC,  // 98
    0x2020, 0x00B0, 0x00A2, 0x00A3, 0x00A7, 0x2022, 0x00B6, 0x00DF,  // A0
    0x00AE, 0x00A9, 0x2122, 0x00B4, 0x00A8, 0x2260, 0x00C6, 0x00D8,  // A8
    0x221E, 0x00B1, 0x2264, 0x2265, 0x00A5, 0x00B5, 0x2202, 0x2211,  // B0
    0x220F, 0x03C0, 0x222B, 0x00AA, 0x00BA, 0x03A9, 0x00E6, 0x00F8,  // B8
    0x00BF, 0x00A1, 0x00AC, 0x221A, 0x0192, 0x2248, 0x2206, 0x00AB,  // C0
    0x00BB, 0x2026, 0x00A0, 0x00C0, 0x00C3, 0x00D5, 0x0152, 0x0153,  // C8
    0x2013, 0x2014, 0x201C, 0x201D, 0x2018, 0x2019, 0x00F7, 0x25CA,  // D0
    0x00FF, 0x0178, 0x2044, 0x20AC, 0x2039, 0x203A, 0xFB01, 0xFB02,  // D8
    0x2021, 0x00B7, 0x201A, 0x201E, 0x2030, 0x00C2, 0x00CA, 0x00C1,  // E0
    0x00CB, 0x00C8, 0x00CD, 0x00CE, 0x00CF, 0x00CC, 0x00D3, 0x00D4,  // E8
    0xF8FF, 0x00D2, 0x00DA, 0x00DB, 0x00D9, 0x0131, 0x02C6, 0x02DC,  // F0
    0x00AF, 0x02D8, 0x02D9, 0x02DA, 0x00B8, 0x02DD, 0x02DB, 0x02C7,  // F8
};

using ReverseEntry = std::pair<char32_t, unsigned char>;

// Unicode to code, sorted for a binary search. Two characters that look the same as a Mac Roman
// one and are often typed for it map there as well.
const std::array<ReverseEntry, 130>& ReverseTable() {
  static const std::array<ReverseEntry, 130> table = [] {
    std::array<ReverseEntry, 130> t{};
    for (int i = 0; i < 128; ++i) t[i] = {kHighHalf[i], static_cast<unsigned char>(0x80 + i)};
    t[128] = {0x0394, 0xC6};  // GREEK CAPITAL LETTER DELTA for INCREMENT
    t[129] = {0x03BC, 0xB5};  // GREEK SMALL LETTER MU for MICRO SIGN
    std::sort(t.begin(), t.end());
    return t;
  }();
  return table;
}

}  // namespace

std::string MacRomanToUtf8(const std::string& bytes) {
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 2);
  for (unsigned char b : bytes) {
    if (b < 0x80) {
      out += static_cast<char>(b);
    } else {
      AppendUtf8(out, kHighHalf[b - 0x80]);
    }
  }
  return out;
}

std::string Utf8ToMacRoman(const std::string& utf8) {
  if (IsAsciiText(utf8)) return utf8;
  // Composed form first, so that an e followed by a combining accent becomes the one code of é.
  // A leading U+FEFF is a character of the text like any other, not a mark to drop.
  QStringDecoder decode(QStringDecoder::Utf8, QStringConverter::Flag::ConvertInitialBom);
  const QString text = decode(QByteArrayView(utf8.data(), static_cast<qsizetype>(utf8.size())));
  const QList<uint> chars = text.normalized(QString::NormalizationForm_C).toUcs4();
  const auto& table = ReverseTable();
  std::string out;
  out.reserve(chars.size());
  for (uint c : chars) {
    if (c < 0x80) {
      out += static_cast<char>(c);
      continue;
    }
    auto it =
        std::lower_bound(table.begin(), table.end(), ReverseEntry{static_cast<char32_t>(c), 0});
    out += (it != table.end() && it->first == c) ? static_cast<char>(it->second) : '?';
  }
  return out;
}

void AppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | (c >> 6));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | (c >> 12));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (c >> 18));
    out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}
