// SPDX-License-Identifier: GPL-3.0-or-later
// The main window's start: its lists are the folders as they stand.
#include "invoice/iwindow.h"

namespace win {

void iwindow::Event_Open() {
  getcustomers();
  getnames();
  addresshaschanged = false;
  getunpaid();
  markthem();
}

}  // namespace win
