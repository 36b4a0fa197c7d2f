// SPDX-License-Identifier: GPL-3.0-or-later
// The Mac Roman character set: comments are stored in it, and bytes read from a file that are not
// UTF-8 are shown as it.
#include <QList>
#include <QString>
#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "CaseFold.h"
#include "rb/String.h"

namespace {

// Codes 0x80 to 0xFF, sixteen to a line; the lower half is ASCII. The spacing accents, the no-break
// space and the private character of the Apple logo are written as escapes.
constexpr std::u16string_view kHighHalf =
    u"ÄÅÇÉÑÖÜáàâäãåçéè"  // 80
    u"êëíìîïñóòôöõúùûü"  // 90
    u"†°¢£§•¶ß®©™\u00B4\u00A8≠ÆØ"  // A0
    u"∞±≤≥¥µ∂∑∏π∫ªºΩæø"  // B0
    u"¿¡¬√ƒ≈∆«»…\u00A0ÀÃÕŒœ"  // C0
    u"–—“”‘’÷◊ÿŸ⁄€‹›ﬁﬂ"  // D0
    u"‡·‚„‰ÂÊÁËÈÍÎÏÌÓÔ"  // E0
    u"\uF8FFÒÚÛÙı\u02C6\u02DC\u00AF\u02D8\u02D9\u02DA\u00B8\u02DD\u02DB\u02C7";  // F0
static_assert(kHighHalf.size() == 128);

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
