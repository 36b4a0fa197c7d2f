// SPDX-License-Identifier: GPL-3.0-or-later
// The tokens of one line of a scenario file.
#pragma once

#include <string>
#include <vector>

namespace scn {

struct Token {
  enum Kind { Word, Quoted, Semicolon };
  Kind kind = Word;
  std::string text;  // a Quoted token holds its bytes with the escapes resolved

  bool IsWord(const char* w) const { return kind == Word && text == w; }
};

struct LexedLine {
  std::vector<Token> tokens;  // none for a blank line or a comment
  std::string error;          // not empty when the line cannot be read
};

// Tokens are separated by blanks. A string is written in double quotes with the escapes \\ \" \r
// \n \t and \xHH. Blanks inside parentheses stay within the word and are dropped from it, so
// `Cell(0, 1)` is one word. A `;` outside strings is a token of its own; a `#` that begins a token
// starts a comment that runs to the end of the line.
LexedLine LexLine(const std::string& line);

// The bytes written back as a scenario string, with escapes for what does not print.
std::string Quote(const std::string& bytes);

// The tokens as a scenario would write them, for messages.
std::string RenderToken(const Token& t);
std::string Render(const std::vector<Token>& tokens, std::size_t from = 0);

}  // namespace scn
