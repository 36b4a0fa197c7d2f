// SPDX-License-Identifier: GPL-3.0-or-later
// The name under which a screen reader announces a control, in the words a person sees on the
// window.
#pragma once

#include <QString>

#include "rb/Controls.h"

namespace desk {

// A label speaks its own text and is not named here. A field or popup: the label just left of it on its line, without the colon ("order number");
// else the caption of the group box around it; else, for one of a column of fields, the column's
// heading and its row ("cost each, row 3"); else its one-line design text ("customer name"). A
// list: its headings. A button or check box: its caption. Else the window's title for a text of
// many lines, and the control's own name as the last resort.
QString AccessibleName(const Control& c);

}  // namespace desk
