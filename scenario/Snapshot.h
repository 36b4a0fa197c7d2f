// SPDX-License-Identifier: GPL-3.0-or-later
// Snapshots: a window's design and a printed page written out as plain text, one line for each
// control or drawing call, so that a changed layout shows as a readable difference of lines.
#pragma once

#include <string>

#include "rb/rb.h"
#include "scenario/TestScreen.h"

namespace scn {

// The window as it stands: its own properties and events, its menu bar with the items it handles,
// then each control in the order of creation with its geometry, tab order, font, colours, text and
// whatever else its class holds; under it the edges it is locked to, its design text where the
// text has changed since, and the events it has handlers for. A canvas with its own painting lists
// what that paints.
std::string WindowSnapshot(Window& w);

// The page of a print job: its paper, the faces that measured its texts, then every drawing call
// in order with the state it was made in. A text drawn unwrapped also shows where it ends, its x
// plus its measured width, which is where a right-aligned text meets its edge.
std::string PageSnapshot(const PrintJob& job);

// The lines that differ between two snapshots, as "-" for the old and "+" for the new, each run of
// changes headed by its line in the old; empty when they are the same.
std::string SnapshotDiff(const std::string& before, const std::string& after);

}  // namespace scn
