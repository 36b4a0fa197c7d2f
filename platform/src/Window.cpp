// SPDX-License-Identifier: GPL-3.0-or-later
// A window: its controls, showing and hiding, the focus, the keys, and its menu handlers.
#include "rb/Window.h"

#include <algorithm>
#include <cctype>

#include "ControlSupport.h"
#include "rb/Screen.h"

namespace {

bool NamesEqual(const std::string& a, const std::string& b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) ==
                  std::tolower(static_cast<unsigned char>(y));
         });
}

// The controls that Tab walks through, in TabIndex order; equal indexes go by creation.
std::vector<Control*> TabOrder(const std::vector<std::unique_ptr<Control>>& controls) {
  std::vector<Control*> order;
  for (const auto& c : controls)
    if (c->TabStop && c->AcceptsFocus()) order.push_back(c.get());
  std::stable_sort(order.begin(), order.end(),
                   [](const Control* a, const Control* b) { return a->TabIndex < b->TabIndex; });
  return order;
}

class ModalDepth {
 public:
  explicit ModalDepth(int& depth) : depth_(depth) { ++depth_; }
  ~ModalDepth() { --depth_; }
  ModalDepth(const ModalDepth&) = delete;
  ModalDepth& operator=(const ModalDepth&) = delete;

 private:
  int& depth_;
};

}  // namespace

Window::Window(std::string className, WindowDesign design)
    : WindowDesign(std::move(design)), className_(std::move(className)) {}

Window::~Window() { focus_ = nullptr; }

void Window::Build() {
  if (built_) return;
  built_ = true;
  CreateControls();
  std::vector<Control*> made;
  made.reserve(controls_.size());
  for (const auto& c : controls_) {
    made.push_back(c.get());
    if (auto* t = dynamic_cast<TextControl*>(c.get())) t->DesignText = t->Text();
  }
  // A window whose opening was stopped by an unhandled exception still shows as designed, so
  // that the person has it to go on with; the exception then goes on to the event that asked.
  try {
    for (Control* c : made) RunHandler(c->OnOpen);
    RunHandler(OnOpen);
  } catch (const RuntimeException&) {
    if (VisibleByDesign) Show();
    throw;
  }
  if (VisibleByDesign) Show();
}

void Window::Show() {
  bool wasVisible = visible_;
  bool wasFront = wasVisible && WindowRegistry::Front() == this;
  visible_ = true;
  WindowRegistry::NoteShown(this);
  if (!wasVisible) CurrentScreen().WindowShown(*this);
  if (!shownOnce_) {
    shownOnce_ = true;
    if (!focus_) {
      std::vector<Control*> order = TabOrder(controls_);
      if (!order.empty()) SetFocus(order.front());
    }
  }
  if (!wasFront) RunHandler(OnActivate);
}

void Window::Hide() {
  if (!visible_) return;
  bool wasFront = WindowRegistry::Front() == this;
  visible_ = false;
  WindowRegistry::NoteHidden(this);
  CurrentScreen().WindowHidden(*this);
  if (wasFront) {
    if (Window* below = WindowRegistry::Front()) RunHandler(below->OnActivate);
  }
}

// The events of the window shown are served as outermost ones while the caller waits; Activate
// comes with every ShowModal, also on a window that was already in front.
void Window::ShowModal() {
  ModalDepth depth(modalDepth_);
  OutermostScope outermost;
  bool wasFront = visible_ && WindowRegistry::Front() == this;
  Show();
  if (wasFront) RunHandler(OnActivate);
  CurrentScreen().RunModal(*this);
}

void Window::Close() {
  RunHandler(OnClose);
  Hide();
}

Control* Window::FindControl(const std::string& name, Integer index) const {
  for (const auto& c : controls_)
    if (c->Index() == index && NamesEqual(c->Name(), name)) return c.get();
  return nullptr;
}

void Window::SetFocus(Control* c) {
  if (c == focus_) return;
  if (c && c->ParentWindow() != this) return;
  if (Control* old = focus_) {
    // The list that is left keeps what the user typed into its open edit.
    if (auto* list = dynamic_cast<Listbox*>(old); list && list->Editing()) list->EndEdit(true);
    focus_ = nullptr;
    RunHandler(old->OnLostFocus);
    // A LostFocus handler that moved the focus itself has the last word.
    if (focus_) return;
  }
  focus_ = c;
  if (auto* text = dynamic_cast<TextControl*>(c)) text->CaretToEnd();
  CurrentScreen().FocusChanged(*this, c);
  if (c) RunHandler(c->OnGotFocus);
}

