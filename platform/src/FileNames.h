// SPDX-License-Identifier: GPL-3.0-or-later
// Inside the platform: how a name the program gives becomes a name on disk and back, and the order
// in which a folder's names are handed out and found.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "rb/String.h"

namespace rbi {

// The longest leaf name the file system takes, in bytes.
constexpr std::size_t kMaxNameBytes = 255;

// A "/" cannot stand in a file name, so names keep it as DIVISION SLASH (U+2215), which looks the
// same; the name on disk of a name the program gives, and the name the program sees of one on disk.
std::string StoredName(const std::string& utf8);
std::string ShownName(const std::string& onDisk);
// A name as a String: UTF-8 when its bytes are, otherwise untagged.
String NameString(std::string bytes);

// ASCII letters lowered, every other byte as it is.
unsigned char LowerAscii(char c);
// Compares two texts as their case-folded keys compare, where each is either a key already or
// plain ASCII.
int CompareLowered(std::string_view a, std::string_view b);
// The key of an on-disk name: the shown name with case folded away. A name that is not UTF-8
// shows as Mac Roman, and is found again by what it shows.
std::string KeyOf(std::string_view onDisk);
// An entry's key against a key already made.
int CompareWithKey(std::string_view entry, const std::string& key);
// The order of a folder's entries: by key, ties by the bytes.
bool ListedBefore(std::string_view a, std::string_view b);

}  // namespace rbi
