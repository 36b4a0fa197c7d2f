// SPDX-License-Identifier: GPL-3.0-or-later
#include "scenario/ScriptLexer.h"

#include <cstdio>

namespace scn {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; }

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

LexedLine LexLine(const std::string& line) {
  LexedLine out;
  std::size_t i = 0;
  const std::size_t n = line.size();
  while (i < n) {
    if (IsBlank(line[i])) {
      ++i;
      continue;
    }
    char c = line[i];
    if (c == '#') break;
    if (c == ';') {
      out.tokens.push_back({Token::Semicolon, ";"});
      ++i;
      continue;
    }
    if (c == '"') {
      Token t{Token::Quoted, ""};
      ++i;
      bool closed = false;
      while (i < n) {
        char d = line[i];
        if (d == '"') {
          closed = true;
          ++i;
          break;
        }
        if (d != '\\') {
          t.text += d;
          ++i;
          continue;
        }
        if (i + 1 >= n) {
          out.error = "a lone \\ at the end of the line";
          return out;
        }
        char e = line[i + 1];
        i += 2;
        switch (e) {
          case '\\':
            t.text += '\\';
            break;
          case '"':
            t.text += '"';
            break;
          case 'r':
            t.text += '\r';
            break;
          case 'n':
            t.text += '\n';
            break;
          case 't':
            t.text += '\t';
            break;
          case 'x': {
            int hi = i < n ? HexValue(line[i]) : -1;
            int lo = i + 1 < n ? HexValue(line[i + 1]) : -1;
            if (hi < 0 || lo < 0) {
              out.error = "\\x needs two hex digits";
              return out;
            }
            t.text += static_cast<char>(hi * 16 + lo);
            i += 2;
            break;
          }
          default:
            out.error = std::string("unknown escape \\") + e;
            return out;
        }
      }
      if (!closed) {
        out.error = "a string with no closing quote";
        return out;
      }
      out.tokens.push_back(std::move(t));
      continue;
    }
    // A word: up to a blank, a quote or a ';' outside parentheses.
    Token t{Token::Word, ""};
    int depth = 0;
    while (i < n) {
      char d = line[i];
      if (depth == 0 && (IsBlank(d) || d == '"' || d == ';')) break;
      if (d == '(') ++depth;
      if (d == ')' && depth > 0) --depth;
      if (!IsBlank(d)) t.text += d;
      ++i;
    }
    if (depth != 0) {
      out.error = "a '(' with no ')'";
      return out;
    }
    out.tokens.push_back(std::move(t));
  }
  return out;
}

std::string Quote(const std::string& bytes) {
  std::string s = "\"";
  for (unsigned char c : bytes) {
    switch (c) {
      case '\\':
        s += "\\\\";
        break;
      case '"':
        s += "\\\"";
        break;
      case '\r':
        s += "\\r";
        break;
      case '\n':
        s += "\\n";
        break;
      case '\t':
        s += "\\t";
        break;
      default:
        if (c < 0x20 || c == 0x7f) {
          char buf[8];
          std::snprintf(buf, sizeof buf, "\\x%02X", c);
          s += buf;
        } else {
          s += static_cast<char>(c);
        }
    }
  }
  return s + "\"";
}

std::string RenderToken(const Token& t) {
  if (t.kind == Token::Quoted) return Quote(t.text);
  return t.text;
}

std::string Render(const std::vector<Token>& tokens, std::size_t from) {
  std::string s;
  for (std::size_t i = from; i < tokens.size(); ++i) {
    if (!s.empty() && tokens[i].kind != Token::Semicolon) s += ' ';
    s += RenderToken(tokens[i]);
  }
  return s;
}

}  // namespace scn
