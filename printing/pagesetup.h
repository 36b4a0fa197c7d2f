// SPDX-License-Identifier: GPL-3.0-or-later
// The one page setup of the program, and the check of its paper before a letter-sized page.
#pragma once

namespace printing {

// Turns Module1.Labelsetup to portrait; on paper narrower than 8 inches warns and offers the page
// setup. The print goes on afterwards whatever the user chose there.
void checkpaper();

// A fresh Module1.Labelsetup, its dialog, and Module1.settings refreshed when confirmed. The old
// setup is dropped before the dialog opens, so a cancelled dialog leaves the platform's default.
void pagesetup();

}  // namespace printing
