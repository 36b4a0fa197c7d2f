// SPDX-License-Identifier: GPL-3.0-or-later
// An invoicefile of any bytes, loaded by a click on its row, then saved again and printed: the
// bytes reach every field and its handlers, and the fields' texts reach file names and the page.
#include "core/App.h"
#include "core/Module1.h"
#include "fuzz/FormTexts.h"
#include "fuzz/FuzzProgram.h"
#include "fuzz/Targets.h"
#include "invoice/iwindow.h"

namespace fuzz {

namespace {

// A "/" stands on disk as U+2215, and a name holding a real U+2215 shows "/" as well.
std::string Shown(const String& s) { return ReplaceAll(s, "\xE2\x88\x95", "/").Utf8(); }

bool Listed(const String& name) {
  for (Integer row = 0; row < iwindow->customers->ListCount(); ++row)
    if (String(Shown(iwindow->customers->List(row))) == String(Shown(name))) return true;
  return false;
}

}  // namespace

int InvoiceFile(const std::uint8_t* data, std::size_t size) {
  FreshProgram();
  WriteFile("customers/00001-16-11-2026-Fuzz", data, size);
  StartProgram();
  if (iwindow->customers->ListCount() != 1) Fail("the invoicefile is not listed");

  Module1::cellid = 0;
  RunHandler([] { iwindow->loadinvoice(); });
  if (!Screen().exceptions.empty())
    Fail("loading a readable invoicefile ended in " + Screen().exceptions.front().className);
  if (Module1::texthaschanged) Fail("a freshly loaded invoice counts as edited");

  // Whatever the saving does with the names these texts make, the form keeps every text.
  const std::vector<std::string> before = FieldTexts(*iwindow);
  Module1::texthaschanged = true;
  RunHandler([] { iwindow->_filesave_Action(); });
  if (FieldTexts(*iwindow) != before) Fail("saving changed a text of the form");
  if (Screen().exceptions.empty() && Left(iwindow->invoicename(), 1) != "." &&
      !Listed(iwindow->invoicename()))
    Fail("a saving that went through left no row for " + iwindow->invoicename().Utf8());

  const std::size_t exceptions = Screen().exceptions.size();
  RunHandler([] { iwindow->_fileprint_Action(); });
  if (Screen().exceptions.size() != exceptions) Fail("printing the invoice raised " + Screen().exceptions.back().className);
  if (Screen().jobs.size() != 1) Fail("printing the invoice gave no page");
  if (FieldTexts(*iwindow) != before) Fail("printing changed a text of the form");

  EndProgram();
  return 0;
}

}  // namespace fuzz
