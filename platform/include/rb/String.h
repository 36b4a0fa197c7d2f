// SPDX-License-Identifier: GPL-3.0-or-later
// Strings and the text and number functions.
#pragma once

#include <string>

#include "rb/Core.h"

// How a string's bytes are to be read. Literals and control texts are UTF8; bytes read from a file
// carry None.
enum class TextEncoding { None, UTF8, MacRoman };

struct Encodings {
  static constexpr TextEncoding UTF8 = TextEncoding::UTF8;
  static constexpr TextEncoding MacRoman = TextEncoding::MacRoman;
};

// Counted bytes with an encoding tag. Never null: the empty string is its zero. Comparison with
// == and != ignores case (for non-ASCII letters too) and compares the characters shown, so that
// the same word read from a file in Mac Roman equals the literal.
class String {
 public:
  String() = default;
  String(const char* utf8);         // NOLINT: literals convert implicitly
  String(const std::string& utf8);  // NOLINT
  static String FromBytes(std::string bytes, TextEncoding encoding = TextEncoding::None);

  const std::string& Bytes() const { return bytes_; }
  TextEncoding Encoding() const { return encoding_; }
  bool IsEmpty() const { return bytes_.empty(); }

  // The characters as UTF-8: UTF8 as is; MacRoman converted; None read as UTF-8 when the bytes are
  // valid UTF-8 and as Mac Roman otherwise.
  std::string Utf8() const&;
  // The same from a string that goes away afterwards: UTF-8 bytes are handed over, not copied.
  std::string Utf8() &&;

  // Exact comparison of the characters shown, case included.
  bool SameAs(const String& other) const { return Utf8() == other.Utf8(); }

  String& operator+=(const String& other);
  friend String operator+(const String& a, const String& b);
  friend bool operator==(const String& a, const String& b);
  friend bool operator!=(const String& a, const String& b) { return !(a == b); }

 private:
  std::string bytes_;
  TextEncoding encoding_ = TextEncoding::UTF8;
};

inline String operator+(const char* a, const String& b) { return String(a) + b; }

// Text functions. Lengths and positions count characters, not bytes.
Integer Len(const String& s);
String Left(const String& s, Integer n);
String Mid(const String& s, Integer start, Integer length = -1);  // start counts from 1
String Chr(Integer code);
String ReplaceAll(const String& s, const String& find, const String& with);
String ConvertEncoding(const String& s, TextEncoding encoding);
bool IsValidUtf8(const std::string& bytes);
std::string MacRomanToUtf8(const std::string& bytes);
// Characters with no Mac Roman code become '?'.
std::string Utf8ToMacRoman(const std::string& utf8);
// Full Unicode case folding for comparison.
bool EqualsIgnoringCase(const std::string& utf8a, const std::string& utf8b);
// The key under which texts compare ignoring case: equal keys exactly when EqualsIgnoringCase.
std::string FoldCase(const std::string& utf8);
// The same for a text that is not needed afterwards: plain ASCII is lowered where it stands.
std::string FoldCase(std::string&& utf8);
// Orders names ignoring case; ties broken by the bytes, so the order is total and stable.
bool LessIgnoringCase(const std::string& utf8a, const std::string& utf8b);
// Compares the case-folded keys of two texts: below, at or above 0 as a's key sorts before, equal
// to or after b's. Plain ASCII is compared as it stands, with nothing made.
int CompareIgnoringCase(const std::string& utf8a, const std::string& utf8b);

// Numbers. Str has three separate forms; a Single is printed to a Single's precision.
String Str(Integer v);
String Str(Single v);
String Str(Double v);
// The longest leading decimal number of the text ("." as the point, optional sign and exponent),
// 0 when there is none.
Double Val(const String& s);
// Masks "00.00" and "00000" (and any of the same kind: zeros before an optional point and zeros
// after it). Rounds the binary value correctly, a true tie away from zero; never "-00.00".
String Format(Double v, const String& mask);
// A Double stored in an Integer is cut toward zero (saturating at the Integer's range).
Integer CInt(Double v);
