// SPDX-License-Identifier: GPL-3.0-or-later
// The fuzz entries: one per reader of the program's files, and one for the text and number
// functions. Each takes the bytes of one input, runs them through the program in a fresh state,
// and stops the process on a broken rule. libFuzzer drives them in the fuzz build; the replay
// driver runs every file of the corpora through the same functions in the ordinary build.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fuzz {

// The return value is libFuzzer's: 0, or -1 for an input not worth keeping.
using Entry = int (*)(const std::uint8_t* data, std::size_t size);

int InvoiceFile(const std::uint8_t* data, std::size_t size);
int PrefsFile(const std::uint8_t* data, std::size_t size);
int NameFile(const std::uint8_t* data, std::size_t size);
int StockFile(const std::uint8_t* data, std::size_t size);
int TextFunctions(const std::uint8_t* data, std::size_t size);

struct Target {
  const char* name;  // also the name of its folder in fuzz/corpus
  Entry entry;
};

const std::vector<Target>& Targets();
Entry FindTarget(const std::string& name);

}  // namespace fuzz
