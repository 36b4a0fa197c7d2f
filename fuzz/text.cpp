// SPDX-License-Identifier: GPL-3.0-or-later
// Val, Str, Format and the Mac Roman conversion on any bytes, with the rules that tie them
// together: Val reads back what Str and Format give, and Mac Roman goes to UTF-8 and back unharmed.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <string>

#include "fuzz/FuzzProgram.h"
#include "fuzz/Targets.h"

namespace fuzz {

namespace {

template <class T>
T Take(const std::uint8_t* data, std::size_t size) {
  unsigned char b[sizeof(T)] = {};
  std::memcpy(b, data, std::min(size, sizeof(T)));
  return std::bit_cast<T>(b);
}

// Equal, or both no number ("nan" is read back as what it says).
bool Same(double a, double b) { return (std::isnan(a) && std::isnan(b)) || a == b; }

std::string Hex(double v) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%a", v);
  return buf;
}

// An amount: an optional "-", at least `whole` digits, and `decimals` digits after a point.
bool Masked(const std::string& s, std::size_t whole, std::size_t decimals) {
  std::size_t i = s.size() > 0 && s[0] == '-' ? 1 : 0;
  std::size_t digits = 0;
  while (i + digits < s.size() && s[i + digits] >= '0' && s[i + digits] <= '9') ++digits;
  if (digits < whole) return false;
  i += digits;
  if (decimals == 0) return i == s.size();
  if (i >= s.size() || s[i] != '.') return false;
  ++i;
  if (s.size() - i != decimals) return false;
  for (; i < s.size(); ++i)
    if (s[i] < '0' || s[i] > '9') return false;
  return true;
}

void Numbers(const std::uint8_t* data, std::size_t size) {
  const double d = Take<double>(data, size);
  const float f = Take<float>(data, size);
  const Integer n = Take<Integer>(data, size);

  if (Val(Str(n)) != n) Fail("Val does not read back Str of the Integer " + std::to_string(n));
  if (!Same(static_cast<float>(Val(Str(f))), f))
    Fail("Val does not read back Str of the Single " + Hex(f) + ": " + Str(f).Utf8());
  if (!Same(Val(Str(d)), d)) Fail("Val does not read back Str of the Double " + Hex(d) + ": " + Str(d).Utf8());
  if (!std::isfinite(d)) return;

  // An amount is rounded once to the mask's decimals: it stays within half a unit of the value.
  const std::string amount = Format(d, "00.00").Utf8();
  if (!Masked(amount, 2, 2)) Fail("Format(" + Hex(d) + ", \"00.00\") gave " + amount);
  if (amount == "-00.00") Fail("Format gave a zero with a sign");
  const double slack = std::fabs(d) * 1e-15;
  if (std::fabs(Val(String(amount)) - d) > 0.005 + slack)
    Fail("Format(" + Hex(d) + ", \"00.00\") gave " + amount + ", too far from the value");
  const std::string number = Format(d, "00000").Utf8();
  if (!Masked(number, 5, 0)) Fail("Format(" + Hex(d) + ", \"00000\") gave " + number);
  if (std::fabs(Val(String(number)) - d) > 0.5 + slack)
    Fail("Format(" + Hex(d) + ", \"00000\") gave " + number + ", too far from the value");
}

void Texts(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return;
  const TextEncoding tags[] = {TextEncoding::None, TextEncoding::MacRoman, TextEncoding::UTF8};
  const TextEncoding tag = tags[data[0] % 3];
  const Integer count = data[0] >> 2;
  const std::string raw(reinterpret_cast<const char*>(data) + 1, size - 1);
  const String s = String::FromBytes(raw, tag);
  const std::string shown = s.Utf8();

  // The number at the front of a text ends where the number ends.
  if (!Same(Val(s), Val(s + "#"))) Fail("Val reads past the end of its number");
  Format(Val(s), s);

  if (tag != TextEncoding::UTF8 && !IsValidUtf8(shown)) Fail("text read from bytes shows no valid UTF-8");
  if (Utf8ToMacRoman(MacRomanToUtf8(raw)) != raw) Fail("Mac Roman does not come back from UTF-8");
  const String roman = ConvertEncoding(s, Encodings::MacRoman);
  if (tag != TextEncoding::UTF8 && !IsValidUtf8(roman.Utf8())) Fail("Mac Roman text shows no valid UTF-8");
  // A line break composes with nothing, so what follows it converts and folds as it would alone:
  // nothing at the start of a text is dropped or treated otherwise.
  if (tag != TextEncoding::UTF8 && Utf8ToMacRoman("\n" + shown) != "\n" + Utf8ToMacRoman(shown))
    Fail("the start of a text converts to Mac Roman otherwise than the rest");
  if (tag != TextEncoding::UTF8 && FoldCase("\n" + shown) != "\n" + FoldCase(shown))
    Fail("the start of a text folds otherwise than the rest");

  const Integer length = Len(s);
  if (Len(Left(s, count)) != std::min(count, length)) Fail("Left gave the wrong number of characters");
  Mid(s, count, length);
  if (!(s == s)) Fail("a text differs from itself");

  // Two halves, for the comparisons and ReplaceAll.
  const String a = Left(s, length / 2);
  const String b = Mid(s, length / 2 + 1);
  if ((a == b) != (FoldCase(a.Utf8()) == FoldCase(b.Utf8())))
    Fail("= and its key disagree on \"" + a.Utf8() + "\" and \"" + b.Utf8() + "\"");
  if ((a == b) != EqualsIgnoringCase(a.Utf8(), b.Utf8())) Fail("= and EqualsIgnoringCase disagree");
  if (LessIgnoringCase(a.Utf8(), a.Utf8())) Fail("a name sorts before itself");
  if (LessIgnoringCase(a.Utf8(), b.Utf8()) && LessIgnoringCase(b.Utf8(), a.Utf8()))
    Fail("two names sort before each other");
  ReplaceAll(s, a, b);
  ReplaceAll(s, Chr(13), " ");
}

}  // namespace

int TextFunctions(const std::uint8_t* data, std::size_t size) {
  Init();
  Numbers(data, size);
  Texts(data, size);
  return 0;
}

}  // namespace fuzz
