// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextViews.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPalette>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>
#include <type_traits>

#include "DesktopScreen.h"
#include "KeyMap.h"
#include "QtText.h"
#include "rb/Window.h"

namespace desk {

namespace {

Qt::Alignment FieldAlignment(Integer alignment) {
  switch (alignment) {
    case 2: return Qt::AlignHCenter;
    case 3: return Qt::AlignRight;
    default: return Qt::AlignLeft;
  }
}

// A text widget whose own editing is cut off at every door a person could use: the keys, the
// presses and what an input method commits go to the view, which hands them to the platform.
template <class Widget>
class PlatformEdit : public Widget {
 public:
  PlatformEdit(TextView& view, QWidget* parent) : Widget(parent), view_(view) {
    this->setFocusPolicy(Qt::ClickFocus);
    this->setContextMenuPolicy(Qt::NoContextMenu);
    this->setAcceptDrops(false);
  }

 protected:
  bool event(QEvent* e) override {
    if (!IsTabKey(e)) return Widget::event(e);
    keyPressEvent(static_cast<QKeyEvent*>(e));
    return true;
  }
  void keyPressEvent(QKeyEvent* e) override {
    if (view_.Key(e)) return;
    Widget::keyPressEvent(e);
    view_.SelectionFromWidget();
  }
  void mousePressEvent(QMouseEvent* e) override {
    if (e->button() == Qt::MiddleButton || view_.ContextualPress(e)) return;
    Widget::mousePressEvent(e);
    view_.Pressed(e);
  }
  void mouseReleaseEvent(QMouseEvent* e) override {
    Widget::mouseReleaseEvent(e);
    view_.SelectionFromWidget();
  }
  void mouseDoubleClickEvent(QMouseEvent* e) override {
    if (e->button() != Qt::LeftButton) return;
    Widget::mouseDoubleClickEvent(e);
    view_.SelectionFromWidget();
  }
  void inputMethodEvent(QInputMethodEvent* e) override { view_.Commit(e->commitString()); }
  void contextMenuEvent(QContextMenuEvent*) override {}

 private:
  TextView& view_;
};

// The multi-line one also takes nothing pasted or dropped.
class PlainEdit : public PlatformEdit<QPlainTextEdit> {
 public:
  using PlatformEdit::PlatformEdit;

