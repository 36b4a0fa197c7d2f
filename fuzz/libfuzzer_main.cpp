// SPDX-License-Identifier: GPL-3.0-or-later
// The libFuzzer binary of one entry, chosen at build time by LEDGERLY_FUZZ_ENTRY.
#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzProgram.h"
#include "fuzz/Targets.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  fuzz::Init();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return fuzz::LEDGERLY_FUZZ_ENTRY(data, size);
}
