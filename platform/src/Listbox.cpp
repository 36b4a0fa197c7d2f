// SPDX-License-Identifier: GPL-3.0-or-later
// Listbox: rows of cells with their bold flag and type, the selected row, and the edit in place.
#include <algorithm>

#include "ControlSupport.h"
#include "rb/Screen.h"
#include "rb/Window.h"

void Listbox::CheckRow(Integer row) const {
  if (row < 0 || row >= ListCount()) throw OutOfBoundsException();
}

namespace {

// A cell's bold flag or type: a row holds them only up to the last column given one, and the
// columns beyond hold `none`.
template <class T>
T CellFlag(const std::vector<T>& flags, Integer column, T none) {
  if (column < 0 || column >= static_cast<Integer>(flags.size())) return none;
  return flags[column];
}

// True when the cell's flag changed.
template <class T>
bool SetCellFlag(std::vector<T>& flags, Integer column, T v, T none) {
  if (column < 0) throw OutOfBoundsException();
  if (column >= static_cast<Integer>(flags.size())) {
    if (v == none) return false;
    flags.resize(column + 1, none);
  }
  if (flags[column] == v) return false;
  flags[column] = v;
  return true;
}

String AsUtf8(String&& text) {
  if (text.Encoding() == TextEncoding::UTF8) return std::move(text);
  return String::FromBytes(std::move(text).Utf8(), TextEncoding::UTF8);
}

}  // namespace

void Listbox::AddRow(const String& text) { AddRow(String(text)); }

void Listbox::AddRow(String&& text) {
  Row r;
  r.first = AsUtf8(std::move(text));
  rows_.push_back(std::move(r));
  Changed(Prop::Rows);
}

void Listbox::AddRow(const std::vector<String>& cells) {
  Row r;
  for (std::size_t k = 0; k < cells.size(); ++k) {
    String c = String::FromBytes(cells[k].Utf8(), TextEncoding::UTF8);
    if (k == 0) {
      r.first = std::move(c);
    } else {
      r.more.push_back(std::move(c));
    }
  }
  rows_.push_back(std::move(r));
  Changed(Prop::Rows);
}

void Listbox::DeleteAllRows() {
  bool hadSelection = listIndex_ != -1;
  rows_.clear();
  listIndex_ = -1;
  editRow_ = editColumn_ = -1;
  editSelected_ = false;
  Changed(Prop::Rows);
  if (hadSelection) Changed(Prop::ListIndex);
}

void Listbox::RemoveRow(Integer row) {
  CheckRow(row);
  if (editRow_ == row) {
    editRow_ = editColumn_ = -1;
    editSelected_ = false;
  } else if (editRow_ > row) {
    --editRow_;
  }
  rows_.erase(rows_.begin() + row);
  Integer before = listIndex_;
  if (listIndex_ == row) {
    listIndex_ = -1;
  } else if (listIndex_ > row) {
    --listIndex_;
  }
  Changed(Prop::Rows);
  if (listIndex_ != before) Changed(Prop::ListIndex);
}

String Listbox::List(Integer row) const { return Cell(row, 0); }

String Listbox::Cell(Integer row, Integer column) const {
  CheckRow(row);
  const Row& r = rows_[row];
  if (column == 0) return r.first;
  if (column < 0 || column > static_cast<Integer>(r.more.size())) return String();
  return r.more[column - 1];
}

void Listbox::setCell(Integer row, Integer column, const String& v) {
  CheckRow(row);
  if (column < 0) throw OutOfBoundsException();
  Row& r = rows_[row];
  if (column > static_cast<Integer>(r.more.size())) r.more.resize(column);
  String& cell = column == 0 ? r.first : r.more[column - 1];
  std::string s = v.Utf8();
  if (cell.Bytes() == s) return;
  cell = String(s);
  Changed(Prop::Cell);
}

bool Listbox::CellBold(Integer row, Integer column) const {
  CheckRow(row);
  return CellFlag<bool>(rows_[row].bold, column, false);
}

void Listbox::setCellBold(Integer row, Integer column, bool v) {
  CheckRow(row);
  if (SetCellFlag<bool>(rows_[row].bold, column, v, false)) Changed(Prop::Cell);
}

Integer Listbox::CellType(Integer row, Integer column) const {
  CheckRow(row);
  return CellFlag<Integer>(rows_[row].type, column, 0);
}

void Listbox::setCellType(Integer row, Integer column, Integer v) {
  CheckRow(row);
  if (SetCellFlag<Integer>(rows_[row].type, column, v, 0)) Changed(Prop::Cell);
}

void Listbox::InvalidateCell(Integer, Integer) { Changed(Prop::Rows); }

void Listbox::Refresh() { Changed(Prop::Rows); }

