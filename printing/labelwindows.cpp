// SPDX-License-Identifier: GPL-3.0-or-later
// The two label sheet windows, opened from the Print menu. Each handler stays in ShowModal until
// its window is hidden; neither prints anything itself.
#include "invoice/iwindow.h"
#include "printing/Labels.h"
#include "printing/LepLabel.h"

namespace win {

bool iwindow::_printlabel_Action() { return modal(*::Labels, false); }
bool iwindow::_PrintLabelLep_Action() { return modal(*::LepLabel, true); }

}  // namespace win
