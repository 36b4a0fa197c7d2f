// SPDX-License-Identifier: GPL-3.0-or-later
// The menu bar: shortcuts, which items are live, choosing an item, the Edit commands, and the quit.
#include <algorithm>
#include <cctype>
#include <cstdlib>

#include "rb/Menu.h"
#include "rb/Screen.h"
#include "rb/Window.h"

namespace {

std::string Lower(std::string s) {
  for (char& ch : s) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
  return s;
}

std::string Trim(const std::string& s) {
  std::size_t a = s.find_first_not_of(" \t");
  if (a == std::string::npos) return "";
  std::size_t b = s.find_last_not_of(" \t");
  return s.substr(a, b - a + 1);
}

bool IsEditCommand(const std::string& name) {
  std::string n = Lower(name);
  return n == "editcut" || n == "editcopy" || n == "editpaste" || n == "editclear";
}

TextControl* FocusedText() {
  Window* front = WindowRegistry::Front();
  return front ? dynamic_cast<TextControl*>(front->Focus()) : nullptr;
}

// The menu bar of the application, or else that of a window.
MenuBar* Bar() {
  if (App() && App()->Menus) return App()->Menus;
  if (Window* front = WindowRegistry::Front(); front && front->Menus) return front->Menus;
  for (Window* w : WindowRegistry::Built())
    if (w->Menus) return w->Menus;
  return nullptr;
}

void CollectItems(const std::vector<std::unique_ptr<MenuItem>>& items, std::vector<MenuItem*>& out) {
  for (const auto& item : items) {
    out.push_back(item.get());
    CollectItems(item->Items, out);
  }
}

// The platform's own Edit commands, on the focused text control.
void RunEditCommand(const std::string& name, TextControl& text) {
  std::string n = Lower(name);
  if (n == "editcut") {
    if (text.SelLength() == 0) return;
    Clipboard() = text.SelText();
    text.ClearSelection();
  } else if (n == "editcopy") {
    if (text.SelLength() > 0) Clipboard() = text.SelText();
  } else if (n == "editpaste") {
    text.Paste(Clipboard());
  } else if (n == "editclear") {
    text.ClearSelection();
  }
}

bool Choose(MenuItem& item) {
  if (!item.Enabled()) return false;
  if (item.ItemKind == MenuItem::Kind::Quit) {
    QuitProgram();
    return true;
  }
  if (IsEditCommand(item.Name)) {
    if (TextControl* text = FocusedText()) {
      std::string name = item.Name;
      RunHandler([&] { RunEditCommand(name, *text); });
    }
    return true;
  }
  if (Window* front = WindowRegistry::Front()) front->RunMenuHandler(item.Name);
  return true;
}

// Stands in for the screen while the quit closes the windows, to learn whether a Close handler
// has already quit.
class QuitWatch : public Screen {
 public:
  explicit QuitWatch(Screen& inner) : inner_(inner) {}
  bool quitAsked = false;

  void MsgBox(const String& text) override { inner_.MsgBox(text); }
  void Beep() override { inner_.Beep(); }
  void ShowURL(const String& url) override { inner_.ShowURL(url); }
  void Quit(Integer code) override {
    quitAsked = true;
    inner_.Quit(code);
  }
  void UnhandledException(const RuntimeException& e) override { inner_.UnhandledException(e); }
  [[noreturn]] void Defect(const std::string& className, const std::string& what) override {
    inner_.Defect(className, what);
    std::abort();  // the inner screen does not come back either
  }
  void RunModal(Window& w) override { inner_.RunModal(w); }
  Ref<FolderItem> OpenFileDialog(const String& filter) override { return inner_.OpenFileDialog(filter); }
  std::optional<Integer> ContextualMenu(const std::vector<String>& rows) override {
    return inner_.ContextualMenu(rows);
  }
  std::unique_ptr<PageSurface> PrintDialog(const PrinterSetup* setup) override {
    return inner_.PrintDialog(setup);
  }
  bool PageSetupDialog(PrinterSetup& setup) override { return inner_.PageSetupDialog(setup); }
  void WindowShown(Window& w) override { inner_.WindowShown(w); }
  void WindowHidden(Window& w) override { inner_.WindowHidden(w); }
  void WindowDestroyed(Window& w) override { inner_.WindowDestroyed(w); }
  void ControlChanged(Control& c, Prop p) override { inner_.ControlChanged(c, p); }
  void FocusChanged(Window& w, Control* c) override { inner_.FocusChanged(w, c); }

 private:
  Screen& inner_;
};

}  // namespace