void Listbox::setListIndex(Integer v) {
  if (v < -1 || v >= ListCount()) throw OutOfBoundsException();
  if (v == listIndex_) return;
  if (Editing() && editRow_ != v) EndEdit(true);
  listIndex_ = v;
  Changed(Prop::ListIndex);
}

void Listbox::UserCellClick(Integer row, Integer column, Integer x, Integer y) {
  if (!Enabled()) return;
  if (Editing()) {
    // A click inside the open edit stays there; anywhere else in the list it ends the edit.
    if (row == editRow_ && column == editColumn_) return;
    EndEdit(true);
  }
  if (Window* w = ParentWindow()) w->SetFocus(this);
  if (row < 0 || row >= ListCount()) {
    setListIndex(-1);
    return;
  }
  bool handled =
      RunHandlerBool([&] { return OnCellClick ? OnCellClick(row, column, x, y) : false; });
  if (handled || row >= ListCount()) return;
  if (row == listIndex_ && CellType(row, column) == 3) {
    BeginEdit(row, column);
  } else {
    setListIndex(row);
  }
}

void Listbox::UserDrag(Integer from, Integer to) {
  if (!EnableDragReorder || !Enabled()) return;
  if (from < 0 || from >= ListCount()) return;
  to = std::clamp(to, 0, ListCount() - 1);
  if (from == to) return;
  if (Editing()) EndEdit(true);
  Row moved = std::move(rows_[from]);
  rows_.erase(rows_.begin() + from);
  rows_.insert(rows_.begin() + to, std::move(moved));
  // The selection stays on the row it was on.
  Integer before = listIndex_;
  if (listIndex_ == from) {
    listIndex_ = to;
  } else if (from < to && listIndex_ > from && listIndex_ <= to) {
    --listIndex_;
  } else if (to < from && listIndex_ >= to && listIndex_ < from) {
    ++listIndex_;
  }
  Changed(Prop::Rows);
  if (listIndex_ != before) Changed(Prop::ListIndex);
}

void Listbox::BeginEdit(Integer row, Integer column) {
  CheckRow(row);
  if (column < 0) throw OutOfBoundsException();
  if (row == editRow_ && column == editColumn_) return;
  if (Editing()) EndEdit(true);
  // The edit field has the keyboard: the list takes the focus first.
  if (Window* w = ParentWindow(); w && w->Focus() != this) w->SetFocus(this);
  if (row >= ListCount()) return;
  editRow_ = row;
  editColumn_ = column;
  editText_ = Cell(row, column);
  editSelected_ = true;
  Changed(Prop::Edit);
}

void Listbox::SetEditText(const String& text) {
  if (!Editing()) return;
  editText_ = String(text.Utf8());
  editSelected_ = false;
}

void Listbox::EditKey(const String& key) {
  if (!Editing()) return;
  const std::string& k = key.Bytes();
  std::string text = editText_.Bytes();
  if (rbi::IsPrintableKey(k)) {
    text = editSelected_ ? k : text + k;
  } else if (rbi::SameKey(key, Keys::Backspace)) {
    if (editSelected_) {
      text.clear();
    } else if (!text.empty()) {
      std::size_t last = text.size() - 1;
      while (last > 0 && rbi::IsContinuationByte(static_cast<unsigned char>(text[last]))) --last;
      text.erase(last);
    }
  } else if (rbi::SameKey(key, Keys::Delete)) {
    if (editSelected_) text.clear();
  } else if (!rbi::SameKey(key, Keys::Left) && !rbi::SameKey(key, Keys::Right) &&
             !rbi::SameKey(key, Keys::Home) && !rbi::SameKey(key, Keys::End) &&
             !rbi::SameKey(key, Keys::Up) && !rbi::SameKey(key, Keys::Down)) {
    return;
  }
  editSelected_ = false;
  if (text == editText_.Bytes()) return;
  editText_ = String(text);
  Changed(Prop::Edit);
}

void Listbox::EndEdit(bool keep) {
  if (!Editing()) return;
  Integer row = editRow_, column = editColumn_;
  String text = editText_;
  editRow_ = editColumn_ = -1;
  editSelected_ = false;
  Changed(Prop::Edit);
  if (keep) setCell(row, column, text);
}

Color Listbox::PaintCellText(Graphics& g, Integer row, Integer column) {
  g.ForeColor = TextColor();
  g.TextFont = TextFont();
  if (TextSize() > 0) g.TextSize = TextSize();
  g.Italic = Italic();
  g.Underline = Underline();
  g.Bold = Bold() || (row >= 0 && row < ListCount() && CellBold(row, column));
  RunHandlerBool([&] { return OnCellTextPaint ? OnCellTextPaint(g, row, column, 0, 0) : false; });
  return g.ForeColor;
}
