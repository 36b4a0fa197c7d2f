// SPDX-License-Identifier: GPL-3.0-or-later
// Inside the platform: the key by which names and words compare without regard to case, and the
// small pieces of UTF-8 that the text functions share.
#pragma once

#include <string>
#include <string_view>

// The text with case folded away (full folding: "ß" and "SS" give the same key) and in composed
// form, as UTF-8. Two texts are equal ignoring case exactly when their keys are equal.
std::string FoldCase(const std::string& utf8);

// Whether every byte is below 0x80; eight bytes at a time, since names and amounts are tested at
// every comparison.
bool IsAsciiText(std::string_view s);

// The UTF-8 bytes of one code point, appended.
void AppendUtf8(std::string& out, char32_t c);
