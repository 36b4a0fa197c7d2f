// SPDX-License-Identifier: GPL-3.0-or-later
// The control classes. A control holds its values and raises its events with or without a screen;
// whatever shows it is told of every change through the Screen interface.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "rb/Core.h"
#include "rb/Graphics.h"
#include "rb/String.h"

class Window;

// Key codes as KeyDown receives them (a typed character is itself).
namespace Keys {
inline const String Return = "\r";
inline const String Enter = "\x03";
inline const String Tab = "\t";
inline const String Backspace = "\x08";
inline const String Delete = "\x7f";
inline const String Escape = "\x1b";
inline const String Left = "\x1c";
inline const String Right = "\x1d";
inline const String Up = "\x1e";
inline const String Down = "\x1f";
inline const String Home = "\x01";
inline const String End = "\x04";
}  // namespace Keys

// What changed on a control, for whatever shows it.
enum class Prop {
  Text,
  Selection,
  ReadOnly,
  Enabled,
  Visible,
  BackColor,
  TextColor,
  Font,
  Rows,
  Cell,
  ListIndex,
  Value,
  FillColor,
  BorderWidth,
  Backdrop,
  Edit,
  Caption
};

class Control {
 public:
  Control(Window* window, std::string name, Integer index);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  virtual const char* ClassName() const = 0;
  const std::string& Name() const { return name_; }
  Integer Index() const { return index_; }  // -1 when not in a control array
  Window* ParentWindow() const { return window_; }
  // "name" or "name(index)".
  std::string FullName() const;

  // Design values, set while the window is built.
  Integer Left = 0, Top = 0, Width = 0, Height = 0;
  Integer TabIndex = 0;
  bool TabStop = true;
  bool UseFocusRing = true;
  Integer Alignment = 0;  // TextField/TextArea: 0 default, 1 left, 2 centre, 3 right
  Integer TextAlign = 0;  // StaticText: 0 left, 1 centre, 2 right
  bool HasBackColor = false;
  // Which edges keep their distance to the window's edges when it is resized: left and right
  // together make the control grow across, right alone moves it; top and bottom likewise.
  bool LockLeft = false, LockTop = false, LockRight = false, LockBottom = false;

  bool Enabled() const { return enabled_; }
  void setEnabled(bool v);
  bool Visible() const { return visible_; }
  void setVisible(bool v);
  String TextFont() const { return font_; }
  void setTextFont(const String& v);
  Double TextSize() const { return size_; }
  void setTextSize(Double v);
  bool Bold() const { return bold_; }
  void setBold(bool v);
  bool Italic() const { return italic_; }
  void setItalic(bool v);
  bool Underline() const { return underline_; }
  void setUnderline(bool v);
  Color TextColor() const { return textColor_; }
  void setTextColor(Color v);
  Color BackColor() const { return backColor_; }
  void setBackColor(Color v);

  // Whether the control can hold the keyboard focus.
  virtual bool AcceptsFocus() const { return false; }

  // Events. A handler left empty does nothing.
  std::function<void()> OnOpen;
  std::function<void()> OnGotFocus;
  std::function<void()> OnLostFocus;
  std::function<bool(const String& key)> OnKeyDown;
  std::function<bool(Integer x, Integer y)> OnMouseDown;
  std::function<void(Integer x, Integer y)> OnMouseUp;
  std::function<void()> OnMouseEnter;
  std::function<void()> OnMouseExit;

  // What a person does. Each raises the events in the platform's order.
  virtual void UserClick(Integer x = 1, Integer y = 1, bool contextual = false);
  void UserMouseEnter();
  void UserMouseExit();

 protected:
  void Changed(Prop what);
  // Sets a value that whatever shows the control shows; it is told only of a real change, and
  // the answer says whether there was one.
  template <class T>
  bool Update(T& field, const T& v, Prop what) {
    if (field == v) return false;
    field = v;
    Changed(what);
    return true;
  }
  // The press of a click: cell edits end and MouseDown runs. True when MouseDown kept the mouse,
  // in which case the release has gone to MouseUp and the click is over.
  bool PressKeptByMouseDown(Integer x, Integer y, bool contextual);

 private:
  Window* window_;
  std::string name_;
  Integer index_;
  bool enabled_ = true, visible_ = true;
  String font_ = "System";
  Double size_ = 0;
  bool bold_ = false, italic_ = false, underline_ = false;
  Color textColor_ = 0x000000, backColor_ = 0xFFFFFF;
};

// TextField and TextArea. The line break inside the text is Chr(13).
class TextControl : public Control {
 public:
  using Control::Control;

