// SPDX-License-Identifier: GPL-3.0-or-later
// What the user does: each action goes through the same entry points as a person's input, on the
// window and control that a person could reach at that moment.
#include <cctype>

#include "scenario/Runner.h"

namespace scn {

namespace {

Target ParseControlArg(Args& a) {
  std::string text = a.Word("a control window.control or window.control(index)");
  Target t;
  std::string error;
  if (!ParseControl(text, t, error))
    Fail(a.where(), error + " (" + Render(a.command().tokens) + ")", text);
  return t;
}

bool SameName(const std::string& a, const char* b) {
  std::size_t n = std::char_traits<char>::length(b);
  if (a.size() != n) return false;
  for (std::size_t i = 0; i < n; ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(b[i]))) {
      return false;
    }
  }
  return true;
}

bool KeyCode(const std::string& name, String& key) {
  static const struct {
    const char* name;
    const String* key;
  } keys[] = {{"Return", &Keys::Return}, {"Enter", &Keys::Enter},         {"Escape", &Keys::Escape},
              {"Tab", &Keys::Tab},       {"Backspace", &Keys::Backspace}, {"Delete", &Keys::Delete},
              {"Left", &Keys::Left},     {"Right", &Keys::Right},         {"Up", &Keys::Up},
              {"Down", &Keys::Down},     {"Home", &Keys::Home},           {"End", &Keys::End}};
  for (const auto& k : keys) {
    if (SameName(name, k.name)) {
      key = *k.key;
      return true;
    }
  }
  return false;
}

// The characters of a UTF-8 text, one string each; a byte that starts no character stands alone.
std::vector<std::string> Characters(const std::string& text) {
  std::vector<std::string> out;
  std::size_t i = 0;
  while (i < text.size()) {
    unsigned char c = static_cast<unsigned char>(text[i]);
    std::size_t n = c < 0x80           ? 1
                    : (c >> 5) == 0x6  ? 2
                    : (c >> 4) == 0xE  ? 3
                    : (c >> 3) == 0x1E ? 4
                                       : 1;
    if (i + n > text.size()) n = 1;
    for (std::size_t k = 1; k < n; ++k) {
      if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) n = 1;
    }
    out.push_back(text.substr(i, n));
    i += n;
  }
  return out;
}

}  // namespace

Window& Runner::TargetWindow(const std::string& name, const Where& where) {
  if (!WindowRegistry::Known(name)) Fail(where, "a window class", name);
  Window* w = WindowRegistry::Find(name);
  if (w == nullptr) Fail(where, "window " + name + " built", "no window " + name);
  return *w;
}

Control& Runner::TargetControl(const Target& t, const Where& where) {
  Window& w = TargetWindow(t.window, where);
  Control* c = w.FindControl(t.control, t.index);
  if (c == nullptr) Fail(where, "a control " + t.ControlName(), "no such control");
  return *c;
}

// A control that the user can reach now: its window shows and is the one a running modal loop
// serves, and the control itself shows.
Control& Runner::ActionControl(Args& a) {
  Target t = ParseControlArg(a);
  Control& c = TargetControl(t, a.where());
  Window& w = *c.ParentWindow();
  if (!w.Visible()) Fail(a.where(), t.window + " shown for " + t.written, t.window + " is hidden");
  if (!modals_.empty() && modals_.back() != &w) {
    Fail(a.where(), "a control of the modal window " + modals_.back()->ClassName(), t.written);
  }
  if (!c.Visible()) Fail(a.where(), t.written + " visible", "it is hidden");
  return c;
}

Control* Runner::LoneControl(Args& a) {
  if (dry_) {
    ParseControlArg(a);
    a.End();
    return nullptr;
  }
  Control& c = ActionControl(a);
  a.End();
  return &c;
}

Window& Runner::FrontWindow(const Where& where) {
  Window* w = WindowRegistry::Front();
  if (w == nullptr) Fail(where, "a window in front", "no window shown");
  return *w;
}

MenuItem* Runner::FindMenuItem(const std::string& name, const Where& where) {
  MenuBar* bar = App() != nullptr ? App()->Menus : nullptr;
  if (bar == nullptr && WindowRegistry::Front() != nullptr) bar = WindowRegistry::Front()->Menus;
  MenuItem* item = bar != nullptr ? bar->Find(name) : nullptr;
  if (item == nullptr)
    Fail(where, "a menu item " + name, bar == nullptr ? "no menu bar" : "no such item");
  return item;
}

void Runner::Menu(Args& a) {
  std::string name = a.Word("a menu item's name");
  a.End();
  if (dry_) return;
  FindMenuItem(name, a.where());
  ChooseMenuItem(name);
}

void Runner::Key(Args& a) {
  std::string shortcut = a.Quoted("a shortcut in quotes");
  a.End();
  if (Shortcut::Parse(shortcut).IsEmpty())
    Fail(a.where(), "a shortcut such as \"Cmd+Shift+D\"", Quote(shortcut));
  if (dry_) return;
  PressShortcut(shortcut);
}

void Runner::Focus(Args& a) {
  Control* c = LoneControl(a);
  if (c == nullptr) return;
  if (!c->AcceptsFocus()) {
    Fail(a.where(), c->ParentWindow()->ClassName() + "." + c->FullName() + " taking the focus",
         std::string("a ") + c->ClassName() + " that takes none");
  }
  c->ParentWindow()->SetFocus(c);
}

