// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers to text and back: Str, Val, Format and CInt, at their edges.
#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "rb/String.h"

namespace {

std::string S(const String& s) { return s.Bytes(); }

TEST(Str, ShortestFormsAtEachPrecisionWithTheExponentOnlyAtTheFarEnds) {
  EXPECT_EQ(S(Str(Integer(-7))), "-7");
  EXPECT_EQ(S(Str(std::numeric_limits<Integer>::min())), "-2147483648");
  EXPECT_EQ(S(Str(Single(0.1f))), "0.1");  // widened first, it would print its noise
  EXPECT_EQ(S(Str(Single(-0.0f))), "0");
  EXPECT_EQ(S(Str(Single(16777216.0f))), "16777216");
  EXPECT_EQ(S(Str(Double(0.1 + 0.2))), "0.30000000000000004");
  EXPECT_EQ(S(Str(Double(-0.0))), "0");
  EXPECT_EQ(S(Str(Double(123456789012.25))), "123456789012.25");
  EXPECT_EQ(S(Str(Double(999999999999999.0))), "999999999999999");
  EXPECT_NE(S(Str(Double(1e15))).find('e'), std::string::npos);
  EXPECT_EQ(S(Str(Double(0.0001))), "0.0001");
  EXPECT_NE(S(Str(Double(0.00001))).find('e'), std::string::npos);
  EXPECT_NE(S(Str(Single(1e20f))).find('e'), std::string::npos);
}

TEST(Str, ValReadsBackEveryValue) {
  std::mt19937_64 gen(20261116);
  std::uniform_real_distribution<double> mantissa(-10, 10);
  std::uniform_int_distribution<int> exponent(-40, 40);
  for (int i = 0; i < 20000; ++i) {
    const double d = mantissa(gen) * std::pow(10.0, exponent(gen));
    ASSERT_EQ(Val(Str(d)), d) << S(Str(d));
    const float f = static_cast<float>(d);
    if (std::isfinite(f)) ASSERT_EQ(static_cast<float>(Val(Str(f))), f) << S(Str(f));
  }
  for (double d : {1e300, 5e-324, 1.7976931348623157e308, std::numeric_limits<double>::infinity(),
                   -std::numeric_limits<double>::infinity()})
    EXPECT_EQ(Val(Str(d)), d) << S(Str(d));
  EXPECT_TRUE(std::isnan(Val(Str(std::nan("")))));
  EXPECT_EQ(Val(Format(-std::numeric_limits<double>::infinity(), "00.00")), -std::numeric_limits<double>::infinity());
}

TEST(Val, TheLongestLeadingNumberAsTheCharactersShow) {
  struct Case {
    const char* text;
    double value;
  };
  const Case cases[] = {
      {"", 0},      {"3- Widget", 3}, {"12,50", 12},     {"abc", 0},     {".5", 0.5},  {"-03.50", -3.5},
      {"+4", 4},    {"-", 0},         {"-.25", -0.25},   {"5.", 5},      {"1.2.3", 1.2}, {"2.5E-1", 0.25},
      {"1e", 1},    {"1e+", 1},       {"7e+2x", 700},    {"  7", 7},     {"\t8", 8},   {"e5", 0},
      {"- 5", 0},   {"0x10", 0},      {"1e-999", 0},     {"info", 0},    {"nancy", 0}, {"Inf", 0},
  };
  for (const Case& c : cases) EXPECT_EQ(Val(String(c.text)), c.value) << '"' << c.text << '"';
  EXPECT_TRUE(std::isinf(Val(String("1e999"))));
  EXPECT_EQ(Val(String::FromBytes("12.5\x8E", TextEncoding::None)), 12.5);
  EXPECT_EQ(Val(String::FromBytes("\xA3" "5", TextEncoding::None)), 0);
}

TEST(Format, MasksOfAmountsAndNumbers) {
  struct Case {
    double value;
    const char* mask;
    const char* text;
  };
  const Case cases[] = {
      {3.5, "00.00", "03.50"},        {123.456, "00.00", "123.46"},
      {0.125, "00.00", "00.13"},      {-0.125, "00.00", "-00.13"},  // an exact tie goes away from zero
      {2.675, "00.00", "02.67"},      {1.005, "00.00", "01.00"},    // below the tie in binary
      {12.288499999999999, "00.00", "12.29"}, {99.995, "00.00", "100.00"},
      {-0.001, "00.00", "00.00"},     {-0.005, "00.00", "-00.01"},  // no sign on a rounded nothing
      {1e6, "00.00", "1000000.00"},   {-1e20, "00.00", "-100000000000000000000.00"},
      {3.5, "000.0000", "003.5000"},  {-0.00001, "00.0000", "00.0000"},
      {9.99999, "00.0000", "10.0000"}, {999.99996, "0.0000", "1000.0000"},  // the carry of the long way
      {7, "00000", "00007"},          {123456, "00000", "123456"},  {12.5, "00000", "00013"},
      {16777216.0f, "00000", "16777216"}, {1e19, "00000", "10000000000000000000"},
  };
  for (const Case& c : cases) EXPECT_EQ(S(Format(c.value, c.mask)), c.text) << c.value << " " << c.mask;
}

// Away from exact ties, the standard library's correctly rounded fixed form must agree, on the
// quick way of two decimals and on the long way of four, and Val reads back what Format wrote.
TEST(Format, AgreesWithExactRoundingAwayFromTies) {
  std::mt19937_64 gen(81);
  std::uniform_real_distribution<double> dist(-2000, 2000);
  for (int i = 0; i < 40000; ++i) {
    const int decimals = i % 4 < 2 ? 2 : 4;
    const double unit = std::pow(10.0, decimals + 1);
    double v = dist(gen);
    if (i % 2) v = std::round(v * unit) / unit;  // values next to the half of the last place
    const double scaled = v * unit;
    if (scaled == std::trunc(scaled) && std::fmod(std::fabs(scaled), 10) == 5) continue;
    char ref[64];
    const auto r = std::to_chars(ref, ref + sizeof ref, v, std::chars_format::fixed, decimals);
    std::string want(ref, r.ptr);
    const bool negative = want[0] == '-' && want.find_first_of("123456789") != std::string::npos;
    std::string digits = want[0] == '-' ? want.substr(1) : want;
    const std::size_t width = 3 + static_cast<std::size_t>(decimals);
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    want = (negative ? "-" : "") + digits;
    const std::string mask = decimals == 2 ? "00.00" : "00.0000";
    ASSERT_EQ(S(Format(v, mask)), want) << std::hexfloat << v << " " << mask;
    ASSERT_EQ(S(Format(Val(String(want)), mask)), want);
  }
}

TEST(CInt, CutsTowardZeroAndClamps) {
  EXPECT_EQ(CInt(3.9), 3);
  EXPECT_EQ(CInt(-3.9), -3);
  EXPECT_EQ(CInt(1e12), std::numeric_limits<Integer>::max());
  EXPECT_EQ(CInt(-1e12), std::numeric_limits<Integer>::min());
  EXPECT_EQ(CInt(std::nan("")), 0);
}

}  // namespace