  String Text() const { return String(text_); }
  // Raises TextChange before it returns, and only when the text differs.
  void setText(const String& v);
  bool ReadOnly() const { return readOnly_; }
  void setReadOnly(bool v);
  Integer SelStart() const { return selStart_; }
  void setSelStart(Integer v);
  Integer SelLength() const { return selLength_; }
  void setSelLength(Integer v);
  String SelText() const;

  Integer LimitText = 0;  // binds typing only; 0 means no limit
  bool Border = true;
  bool Multiline = false;
  // The text the window was built with, before any Open handler or code changed it.
  String DesignText;

  bool AcceptsFocus() const override { return Enabled() && Visible(); }

  std::function<void()> OnTextChange;

  // A key in the focused control, after KeyDown let it through: edits within ReadOnly and
  // LimitText, replacing a selection. Returns whether the control took the key itself.
  bool ApplyKey(const String& key);
  // The Edit menu: replaces the selection, no key.
  void Paste(const String& text);
  void ClearSelection();
  // Caret at the end, nothing selected.
  void CaretToEnd();
  // The text as the user typed it into a live widget; raises TextChange if it differs.
  void SetTextFromUser(const std::string& utf8, Integer selStart, Integer selLength);
  void SetSelectionFromUser(Integer selStart, Integer selLength);

 private:
  void ReplaceSelection(const std::string& utf8, bool typing);
  std::string text_;  // UTF-8
  bool readOnly_ = false;
  Integer selStart_ = 0, selLength_ = 0;
};

class TextField : public TextControl {
 public:
  using TextControl::TextControl;
  const char* ClassName() const override { return "TextField"; }
};

class TextArea : public TextControl {
 public:
  TextArea(Window* window, std::string name, Integer index)
      : TextControl(window, std::move(name), index) {
    Multiline = true;
  }
  const char* ClassName() const override { return "TextArea"; }
  bool ScrollBarVertical = false;
};

class StaticText : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "StaticText"; }
  String Text() const { return text_; }
  void setText(const String& v);
  bool Multiline = false;

 private:
  String text_;
};

class Listbox : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "Listbox"; }
  bool AcceptsFocus() const override { return Enabled() && Visible(); }

  void AddRow(const String& text);
  void AddRow(String&& text);  // the text is taken over, not copied
  void AddRow(const std::vector<String>& cells);
  void DeleteAllRows();
  void RemoveRow(Integer row);
  String List(Integer row) const;
  String Cell(Integer row, Integer column) const;
  void setCell(Integer row, Integer column, const String& v);
  bool CellBold(Integer row, Integer column) const;
  void setCellBold(Integer row, Integer column, bool v);
  Integer CellType(Integer row, Integer column) const;
  void setCellType(Integer row, Integer column, Integer v);  // 3: editable in place
  void InvalidateCell(Integer row, Integer column);
  void Refresh();
  Integer ListCount() const { return static_cast<Integer>(rows_.size()); }
  Integer ListIndex() const { return listIndex_; }
  void setListIndex(Integer v);

  // Design.
  Integer ColumnCount = 1;
  std::string ColumnWidths;
  bool HasHeading = false;
  std::vector<String> Headings;  // InitialValue, one per column
  bool EnableDragReorder = false;
  bool ScrollBarVertical = true;
  Integer GridLinesHorizontal = 0;
  Integer GridLinesVertical = 0;

  std::function<bool(Integer row, Integer column, Integer x, Integer y)> OnCellClick;
  std::function<bool(Graphics& g, Integer row, Integer column, Integer x, Integer y)>
      OnCellTextPaint;

  // A click on a cell: the list takes the focus, CellClick runs, and unless it answered True the
  // row is selected; a click on a CellType 3 cell of the selected row opens the edit.
  void UserCellClick(Integer row, Integer column, Integer x = 1, Integer y = 1);
  void UserDrag(Integer from, Integer to);
  // The in-place edit.
  bool Editing() const { return editRow_ >= 0; }
  Integer EditRow() const { return editRow_; }
  Integer EditColumn() const { return editColumn_; }
  String EditText() const { return editText_; }
  void BeginEdit(Integer row, Integer column);
  void SetEditText(const String& text);
  void EndEdit(bool keep = true);  // Return or Enter keeps; the text goes into the cell
  // A key typed into the open edit: it opens with its whole text selected, so the first character
  // typed replaces it; later ones add at the end, Backspace takes the last one off.
  void EditKey(const String& key);
  // The colour the list paints a cell's text in, after CellTextPaint ran on g.
  Color PaintCellText(Graphics& g, Integer row, Integer column);

 private:
  // The first cell stands in the row itself: most lists have one column, and a list of many
  // thousand rows is refilled whole at every saving.
  struct Row {
    String first;
    std::vector<String> more;  // the cells of columns 1 and up
    std::vector<bool> bold;
    std::vector<Integer> type;
  };
  void CheckRow(Integer row) const;
  std::vector<Row> rows_;
  Integer listIndex_ = -1;
  Integer editRow_ = -1, editColumn_ = -1;
  String editText_;
  bool editSelected_ = false;
};

