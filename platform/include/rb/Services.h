// SPDX-License-Identifier: GPL-3.0-or-later
// Dates, messages and the other services a program asks of the system.
#pragma once

#include "rb/Core.h"
#include "rb/String.h"

// `New Date`: the current local date and time.
class Date {
 public:
  Date();
  Integer Year() const { return year_; }
  Integer Month() const { return month_; }
  Integer Day() const { return day_; }
  // The date in the user's short form.
  String ShortDate() const;

  // For tests and the scenario runner: a fixed day instead of the clock (year 0 releases it), and
  // a fixed short form with d, dd, M, MM, yy, yyyy (empty releases it to the system's locale).
  static void SetToday(int year, int month, int day);
  static void SetShortDateFormat(const std::string& pattern);

 private:
  Integer year_ = 0, month_ = 0, day_ = 0;
};

// A modal alert with the text and one button.
void MsgBox(const String& text);
// The system's alert sound.
void Beep();
// Hands the text to the user's web browser.
void ShowURL(const String& url);
// Ends the program with the code.
void Quit(Integer code = 0);
