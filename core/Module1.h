// SPDX-License-Identifier: GPL-3.0-or-later
// The globals that live outside the windows, and the load routines that fill the windows at start.
#pragma once

#include "rb/rb.h"

// Each global once: its type, its name and its value at start. Its declaration below, its reset
// and its lookup by name (Module1.cpp) follow from this list.
#define MODULE1_GLOBALS(GLOBAL)                                                                  \
  GLOBAL(String, today, String())       /* the day of the start, "/" replaced by "-" */          \
  GLOBAL(Ref<FolderItem>, f, nil)       /* scratch: each routine assigns it before use */        \
  GLOBAL(String, path, String())        /* AbsolutePath of the logo */                           \
  GLOBAL(String, settings, String())    /* SetupString of Labelsetup; kept, never read */        \
  GLOBAL(Ref<PrinterSetup>, Labelsetup, nil) /* the one page setup of every print */            \
  GLOBAL(Single, invoicestartnumber, 0) /* the last invoice number handed out */                 \
  GLOBAL(bool, sure, false)             /* the answer of the last confirmation */                \
  GLOBAL(Integer, cellid, 0)            /* the row last picked in customers, names or unpaid */  \
  GLOBAL(bool, texthaschanged, false)   /* the form holds edits not yet saved */                 \
  GLOBAL(bool, prefshavechanged, false) /* the preferences hold edits not yet saved */

namespace Module1 {

#define MODULE1_DECLARE(type, name, start) inline type name = start;
MODULE1_GLOBALS(MODULE1_DECLARE)
#undef MODULE1_DECLARE

void loadprefs();
void saveprefs();
void loadlogo();
void loadstock();
void populatecm();

// Every global back at its start value: a fresh program state.
void Reset();
// A global by name, for tests, as NamedValue writes it ("cellid" gives "3").
bool Lookup(const std::string& name, std::string& value);

}  // namespace Module1
