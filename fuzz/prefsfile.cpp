// SPDX-License-Identifier: GPL-3.0-or-later
// A prefsfile of any bytes, read at a start by loadprefs, written back by saveprefs, and read
// again: what the program wrote itself must load without a fault.
#include <string>

#include "core/App.h"
#include "core/Module1.h"
#include "fuzz/FuzzProgram.h"
#include "fuzz/Targets.h"
#include "invoice/iwindow.h"
#include "secondary/prefswindow.h"

namespace fuzz {

namespace {

bool OnlyOutOfBounds() {
  for (const scn::ReportedException& e : Screen().exceptions)
    if (e.className != "OutOfBoundsException") return false;
  return true;
}

}  // namespace

int PrefsFile(const std::uint8_t* data, std::size_t size) {
  FreshProgram();
  WriteFile("ledgerlyprefs", data, size);
  RegisterWindows();
  RunHandler([] { Module1::loadprefs(); });
  // The stored currency row is taken as it stands, and a row the menu does not have stops the
  // load there, as the list's own rule says. Nothing else may go wrong.
  if (!OnlyOutOfBounds())
    Fail("loading a readable prefsfile ended in " + Screen().exceptions.front().className);
  const bool loaded = Screen().exceptions.empty();
  if (loaded && prefswindow->Visible()) Fail("the prefs stay on the screen after a load");
  if (!Screen().messages.empty()) Fail("loading a prefsfile said " + Screen().messages.front().text);

  RunHandler([] { Module1::saveprefs(); });
  if (Screen().exceptions.size() != (loaded ? 0u : 1u))
    Fail("saving the prefs raised an exception");
  const std::string saved = ReadFile("ledgerlyprefs");
  if (saved.size() < size) Fail("saving the prefs cut the file");

  ResetProgram();
  Screen().Clear();
  RunHandler([] { Module1::loadprefs(); });
  // A currency of -1 is a row the menu may hold (none chosen), and the program writes it back as
  // it read it. Choosing it opens the main window, whose currency signs each ask for that row:
  // OutOfBoundsException, as the list's own rule says, and the main window still shows.
  const bool noCurrencyRow = prefswindow->currency->ListIndex() == -1;
  if (noCurrencyRow &&
      (Screen().exceptions.size() != 1 || !OnlyOutOfBounds() || !iwindow->Visible()))
    Fail("a currency of -1 did not end in one OutOfBoundsException with the main window shown");
  if (!noCurrencyRow && !Screen().exceptions.empty())
    Fail("the prefs as the program wrote them did not load: " + Screen().exceptions.front().className);

  EndProgram();
  return 0;
}

}  // namespace fuzz
