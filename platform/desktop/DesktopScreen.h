// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop: every window of the program as Qt widgets, the dialogs, the printer, the browser
// and the menu bar. Views mirror the platform's windows and controls; a person's keys and clicks
// go into the platform's user-input methods, and its change notices update the widgets.
#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "rb/Screen.h"

class QEventLoop;
class QKeyEvent;
class QWidget;

namespace desk {

class WindowView;
class ControlView;

class DesktopScreen : public QObject, public Screen {
 public:
  DesktopScreen();
  ~DesktopScreen() override;

  void MsgBox(const String& text) override;
  void Beep() override;
  void ShowURL(const String& url) override;
  void Quit(Integer code) override;
  void UnhandledException(const RuntimeException& e) override;
  [[noreturn]] void Defect(const std::string& className, const std::string& what) override;
  void RunModal(Window& w) override;
  Ref<FolderItem> OpenFileDialog(const String& filter) override;
  std::optional<Integer> ContextualMenu(const std::vector<String>& rows) override;
  std::unique_ptr<PageSurface> PrintDialog(const PrinterSetup* setup) override;
  bool PageSetupDialog(PrinterSetup& setup) override;

  void WindowShown(Window& w) override;
  void WindowHidden(Window& w) override;
  void WindowDestroyed(Window& w) override;
  void ControlChanged(Control& c, Prop what) override;
  void FocusChanged(Window& w, Control* c) override;

  // While the program starts, a window that shows is noted and gets its widgets only when the start
  // is over (or a dialog has to come up first): the preferences and stock windows show and hide
  // again during the start, and building their widgets would be wasted. Release builds the
  // widgets of the windows that still show, back to front.
  void HoldViews() { holding_ = true; }
  void ReleaseViews();

  // Whether Quit was asked, and with which code: a quit before the event loop runs (during the
  // start) is kept for main to see.
  bool QuitRequested() const { return quitRequested_; }
  int QuitCode() const { return quitCode_; }

  WindowView* ViewOf(const Window& w) const;
  ControlView* ViewOf(const Control& c) const;
  // The top-level widget of the front window, parent of the dialogs.
  QWidget* FrontWidget() const;
  // The main window's widget, transient parent of every modal window, or nullptr before it shows.
  QWidget* MainWidget() const;
  // Whether a modal window or dialog other than `view` is open: it holds the program.
  bool ModalAbove(const QWidget* view) const;
  // Puts the modal windows and dialogs back in front, the innermost last.
  void RaiseModals();

  // A menu item chosen by the person, by mouse or by its key; the Edit items carry the system
  // clipboard to and from the platform's.
  void ChooseItem(const std::string& name);
  // Enabled state of every menu item as the platform says now.
  void RefreshMenus();
  // A key pressed with Control: the menu item that has it as shortcut, if it is live.
  void CommandKey(const QKeyEvent& e);

  // Painting runs handlers (Paint, CellTextPaint); a report during it waits for the loop.
  void BeginPaint() { ++painting_; }
  void EndPaint() { --painting_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Makes the main window the dialog's transient parent; true if that changed anything.
  bool TieToMain(QWidget& dialog);
  std::map<const Window*, std::unique_ptr<WindowView>> views_;
  std::map<const Window*, std::vector<QEventLoop*>> loops_;
  bool holding_ = false;
  bool quitRequested_ = false;
  int quitCode_ = 0;
  int painting_ = 0;
};

}  // namespace desk
