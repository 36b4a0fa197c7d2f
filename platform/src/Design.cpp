// SPDX-License-Identifier: GPL-3.0-or-later
// The making of a window's controls from its layout table.
#include "rb/Design.h"

namespace design {

namespace {

void ApplyText(Control& c, const Row& row) {
  if (row.text == nullptr) return;
  if (auto* t = dynamic_cast<TextControl*>(&c)) {
    t->setText(row.text);
  } else if (auto* s = dynamic_cast<StaticText*>(&c)) {
    s->setText(row.text);
  } else if (auto* b = dynamic_cast<PushButton*>(&c)) {
    b->Caption = row.text;
  } else if (auto* x = dynamic_cast<CheckBox*>(&c)) {
    x->Caption = row.text;
  } else if (auto* g = dynamic_cast<GroupBox*>(&c)) {
    g->Caption = row.text;
  }
}

void ApplyBack(Control& c, Color back) {
  if (auto* r = dynamic_cast<RoundRectangle*>(&c)) {
    r->setFillColor(back);
  } else if (auto* q = dynamic_cast<Rectangle*>(&c)) {
    q->FillColor = back;
  } else {
    c.HasBackColor = true;
    c.setBackColor(back);
  }
}

void ApplyFlags(Control& c, unsigned flags) {
  if (flags & NoFocusRing) c.UseFocusRing = false;
  if (flags & Disabled) c.setEnabled(false);
  if (flags & Hidden) c.setVisible(false);
  c.LockLeft = (flags & LockLeft) != 0;
  c.LockTop = (flags & LockTop) != 0;
  c.LockRight = (flags & LockRight) != 0;
  c.LockBottom = (flags & LockBottom) != 0;
  if (auto* t = dynamic_cast<TextControl*>(&c)) {
    if (flags & ReadOnly) t->setReadOnly(true);
    if (auto* area = dynamic_cast<TextArea*>(&c)) area->ScrollBarVertical = (flags & ScrollBar) != 0;
  } else if (auto* s = dynamic_cast<StaticText*>(&c)) {
    s->Multiline = (flags & Multiline) != 0;
  } else if (auto* b = dynamic_cast<PushButton*>(&c)) {
    b->Default = (flags & Default) != 0;
    b->Cancel = (flags & Cancel) != 0;
  }
}

void Apply(Control& c, const Row& row, Integer element) {
  c.Left = row.left;
  c.Top = row.top.At(element);
  c.Width = row.width;
  c.Height = row.height;
  c.TabIndex = row.tab.At(element);
  if (row.font != nullptr) c.setTextFont(row.font);
  if (row.size != 0) c.setTextSize(row.size);
  c.setBold((row.style & bold) != 0);
  c.setItalic((row.style & italic) != 0);
  c.setUnderline((row.style & underline) != 0);
  c.setTextColor(row.color);
  if (row.align != unaligned) {
    if (dynamic_cast<StaticText*>(&c) != nullptr) {
      c.TextAlign = row.align - 1;
    } else {
      c.Alignment = row.align;
    }
  }
  if (row.back) ApplyBack(c, *row.back);
  if (auto* t = dynamic_cast<TextControl*>(&c)) t->LimitText = row.limit;
  ApplyFlags(c, row.flags);
  ApplyText(c, row);
}

}  // namespace

void Build(Window& window, std::span<const Row> table, Integer elements) {
  for (Integer element = 0; element < elements; ++element) {
    for (const Row& row : table) {
      const Integer index = row.index < 0 ? -1 : row.index + element;
      Apply(*row.control(window, row.name, index), row, element);
    }
  }
}

}  // namespace design
