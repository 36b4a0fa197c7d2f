// SPDX-License-Identifier: GPL-3.0-or-later
// The head of the page that invoice, receipt and reminder share: the business's name, address,
// e-mail and web address, the logo, and the rule under them. It leaves the font "times" and
// italic on.
#pragma once

#include "rb/rb.h"

namespace printing {

void letterhead(Graphics& g);

// The currency sign of the preferences, as the pages print it beside their amounts.
String currencysign();

}  // namespace printing
