// SPDX-License-Identifier: GPL-3.0-or-later
// Windows, their implicit instances, and the running of handlers.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "rb/Controls.h"
#include "rb/Core.h"
#include "rb/String.h"

class MenuBar;

// A window's own design values. A window class gives the ones that differ from these, by name:
// `{.Title = "Stock window", .Width = 469, .Height = 430, .Frame = 8, .Placement = 1}`.
struct WindowDesign {
  String Title = "Untitled";
  Integer Width = 300, Height = 300;
  Integer MinWidth = 64, MinHeight = 64, MaxWidth = 32000, MaxHeight = 32000;
  Integer Frame = 0;      // 0 document, 1 movable modal, 2 modal dialog, 8 sheet
  Integer Placement = 0;  // 0 default, 1 over the parent, 2 on the main screen
  bool Resizeable = true, CloseButton = true, MaximizeButton = true, MinimizeButton = true;
  bool VisibleByDesign = true;
  bool HasBackColor = false;
  Color BackColor = 0xFFFFFF;
  ::MenuBar* Menus = nullptr;  // the menu bar
};

class Window : public WindowDesign {
 public:
  explicit Window(std::string className, WindowDesign design = {});
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  const std::string& ClassName() const { return className_; }

  bool Visible() const { return visible_; }
  void Show();
  // Takes the window off the screen and ends a running ShowModal; everything in it stays.
  void Hide();
  // Shows the window and blocks until it is hidden, serving its events.
  void ShowModal();
  // The close box: raises Close, then hides.
  void Close();
  bool IsModalRunning() const { return modalDepth_ > 0; }

  std::function<void()> OnOpen;
  std::function<void()> OnClose;
  std::function<void()> OnActivate;

  const std::vector<std::unique_ptr<Control>>& Controls() const { return controls_; }
  Control* FindControl(const std::string& name, Integer index = -1) const;
  Control* Focus() const { return focus_; }
  // LostFocus of the old control, then GotFocus of the new; the caret stands at the end of a text
  // unless the GotFocus handler selects. Focusing the focused control does nothing.
  void SetFocus(Control* c);
  PushButton* DefaultButton() const;
  PushButton* CancelButton() const;

  // Menu handlers, by item name, matched without regard to case.
  void AddMenuHandler(const std::string& itemName, std::function<bool()> handler);
  bool HasMenuHandler(const std::string& itemName) const;
  bool RunMenuHandler(const std::string& itemName);

  // Properties of the window's own, by name, for tests ("addresshaschanged"), as NamedValue
  // writes them.
  virtual bool OwnProperty(const std::string& name, std::string& value) const;

  // A key pressed with the focus in this window: KeyDown of the focused control first (True
  // swallows it), then the open cell edit, Tab, Return and Escape to the Default and Cancel
  // buttons, and the control's own editing.
  void UserKey(const String& key);
  // Tab moves the focus on in TabIndex order.
  void FocusNext(bool backwards = false);

  // Called once by the registry: creates the controls, runs their Open, then the window's Open,
  // and shows the window when it is visible by design.
  void Build();
  bool IsBuilt() const { return built_; }

  // Makes a control of the window, on top of those made before; while the window is built.
  template <class C>
  C* Add(const std::string& name, Integer index = -1) {
    auto c = std::make_unique<C>(this, name, index);
    C* raw = c.get();
    controls_.push_back(std::move(c));
    return raw;
  }

 protected:
  // Makes the controls, from the window's design table, and wires their handlers.
  virtual void CreateControls() = 0;

 private:
  std::string className_;
  std::vector<std::unique_ptr<Control>> controls_;
  std::vector<std::pair<std::string, std::function<bool()>>> menuHandlers_;
  Control* focus_ = nullptr;
  bool visible_ = false;
  bool built_ = false;
  bool shownOnce_ = false;
  int modalDepth_ = 0;
};

// A value as tests read it by name: a text as it stands, a Single as Str writes it, a whole number
// in digits, a flag as "true" or "false", a reference as "nil" or "set".
std::string NamedValue(const String& v);
std::string NamedValue(Single v);
std::string NamedValue(Integer v);
std::string NamedValue(bool v);
template <class T>
std::string NamedValue(const Ref<T>& r) {
  return r == nil ? "nil" : "set";
}

// One entry of a lookup by name, for a list of entries ENTRY(type, variable, start): inside a
// function of arguments `name` and `value`, it answers `name` with the variable, as NamedValue
// writes it.
#define NAMED_VALUE_LOOKUP(type, variable, start) \
  if (name == #variable) {                        \
    value = NamedValue(variable);                 \
    return true;                                  \
  }

// The implicit instances: one per window class, built on first touch.
class WindowRegistry {
 public:
  using Factory = std::function<std::unique_ptr<Window>()>;
  static void Register(const std::string& className, Factory factory);
  // The instance, built on this touch if it was not yet.
  static Window& Touch(const std::string& className);
  // The instance if built, or nullptr; never builds.
  static Window* Find(const std::string& className);
  static bool Known(const std::string& className);
  // Every built window, in the order they were built.
  static std::vector<Window*> Built();
  // The windows shown, back to front.
  static std::vector<Window*> Shown();
  static Window* Front();
  // Destroys every instance: a fresh program state.
  static void ResetAll();

  // Used by Window.
  static void NoteShown(Window* w);
  static void NoteHidden(Window* w);
};

// `iwindow->customername`: the implicit instance of a window class T, which names itself with a
// static `kClassName`; the program registers a factory for each class at start.
template <class T>
class Implicit {
 public:
  T* operator->() const { return &Get(); }
  T& operator*() const { return Get(); }
  static T& Get() { return static_cast<T&>(WindowRegistry::Touch(T::kClassName)); }
  static bool Exists() { return WindowRegistry::Find(T::kClassName) != nullptr; }
};

template <class T>
void RegisterWindowClass() {
  WindowRegistry::Register(T::kClassName, [] { return std::make_unique<T>(); });
}

// Runs a handler. Inside another handler, whatever it raises passes on up, so the whole event
// stops at once. At the outermost level, the one rule for what a handler leaves:
// - NilObjectException, OutOfBoundsException and IOException stop the event there and are reported
//   through the screen (Screen::UnhandledException); the program goes on;
// - any other std::exception is a defect: the screen reports it and ends the program
//   (Screen::Defect);
// - anything else (a test's own failure) passes through untouched.
void RunHandler(const std::function<void()>& body);
bool RunHandlerBool(const std::function<bool()>& body, bool fallback = false);
// An event from outside the program: a person's key or click on the desktop, a step of a
// scenario. The platform code it runs raises its handlers itself; what that code raises outside
// them goes by RunHandler's rule. The desktop and the scenario runner hand every event to it.
void RunEvent(const std::function<void()>& body);
// For a modal loop: the events served inside it are outermost again.
class OutermostScope {
 public:
  OutermostScope();
  ~OutermostScope();

 private:
  int saved_;
};
