// SPDX-License-Identifier: GPL-3.0-or-later
// Inside the platform: the one QFont that stands for a font state, so that what is measured is
// what is painted.
#pragma once

#include <QFont>

#include "rb/Graphics.h"

// The face of ResolveFamily, at a pixel size of state.size (one unit is one point at 72 to the
// inch), unhinted, with the state's bold, italic and underline.
QFont FontFor(const FontState& state);
