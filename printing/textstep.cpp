// SPDX-License-Identifier: GPL-3.0-or-later
#include "printing/textstep.h"

namespace printing {

void Draw(Graphics& g, const TextStep& step) {
  if (!step.drawn) return;
  g.TextSize = step.size;
  g.Bold = step.style == Style::bold || step.style == Style::bolditalic;
  g.Italic = step.style == Style::italic || step.style == Style::bolditalic;
  g.ForeColor = step.colour;
  Integer x = step.x;
  if (step.align == Align::right) x = step.x - CInt(g.StringWidth(step.text));
  g.DrawString(step.text, x, step.y, step.wrap, false);
}

}  // namespace printing