void Window::FocusNext(bool backwards) {
  std::vector<Control*> order = TabOrder(controls_);
  if (order.empty()) return;
  auto at = std::find(order.begin(), order.end(), focus_);
  Control* next = nullptr;
  if (at == order.end()) {
    next = backwards ? order.back() : order.front();
  } else {
    auto i = static_cast<std::size_t>(at - order.begin());
    std::size_t n = order.size();
    next = order[backwards ? (i + n - 1) % n : (i + 1) % n];
  }
  SetFocus(next);
}

PushButton* Window::DefaultButton() const {
  for (const auto& c : controls_)
    if (auto* b = dynamic_cast<PushButton*>(c.get()); b && b->Default) return b;
  return nullptr;
}

PushButton* Window::CancelButton() const {
  for (const auto& c : controls_)
    if (auto* b = dynamic_cast<PushButton*>(c.get()); b && b->Cancel) return b;
  return nullptr;
}

void Window::AddMenuHandler(const std::string& itemName, std::function<bool()> handler) {
  for (auto& entry : menuHandlers_) {
    if (NamesEqual(entry.first, itemName)) {
      entry.second = std::move(handler);
      return;
    }
  }
  menuHandlers_.emplace_back(itemName, std::move(handler));
}

bool Window::HasMenuHandler(const std::string& itemName) const {
  for (const auto& entry : menuHandlers_)
    if (entry.second && NamesEqual(entry.first, itemName)) return true;
  return false;
}

bool Window::RunMenuHandler(const std::string& itemName) {
  for (const auto& entry : menuHandlers_) {
    if (entry.second && NamesEqual(entry.first, itemName)) {
      std::function<bool()> handler = entry.second;
      return RunHandlerBool(handler);
    }
  }
  return false;
}

bool Window::OwnProperty(const std::string&, std::string&) const { return false; }

std::string NamedValue(const String& v) { return v.Utf8(); }

std::string NamedValue(Single v) { return Str(v).Utf8(); }

std::string NamedValue(Integer v) { return std::to_string(v); }

std::string NamedValue(bool v) { return v ? "true" : "false"; }

void Window::UserKey(const String& key) {
  using rbi::SameKey;
  bool isReturn = SameKey(key, Keys::Return) || SameKey(key, Keys::Enter);
  bool isEscape = SameKey(key, Keys::Escape);
  bool isTab = SameKey(key, Keys::Tab);

  // An open cell edit takes the keys first; Return and Escape end it and go no further.
  if (auto* list = dynamic_cast<Listbox*>(focus_); list && list->Editing()) {
    if (isReturn) {
      list->EndEdit(true);
    } else if (isEscape) {
      list->EndEdit(false);
    } else if (isTab) {
      FocusNext();
    } else {
      list->EditKey(key);
    }
    return;
  }

  Control* focused = focus_;
  if (focused) {
    bool swallowed =
        RunHandlerBool([&] { return focused->OnKeyDown ? focused->OnKeyDown(key) : false; });
    if (swallowed) return;
    // KeyDown may have moved the focus or closed the window; the key goes where the focus is now.
    focused = focus_;
  }

  if (isTab) {
    FocusNext();
    return;
  }
  auto* text = dynamic_cast<TextControl*>(focused);
  if (isReturn) {
    if (text && text->Multiline && !text->ReadOnly()) {
      text->ApplyKey(Keys::Return);
      return;
    }
    PushButton* b = DefaultButton();
    if (b && b->Enabled() && b->Visible()) b->Push();
    return;
  }
  if (isEscape) {
    PushButton* b = CancelButton();
    if (b && b->Enabled() && b->Visible()) b->Push();
    return;
  }
  if (text) {
    text->ApplyKey(key);
    return;
  }
  // Up and Down walk the rows of a focused list.
  if (auto* list = dynamic_cast<Listbox*>(focused); list && list->ListCount() > 0) {
    if (SameKey(key, Keys::Down)) {
      list->setListIndex(std::min(list->ListIndex() + 1, list->ListCount() - 1));
    } else if (SameKey(key, Keys::Up)) {
      list->setListIndex(std::max(list->ListIndex() - 1, 0));
    }
  }
}
