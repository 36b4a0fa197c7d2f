// SPDX-License-Identifier: GPL-3.0-or-later
// TextField as a QLineEdit and TextArea as a QPlainTextEdit. The platform edits the text: every
// key goes to Window::UserKey and the widget is told the result; the widget's own editing is
// never used, so its text cannot drift from the control's.
#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <utility>

#include "ControlView.h"

namespace desk {

class TextView : public ControlView {
 public:
  TextView(TextControl& c, DesktopScreen& screen) : ControlView(c, screen), text_(c) {}
  TextControl& text() const { return text_; }
  void Sync(Prop what) override;

  // From the widget. Key answers whether the key was taken (the widget's own handling skipped).
  bool Key(QKeyEvent* e);
  // A press: a contextual one goes to the platform alone; a plain one after the widget placed the
  // caret. ContextualPress answers whether it took the press.
  bool ContextualPress(QMouseEvent* e);
  void Pressed(QMouseEvent* e);
  // The widget moved its caret or selection itself (mouse drag, Shift with an arrow).
  void SelectionFromWidget();
  // The widget's text changed in a way that passed us by: the platform hears it once, and only if
  // the text differs.
  void TextFromWidget();
  // Text committed by an input method, as typed characters.
  void Commit(const QString& text);

 protected:
  virtual QString WidgetText() const = 0;
  virtual void SetWidgetText(const QString& t) = 0;
  // Start and length, in UTF-16 units of WidgetText.
  virtual std::pair<int, int> WidgetSelection() const = 0;
  virtual void SetWidgetSelection(int start, int length) = 0;
  virtual void SyncLook() = 0;
  void SyncText();
  void SyncSelection();
  bool syncing_ = false;
  // A key of the person's is being served: the caret it moves is brought into view.
  bool keyActive_ = false;

 private:
  void EnsurePlatformFocus();
  TextControl& text_;
};

// A text control on its Qt widget: a QLineEdit for a TextField, a QPlainTextEdit for a TextArea.
template <class Widget>
class EditView : public TextView {
 public:
  EditView(TextControl& c, QWidget* form, DesktopScreen& screen);
  QWidget* widget() const override { return edit_; }

 protected:
  QString WidgetText() const override;
  void SetWidgetText(const QString& t) override;
  std::pair<int, int> WidgetSelection() const override;
  void SetWidgetSelection(int start, int length) override;
  void SyncLook() override;

 private:
  Widget* edit_;
};

using FieldView = EditView<QLineEdit>;
using AreaView = EditView<QPlainTextEdit>;

}  // namespace desk
