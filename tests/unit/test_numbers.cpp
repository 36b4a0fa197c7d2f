// Numbers to text and back: Str, Val, Format and CInt, with the invoice's own figures.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "rb/String.h"

namespace {

std::string S(const String& s) { return s.Bytes(); }

TEST(Str, IntegerIsPlainDigits) {
  EXPECT_EQ(S(Str(Integer(0))), "0");
  EXPECT_EQ(S(Str(Integer(12))), "12");
  EXPECT_EQ(S(Str(Integer(-7))), "-7");
  EXPECT_EQ(S(Str(std::numeric_limits<Integer>::min())), "-2147483648");
  EXPECT_EQ(S(Str(Integer(0)) + "-"), "0-");
}

TEST(Str, SingleIsShortestAtSinglePrecision) {
  EXPECT_EQ(S(Str(Single(0.1f))), "0.1");
  EXPECT_EQ(S(Str(Single(12))), "12");
  EXPECT_EQ(S(Str(Single(2.5f))), "2.5");
  EXPECT_EQ(S(Str(Single(0))), "0");
  EXPECT_EQ(S(Str(Single(-0.0f))), "0");
  EXPECT_EQ(S(Str(Single(16777216.0f))), "16777216");
  EXPECT_EQ(S(Str(Single(1000000.0f))), "1000000");
  EXPECT_EQ(S(Str(Single(-3.75f))), "-3.75");
  // Widened first, 0.1f would print its noise.
  EXPECT_NE(S(Str(Double(0.1f))), "0.1");
}

TEST(Str, DoubleIsShortestRoundTrip) {
  EXPECT_EQ(S(Str(Double(5))), "5");
  EXPECT_EQ(S(Str(Double(12.5))), "12.5");
  EXPECT_EQ(S(Str(Double(0))), "0");
  EXPECT_EQ(S(Str(Double(-0.0))), "0");
  EXPECT_EQ(S(Str(Double(123))), "123");
  EXPECT_EQ(S(Str(Double(0.1 + 0.2))), "0.30000000000000004");
  EXPECT_EQ(S(Str(Double(-5.05))), "-5.05");
  EXPECT_EQ(S(Str(Double(123456789012.25))), "123456789012.25");
}

TEST(Str, ExponentOnlyAtTheFarEnds) {
  EXPECT_NE(S(Str(Double(1e15))).find('e'), std::string::npos);
  EXPECT_EQ(S(Str(Double(999999999999999.0))), "999999999999999");
  EXPECT_EQ(S(Str(Double(0.0001))), "0.0001");
  EXPECT_NE(S(Str(Double(0.00001))).find('e'), std::string::npos);
  EXPECT_NE(S(Str(Single(1e20f))).find('e'), std::string::npos);
}

TEST(Str, ValReadsBackEveryForm) {
  std::mt19937_64 gen(20261116);
  std::uniform_real_distribution<double> mantissa(-10, 10);
  std::uniform_int_distribution<int> exponent(-40, 40);
  for (int i = 0; i < 20000; ++i) {
    const double d = mantissa(gen) * std::pow(10.0, exponent(gen));
    EXPECT_EQ(Val(Str(d)), d) << S(Str(d));
    const float f = static_cast<float>(d);
    if (!std::isfinite(f)) continue;
    EXPECT_EQ(static_cast<float>(Val(Str(f))), f) << S(Str(f));
  }
  for (double d : {1e15, -1e15, 1e300, 5e-324, 1.7976931348623157e308, 16777216.0, 0.1, 100000.0})
    EXPECT_EQ(Val(Str(d)), d) << S(Str(d));
  for (float f : {0.1f, 1e15f, 3.4028235e38f, 1e-30f, 16777216.0f, 16777217.0f})
    EXPECT_EQ(static_cast<float>(Val(Str(f))), f) << S(Str(f));
}

TEST(Val, LongestLeadingNumber) {
  struct Case {
    const char* text;
    double value;
  };
  const Case cases[] = {
      {"", 0},        {"3-", 3},          {"3- Widget", 3}, {"17.5", 17.5},  {"12,50", 12},
      {"1,5", 1},     {"abc", 0},         {"12abc", 12},    {".5", 0.5},     {"03.50", 3.5},
      {"00.00", 0},   {"-3.5", -3.5},     {"-03.50", -3.5}, {"+4", 4},       {"-", 0},
      {".", 0},       {"-.25", -0.25},    {"5.", 5},        {"1.2.3", 1.2},  {"1e3", 1000},
      {"2.5E-1", 0.25}, {"1e", 1},        {"1e+", 1},       {"1e-x", 1},     {"7e+2x", 700},
      {"  7", 7},     {"\t8", 8},         {"e5", 0},        {"- 5", 0},      {"0x10", 0},
      {"123456", 123456},
  };
  for (const Case& c : cases) EXPECT_EQ(Val(String(c.text)), c.value) << '"' << c.text << '"';
}

TEST(Val, ReadsTheCharactersShown) {
  EXPECT_EQ(Val(String::FromBytes("12.5\x8E", TextEncoding::None)), 12.5);
  EXPECT_EQ(Val(String::FromBytes("\xA3" "5", TextEncoding::None)), 0);
  EXPECT_TRUE(std::isinf(Val(String("1e999"))));
  EXPECT_EQ(Val(String("1e-999")), 0);
}

TEST(Val, ReadsBackWhatStrAndFormatWriteForValuesBeyondNumbers) {
  const double inf = std::numeric_limits<double>::infinity();
  for (double v : {inf, -inf}) {
    EXPECT_EQ(Val(Str(v)), v) << S(Str(v));
    EXPECT_EQ(Val(Format(v, "00.00")), v) << S(Format(v, "00.00"));
  }
  EXPECT_TRUE(std::isnan(Val(Str(std::nan("")))));
  // Only the words as they are written: other text that begins with them is no number.
  EXPECT_EQ(Val(String("info")), 0);
  EXPECT_EQ(Val(String("nancy")), 0);
  EXPECT_EQ(Val(String("Inf")), 0);
}

TEST(Format, AmountMask) {
  struct Case {
    double value;
    const char* text;
  };
  const Case cases[] = {
      {3.5, "03.50"},   {0, "00.00"},          {123.4, "123.40"},  {-3.5, "-03.50"},
      {5, "05.00"},     {59.97, "59.97"},      {123.456, "123.46"}, {12.5, "12.50"},
      {0.125, "00.13"},  // an exact tie goes away from zero
      {-0.125, "-00.13"},
      {2.675, "02.67"},  // the binary value lies below the tie
      {0.17500000000000002, "00.18"},
      {12.288499999999999, "12.29"},
      {81.00999999999999, "81.01"},
      {1.005, "01.00"},  // below the tie in binary
      {99.995, "100.00"},  // above it
      {99.996, "100.00"},
      {999.999, "1000.00"},
      {-0.001, "00.00"},  // rounds to nothing: no sign
      {-0.0, "00.00"},
      {-0.005, "-00.01"},
      {0.005, "00.01"},
      {1e6, "1000000.00"},
      {-1e20, "-100000000000000000000.00"},  // too large to be worked out in whole units
  };
  for (const Case& c : cases) EXPECT_EQ(S(Format(c.value, "00.00")), c.text) << c.value;
}

TEST(Format, NumberMask) {
  EXPECT_EQ(S(Format(7, "00000")), "00007");
  EXPECT_EQ(S(Format(100000, "00000")), "100000");
  EXPECT_EQ(S(Format(123456, "00000")), "123456");
  EXPECT_EQ(S(Format(12.5, "00000")), "00013");
  EXPECT_EQ(S(Format(0, "00000")), "00000");
  EXPECT_EQ(S(Format(16777216.0f, "00000")), "16777216");
  EXPECT_EQ(S(Format(1e19, "00000")), "10000000000000000000");
}

// Away from exact ties, the standard library's correctly rounded fixed form must agree.
TEST(Format, AgreesWithExactRoundingAwayFromTies) {
  std::mt19937_64 gen(81);
  std::uniform_real_distribution<double> dist(-2000, 2000);
  for (int i = 0; i < 50000; ++i) {
    double v = dist(gen);
    if (i % 2) v = std::round(v * 1000) / 1000;  // values near the half cent
    const double scaled = v * 1000;
    if (scaled == std::trunc(scaled) && std::fmod(std::fabs(scaled), 10) == 5) continue;
    char ref[64];
    const auto r = std::to_chars(ref, ref + sizeof ref, v, std::chars_format::fixed, 2);
    std::string want(ref, r.ptr);
    if (want == "-0.00") want = "0.00";
    const bool negative = want[0] == '-';
    std::string digits = negative ? want.substr(1) : want;
    if (digits.size() < 5) digits.insert(0, 5 - digits.size(), '0');
    want = (negative ? "-" : "") + digits;
    ASSERT_EQ(S(Format(v, "00.00")), want) << std::hexfloat << v;
  }
}

TEST(Format, ValReadsBackWhatFormatWrites) {
  std::mt19937_64 gen(7);
  std::uniform_real_distribution<double> dist(-100000, 100000);
  for (int i = 0; i < 20000; ++i) {
    const String text = Format(dist(gen), "00.00");
    EXPECT_EQ(S(Format(Val(text), "00.00")), S(text));
  }
}

TEST(CInt, CutsTowardZero) {
  EXPECT_EQ(CInt(3.9), 3);
  EXPECT_EQ(CInt(-3.9), -3);
  EXPECT_EQ(CInt(0.5), 0);
  EXPECT_EQ(CInt(Val(String("3-"))), 3);
  EXPECT_EQ(CInt(1e12), std::numeric_limits<Integer>::max());
  EXPECT_EQ(CInt(-1e12), std::numeric_limits<Integer>::min());
  EXPECT_EQ(CInt(std::nan("")), 0);
}

}  // namespace
