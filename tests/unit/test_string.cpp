// SPDX-License-Identifier: GPL-3.0-or-later
// Strings: tags, the characters shown, comparison without case, the text functions, Mac Roman.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "rb/String.h"

namespace {

String Untagged(const std::string& bytes) { return String::FromBytes(bytes, TextEncoding::None); }
String MacRoman(const std::string& bytes) { return String::FromBytes(bytes, TextEncoding::MacRoman); }

TEST(StringTags, UntaggedBytesShowAsUtf8WhenValidAndAsMacRomanOtherwise) {
  EXPECT_EQ(String("abc").Encoding(), TextEncoding::UTF8);
  EXPECT_EQ(Untagged("\xC2\xA3" "5").Utf8(), "\xC2\xA3" "5");  // "£5" written as UTF-8
  EXPECT_EQ(Untagged("\xA3" "5").Utf8(), "\xC2\xA3" "5");      // "£5" written as Mac Roman
  EXPECT_TRUE(String(static_cast<const char*>(nullptr)).IsEmpty());
}

TEST(StringCompare, EqualityIgnoresCaseOnTheCharactersShown) {
  EXPECT_TRUE(String("unpaid") == String("unPaiD"));
  EXPECT_TRUE(String("paid") == Untagged("Paid"));
  EXPECT_FALSE(String("paid") == String("unpaid"));
  EXPECT_TRUE(String("paid") != String("pai"));
  // Full folding, composed forms, and the same word read from a file in Mac Roman.
  EXPECT_TRUE(String("\xC3\x89T\xC3\x89") == String("\xC3\xA9t\xC3\xA9"));  // ÉTÉ, été
  EXPECT_TRUE(String("STRASSE") == String("stra\xC3\x9F" "e"));            // straße
  EXPECT_TRUE(Untagged("CAF\x8E") == String("caf\xC3\xA9"));
  EXPECT_TRUE(String("e\xCC\x81") == String("\xC3\x89"));  // e + combining acute, É
  EXPECT_TRUE(String("ABCDEFGHIJKLMNOP\xC3\x89") == String("abcdefghijklmnop\xC3\xA9"));
  EXPECT_FALSE(String("\xC3\xA9") == String("e"));
  // The same bytes under two tags are the characters each tag reads: é in UTF-8, "√©" in Mac Roman.
  EXPECT_FALSE(String("\xC3\xA9") == String::FromBytes("\xC3\xA9", TextEncoding::MacRoman));
  EXPECT_TRUE(String("Stock").SameAs(Untagged("Stock")));
  EXPECT_FALSE(String("Stock").SameAs(String("stock")));
}

TEST(StringCompare, OrderIgnoresCaseOnTheCharactersAndThenGoesByTheBytes) {
  EXPECT_EQ(CompareIgnoringCase("apple", "Banana"), -1);
  EXPECT_EQ(CompareIgnoringCase("Banana", "banan"), 1);
  // An ASCII text against one that is not: both folded in full.
  EXPECT_EQ(CompareIgnoringCase("STRASSE", "stra\xC3\x9F" "e"), 0);
  EXPECT_EQ(CompareIgnoringCase("\xC3\x89t\xC3\xA9", "ETE"), 1);
  EXPECT_TRUE(EqualsIgnoringCase("Items", "ITEMS"));
  EXPECT_FALSE(EqualsIgnoringCase("Items", "Item"));
  EXPECT_TRUE(LessIgnoringCase("Banana", "cherry"));
  EXPECT_TRUE(LessIgnoringCase("ZED", "\xC3\xA9t\xC3\xA9"));  // by the folded characters' bytes
  // Names equal but for case are ordered by their bytes, so the order is total.
  EXPECT_TRUE(LessIgnoringCase("B", "b"));
  EXPECT_FALSE(LessIgnoringCase("b", "B"));
  EXPECT_FALSE(LessIgnoringCase("b", "b"));
}

TEST(StringConcat, TheSameTagKeepsBytesAndTagDifferentTagsMeetInUtf8) {
  const String joined = Untagged("\xA3") + Untagged("5");
  EXPECT_EQ(joined.Encoding(), TextEncoding::None);
  EXPECT_EQ(joined.Bytes(), "\xA3" "5");
  const String mixed = String("\xC2\xA3") + MacRoman("\xA3");
  EXPECT_EQ(mixed.Encoding(), TextEncoding::UTF8);
  EXPECT_EQ(mixed.Bytes(), "\xC2\xA3\xC2\xA3");
  // An empty side leaves the other as it is, tag and all.
  EXPECT_EQ((String() + MacRoman("\xA3")).Encoding(), TextEncoding::MacRoman);
  EXPECT_EQ((MacRoman("\xA3") + String("")).Bytes(), "\xA3");
}

TEST(StringFunctions, LenLeftMidCountCharacters) {
  const String price("\xC2\xA3" "12.50");  // £12.50
  EXPECT_EQ(Len(price), 6);
  EXPECT_EQ(Left(price, 3).Bytes(), "\xC2\xA3" "12");
  EXPECT_EQ(Left(price, 100).Bytes(), price.Bytes());
  EXPECT_EQ(Left(price, 0).Bytes(), "");
  EXPECT_EQ(Len(String("\xE2\x82\xAC")), 1);  // €
  // Untagged Mac Roman bytes: one byte, one character; a piece keeps that reading.
  const String mac = Untagged("\xA3" "12\xFF");
  EXPECT_EQ(Len(mac), 4);
  EXPECT_EQ(Left(mac, 1).Utf8(), "\xC2\xA3");
  const String s("\xC3\xA9t\xC3\xA9 2026");  // été 2026
  EXPECT_EQ(Mid(s, 1, 3).Bytes(), "\xC3\xA9t\xC3\xA9");
  EXPECT_EQ(Mid(s, 5).Bytes(), "2026");
  EXPECT_EQ(Mid(s, 5, 2).Bytes(), "20");
  EXPECT_EQ(Mid(s, 20).Bytes(), "");
  EXPECT_EQ(Chr(0x20AC).Bytes(), "\xE2\x82\xAC");
  EXPECT_EQ(Chr(0).Bytes(), std::string(1, '\0'));
  EXPECT_EQ(Len(Chr(0x1F600)), 1);
  EXPECT_TRUE(Chr(-1).IsEmpty());
}

TEST(StringFunctions, ReplaceAllReplacesEveryOccurrenceOnTheCharactersShown) {
  const String address = String("1 High St") + Chr(13) + "Leeds" + Chr(13) + "LS1";
  EXPECT_EQ(ReplaceAll(address, Chr(13), " ").Bytes(), "1 High St Leeds LS1");
  EXPECT_EQ(ReplaceAll("aaa", "a", "aa").Bytes(), "aaaaaa");
  EXPECT_EQ(ReplaceAll("abc", "", "x").Bytes(), "abc");
  EXPECT_EQ(ReplaceAll(Untagged("caf\x8E/1"), "/", "-").Utf8(), "caf\xC3\xA9-1");
}

TEST(StringEncoding, MacRomanBothWays) {
  EXPECT_EQ(ConvertEncoding(String("\xC2\xA3"), Encodings::MacRoman).Encoding(), TextEncoding::MacRoman);
  EXPECT_EQ(ConvertEncoding(String("e\xCC\x81"), Encodings::MacRoman).Bytes(), "\x8E");
  // A character Mac Roman lacks (here a Cyrillic letter) becomes '?'.
  EXPECT_EQ(ConvertEncoding(String("a\xD0\x96" "b"), Encodings::MacRoman).Bytes(), "a?b");
  EXPECT_EQ(ConvertEncoding(Untagged("\xA3"), Encodings::UTF8).Bytes(), "\xC2\xA3");
  std::set<std::string> seen;
  for (int code = 0; code < 256; ++code) {
    const std::string byte(1, static_cast<char>(code));
    const std::string utf8 = MacRomanToUtf8(byte);
    EXPECT_EQ(Len(String(utf8)), 1) << code;
    if (code < 0x80) EXPECT_EQ(utf8, byte) << code;
    EXPECT_EQ(Utf8ToMacRoman(utf8), byte) << code;
    seen.insert(utf8);
  }
  EXPECT_EQ(seen.size(), 256u);
}

TEST(StringEncoding, ValidUtf8IsStrict) {
  EXPECT_TRUE(IsValidUtf8("\xC2\xA3\xE2\x82\xAC\xF0\x9F\x98\x80\xF0\x90\x80\x80"));
  for (const char* bad : {"\xA3", "\xC0\x80", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82", "caf\x8E"})
    EXPECT_FALSE(IsValidUtf8(bad)) << bad;
}

}  // namespace
