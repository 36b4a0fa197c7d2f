// SPDX-License-Identifier: GPL-3.0-or-later
// TextField and TextArea: the text, the selection, and editing by key and by the Edit menu.
#include <algorithm>

#include "ControlSupport.h"
#include "rb/Screen.h"
#include "rb/Window.h"

namespace {

const std::string kLineBreak = "\r";

// A live widget may hand its line breaks in another form; inside, a line break is Chr(13).
std::string ToLineBreaks(const std::string& s) {
  std::string out;
  out.reserve(s.size());
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (s[i] == '\r' && i + 1 < s.size() && s[i + 1] == '\n') continue;
    out += s[i] == '\n' ? '\r' : s[i];
  }
  return out;
}

// Where line `pos` of a multi-line text begins and how far into it the caret stands.
struct LinePos {
  Integer lineStart;
  Integer column;
};

LinePos LineOf(const std::string& text, Integer pos) {
  Integer start = 0, i = 0;
  for (std::size_t b = 0; b < text.size() && i < pos; ++b) {
    if (rbi::IsContinuationByte(static_cast<unsigned char>(text[b]))) continue;
    ++i;
    if (text[b] == '\r') start = i;
  }
  return {start, pos - start};
}

Integer LineLength(const std::string& text, Integer lineStart) {
  std::size_t b = rbi::Utf8Offset(text, lineStart);
  std::size_t e = text.find('\r', b);
  if (e == std::string::npos) e = text.size();
  return rbi::Utf8Length(text.substr(b, e - b));
}

}  // namespace

void TextControl::setText(const String& v) {
  std::string s = v.Utf8();
  if (s == text_) return;
  text_ = std::move(s);
  Integer len = rbi::Utf8Length(text_);
  selStart_ = std::min(selStart_, len);
  selLength_ = std::min(selLength_, len - selStart_);
  Changed(Prop::Text);
  RunHandler(OnTextChange);
}

void TextControl::setReadOnly(bool v) { Update(readOnly_, v, Prop::ReadOnly); }

void TextControl::setSelStart(Integer v) {
  Integer len = rbi::Utf8Length(text_);
  Integer start = std::clamp(v, 0, len);
  Integer length = std::min(selLength_, len - start);
  if (start == selStart_ && length == selLength_) return;
  selStart_ = start;
  selLength_ = length;
  Changed(Prop::Selection);
}

void TextControl::setSelLength(Integer v) {
  Integer len = rbi::Utf8Length(text_);
  Integer length = std::clamp(v, 0, len - selStart_);
  if (length == selLength_) return;
  selLength_ = length;
  Changed(Prop::Selection);
}

String TextControl::SelText() const { return String(rbi::Utf8Mid(text_, selStart_, selLength_)); }

void TextControl::CaretToEnd() {
  Integer len = rbi::Utf8Length(text_);
  if (selStart_ == len && selLength_ == 0) return;
  selStart_ = len;
  selLength_ = 0;
  Changed(Prop::Selection);
}

// The selection gives way to `utf8`, the caret stands behind it. Typing stops at LimitText; code
// and the Edit menu do not.
void TextControl::ReplaceSelection(const std::string& utf8, bool typing) {
  if (readOnly_) return;
  Integer len = rbi::Utf8Length(text_);
  Integer inserted = rbi::Utf8Length(utf8);
  if (typing && LimitText > 0 && inserted > 0 && len - selLength_ + inserted > LimitText) return;
  std::size_t a = rbi::Utf8Offset(text_, selStart_);
  std::size_t b = rbi::Utf8Offset(text_, selStart_ + selLength_);
  std::string next = text_.substr(0, a) + utf8 + text_.substr(b);
  Integer caret = selStart_ + inserted;
  bool textChanged = next != text_;
  bool selectionChanged = caret != selStart_ || selLength_ != 0;
  text_ = std::move(next);
  selStart_ = caret;
  selLength_ = 0;
  if (textChanged) Changed(Prop::Text);
  if (selectionChanged) Changed(Prop::Selection);
  if (textChanged) RunHandler(OnTextChange);
}

