// The globals that live outside the windows, and the load routines that fill the windows at start.
#pragma once

#include "rb/rb.h"

namespace Module1 {

extern String today;              // the day of the start, "/" replaced by "-"
extern Ref<FolderItem> f;         // scratch: each routine assigns it before use
extern String path;               // AbsolutePath of the logo
extern String settings;           // SetupString of Labelsetup; kept, never read
extern Ref<PrinterSetup> Labelsetup;
extern Single invoicestartnumber;  // the last invoice number handed out
extern bool sure;                 // the answer of the last confirmation
extern Integer cellid;            // the row last picked in customers, names or unpaid
extern bool texthaschanged;       // the form holds edits not yet saved
extern bool prefshavechanged;     // the preferences hold edits not yet saved

void loadprefs();
void saveprefs();
void loadlogo();
void loadstock();
void populatecm();

// Every global back at its start value: a fresh program state.
void Reset();
// A global by name, as text ("cellid" gives "3"; booleans "true"/"false"), for tests.
bool Lookup(const std::string& name, std::string& value);

}  // namespace Module1
