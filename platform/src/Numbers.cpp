// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers to text and back: Str, Val, Format, CInt.
#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "rb/String.h"

namespace {

// The shortest text that reads back as the same value, at the value's own precision. Plain
// digits from 0.0001 up to below 1e15; outside that range the exponent form ("1e+15", "2.5e-05"),
// which Val reads back as well.
template <class T>
std::string Shortest(T v) {
  if (v == 0) return "0";  // also -0
  char buf[64];
  const T a = std::fabs(v);
  const bool exponent = std::isfinite(a) && (a >= T(1e15) || a < T(1e-4));
  const auto r = std::to_chars(buf, buf + sizeof buf, v,
                               exponent ? std::chars_format::scientific : std::chars_format::fixed);
  return std::string(buf, r.ptr);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// a (finite, not negative) rounded to `decimals` places, half away from zero, as a whole number
// of units of the last place; worked out exactly in integers, which is quick. a is m × 2^e with m
// below 2^53, and m × 10^decimals stays below 2^63 for up to three decimals. Nothing when the
// value does not fit: the caller then takes the long way.
std::optional<std::uint64_t> RoundedUnits(double a, std::size_t decimals) {
  if (decimals > 3) return std::nullopt;
  if (a == 0) return 0;
  int exp2 = 0;
  const double mantissa = std::frexp(a, &exp2);
  const auto m = static_cast<std::uint64_t>(std::ldexp(mantissa, 53));
  const int e = exp2 - 53;
  std::uint64_t scale = 1;
  for (std::size_t k = 0; k < decimals; ++k) scale *= 10;
  const std::uint64_t scaled = m * scale;
  if (e >= 0) {
    if (e >= 63 || (scaled >> (63 - e)) != 0) return std::nullopt;
    return scaled << e;
  }
  const int shift = -e;
  if (shift >= 64) return 0;  // below half a unit: scaled < 2^63 <= 2^(shift - 1)
  const std::uint64_t units = scaled >> shift;
  const std::uint64_t rest = scaled & ((std::uint64_t{1} << shift) - 1);
  return rest >= (std::uint64_t{1} << (shift - 1)) ? units + 1 : units;
}

}  // namespace

String Str(Integer v) { return String(std::to_string(v)); }

String Str(Single v) { return String(Shortest<float>(v)); }

String Str(Double v) { return String(Shortest<double>(v)); }

Double Val(const String& s) {
  const std::string text = s.Utf8();
  const char* p = text.data();
  const char* end = p + text.size();
  while (p < end && (*p == ' ' || *p == '\t')) ++p;
  bool negative = false;
  if (p < end && (*p == '+' || *p == '-')) negative = *p++ == '-';

  // A typed 1e400 is infinity, and Str and Format write it as "inf" (a value that is no number as
  // "nan"); those words are read back, so that a field shows what the next sum counts.
  if (end - p >= 3 && (std::string_view(p, 3) == "inf" || std::string_view(p, 3) == "nan") &&
      (end - p == 3 || !std::isalnum(static_cast<unsigned char>(p[3])))) {
    const double v = *p == 'i' ? std::numeric_limits<double>::infinity()
                               : std::numeric_limits<double>::quiet_NaN();
    return negative ? -v : v;
  }

  // Mark out the number: digits, an optional point and digits, and an exponent only when digits
  // follow its letter and sign.
  const char* start = p;
  const char* q = p;
  std::size_t digits = 0;
  while (q < end && IsDigit(*q)) ++q, ++digits;
  if (q < end && *q == '.') {
    const char* frac = q + 1;
    while (frac < end && IsDigit(*frac)) ++frac, ++digits;
    q = frac;
  }
  if (digits == 0) return 0;
  if (q < end && (*q == 'e' || *q == 'E')) {
    const char* e = q + 1;
    if (e < end && (*e == '+' || *e == '-')) ++e;
    if (e < end && IsDigit(*e)) {
      while (e < end && IsDigit(*e)) ++e;
      q = e;
    }
  }

  double value = 0;
  const auto r = std::from_chars(start, q, value, std::chars_format::general);
  if (r.ec == std::errc::result_out_of_range) {
    // Too large gives infinity; too small, zero.
    const std::string part(start, q);
    const auto ePos = part.find_first_of("eE");
    const bool tiny = ePos != std::string::npos && part[ePos + 1] == '-';
    value = tiny ? 0.0 : std::numeric_limits<double>::infinity();
  }
  return negative ? -value : value;
}

String Format(Double v, const String& mask) {
  // The mask: zeros before the point give the least number of whole digits, zeros after it the
  // number of decimals.
  const std::string m = mask.Utf8();
  const auto point = m.find('.');
  const std::size_t wholeZeros =
      static_cast<std::size_t>(std::count(m.begin(), point == std::string::npos ? m.end() : m.begin() + point, '0'));
  const std::size_t decimals =
      point == std::string::npos ? 0 : static_cast<std::size_t>(std::count(m.begin() + point + 1, m.end(), '0'));

  if (!std::isfinite(v)) return Str(v);

  // Amounts on the form take this way: two decimals or none, and far below 10^15.
  if (const auto units = RoundedUnits(std::fabs(v), decimals)) {
    std::uint64_t scale = 1;
    for (std::size_t k = 0; k < decimals; ++k) scale *= 10;
    const std::uint64_t whole = *units / scale;
    std::string out;
    if (std::signbit(v) && *units != 0) out += '-';
    const std::string wholeDigits = whole == 0 ? std::string() : std::to_string(whole);
    std::size_t minWhole = wholeZeros;
    if (minWhole == 0 && decimals == 0) minWhole = 1;
    if (wholeDigits.size() < minWhole) out.append(minWhole - wholeDigits.size(), '0');
    out += wholeDigits;
    if (point != std::string::npos) {
      out += '.';
      if (decimals > 0) {
        const std::string frac = std::to_string(*units % scale);
        out.append(decimals - frac.size(), '0');
        out += frac;
      }
    }
    return String(out);
  }

  // The exact decimal expansion of the binary value (a double has at most 1074 decimals), so that
  // the rounding below sees the true digits and never rounds twice.
  const double a = std::fabs(v);
  int exp2 = 0;
  std::frexp(a, &exp2);
  const int exact = std::max(0, std::min(1074, 53 - exp2));
  const int precision = std::max(exact, static_cast<int>(decimals) + 1);
  std::string buf(static_cast<std::size_t>(precision) + 400, '\0');
  const auto r = std::to_chars(buf.data(), buf.data() + buf.size(), a, std::chars_format::fixed, precision);
  buf.resize(static_cast<std::size_t>(r.ptr - buf.data()));

  const auto dot = buf.find('.');
  std::string digits = buf.substr(0, dot) + buf.substr(dot + 1, decimals);
  // Half away from zero: with the exact digits the first dropped digit alone decides.
  if (buf[dot + 1 + decimals] >= '5') {
    std::size_t i = digits.size();
    while (i > 0 && digits[i - 1] == '9') digits[--i] = '0';
    if (i == 0) {
      digits.insert(digits.begin(), '1');
    } else {
      ++digits[i - 1];
    }
  }
  const std::size_t newWhole = digits.size() - decimals;

  std::string whole = digits.substr(0, newWhole);
  const std::string frac = digits.substr(newWhole);
  // Strip the leading zeros, then pad to the mask's width.
  const auto firstNonZero = whole.find_first_not_of('0');
  whole = firstNonZero == std::string::npos ? std::string() : whole.substr(firstNonZero);
  std::size_t minWhole = wholeZeros;
  if (minWhole == 0 && decimals == 0) minWhole = 1;
  if (whole.size() < minWhole) whole.insert(0, minWhole - whole.size(), '0');

  std::string out;
  const bool zero = digits.find_first_not_of('0') == std::string::npos;
  if (std::signbit(v) && !zero) out += '-';
  out += whole;
  if (point != std::string::npos) {
    out += '.';
    out += frac;
  }
  return String(out);
}

Integer CInt(Double v) {
  if (std::isnan(v)) return 0;
  if (v >= 2147483647.0) return std::numeric_limits<Integer>::max();
  if (v <= -2147483648.0) return std::numeric_limits<Integer>::min();
  return static_cast<Integer>(v);  // cut toward zero
}
