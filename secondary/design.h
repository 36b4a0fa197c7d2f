// One row of a window's layout table, and the applying of it to the control the window has made.
#pragma once

#include "rb/rb.h"

struct ControlDesign {
  const char* name;
  Integer index;  // -1 outside a control array
  Integer left, top, width, height;
  const char* font;  // nullptr keeps the control's own, "System"
  Double size;       // 0 keeps the default size
  Integer tab;
  const char* text;  // design text or caption; nullptr for none
};

// Places the control and gives it its type and its design text: the Text of a field or a label,
// the Caption of a button, a check box or a group box. A field's text goes in before any handler
// is wired, so that setting it raises nothing.
void ApplyDesign(Window& window, const ControlDesign& design);

// The same for every row of a table.
template <std::size_t N>
void ApplyDesign(Window& window, const ControlDesign (&table)[N]) {
  for (const ControlDesign& d : table) ApplyDesign(window, d);
}
