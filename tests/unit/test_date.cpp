// The date and its short form: a fixed pattern's letters, and the user's locale.
#include <gtest/gtest.h>

#include <QLocale>

#include "rb/Services.h"

namespace {

class DateTest : public ::testing::Test {
 protected:
  void TearDown() override {
    Date::SetToday(0, 0, 0);
    Date::SetShortDateFormat("");
    QLocale::setDefault(QLocale::system());
  }
};

TEST_F(DateTest, PatternLettersByTheLengthOfTheirRun) {
  Date::SetToday(2026, 3, 5);
  const Date d;
  EXPECT_EQ(d.Year() * 10000 + d.Month() * 100 + d.Day(), 20260305);
  struct Case {
    const char* pattern;
    const char* text;
  };
  const Case cases[] = {
      {"dd/MM/yyyy", "05/03/2026"}, {"d/M/yy", "5/3/26"}, {"y|yyy", "26|2026"}, {"MMM ddd", "03 05"},
      {"d 'de' M", "5 de 3"},       {"dd''MM", "05'03"},  {"'it''s' d", "it's 5"}, {"'open", "open"},
  };
  for (const Case& c : cases) {
    Date::SetShortDateFormat(c.pattern);
    EXPECT_EQ(Date().ShortDate().Bytes(), c.text) << c.pattern;
  }
  Date::SetToday(2009, 12, 31);
  Date::SetShortDateFormat("yy|d|M");
  EXPECT_EQ(Date().ShortDate().Bytes(), "09|31|12");
}

TEST_F(DateTest, TheUsersLocaleGivesTheShortFormUntilAPatternIsFixed) {
  Date::SetToday(2026, 11, 16);
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  EXPECT_EQ(Date().ShortDate().Bytes(), "11/16/26");
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  EXPECT_EQ(Date().ShortDate().Bytes(), "16.11.26");
  // The bare C locale names no user's form.
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(Date().ShortDate().Bytes(), "16/11/2026");
  Date::SetShortDateFormat("yyyy-MM-dd");
  EXPECT_EQ(Date().ShortDate().Bytes(), "2026-11-16");
}

}  // namespace
