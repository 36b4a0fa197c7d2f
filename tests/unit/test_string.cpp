// Strings: tags, the characters shown, comparison without case, the text functions, Mac Roman.
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "rb/String.h"

namespace {

String Untagged(const std::string& bytes) { return String::FromBytes(bytes, TextEncoding::None); }

TEST(StringTags, LiteralsAreUtf8AndFileBytesCarryNone) {
  EXPECT_EQ(String("abc").Encoding(), TextEncoding::UTF8);
  EXPECT_EQ(String(std::string("abc")).Encoding(), TextEncoding::UTF8);
  EXPECT_EQ(Untagged("abc").Encoding(), TextEncoding::None);
  EXPECT_TRUE(String().IsEmpty());
  EXPECT_TRUE(String(static_cast<const char*>(nullptr)).IsEmpty());
}

TEST(StringTags, UntaggedBytesShowAsUtf8WhenValidAndAsMacRomanOtherwise) {
  EXPECT_EQ(Untagged("\xC2\xA3" "5").Utf8(), "\xC2\xA3" "5");  // "£5" written as UTF-8
  EXPECT_EQ(Untagged("\xA3" "5").Utf8(), "\xC2\xA3" "5");      // "£5" written as Mac Roman
  EXPECT_EQ(String::FromBytes("caf\x8E", TextEncoding::MacRoman).Utf8(), "caf\xC3\xA9");
}

TEST(StringCompare, EqualityIgnoresCaseOnTheCharactersShown) {
  EXPECT_TRUE(String("unpaid") == String("UNPAID"));
  EXPECT_TRUE(String("unpaid") == String("unPaiD"));
  EXPECT_TRUE(String("paid") == Untagged("Paid"));
  EXPECT_FALSE(String("paid") == String("unpaid"));
  EXPECT_TRUE(String("paid") != String("pai"));
  EXPECT_TRUE(String("") == Untagged(""));
  // Non-ASCII letters, full folding, and the same word read from a file in Mac Roman.
  EXPECT_TRUE(String("\xC3\x89T\xC3\x89") == String("\xC3\xA9t\xC3\xA9"));  // ÉTÉ, été
  EXPECT_TRUE(String("STRASSE") == String("stra\xC3\x9F" "e"));            // straße
  EXPECT_TRUE(Untagged("CAF\x8E") == String("caf\xC3\xA9"));
  EXPECT_TRUE(String("e\xCC\x81") == String("\xC3\x89"));  // e + combining acute, É
  EXPECT_FALSE(String("\xC3\xA9") == String("e"));
}

TEST(StringCompare, SameAsKeepsCase) {
  EXPECT_TRUE(String("Stock").SameAs(Untagged("Stock")));
  EXPECT_FALSE(String("Stock").SameAs(String("stock")));
  EXPECT_TRUE(Untagged("caf\x8E").SameAs(String("caf\xC3\xA9")));
}

TEST(StringCompare, EqualsAndLessIgnoringCase) {
  EXPECT_TRUE(EqualsIgnoringCase("Items", "ITEMS"));
  EXPECT_FALSE(EqualsIgnoringCase("Items", "Item"));
  EXPECT_TRUE(LessIgnoringCase("apple", "Banana"));
  EXPECT_TRUE(LessIgnoringCase("Banana", "cherry"));
  EXPECT_FALSE(LessIgnoringCase("cherry", "Banana"));
  // Names equal but for case are ordered by their bytes, so the order is total.
  EXPECT_TRUE(LessIgnoringCase("B", "b"));
  EXPECT_FALSE(LessIgnoringCase("b", "B"));
  EXPECT_FALSE(LessIgnoringCase("b", "b"));
}

TEST(StringConcat, SameTagKeepsBytesAndTag) {
  const String joined = Untagged("\xA3") + Untagged("5");
  EXPECT_EQ(joined.Encoding(), TextEncoding::None);
  EXPECT_EQ(joined.Bytes(), "\xA3" "5");
  const String mac = String::FromBytes("\xA3", TextEncoding::MacRoman) + String::FromBytes("\x8E", TextEncoding::MacRoman);
  EXPECT_EQ(mac.Encoding(), TextEncoding::MacRoman);
  EXPECT_EQ(mac.Bytes(), "\xA3\x8E");
  EXPECT_EQ((String("Delete ") + String("00012")).Bytes(), "Delete 00012");
}

TEST(StringConcat, DifferentTagsMeetInUtf8) {
  const String joined = String("\xC2\xA3") + String::FromBytes("\xA3", TextEncoding::MacRoman);
  EXPECT_EQ(joined.Encoding(), TextEncoding::UTF8);
  EXPECT_EQ(joined.Bytes(), "\xC2\xA3\xC2\xA3");
  String s = "Delete ";
  s += Untagged("caf\x8E");
  EXPECT_EQ(s.Bytes(), "Delete caf\xC3\xA9");
  EXPECT_EQ(("0" + Untagged("-")).Bytes(), "0-");
}

TEST(StringConcat, AnEmptySideLeavesTheOtherAsItIs) {
  const String mac = ConvertEncoding(String("\xC2\xA3"), Encodings::MacRoman);
  EXPECT_EQ((String() + mac).Bytes(), "\xA3");
  EXPECT_EQ((String() + mac).Encoding(), TextEncoding::MacRoman);
  EXPECT_EQ((mac + String("")).Bytes(), "\xA3");
}

TEST(StringFunctions, LenAndLeftCountCharacters) {
  const String price("\xC2\xA3" "12.50");  // £12.50
  EXPECT_EQ(Len(price), 6);
  EXPECT_EQ(Left(price, 1).Bytes(), "\xC2\xA3");
  EXPECT_EQ(Left(price, 3).Bytes(), "\xC2\xA3" "12");
  EXPECT_EQ(Left(price, 100).Bytes(), price.Bytes());
  EXPECT_EQ(Left(price, 0).Bytes(), "");
  EXPECT_EQ(Len(String("")), 0);
  EXPECT_EQ(Len(String("\xE2\x82\xAC")), 1);  // €
  // Untagged Mac Roman bytes: one byte, one character; a piece keeps that reading.
  const String mac = Untagged("\xA3" "12\xFF");
  EXPECT_EQ(Len(mac), 4);
  EXPECT_EQ(Left(mac, 1).Utf8(), "\xC2\xA3");
  EXPECT_EQ(Len(Untagged("\xC2\xA3" "1")), 2);
}

TEST(StringFunctions, MidCountsFromOne) {
  const String s("\xC3\xA9t\xC3\xA9 2026");  // été 2026
  EXPECT_EQ(Mid(s, 1, 3).Bytes(), "\xC3\xA9t\xC3\xA9");
  EXPECT_EQ(Mid(s, 5).Bytes(), "2026");
  EXPECT_EQ(Mid(s, 5, 2).Bytes(), "20");
  EXPECT_EQ(Mid(s, 20).Bytes(), "");
}

TEST(StringFunctions, ChrGivesOneCharacter) {
  EXPECT_EQ(Chr(13).Bytes(), "\r");
  EXPECT_EQ(Chr(65).Bytes(), "A");
  EXPECT_EQ(Chr(0x20AC).Bytes(), "\xE2\x82\xAC");
  EXPECT_EQ(Len(Chr(0x1F600)), 1);
  EXPECT_TRUE(Chr(-1).IsEmpty());
}

TEST(StringFunctions, ReplaceAllReplacesEveryOccurrence) {
  const String address = String("1 High St") + Chr(13) + "Leeds" + Chr(13) + "LS1";
  EXPECT_EQ(ReplaceAll(address, Chr(13), " ").Bytes(), "1 High St Leeds LS1");
  EXPECT_EQ(ReplaceAll("16/11/2026", "/", "-").Bytes(), "16-11-2026");
  EXPECT_EQ(ReplaceAll("aaa", "a", "aa").Bytes(), "aaaaaa");
  EXPECT_EQ(ReplaceAll("abc", "", "x").Bytes(), "abc");
  // On untagged Mac Roman bytes the work is done on the characters shown.
  EXPECT_EQ(ReplaceAll(Untagged("caf\x8E/1"), "/", "-").Utf8(), "caf\xC3\xA9-1");
}

TEST(StringEncoding, ConvertToMacRomanGivesItsBytes) {
  const String pound = ConvertEncoding(String("\xC2\xA3"), Encodings::MacRoman);
  EXPECT_EQ(pound.Bytes(), "\xA3");
  EXPECT_EQ(pound.Encoding(), TextEncoding::MacRoman);
  EXPECT_EQ(ConvertEncoding(String("\xC3\xA9"), Encodings::MacRoman).Bytes(), "\x8E");
  EXPECT_EQ(ConvertEncoding(String("e\xCC\x81"), Encodings::MacRoman).Bytes(), "\x8E");
  EXPECT_EQ(ConvertEncoding(String("Thanks"), Encodings::MacRoman).Bytes(), "Thanks");
  // A character Mac Roman lacks (here a Cyrillic letter) becomes '?'.
  EXPECT_EQ(ConvertEncoding(String("a\xD0\x96" "b"), Encodings::MacRoman).Bytes(), "a?b");
  // Converted text still shows the same and compares equal.
  EXPECT_TRUE(ConvertEncoding(String("Caf\xC3\xA9"), Encodings::MacRoman).SameAs(String("Caf\xC3\xA9")));
  EXPECT_EQ(ConvertEncoding(Untagged("\xA3"), Encodings::UTF8).Bytes(), "\xC2\xA3");
}

TEST(StringEncoding, AllMacRomanCodesRoundTrip) {
  std::set<std::string> seen;
  for (int code = 0; code < 256; ++code) {
    const std::string byte(1, static_cast<char>(code));
    const std::string utf8 = MacRomanToUtf8(byte);
    EXPECT_TRUE(IsValidUtf8(utf8)) << code;
    EXPECT_EQ(Len(String(utf8)), 1) << code;
    if (code < 0x80) {
      EXPECT_EQ(utf8, byte) << code;
    }
    EXPECT_EQ(Utf8ToMacRoman(utf8), byte) << code;
    seen.insert(utf8);
  }
  EXPECT_EQ(seen.size(), 256u);
  // A few codes that mark the table's place.
  EXPECT_EQ(MacRomanToUtf8("\x80"), "\xC3\x84");      // Ä
  EXPECT_EQ(MacRomanToUtf8("\xCA"), "\xC2\xA0");      // no-break space
  EXPECT_EQ(MacRomanToUtf8("\xDB"), "\xE2\x82\xAC");  // €
  EXPECT_EQ(MacRomanToUtf8("\xF0"), "\xEF\xA3\xBF");  // the Apple logo, U+F8FF
  EXPECT_EQ(MacRomanToUtf8("\xFF"), "\xCB\x87");      // ˇ
}

TEST(StringEncoding, ValidUtf8IsStrict) {
  EXPECT_TRUE(IsValidUtf8(""));
  EXPECT_TRUE(IsValidUtf8("plain"));
  EXPECT_TRUE(IsValidUtf8("\xC2\xA3\xE2\x82\xAC\xF0\x9F\x98\x80"));
  EXPECT_FALSE(IsValidUtf8("\xA3"));
  EXPECT_FALSE(IsValidUtf8("\xC0\x80"));          // over-long
  EXPECT_FALSE(IsValidUtf8("\xE0\x80\xAF"));      // over-long
  EXPECT_FALSE(IsValidUtf8("\xED\xA0\x80"));      // surrogate
  EXPECT_FALSE(IsValidUtf8("\xF4\x90\x80\x80"));  // past U+10FFFF
  EXPECT_FALSE(IsValidUtf8("\xE2\x82"));          // cut short
  EXPECT_FALSE(IsValidUtf8("caf\x8E"));
}

}  // namespace
