// SPDX-License-Identifier: GPL-3.0-or-later
// One control shown as a widget. The control holds every value; the view only mirrors it, and
// passes what the person does to the control's user-input methods.
#pragma once

#include <QFont>
#include <QObject>
#include <QWidget>
#include <functional>
#include <memory>

#include "rb/Controls.h"

namespace desk {

class DesktopScreen;

class ControlView {
 public:
  ControlView(Control& control, DesktopScreen& screen) : control_(control), screen_(screen) {}
  virtual ~ControlView() = default;
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;

  Control& control() const { return control_; }
  DesktopScreen& screen() const { return screen_; }
  virtual QWidget* widget() const = 0;

  // Brings the widget up to the control after a change the platform announced.
  virtual void Sync(Prop what);
  // Everything at once, when the widget is made.
  void SyncAll();
  // The platform gave this control the focus: Qt's focus follows.
  virtual void TakeFocus();
  // The window's form is dx, dy larger than designed: a control locked to the right or bottom
  // edge moves, or grows when locked to both edges of that direction.
  void FollowWindow(int dx, int dy);

 protected:
  // Place, visibility, enabled state and font; the kinds add their own.
  void SyncCommon(Prop what);
  // Enter and Leave as MouseEnter and MouseExit.
  void WatchHover();

 private:
  Control& control_;
  DesktopScreen& screen_;
  std::unique_ptr<QObject> hover_;
};

// A control of class C shown by one widget of class W.
template <class C, class W>
class WidgetView : public ControlView {
 public:
  QWidget* widget() const override { return widget_; }

 protected:
  WidgetView(C& c, W* widget, DesktopScreen& screen)
      : ControlView(c, screen), shown_(c), widget_(widget) {}
  C& shown_;
  W* widget_;
};

// Runs `run` once when the event loop comes round, however many times it is asked for before
// then; `pending` says it is asked for, and `run` clears it. True when this call asked.
bool RunOnceLater(QObject* context, bool& pending, std::function<void()> run);

// The face of the control's font, one pixel to the point as on the designed form.
QFont ControlFont(const Control& c);

// A view for the control, its widget a child of form; nullptr for a control with no place on the
// window (ContextualMenu).
std::unique_ptr<ControlView> MakeControlView(Control& c, QWidget* form, DesktopScreen& screen);

}  // namespace desk
