#include "secondary/design.h"

#include <stdexcept>

void ApplyDesign(Window& window, const ControlDesign& d) {
  Control* c = window.FindControl(d.name, d.index);
  if (c == nullptr) {
    throw std::logic_error(window.ClassName() + " has no control " + d.name + " to lay out");
  }
  c->Left = d.left;
  c->Top = d.top;
  c->Width = d.width;
  c->Height = d.height;
  c->TabIndex = d.tab;
  if (d.font != nullptr) c->setTextFont(d.font);
  if (d.size != 0) c->setTextSize(d.size);
  if (d.text == nullptr) return;
  if (auto* t = dynamic_cast<TextControl*>(c)) {
    t->setText(d.text);
  } else if (auto* s = dynamic_cast<StaticText*>(c)) {
    s->setText(d.text);
  } else if (auto* b = dynamic_cast<PushButton*>(c)) {
    b->Caption = d.text;
  } else if (auto* x = dynamic_cast<CheckBox*>(c)) {
    x->Caption = d.text;
  } else if (auto* g = dynamic_cast<GroupBox*>(c)) {
    g->Caption = d.text;
  }
}