class PopupMenu : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "PopupMenu"; }
  void AddRow(const String& text);
  void AddRow(String&& text);  // the text is taken over, not copied
  void DeleteAllRows();        // ListIndex goes to -1 with no Change
  String List(Integer row) const;
  Integer ListCount() const { return static_cast<Integer>(rows_.size()); }
  Integer ListIndex() const { return listIndex_; }
  // Raises Change before it returns, and only when the index differs.
  void setListIndex(Integer v);
  String Text() const;  // the selected row's text, "" with none

  std::function<void()> OnChange;
  void UserSelect(Integer row);

 private:
  std::vector<String> rows_;
  Integer listIndex_ = -1;
};

class ContextualMenu : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "ContextualMenu"; }
  void AddRow(const String& text);
  void DeleteAllRows();
  String List(Integer row) const;
  Integer ListCount() const { return static_cast<Integer>(rows_.size()); }
  // Shows the rows at the mouse and returns when the user has chosen or dismissed; a choice raises
  // Action with the row's text.
  void Open();
  std::function<void(const String& item)> OnAction;

 private:
  std::vector<String> rows_;
};

class PushButton : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "PushButton"; }
  String Caption;
  bool Default = false;
  bool Cancel = false;
  std::function<void()> OnAction;
  // MouseDown, then Action unless MouseDown answered True. The focus stays where it was.
  void UserClick(Integer x = 1, Integer y = 1, bool contextual = false) override;
  // The Default or Cancel key: Action only.
  void Push();
};

class CheckBox : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "CheckBox"; }
  String Caption;
  bool Value() const { return value_; }
  // Raises Action before it returns, and only when the value differs.
  void setValue(bool v);
  std::function<void()> OnAction;
  void UserClick(Integer x = 1, Integer y = 1, bool contextual = false) override;

 private:
  bool value_ = false;
};

class Canvas : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "Canvas"; }
  Ref<Picture> Backdrop() const { return backdrop_; }
  void setBackdrop(const Ref<Picture>& p);
  std::function<void(Graphics& g)> OnPaint;
  // Runs Paint on g (the desktop's painter, or a recording surface).
  void Paint(Graphics& g);

 private:
  Ref<Picture> backdrop_;
};

class RoundRectangle : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "RoundRectangle"; }
  Color FillColor() const { return fill_; }
  void setFillColor(Color v);
  Integer BorderWidth() const { return border_; }
  void setBorderWidth(Integer v);
  Integer OvalWidth = 16, OvalHeight = 16;
  Color BorderColor = 0x000000;

 private:
  Color fill_ = 0xFFFFFF;
  Integer border_ = 1;
};

// Drawn as designed; no events.
class GroupBox : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "GroupBox"; }
  String Caption;
};

class Rectangle : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "Rectangle"; }
  Color FillColor = 0xFFFFFF;
  Integer BorderWidth = 1;
  Color BorderColor = 0x000000;
};

class Line : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "Line"; }
  Integer X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
  Integer BorderWidth = 1;
  Color BorderColor = 0x000000;
};

class PopupArrow : public Control {
 public:
  using Control::Control;
  const char* ClassName() const override { return "PopupArrow"; }
  Integer Facing = 0;
};

// True while the MouseDown being handled came from the secondary button.
bool IsContextualClick();

// The elements of a control array: they share one name and one handler, which asks the element
// for its Index. `number(3)` is element 3; an index out of range throws OutOfBoundsException.
template <class C, std::size_t N>
class ControlArray {
 public:
  using Element = C;
  C* operator()(Integer i) const {
    if (i < 0 || i >= static_cast<Integer>(N)) throw OutOfBoundsException();
    return elements_[static_cast<std::size_t>(i)];
  }
  auto begin() const { return elements_.begin(); }
  auto end() const { return elements_.end(); }
  // While the window is built.
  void Place(Integer i, C* c) { elements_.at(static_cast<std::size_t>(i)) = c; }

 private:
  std::array<C*, N> elements_{};
};
