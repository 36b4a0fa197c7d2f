// SPDX-License-Identifier: GPL-3.0-or-later
// The menu bar, its items and shortcuts, and the application object.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "rb/Core.h"
#include "rb/String.h"

class Window;

// A shortcut as the menu table writes it, "Cmd+Shift+D": Cmd is Control on Linux and Windows.
// The letter's case does not matter.
struct Shortcut {
  bool cmd = false, shift = false, option = false;
  std::string key;  // upper-cased letter, or the character
  static Shortcut Parse(const std::string& text);
  bool IsEmpty() const { return key.empty(); }
  friend bool operator==(const Shortcut& a, const Shortcut& b) {
    return a.cmd == b.cmd && a.shift == b.shift && a.option == b.option && a.key == b.key;
  }
};

class MenuItem {
 public:
  enum class Kind { Normal, AppleMenu, Quit };
  MenuItem(std::string name, String text, std::string keyboardShortcut = "", Kind kind = Kind::Normal);

  std::string Name;
  String Text;
  std::string KeyboardShortcut;
  bool AutoEnable = true;
  Kind ItemKind = Kind::Normal;
  std::vector<std::unique_ptr<MenuItem>> Items;

  MenuItem* Append(std::unique_ptr<MenuItem> item);
  bool IsSeparator() const { return Text.Bytes() == "-"; }
  // Live exactly while the front window has a handler for it; the Edit items while the focused
  // control is a text control; the quit item always.
  bool Enabled() const;
};

class MenuBar {
 public:
  std::vector<std::unique_ptr<MenuItem>> Menus;
  MenuItem* Append(std::unique_ptr<MenuItem> menu);
  MenuItem* Find(const std::string& name) const;  // without regard to case
  // The live item with that shortcut, or nullptr.
  MenuItem* FindByShortcut(const Shortcut& s) const;
  std::vector<MenuItem*> AllItems() const;
};

// Chooses the item: runs its handler on the front window, or the platform's own action for the
// Edit and Quit items. A dimmed or unknown item does nothing and gives False.
bool ChooseMenuItem(const std::string& name);
// Presses a shortcut: the live item that has it is chosen. False when none is.
bool PressShortcut(const std::string& shortcut);

class Application {
 public:
  virtual ~Application() = default;
  virtual void Event_Open() {}
  ::MenuBar* Menus = nullptr;  // the menu bar
};

Application* App();
void SetApp(std::unique_ptr<Application> app);

// The platform's quit: closes every window (the main window's Close event runs), then ends.
void QuitProgram();
// The text clipboard of the Edit menu.
String& Clipboard();
