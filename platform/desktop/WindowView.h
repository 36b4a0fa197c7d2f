// SPDX-License-Identifier: GPL-3.0-or-later
// A window of the program as a top-level widget: the fixed form at its design size, its controls
// at their design places. Resizing the window cuts the form off or leaves white space; only
// controls locked to the right or bottom edge move or grow with it.
#pragma once

#include <QWidget>
#include <map>
#include <memory>

#include "ControlView.h"
#include "rb/Window.h"

class QMenuBar;

namespace desk {

class MenuBarView;

// The window kinds by Frame: 0 a document window, 1 a movable modal dialog, 2 a modal dialog with
// no title bar, 8 a sheet, here a movable modal dialog.
bool IsModalFrame(Integer frame);
// The window flags of a modal window, with or without a title bar.
Qt::WindowFlags ModalFlags(bool titleBar);
// A system dialog (message box, print, page setup, file) as a modal window of the program.
void MakeModal(QWidget& dialog);

class WindowView : public QWidget {
 public:
  WindowView(Window& w, DesktopScreen& screen);
  ~WindowView() override;

  Window& window() const { return window_; }
  QWidget* Form() const { return form_; }
  ControlView* ViewOf(const Control& c) const;
  MenuBarView* Menus() const { return menus_.get(); }

  // Shows the window: placed once, brought to the front.
  void Present();
  void ControlChanged(Control& c, Prop what);
  void FocusTo(Control* c);

 protected:
  bool event(QEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void closeEvent(QCloseEvent* e) override;
  void changeEvent(QEvent* e) override;
  void paintEvent(QPaintEvent* e) override;

 private:
  void Place();
  // The form takes the size of the area under the menu bar; locked controls follow it.
  void FollowSize(QSize size);
  Window& window_;
  DesktopScreen& screen_;
  QWidget* form_;
  std::unique_ptr<MenuBarView> menus_;
  std::map<const Control*, std::unique_ptr<ControlView>> views_;
  bool placed_ = false;
};

}  // namespace desk
