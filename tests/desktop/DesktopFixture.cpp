// SPDX-License-Identifier: GPL-3.0-or-later
#include "DesktopFixture.h"

#include <QAbstractScrollArea>
#include <QDir>
#include <memory>

#include "core/App.h"
#include "core/Module1.h"
#include "invoice/iwindow.h"

namespace {

// Polls until ready() says the moment has come, then runs act; gives up after a while so that a
// window that never shows fails its test instead of hanging it.
void Poll(std::function<bool()> ready, std::function<void()> act, const char* what) {
  auto* timer = new QTimer(qApp);
  auto tries = std::make_shared<int>(0);
  QObject::connect(timer, &QTimer::timeout, timer, [=] {
    if (ready()) {
      timer->stop();
      timer->deleteLater();
      act();
      return;
    }
    if (++*tries > 500) {
      timer->stop();
      timer->deleteLater();
      ADD_FAILURE() << "never came up: " << what;
      // Let a blocked caller go on: close whatever modal thing is up.
      if (QWidget* modal = QApplication::activeModalWidget()) modal->close();
      for (Window* w : WindowRegistry::Shown())
        if (w->IsModalRunning()) w->Hide();
    }
  });
  timer->start(10);
}

}  // namespace

void DesktopTest::SetUp() {
  ASSERT_TRUE(folder_.isValid());
  Date::SetToday(2024, 3, 15);
  Date::SetShortDateFormat("dd/MM/yyyy");
  SetProgramFolder(folder_.path().toStdString());
  SetScreen(nullptr);
  ResetProgram();
}

void DesktopTest::TearDown() {
  // Dropped with the desktop screen still set, so that the windows' widgets go with them.
  ResetProgram();
  SetScreen(nullptr);
  Date::SetToday(0, 0, 0);
  Date::SetShortDateFormat("");
}

void DesktopTest::StartProgram() {
  // A first start with nobody at the screen, to leave a prefsfile behind; then the real one.
  ::StartProgram();
  Module1::saveprefs();
  ResetProgram();
  SetScreen(&screen_);
  ::StartProgram();
  Settle();
  ASSERT_TRUE(iwindow->Visible());
  ASSERT_NE(ViewOf(*iwindow), nullptr);
}

QWidget* DesktopTest::WidgetOf(Control* c) const {
  desk::ControlView* v = screen_.ViewOf(*c);
  return v ? v->widget() : nullptr;
}

void DesktopTest::Click(Control* c) {
  QWidget* w = WidgetOf(c);
  ASSERT_NE(w, nullptr) << c->FullName();
  QWidget* target = w;
  if (auto* area = qobject_cast<QAbstractScrollArea*>(w)) target = area->viewport();
  QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, target->rect().center());
}

void DesktopTest::Type(Control* c, const QString& text) {
  QWidget* w = WidgetOf(c);
  ASSERT_NE(w, nullptr) << c->FullName();
  QTest::keyClicks(w, text);
}

void DesktopTest::Key(Control* c, Qt::Key key, Qt::KeyboardModifiers mods) {
  QWidget* w = WidgetOf(c);
  ASSERT_NE(w, nullptr) << c->FullName();
  QTest::keyClick(w, key, mods);
}

void DesktopTest::WhenShown(const std::string& windowClass, std::function<void(Window&)> act) {
  Poll(
      [windowClass] {
        Window* w = WindowRegistry::Find(windowClass);
        return w && w->Visible() && w->IsModalRunning();
      },
      [windowClass, act] { act(*WindowRegistry::Find(windowClass)); }, windowClass.c_str());
}

void DesktopTest::WhenDialog(std::function<void(QWidget*)> act) {
  Poll(
      [] {
        QWidget* modal = QApplication::activeModalWidget();
        return modal && !dynamic_cast<desk::WindowView*>(modal);
      },
      [act] { act(QApplication::activeModalWidget()); }, "a dialog");
}