// "Cmd+Shift+p": modifiers, then the key. Cmd is the Control key here, so Ctrl and Control name
// it too; Alt is Option. A letter is upper-cased, and so are key names; any other character
// stands as it is, "+" included when it comes last.
Shortcut Shortcut::Parse(const std::string& text) {
  Shortcut s;
  std::string t = Trim(text);
  if (t.empty()) return s;
  std::string mods;
  if (t == "+") {
    s.key = "+";
  } else if (t.size() >= 2 && t.compare(t.size() - 2, 2, "++") == 0) {
    s.key = "+";
    mods = t.substr(0, t.size() - 2);
  } else {
    std::size_t plus = t.rfind('+');
    if (plus == std::string::npos) {
      s.key = t;
    } else {
      s.key = Trim(t.substr(plus + 1));
      mods = t.substr(0, plus);
    }
  }
  std::size_t start = 0;
  while (start <= mods.size() && !mods.empty()) {
    std::size_t plus = mods.find('+', start);
    std::string token = Lower(Trim(mods.substr(start, plus == std::string::npos ? std::string::npos : plus - start)));
    if (token == "cmd" || token == "command" || token == "ctrl" || token == "control") s.cmd = true;
    else if (token == "shift") s.shift = true;
    else if (token == "option" || token == "opt" || token == "alt") s.option = true;
    if (plus == std::string::npos) break;
    start = plus + 1;
  }
  for (char& ch : s.key) ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
  return s;
}

MenuItem::MenuItem(std::string name, String text, std::string keyboardShortcut, Kind kind)
    : Name(std::move(name)), Text(std::move(text)), KeyboardShortcut(std::move(keyboardShortcut)),
      ItemKind(kind) {}

MenuItem* MenuItem::Append(std::unique_ptr<MenuItem> item) {
  Items.push_back(std::move(item));
  return Items.back().get();
}

bool MenuItem::Enabled() const {
  if (ItemKind == Kind::Quit) return true;
  if (IsSeparator()) return false;
  if (!Items.empty()) return true;  // a menu's title
  if (IsEditCommand(Name)) return FocusedText() != nullptr;
  if (!AutoEnable) return true;
  Window* front = WindowRegistry::Front();
  return front && front->HasMenuHandler(Name);
}

MenuItem* MenuBar::Append(std::unique_ptr<MenuItem> menu) {
  Menus.push_back(std::move(menu));
  return Menus.back().get();
}

MenuItem* MenuBar::Find(const std::string& name) const {
  std::string wanted = Lower(name);
  for (MenuItem* item : AllItems())
    if (Lower(item->Name) == wanted) return item;
  return nullptr;
}

MenuItem* MenuBar::FindByShortcut(const Shortcut& s) const {
  if (s.IsEmpty()) return nullptr;
  for (MenuItem* item : AllItems()) {
    if (item->KeyboardShortcut.empty() || !item->Items.empty() || item->IsSeparator()) continue;
    if (Shortcut::Parse(item->KeyboardShortcut) == s && item->Enabled()) return item;
  }
  return nullptr;
}

std::vector<MenuItem*> MenuBar::AllItems() const {
  std::vector<MenuItem*> out;
  CollectItems(Menus, out);
  return out;
}

bool ChooseMenuItem(const std::string& name) {
  MenuBar* bar = Bar();
  MenuItem* item = bar ? bar->Find(name) : nullptr;
  return item && Choose(*item);
}

bool PressShortcut(const std::string& shortcut) {
  MenuBar* bar = Bar();
  MenuItem* item = bar ? bar->FindByShortcut(Shortcut::Parse(shortcut)) : nullptr;
  return item && Choose(*item);
}

namespace {
std::unique_ptr<Application>& TheApp() {
  static std::unique_ptr<Application> app;
  return app;
}
bool quitting = false;
}  // namespace

Application* App() { return TheApp().get(); }

void SetApp(std::unique_ptr<Application> app) { TheApp() = std::move(app); }

// Every window that shows is closed, the front one first, so the main window's Close runs; then
// the program ends, unless a Close handler has already ended it.
void QuitProgram() {
  if (quitting) return;
  struct Once {
    Once() { quitting = true; }
    ~Once() { quitting = false; }
  } once;
  Screen& inner = CurrentScreen();
  QuitWatch watch(inner);
  {
    struct Watching {
      Screen& inner;
      QuitWatch& watch;
      ~Watching() {
        if (&CurrentScreen() == &watch) SetScreen(&inner);
      }
    } watching{inner, watch};
    SetScreen(&watch);
    std::vector<Window*> shown = WindowRegistry::Shown();
    for (auto it = shown.rbegin(); it != shown.rend(); ++it) {
      std::vector<Window*> still = WindowRegistry::Shown();
      if (std::find(still.begin(), still.end(), *it) != still.end()) (*it)->Close();
    }
  }
  if (!watch.quitAsked) inner.Quit(0);
}

String& Clipboard() {
  static String clipboard;
  return clipboard;
}
