// SPDX-License-Identifier: GPL-3.0-or-later
// One text of a printed page, as the layout tables write it: what, in which state, where.
#pragma once

#include "rb/rb.h"

namespace printing {

enum class Style { plain, bold, italic, bolditalic };
// left: x is where the text begins. right: x is the edge where it ends, the text's width measured
// in the step's own state and cut to a whole number.
enum class Align { left, right };

inline constexpr Color kBlack = 0x000000;

struct TextStep {
  String text;
  Double size;
  Style style;
  Color colour;
  Align align;
  Integer x, y;
  Integer wrap = 0;
  bool drawn = true;  // a step whose condition fails is skipped whole
};

// Sets the step's size, style and colour on g, and draws it. The font stays as the page set it.
void Draw(Graphics& g, const TextStep& step);

template <std::size_t N>
void Draw(Graphics& g, const TextStep (&steps)[N]) {
  for (const TextStep& s : steps) Draw(g, s);
}

}  // namespace printing