bool TextControl::ApplyKey(const String& key) {
  const std::string& k = key.Bytes();
  Integer len = rbi::Utf8Length(text_);
  auto moveCaret = [&](Integer to) {
    to = std::clamp(to, 0, len);
    if (to == selStart_ && selLength_ == 0) return;
    selStart_ = to;
    selLength_ = 0;
    Changed(Prop::Selection);
  };

  if (rbi::SameKey(key, Keys::Return) || rbi::SameKey(key, Keys::Enter)) {
    if (!Multiline) return false;
    ReplaceSelection(kLineBreak, true);
    return true;
  }
  if (rbi::SameKey(key, Keys::Backspace) || rbi::SameKey(key, Keys::Delete)) {
    if (readOnly_) return true;
    if (selLength_ == 0) {
      bool back = rbi::SameKey(key, Keys::Backspace);
      if (back ? selStart_ == 0 : selStart_ >= len) return true;
      if (back) --selStart_;
      selLength_ = 1;
    }
    ReplaceSelection("", false);
    return true;
  }
  if (rbi::SameKey(key, Keys::Left)) {
    moveCaret(selLength_ > 0 ? selStart_ : selStart_ - 1);
    return true;
  }
  if (rbi::SameKey(key, Keys::Right)) {
    moveCaret(selLength_ > 0 ? selStart_ + selLength_ : selStart_ + 1);
    return true;
  }
  if (rbi::SameKey(key, Keys::Home)) {
    moveCaret(0);
    return true;
  }
  if (rbi::SameKey(key, Keys::End)) {
    moveCaret(len);
    return true;
  }
  if (rbi::SameKey(key, Keys::Up) || rbi::SameKey(key, Keys::Down)) {
    bool up = rbi::SameKey(key, Keys::Up);
    if (!Multiline) {
      moveCaret(up ? 0 : len);
      return true;
    }
    // The caret keeps its column as far as the next line is long.
    LinePos here = LineOf(text_, selStart_);
    if (up) {
      if (here.lineStart == 0) {
        moveCaret(0);
      } else {
        LinePos prev = LineOf(text_, here.lineStart - 1);
        moveCaret(prev.lineStart + std::min(here.column, LineLength(text_, prev.lineStart)));
      }
    } else {
      Integer next = here.lineStart + LineLength(text_, here.lineStart) + 1;
      if (next > len) {
        moveCaret(len);
      } else {
        moveCaret(next + std::min(here.column, LineLength(text_, next)));
      }
    }
    return true;
  }
  if (!rbi::IsPrintableKey(k)) return false;
  ReplaceSelection(k, true);
  return true;
}

void TextControl::Paste(const String& text) {
  std::string s = text.Utf8();
  if (Multiline) s = ToLineBreaks(s);
  ReplaceSelection(s, false);
}

void TextControl::ClearSelection() {
  if (selLength_ == 0) return;
  ReplaceSelection("", false);
}

void TextControl::SetTextFromUser(const std::string& utf8, Integer selStart, Integer selLength) {
  std::string s = Multiline ? ToLineBreaks(utf8) : utf8;
  bool changed = s != text_;
  text_ = std::move(s);
  Integer len = rbi::Utf8Length(text_);
  selStart_ = std::clamp(selStart, 0, len);
  selLength_ = std::clamp(selLength, 0, len - selStart_);
  if (changed) RunHandler(OnTextChange);
}

void TextControl::SetSelectionFromUser(Integer selStart, Integer selLength) {
  Integer len = rbi::Utf8Length(text_);
  selStart_ = std::clamp(selStart, 0, len);
  selLength_ = std::clamp(selLength, 0, len - selStart_);
}
