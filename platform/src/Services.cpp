// SPDX-License-Identifier: GPL-3.0-or-later
// The date, and the services that go through the screen: messages, the beep, the browser, the end.
#include <QDate>
#include <QLocale>
#include <string>

#include "rb/Files.h"
#include "rb/Screen.h"
#include "rb/Services.h"

namespace {

struct FixedToday {
  int year = 0, month = 0, day = 0;
};

FixedToday& Today() {
  static FixedToday t;
  return t;
}

std::string& FixedPattern() {
  static std::string p;
  return p;
}

std::string Padded(int v, std::size_t width) {
  std::string s = std::to_string(v);
  if (s.size() < width) s.insert(0, width - s.size(), '0');
  return s;
}

// Renders a date pattern: d and dd the day, M and MM the month, yy and yyyy the year. Longer runs
// of d and M give two digits (so a locale's month name "MMM" becomes a number, which keeps the
// date fit for a file name), three or more y four; text in single quotes stands as it is, and ''
// is a quote.
std::string Render(const std::string& pattern, int year, int month, int day) {
  std::string out;
  for (std::size_t i = 0; i < pattern.size();) {
    const char c = pattern[i];
    if (c == '\'') {
      ++i;
      if (i < pattern.size() && pattern[i] == '\'') {
        out += '\'';
        ++i;
        continue;
      }
      while (i < pattern.size()) {
        if (pattern[i] != '\'') {
          out += pattern[i++];
        } else if (i + 1 < pattern.size() && pattern[i + 1] == '\'') {
          out += '\'';
          i += 2;
        } else {
          ++i;
          break;
        }
      }
      continue;
    }
    std::size_t run = 1;
    while (i + run < pattern.size() && pattern[i + run] == c) ++run;
    switch (c) {
      case 'd': out += run == 1 ? std::to_string(day) : Padded(day, 2); break;
      case 'M': out += run == 1 ? std::to_string(month) : Padded(month, 2); break;
      case 'y': out += run <= 2 ? Padded(year % 100, 2) : Padded(year, 4); break;
      default: out.append(run, c); break;
    }
    i += run;
  }
  return out;
}

// The user's short date form. The bare C locale has no user's form; it gets day, month, year.
std::string LocalePattern() {
  const QLocale locale;
  if (locale.language() == QLocale::C) return "dd/MM/yyyy";
  return locale.dateFormat(QLocale::ShortFormat).toStdString();
}

}  // namespace

Date::Date() {
  const FixedToday& t = Today();
  if (t.year != 0) {
    year_ = t.year;
    month_ = t.month;
    day_ = t.day;
    return;
  }
  const QDate now = QDate::currentDate();
  year_ = now.year();
  month_ = now.month();
  day_ = now.day();
}

String Date::ShortDate() const {
  const std::string& fixed = FixedPattern();
  return String(Render(fixed.empty() ? LocalePattern() : fixed, year_, month_, day_));
}

void Date::SetToday(int year, int month, int day) { Today() = {year, month, day}; }

void Date::SetShortDateFormat(const std::string& pattern) { FixedPattern() = pattern; }

void MsgBox(const String& text) { CurrentScreen().MsgBox(text); }

void Beep() { CurrentScreen().Beep(); }

void ShowURL(const String& url) { CurrentScreen().ShowURL(url); }

void Quit(Integer code) { CurrentScreen().Quit(code); }

Ref<FolderItem> GetOpenFolderItem(const String& filter) { return CurrentScreen().OpenFileDialog(filter); }
