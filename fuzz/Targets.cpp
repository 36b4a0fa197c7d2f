// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/Targets.h"

namespace fuzz {

const std::vector<Target>& Targets() {
  static const std::vector<Target> targets = {
      {"invoicefile", InvoiceFile}, {"prefsfile", PrefsFile},         {"namefile", NameFile},
      {"stockfile", StockFile},     {"text", TextFunctions},
  };
  return targets;
}

Entry FindTarget(const std::string& name) {
  for (const Target& t : Targets())
    if (name == t.name) return t.entry;
  return nullptr;
}

}  // namespace fuzz
