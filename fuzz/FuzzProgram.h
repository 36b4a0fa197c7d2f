// SPDX-License-Identifier: GPL-3.0-or-later
// What every fuzz entry shares: a fresh program state for each input, inside a sandbox folder of
// its own, with a screen that answers at once and remembers what it was shown.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "rb/rb.h"
#include "scenario/TestScreen.h"

namespace fuzz {

// The screen of every entry: a person who closes everything. A modal window is hidden at once, the
// print dialog prints onto a recording surface, the contextual menu is dismissed unless an entry
// chooses, every other dialog is cancelled.
scn::TestScreen& Screen();

// Brings the runtime up once per process and makes the sandbox: a temporary folder holding only
// the program folder "program".
void Init();
// A fresh program state: no window, every global at its start value, an empty program folder,
// the fuzz screen in front.
void FreshProgram();
// Drops the program state again, so that nothing of one input lives on into the next.
void EndProgram();
// The program folder's native path, and a path below it.
const std::string& ProgramFolder();
std::string InProgram(const std::string& relative);
// Writes the bytes as a file below the program folder, making its folders.
void WriteFile(const std::string& relative, const std::uint8_t* data, std::size_t size);
std::string ReadFile(const std::string& relative);
// Stops the process when anything besides the program folder has appeared in the sandbox: the
// program must never reach outside its own folder.
void CheckSandbox();
// Stops the process with a message: a broken rule is a finding, like a crash.
[[noreturn]] void Fail(const std::string& what);

}  // namespace fuzz
