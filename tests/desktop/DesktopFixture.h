// SPDX-License-Identifier: GPL-3.0-or-later
// A started program on the desktop screen, in a folder of its own, and the means to act on it as
// a person would: keys into widgets, clicks, and answers to modal windows as they come up.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

#include "ControlView.h"
#include "DesktopScreen.h"
#include "WindowView.h"
#include "rb/rb.h"

class DesktopTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Starts the program as a person would launch it, with preferences already saved.
  void StartProgram();

  QWidget* WidgetOf(Control* c) const;
  desk::WindowView* ViewOf(Window& w) const { return screen_.ViewOf(w); }
  // Clicks into a control's widget, at its middle.
  void Click(Control* c);
  // Types text into the widget with the focus of c's window, key by key.
  void Type(Control* c, const QString& text);
  void Key(Control* c, Qt::Key key, Qt::KeyboardModifiers mods = Qt::NoModifier);
  // Runs `act` once `w` shows (from inside whatever modal loop shows it); fails the test if it
  // does not show while the event loop turns.
  void WhenShown(const std::string& windowClass, std::function<void(Window&)> act);
  // Runs `act` once a modal widget that is not one of the program's windows is up (a message box,
  // the print dialog).
  void WhenDialog(std::function<void(QWidget*)> act);
  void Settle() { QCoreApplication::processEvents(); }

  desk::DesktopScreen screen_;
  QTemporaryDir folder_;
};
