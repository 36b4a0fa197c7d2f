// SPDX-License-Identifier: GPL-3.0-or-later
#include "scenario/Args.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace scn {

bool ParseInt(const std::string& text, int& out) {
  if (text.empty()) return false;
  std::size_t i = (text[0] == '-' || text[0] == '+') ? 1 : 0;
  if (i == text.size()) return false;
  for (std::size_t k = i; k < text.size(); ++k) {
    if (text[k] < '0' || text[k] > '9') return false;
  }
  errno = 0;
  long v = std::strtol(text.c_str(), nullptr, 10);
  if (errno != 0 || v < -2147483647L - 1 || v > 2147483647L) return false;
  out = static_cast<int>(v);
  return true;
}

bool ParseNumber(const std::string& text, double& out) {
  if (text.empty()) return false;
  for (char c : text) {
    if (!((c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+' || c == 'e' || c == 'E')) {
      return false;
    }
  }
  char* end = nullptr;
  out = std::strtod(text.c_str(), &end);
  return end != nullptr && *end == '\0' && std::isfinite(out);
}

bool ParseColour(const std::string& text, std::uint32_t& out) {
  if (text.size() != 6) return false;
  std::uint32_t v = 0;
  for (char c : text) {
    int d;
    if (c >= '0' && c <= '9') {
      d = c - '0';
    } else if (c >= 'a' && c <= 'f') {
      d = c - 'a' + 10;
    } else if (c >= 'A' && c <= 'F') {
      d = c - 'A' + 10;
    } else {
      return false;
    }
    v = v * 16 + static_cast<std::uint32_t>(d);
  }
  out = v;
  return true;
}

bool ParseHex(const std::string& digits, std::string& out) {
  out.clear();
  if (digits.size() % 2 != 0) return false;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    std::uint32_t v = 0;
    if (!ParseColour("0000" + digits.substr(i, 2), v)) return false;
    out += static_cast<char>(v);
  }
  return true;
}

std::string HexText(const std::string& bytes, std::size_t limit) {
  std::string s;
  for (std::size_t i = 0; i < bytes.size() && i < limit; ++i) {
    char buf[4];
    std::snprintf(buf, sizeof buf, "%02X", static_cast<unsigned char>(bytes[i]));
    if (!s.empty()) s += ' ';
    s += buf;
  }
  if (bytes.size() > limit) s += " ...";
  return s;
}

std::string ColourText(std::uint32_t rgb) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "%06X", rgb & 0xFFFFFF);
  return buf;
}

void Args::Bad(const std::string& what) const {
  std::string found = AtEnd() ? "the end of the line" : RenderToken(c_.tokens[pos_]);
  Fail(c_.where, what + " (" + form_ + ")", found);
}

bool Args::PeekWord(const char* word) const {
  const Token* t = Peek();
  return t != nullptr && t->IsWord(word);
}

bool Args::Accept(const char* word) {
  if (!PeekWord(word)) return false;
  ++pos_;
  return true;
}

void Args::Keyword(const char* word) {
  if (!Accept(word)) Bad(std::string("the word ") + word);
}

std::string Args::Word(const char* what) {
  const Token* t = Peek();
  if (t == nullptr || t->kind != Token::Word) Bad(what);
  ++pos_;
  return t->text;
}

std::string Args::Quoted(const char* what) {
  const Token* t = Peek();
  if (t == nullptr || t->kind != Token::Quoted) Bad(what);
  ++pos_;
  return t->text;
}

std::string Args::Name(const char* what) {
  const Token* t = Peek();
  if (t == nullptr || t->kind == Token::Semicolon) Bad(what);
  ++pos_;
  return t->text;
}

int Args::Int(const char* what) {
  const Token* t = Peek();
  int v = 0;
  if (t == nullptr || t->kind != Token::Word || !ParseInt(t->text, v)) Bad(what);
  ++pos_;
  return v;
}

std::optional<int> Args::IntOrAny(const char* what) {
  if (Accept("*")) return std::nullopt;
  return Int(what);
}

double Args::Number(const char* what) {
  const Token* t = Peek();
  double v = 0;
  if (t == nullptr || t->kind != Token::Word || !ParseNumber(t->text, v)) Bad(what);
  ++pos_;
  return v;
}

std::uint32_t Args::Colour(const char* what) {
  const Token* t = Peek();
  std::uint32_t v = 0;
  if (t == nullptr || t->kind != Token::Word || !ParseColour(t->text, v)) Bad(what);
  ++pos_;
  return v;
}

std::vector<Token> Args::Rest() {
  std::vector<Token> rest(c_.tokens.begin() + static_cast<std::ptrdiff_t>(pos_), c_.tokens.end());
  pos_ = c_.tokens.size();
  return rest;
}

void Args::End() {
  if (!AtEnd()) Bad("the end of the line");
}

}  // namespace scn