 protected:
  bool canInsertFromMimeData(const QMimeData*) const override { return false; }
};

template <class Widget>
Widget* MakeEdit(TextView& view, QWidget* form);
template <>
QLineEdit* MakeEdit<QLineEdit>(TextView& view, QWidget* form) {
  return new PlatformEdit<QLineEdit>(view, form);
}
template <>
QPlainTextEdit* MakeEdit<QPlainTextEdit>(TextView& view, QWidget* form) {
  return new PlainEdit(view, form);
}

}  // namespace

// ---- TextView ----------------------------------------------------------------------------

void TextView::Sync(Prop what) {
  switch (what) {
    case Prop::Text: SyncText(); break;
    case Prop::Selection: SyncSelection(); break;
    case Prop::ReadOnly:
    case Prop::BackColor:
    case Prop::TextColor:
    case Prop::Font:
      SyncCommon(what);
      SyncLook();
      break;
    default: SyncCommon(what); break;
  }
}

void TextView::SyncText() {
  const QString want = ToWidgetText(text_.Text());
  if (WidgetText() != want) {
    syncing_ = true;
    const QSignalBlocker block(widget());
    SetWidgetText(want);
    syncing_ = false;
  }
  SyncSelection();
}

void TextView::SyncSelection() {
  const QString t = WidgetText();
  const int start = ToUtf16Index(t, text_.SelStart());
  const int end = ToUtf16Index(t, text_.SelStart() + text_.SelLength());
  if (WidgetSelection() == std::make_pair(start, end - start)) return;
  syncing_ = true;
  const QSignalBlocker block(widget());
  SetWidgetSelection(start, end - start);
  syncing_ = false;
}

void TextView::EnsurePlatformFocus() {
  Window* w = text_.ParentWindow();
  if (w && w->Focus() != &text_ && text_.AcceptsFocus()) RunEvent([&] { w->SetFocus(&text_); });
}

bool TextView::Key(QKeyEvent* e) {
  Window* w = text_.ParentWindow();
  if (!w) return true;
  // Command keys belong to the menus, which saw them before the widget did.
  if (IsCommandKey(*e)) return true;
  if (e->key() == Qt::Key_Backtab) {
    RunEvent([&] { w->FocusNext(true); });
    return true;
  }
  if (IsSelectionKey(*e)) return false;
  const std::vector<String> keys = PlatformKeys(*e);
  if (keys.empty()) {
    // Paging through a long text is the widget's; it moves the caret, which comes back to us.
    return !(e->key() == Qt::Key_PageUp || e->key() == Qt::Key_PageDown) || !text_.Multiline;
  }
  EnsurePlatformFocus();
  keyActive_ = true;
  for (const String& key : keys) RunEvent([&] { w->UserKey(key); });
  keyActive_ = false;
  return true;
}

bool TextView::ContextualPress(QMouseEvent* e) {
  if (!IsContextual(e)) return false;
  const QPoint p = e->position().toPoint();
  RunEvent([&] { text_.UserClick(p.x(), p.y(), true); });
  if (Window* w = text_.ParentWindow()) screen().FocusChanged(*w, w->Focus());
  return true;
}

void TextView::Pressed(QMouseEvent* e) {
  Window* w = text_.ParentWindow();
  if (!w) return;
  const QString t = WidgetText();
  const auto [s16, l16] = WidgetSelection();
  const Integer start = ToCharacterIndex(t, s16);
  const Integer length = ToCharacterIndex(t, s16 + l16) - start;
  const bool hadFocus = w->Focus() == &text_;
  const QPoint p = e->position().toPoint();
  RunEvent([&] { text_.UserClick(p.x(), p.y(), false); });
  if (w->Focus() == &text_) {
    // The click places the caret, unless GotFocus chose a selection of its own: entering a field
    // leaves the caret at the end when its handler did not select.
    const bool caretAtEnd = text_.SelLength() == 0 && text_.SelStart() == Len(text_.Text());
    if (hadFocus || caretAtEnd) RunEvent([&] { text_.SetSelectionFromUser(start, length); });
  } else {
    screen().FocusChanged(*w, w->Focus());
  }
  SyncSelection();
}

void TextView::SelectionFromWidget() {
  if (syncing_) return;
  Window* w = text_.ParentWindow();
  if (!w || w->Focus() != &text_) {
    SyncSelection();
    return;
  }
  const QString t = WidgetText();
  const auto [s16, l16] = WidgetSelection();
  const Integer start = ToCharacterIndex(t, s16);
  const Integer length = ToCharacterIndex(t, s16 + l16) - start;
  if (start != text_.SelStart() || length != text_.SelLength())
    RunEvent([&] { text_.SetSelectionFromUser(start, length); });
}

void TextView::TextFromWidget() {
  if (syncing_) return;
  const std::string now = FromWidgetText(WidgetText());
  if (now == text_.Text().Utf8()) return;
  const QString t = WidgetText();
  const auto [s16, l16] = WidgetSelection();
  const Integer start = ToCharacterIndex(t, s16);
  const Integer length = ToCharacterIndex(t, s16 + l16) - start;
  RunEvent([&] { text_.SetTextFromUser(now, start, length); });
  SyncText();
}

void TextView::Commit(const QString& committed) {
  Window* w = text_.ParentWindow();
  if (!w || committed.isEmpty()) return;
  EnsurePlatformFocus();
  for (int i = 0; i < committed.size();) {
    const int n = (committed.at(i).isHighSurrogate() && i + 1 < committed.size()) ? 2 : 1;
    const String key(committed.mid(i, n).toStdString());
    i += n;
    RunEvent([&] { w->UserKey(key); });
  }
}

// ---- EditView ----------------------------------------------------------------------------

// Each member does for the one-line widget (a TextField's QLineEdit) and for the multi-line one
// (a TextArea's QPlainTextEdit) what that widget needs.
template <class Widget>
constexpr bool kOneLine = std::is_same_v<Widget, QLineEdit>;

template <class Widget>
EditView<Widget>::EditView(TextControl& c, QWidget* form, DesktopScreen& screen)
    : TextView(c, screen), edit_(MakeEdit<Widget>(*this, form)) {
  if constexpr (kOneLine<Widget>) {
    edit_->setDragEnabled(false);
    edit_->setTextMargins(1, 0, 1, 0);
  } else {
    edit_->setTabChangesFocus(true);
    edit_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    edit_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    const bool scrolls = static_cast<const TextArea&>(c).ScrollBarVertical;
    edit_->setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    edit_->document()->setDocumentMargin(2);
  }
  // Qt's multi-line editor signals a change even for a text set to itself: only a real
  // difference reaches the platform (TextFromWidget).
  QObject::connect(edit_, &Widget::textChanged, edit_, [this] { TextFromWidget(); });
  SyncAll();
  SyncLook();
  SyncText();
}

template <class Widget>
QString EditView<Widget>::WidgetText() const {
  if constexpr (kOneLine<Widget>) {
    return edit_->text();
  } else {
    return edit_->toPlainText();
  }
}

template <class Widget>
void EditView<Widget>::SetWidgetText(const QString& t) {
  if constexpr (kOneLine<Widget>) {
    edit_->setText(t);
  } else {
    edit_->setPlainText(t);
  }
}

template <class Widget>
std::pair<int, int> EditView<Widget>::WidgetSelection() const {
  if constexpr (kOneLine<Widget>) {
    if (edit_->hasSelectedText()) return {edit_->selectionStart(), edit_->selectionLength()};
    return {edit_->cursorPosition(), 0};
  } else {
    const QTextCursor cur = edit_->textCursor();
    return {cur.selectionStart(), cur.selectionEnd() - cur.selectionStart()};
  }
}

template <class Widget>
void EditView<Widget>::SetWidgetSelection(int start, int length) {
  if constexpr (kOneLine<Widget>) {
    if (length > 0) {
      edit_->setSelection(start, length);
    } else {
      edit_->deselect();
      edit_->setCursorPosition(start);
    }
  } else {
    QTextCursor cur(edit_->document());
    cur.setPosition(start);
    if (length > 0) cur.setPosition(start + length, QTextCursor::KeepAnchor);
    // A text to read (help) opens at its top, though the focus leaves the caret at its end.
    const int scroll = edit_->verticalScrollBar()->value();
    edit_->setTextCursor(cur);
    if (text().ReadOnly() && !keyActive_) {
      edit_->verticalScrollBar()->setValue(scroll);
    } else {
      edit_->ensureCursorVisible();
    }
  }
}

template <class Widget>
void EditView<Widget>::SyncLook() {
  const TextControl& c = text();
  edit_->setReadOnly(c.ReadOnly());
  if constexpr (kOneLine<Widget>) {
    edit_->setFrame(c.Border);
    edit_->setAlignment(FieldAlignment(c.Alignment) | Qt::AlignVCenter);
  } else {
    edit_->setFrameShape(c.Border ? QFrame::StyledPanel : QFrame::NoFrame);
    // A read-only text can still be selected and its caret moved.
    edit_->setTextInteractionFlags(c.ReadOnly() ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                                : Qt::TextEditorInteraction);
    QTextOption option = edit_->document()->defaultTextOption();
    option.setAlignment(FieldAlignment(c.Alignment));
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    edit_->document()->setDefaultTextOption(option);
  }
  QPalette pal = edit_->palette();
  pal.setColor(QPalette::Base, ToQColor(c.BackColor()));
  pal.setColor(QPalette::Text, ToQColor(c.TextColor()));
  edit_->setPalette(pal);
}

template class EditView<QLineEdit>;
template class EditView<QPlainTextEdit>;

}  // namespace desk
