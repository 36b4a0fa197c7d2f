// SPDX-License-Identifier: GPL-3.0-or-later
// The main window holds every menu handler of the program; the windows that the menu opens are
// shown modally and left with their contents when they close.
#include "invoice/iwindow.h"
#include "secondary/about.h"
#include "secondary/help.h"
#include "secondary/prefswindow.h"
#include "secondary/stockwindow.h"

namespace win {

void iwindow::AddMenuHandlers() {
  // Item names match without regard to case: "printreceipt" serves PrintReceipt, "Editstock"
  // editstock and "PrintA5envelope" PrintA5Envelope.
  AddMenuHandler("appleprefs", [this] { return _appleprefs_Action(); });
  AddMenuHandler("filenew", [this] { return _filenew_Action(); });
  AddMenuHandler("filesave", [this] { return _filesave_Action(); });
  AddMenuHandler("fileprint", [this] { return _fileprint_Action(); });
  AddMenuHandler("filedeleteinvoice", [this] { return _filedeleteinvoice_Action(); });
  AddMenuHandler("appleabout", [this] { return _appleabout_Action(); });
  AddMenuHandler("ledgerlyhelp", [this] { return _ledgerlyhelp_Action(); });
  AddMenuHandler("printreceipt", [this] { return _printreceipt_Action(); });
  AddMenuHandler("printreminder", [this] { return _printreminder_Action(); });
  AddMenuHandler("printlabel", [this] { return _printlabel_Action(); });
  AddMenuHandler("Editstock", [this] { return _Editstock_Action(); });
  AddMenuHandler("Pagesetup", [this] { return _Pagesetup_Action(); });
  AddMenuHandler("PrintA5envelope", [this] { return _PrintA5envelope_Action(); });
  AddMenuHandler("PrintPrintsmalllabel", [this] { return _PrintPrintsmalllabel_Action(); });
  AddMenuHandler("PrintLabelLep", [this] { return _PrintLabelLep_Action(); });
}

// The windows the menu opens are shown modally: the handler returns once its window is hidden,
// with an answer that nothing reads.
bool iwindow::modal(Window& window, bool answer) {
  window.ShowModal();
  return answer;
}

bool iwindow::_Editstock_Action() { return modal(*::stockwindow, false); }
bool iwindow::_appleprefs_Action() { return modal(*::prefswindow, false); }
bool iwindow::_appleabout_Action() { return modal(*::about, false); }
bool iwindow::_ledgerlyhelp_Action() { return modal(*::help, false); }

// Closing the main window ends the program; nothing is saved and nothing is asked.
void iwindow::Event_Close() { Quit(0); }

}  // namespace win
