// SPDX-License-Identifier: GPL-3.0-or-later
// Ends a start-up benchmark's process once its window has been painted: every paint event is
// looked at, and when the test says the window is complete the loop is left after the paint is
// through (the exit is queued behind it). A start that never paints ends after a minute.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace bench {

class StartupWatch : public QObject {
 public:
  explicit StartupWatch(std::function<bool(QWidget*)> complete) : complete_(std::move(complete)) {
    qApp->installEventFilter(this);
    QTimer::singleShot(60000, qApp, [] { QCoreApplication::exit(4); });
  }
  ~StartupWatch() override { qApp->removeEventFilter(this); }
  bool Done() const { return done_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (!done_ && event->type() == QEvent::Paint && watched->isWidgetType()) {
      QPointer<QWidget> w = static_cast<QWidget*>(watched);
      // Judged once this paint and the rest of its round are over.
      QMetaObject::invokeMethod(
          qApp,
          [this, w] {
            if (done_ || !w || !complete_(w)) return;
            done_ = true;
            QCoreApplication::exit(0);
          },
          Qt::QueuedConnection);
    }
    return false;
  }

 private:
  std::function<bool(QWidget*)> complete_;
  bool done_ = false;
};

}  // namespace bench
