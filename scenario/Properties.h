// SPDX-License-Identifier: GPL-3.0-or-later
// Naming controls as scenarios write them (`iwindow.number(3)`, `iwindow.customers.Cell(0,1)`), and
// reading their properties as values the runner can compare.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "rb/rb.h"
#include "scenario/ScriptLexer.h"

namespace scn {

// `window`, `window.control`, `window.control(index)`, each optionally followed by `.Property` or
// `.Property(args)`.
struct Target {
  std::string window;
  std::string control;  // empty when the window itself is meant
  int index = -1;
  std::string property;
  std::vector<int> args;
  std::string written;  // as the scenario wrote it

  std::string ControlName() const;  // "window.control(i)"
};

// A control, `window.control(index)`, with no property.
bool ParseControl(const std::string& text, Target& out, std::string& error);
// A property: `window.Prop` (a window's own) or `window.control(i).Prop(args)`.
bool ParseProperty(const std::string& text, Target& out, std::string& error);

// A property's value as the runner compares it.
struct Value {
  enum Kind { Text, Bool, Int, Colour, Word };
  Kind kind = Text;
  std::string text;  // Text: the characters shown, as UTF-8; Word: the word
  bool b = false;
  long long i = 0;
  std::uint32_t rgb = 0;

  std::string Show() const;
};

// Reads the property. False with a message when the control has no such property or a row or
// column is out of range: a mismatch for the scenario, never an exception.
bool ReadProperty(const Control& c, const std::string& property, const std::vector<int>& args,
                  Value& out, std::string& error);

// Whether the value is the one written. A text compares as the characters a control shows the
// written bytes as.
bool Matches(const Value& v, const Token& expected, std::string& problem);

// The characters that a control shows for bytes that come with no encoding.
std::string Shown(const std::string& bytes);

}  // namespace scn
