// SPDX-License-Identifier: GPL-3.0-or-later
// Reading a command's arguments, token by token. A command that does not read as its form fails
// the scenario at its line, naming the form that was expected.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "scenario/ScenarioFailure.h"
#include "scenario/ScriptFile.h"

namespace scn {

class Args {
 public:
  Args(const Command& command, std::size_t from, std::string form)
      : c_(command), pos_(from), form_(std::move(form)) {}

  const Command& command() const { return c_; }
  const Where& where() const { return c_.where; }
  bool AtEnd() const { return pos_ >= c_.tokens.size(); }
  std::size_t Position() const { return pos_; }
  // The form named in messages, once the command's kind is known.
  void SetForm(std::string form) { form_ = std::move(form); }

  // True, and the word taken, when the next token is this word.
  bool Accept(const char* word);
  bool PeekWord(const char* word) const;
  void Keyword(const char* word);
  std::string Word(const char* what);
  std::string Quoted(const char* what);
  // A path or a name, bare or in quotes.
  std::string Name(const char* what);
  int Int(const char* what);
  // An integer, or `*` for any.
  std::optional<int> IntOrAny(const char* what);
  double Number(const char* what);
  std::uint32_t Colour(const char* what);
  // The remaining tokens; none left afterwards.
  std::vector<Token> Rest();
  void End();

  [[noreturn]] void Bad(const std::string& what) const;

 private:
  const Token* Peek() const { return AtEnd() ? nullptr : &c_.tokens[pos_]; }
  const Command& c_;
  std::size_t pos_;
  std::string form_;
};

// A whole number as a scenario writes it; nothing else of the text.
bool ParseInt(const std::string& text, int& out);
bool ParseNumber(const std::string& text, double& out);
bool ParseColour(const std::string& text, std::uint32_t& out);
// Pairs of hex digits to bytes.
bool ParseHex(const std::string& digits, std::string& out);
// Bytes as spaced pairs of hex digits, at most `limit` of them.
std::string HexText(const std::string& bytes, std::size_t limit = 64);
std::string ColourText(std::uint32_t rgb);

}  // namespace scn
