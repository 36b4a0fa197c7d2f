// Inside the platform: the key by which names and words compare without regard to case.
#pragma once

#include <string>

// The text with case folded away (full folding: "ß" and "SS" give the same key) and in composed
// form, as UTF-8. Two texts are equal ignoring case exactly when their keys are equal.
std::string FoldCase(const std::string& utf8);
