// SPDX-License-Identifier: GPL-3.0-or-later
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

// A pattern's letters go by the length of their run, a two-digit year keeps its zero, and quoted
// text stands as it is. Until a pattern is fixed the user's locale gives the short form; the bare
// C locale names none. (The patterns the scenarios fix are in startup.scn and runner.scn.)
TEST_F(DateTest, TheFixedPatternOrElseTheUsersLocaleGivesTheShortForm) {
  Date::SetToday(2026, 3, 5);
  struct Case {
    const char* pattern;
    const char* text;
  };
  const Case cases[] = {
      {"y|yyy", "26|2026"}, {"MMM ddd", "03 05"}, {"d 'de' M", "5 de 3"},
      {"dd''MM", "05'03"},  {"'it''s' d", "it's 5"}, {"'open", "open"},
  };
  for (const Case& c : cases) {
    Date::SetShortDateFormat(c.pattern);
    EXPECT_EQ(Date().ShortDate().Bytes(), c.text) << c.pattern;
  }
  Date::SetToday(2009, 12, 31);
  Date::SetShortDateFormat("yy|d|M");
  EXPECT_EQ(Date().ShortDate().Bytes(), "09|31|12");

  Date::SetShortDateFormat("");
  Date::SetToday(2026, 11, 16);
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  EXPECT_EQ(Date().ShortDate().Bytes(), "11/16/26");
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  EXPECT_EQ(Date().ShortDate().Bytes(), "16.11.26");
  QLocale::setDefault(QLocale::c());
  EXPECT_EQ(Date().ShortDate().Bytes(), "16/11/2026");
  Date::SetShortDateFormat("yyyy-MM-dd");
  EXPECT_EQ(Date().ShortDate().Bytes(), "2026-11-16");
}

}  // namespace
