// SPDX-License-Identifier: GPL-3.0-or-later
// A namefile of any bytes: its address is read into the form when the name is picked, and written
// back over the file by the next saving, from its start and without cutting it.
#include <algorithm>
#include <string>

#include "core/App.h"
#include "core/Module1.h"
#include "fuzz/FuzzProgram.h"
#include "fuzz/Targets.h"
#include "invoice/iwindow.h"

namespace fuzz {

int NameFile(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  FreshProgram();
  WriteFile("names/Fuzz", data, size);
  StartProgram();
  if (iwindow->names->ListCount() != 1) Fail("the namefile is not listed");

  // A text no PString can give back (255 bytes are at most 765 in UTF-8), so that any address
  // read is a change and the saving writes it.
  iwindow->customeraddress->setText(std::string(800, 'x'));
  Module1::cellid = 0;
  RunHandler([] { iwindow->getaddresses(); });
  if (!Screen().exceptions.empty()) Fail("reading a namefile ended in " + Screen().exceptions.front().className);
  // The first PString, or what there is of it.
  const std::string stored = size == 0 ? "" : bytes.substr(1, std::min<std::size_t>(data[0], size - 1));
  const std::string address = iwindow->customeraddress->Text().Utf8();
  if (address != String::FromBytes(stored, TextEncoding::None).Utf8())
    Fail("the address on the form is not the one in the namefile");

  iwindow->customername->setText("Fuzz");
  Module1::texthaschanged = true;
  RunHandler([] { iwindow->_filesave_Action(); });
  if (!Screen().exceptions.empty()) Fail("saving a picked name ended in " + Screen().exceptions.front().className);
  if (iwindow->customeraddress->Text().Utf8() != address) Fail("saving changed the address");
  const std::string written = ReadFile("names/Fuzz");
  const std::size_t n = std::min<std::size_t>(address.size(), 255);
  if (written.size() < std::max<std::size_t>(size, n + 1) ||
      written.compare(0, n + 1, std::string(1, static_cast<char>(n)) + address.substr(0, n)) != 0)
    Fail("the namefile was not written over from its start");

  EndProgram();
  return 0;
}

}  // namespace fuzz