void Runner::SendKey(Window& w, const String& key) { w.UserKey(key); }

void Runner::Tab(Args& a) {
  a.End();
  if (dry_) return;
  SendKey(FrontWindow(a.where()), Keys::Tab);
}

void Runner::Press(Args& a) {
  std::string name = a.Word(
      "a key: Return, Enter, Escape, Tab, Backspace, Delete, Left, Right, Up, Down, Home, End");
  String key;
  if (!KeyCode(name, key))
    Fail(a.where(),
         "a key: Return, Enter, Escape, Tab, Backspace, Delete, Left, Right, Up, Down, Home, End",
         name);
  int count = 1;
  if (!a.AtEnd()) count = a.Int("a count");
  a.End();
  if (count < 1) Fail(a.where(), "a count of 1 or more", std::to_string(count));
  if (dry_) return;
  for (int i = 0; i < count; ++i) SendKey(FrontWindow(a.where()), key);
}

void Runner::Type(Args& a) {
  std::string text = a.Quoted("a text in quotes");
  a.End();
  if (dry_) return;
  for (const std::string& ch : Characters(text)) SendKey(FrontWindow(a.where()), String(ch));
}

void Runner::Paste(Args& a) {
  std::string text = a.Quoted("a text in quotes");
  a.End();
  if (dry_) return;
  Clipboard() = String(text);
  ChooseMenuItem("EditPaste");
}

void Runner::Click(Args& a) {
  if (Control* c = LoneControl(a)) c->UserClick();
}

void Runner::RightClick(Args& a) {
  if (Control* c = LoneControl(a)) c->UserClick(1, 1, true);
}

void Runner::Hover(Args& a) {
  if (Control* c = LoneControl(a)) c->UserMouseEnter();
}

void Runner::Unhover(Args& a) {
  if (Control* c = LoneControl(a)) c->UserMouseExit();
}

namespace {

Listbox& AsList(Control& c, const Where& where) {
  auto* l = dynamic_cast<Listbox*>(&c);
  if (l == nullptr) Fail(where, "a list", std::string("a ") + c.ClassName());
  return *l;
}

void CheckRow(int row, int count, const Where& where) {
  if (row >= 0 && row < count) return;
  Fail(where,
       count == 0 ? "a row, in a list that has none"
                  : "a row from 0 to " + std::to_string(count - 1),
       "row " + std::to_string(row));
}

}  // namespace

void Runner::CellClick(Args& a) {
  if (dry_) {
    ParseControlArg(a);
    a.Int("a row");
    if (!a.AtEnd()) a.Int("a column");
    a.End();
    return;
  }
  Listbox& l = AsList(ActionControl(a), a.where());
  int row = a.Int("a row");
  int column = a.AtEnd() ? 0 : a.Int("a column");
  a.End();
  CheckRow(row, l.ListCount(), a.where());
  l.UserCellClick(row, column);
}

void Runner::Select(Args& a) {
  if (dry_) {
    ParseControlArg(a);
    a.Int("a row");
    a.End();
    return;
  }
  Control& c = ActionControl(a);
  auto* p = dynamic_cast<PopupMenu*>(&c);
  if (p == nullptr) Fail(a.where(), "a popup menu", std::string("a ") + c.ClassName());
  int row = a.Int("a row");
  a.End();
  CheckRow(row, p->ListCount(), a.where());
  p->UserSelect(row);
}

void Runner::Edit(Args& a) {
  if (dry_) {
    ParseControlArg(a);
    a.Int("a row");
    a.Int("a column");
    a.Quoted("a text in quotes");
    a.End();
    return;
  }
  Listbox& l = AsList(ActionControl(a), a.where());
  int row = a.Int("a row");
  int column = a.Int("a column");
  std::string text = a.Quoted("a text in quotes");
  a.End();
  CheckRow(row, l.ListCount(), a.where());
  if (l.CellType(row, column) != 3) {
    Fail(a.where(), "a cell that edits in place (CellType 3)",
         "CellType " + std::to_string(l.CellType(row, column)));
  }
  l.ParentWindow()->SetFocus(&l);
  l.BeginEdit(row, column);
  l.SetEditText(String(text));
  SendKey(FrontWindow(a.where()), Keys::Return);
}

void Runner::Drag(Args& a) {
  if (dry_) {
    ParseControlArg(a);
    a.Int("the row dragged");
    a.Int("the row it goes to");
    a.End();
    return;
  }
  Listbox& l = AsList(ActionControl(a), a.where());
  int from = a.Int("the row dragged");
  int to = a.Int("the row it goes to");
  a.End();
  CheckRow(from, l.ListCount(), a.where());
  l.UserDrag(from, to);
}

void Runner::Close(Args& a) {
  std::string name = a.Word("a window");
  a.End();
  if (dry_) {
    if (!WindowRegistry::Known(name)) Fail(a.where(), "a window class", name);
    return;
  }
  Window& w = TargetWindow(name, a.where());
  if (!w.Visible()) Fail(a.where(), name + " shown", name + " is hidden");
  if (!modals_.empty() && modals_.back() != &w) {
    Fail(a.where(), "the modal window " + modals_.back()->ClassName(), name);
  }
  w.Close();
}

}  // namespace scn
