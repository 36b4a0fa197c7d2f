// The date and its short form: a fixed pattern, and the user's locale.
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

TEST_F(DateTest, FixedDayAndPattern) {
  Date::SetToday(2026, 11, 16);
  Date::SetShortDateFormat("dd/MM/yyyy");
  const Date d;
  EXPECT_EQ(d.Year(), 2026);
  EXPECT_EQ(d.Month(), 11);
  EXPECT_EQ(d.Day(), 16);
  EXPECT_EQ(d.ShortDate().Bytes(), "16/11/2026");
  EXPECT_EQ(ReplaceAll(d.ShortDate(), "/", "-").Bytes(), "16-11-2026");
}

TEST_F(DateTest, PatternLetters) {
  Date::SetToday(2026, 3, 5);
  struct Case {
    const char* pattern;
    const char* text;
  };
  const Case cases[] = {
      {"d/M/yy", "5/3/26"},         {"dd.MM.yyyy", "05.03.2026"}, {"yyyy-MM-dd", "2026-03-05"},
      {"M/d/yy", "3/5/26"},         {"d 'de' M", "5 de 3"},       {"d.MM.yy 'g'.", "5.03.26 g."},
      {"dd''MM", "05'03"},          {"'it''s' d", "it's 5"},      {"d MMM yyyy", "5 03 2026"},
  };
  for (const Case& c : cases) {
    Date::SetShortDateFormat(c.pattern);
    EXPECT_EQ(Date().ShortDate().Bytes(), c.text) << c.pattern;
  }
  Date::SetToday(2009, 12, 31);
  Date::SetShortDateFormat("yy|d|M");
  EXPECT_EQ(Date().ShortDate().Bytes(), "09|31|12");
}

TEST_F(DateTest, TheUsersLocaleGivesTheShortForm) {
  Date::SetToday(2026, 11, 16);
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
  EXPECT_EQ(Date().ShortDate().Bytes(), "16/11/2026");
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  EXPECT_EQ(Date().ShortDate().Bytes(), "11/16/26");
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  EXPECT_EQ(Date().ShortDate().Bytes(), "16.11.26");
  // The bare C locale names no user's form.
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(Date().ShortDate().Bytes(), "16/11/2026");
  // A fixed pattern wins over the locale until it is released.
  Date::SetShortDateFormat("yyyy-MM-dd");
  EXPECT_EQ(Date().ShortDate().Bytes(), "2026-11-16");
}

}  // namespace
