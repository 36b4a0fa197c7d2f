// SPDX-License-Identifier: GPL-3.0-or-later
// The texts of a window's fields, to show that a step left them as they were.
#pragma once

#include <string>
#include <vector>

#include "rb/rb.h"

namespace fuzz {

inline std::vector<std::string> FieldTexts(const Window& w) {
  std::vector<std::string> texts;
  for (const auto& c : w.Controls()) {
    if (const auto* t = dynamic_cast<const TextControl*>(c.get())) texts.push_back(t->Text().Utf8());
  }
  return texts;
}

}  // namespace fuzz
