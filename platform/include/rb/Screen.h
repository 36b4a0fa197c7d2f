// SPDX-License-Identifier: GPL-3.0-or-later
// What a screen supplies to the platform: the modal loop, the dialogs, the printer, the browser, the
// beep and the end. The desktop backend and the scenario runner implement it; with none set, a
// quiet one answers (no dialog is confirmed, messages go nowhere).
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rb/Controls.h"
#include "rb/Core.h"
#include "rb/Files.h"
#include "rb/Graphics.h"
#include "rb/String.h"

class Window;

class Screen {
 public:
  virtual ~Screen() = default;

  virtual void MsgBox(const String& text) = 0;
  virtual void Beep() = 0;
  virtual void ShowURL(const String& url) = 0;
  virtual void Quit(Integer code) = 0;
  // One of the runtime's exceptions that no handler caught. The program goes on.
  virtual void UnhandledException(const RuntimeException& e) = 0;
  // Any other exception that reached the platform: a defect of the program. The screen reports it
  // and ends the program; this does not return.
  [[noreturn]] virtual void Defect(const std::string& className, const std::string& what) = 0;

  // Serves events until w is hidden. Called by Window::ShowModal with the window shown.
  virtual void RunModal(Window& w) = 0;
  // The file-open dialog; nil when cancelled.
  virtual Ref<FolderItem> OpenFileDialog(const String& filter) = 0;
  // The contextual menu at the mouse: the chosen row's index, or nothing when dismissed.
  virtual std::optional<Integer> ContextualMenu(const std::vector<String>& rows) = 0;
  // The print dialog. The surface of a new job, or nullptr when cancelled. setup is nullptr for a
  // job with the dialog's own defaults.
  virtual std::unique_ptr<PageSurface> PrintDialog(const PrinterSetup* setup) = 0;
  // The page setup dialog: True when confirmed, with setup holding the page chosen.
  virtual bool PageSetupDialog(PrinterSetup& setup) = 0;

  // Notices for a live screen.
  virtual void WindowShown(Window&) {}
  virtual void WindowHidden(Window&) {}
  virtual void WindowDestroyed(Window&) {}
  virtual void ControlChanged(Control&, Prop) {}
  virtual void FocusChanged(Window&, Control*) {}
};

void SetScreen(Screen* screen);  // nullptr: the quiet one
Screen& CurrentScreen();
