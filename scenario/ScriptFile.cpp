// SPDX-License-Identifier: GPL-3.0-or-later
#include "scenario/ScriptFile.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace scn {

namespace {

constexpr int kMaxIncludeDepth = 16;

bool ReadLines(const std::string& path, std::vector<std::string>& lines) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::stringstream ss;
  ss << in.rdbuf();
  std::string all = ss.str();
  std::size_t start = 0;
  while (start < all.size()) {
    std::size_t end = all.find('\n', start);
    if (end == std::string::npos) end = all.size();
    std::string line = all.substr(start, end - start);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(std::move(line));
    start = end + 1;
  }
  return true;
}

class Loader {
 public:
  explicit Loader(Script& script) : script_(script) {}

  void LoadFile(const std::string& path, const std::string& shownName, int depth,
                const Where* includedAt) {
    std::vector<std::string> lines;
    if (!ReadLines(path, lines)) {
      if (includedAt == nullptr) {
        Problem({0, ""}, "a readable scenario file", "cannot read " + shownName);
      } else {
        Problem(*includedAt, "a readable included file", "cannot read " + shownName);
      }
      return;
    }
    for (std::size_t i = 0; i < lines.size(); ++i) {
      int lineNo = static_cast<int>(i) + 1;
      Where where;
      if (includedAt == nullptr) {
        where.line = lineNo;
      } else {
        where.line = includedAt->line;
        where.origin = shownName + ":" + std::to_string(lineNo);
      }
      LexedLine lexed = LexLine(lines[i]);
      if (!lexed.error.empty()) {
        Problem(where, "a line that reads", lexed.error);
        continue;
      }
      if (lexed.tokens.empty()) continue;
      const std::vector<Token>& t = lexed.tokens;
      if (t[0].IsWord("scenario")) {
        Scenario s;
        s.where = where;
        if (t.size() == 2 && t[1].kind == Token::Quoted) {
          s.name = t[1].text;
        } else {
          s.name = "(unnamed)";
          s.error = "scenario \"<name>\"";
          s.errorFound = Render(t);
          s.errorAt = where;
        }
        script_.scenarios.push_back(std::move(s));
        current_ = static_cast<int>(script_.scenarios.size()) - 1;
        continue;
      }
      if (t[0].IsWord("include")) {
        if (t.size() != 2 || t[1].kind == Token::Semicolon) {
          Problem(where, "include \"<file>\"", Render(t));
          continue;
        }
        if (depth >= kMaxIncludeDepth) {
          Problem(where, "includes nested at most " + std::to_string(kMaxIncludeDepth) + " deep",
                  "a deeper include");
          continue;
        }
        std::filesystem::path base = std::filesystem::path(path).parent_path();
        std::filesystem::path target = base / t[1].text;
        std::filesystem::path shownBase = std::filesystem::path(shownName).parent_path();
        std::string shown = (shownBase / t[1].text).lexically_normal().string();
        LoadFile(target.string(), shown, depth + 1, &where);
        continue;
      }
      if (current_ < 0) {
        Problem(where, "scenario \"<name>\" before any command", Render(t));
        continue;
      }
      script_.scenarios[current_].commands.push_back({where, lexed.tokens});
    }
  }

 private:
  // A fault is kept on the scenario it falls in, the first one only. Faults before the first
  // scenario make one failing scenario of their own.
  void Problem(const Where& where, const std::string& expected, const std::string& found) {
    int target = current_;
    if (target < 0) {
      if (preamble_ < 0) {
        Scenario s;
        s.name = "(before the first scenario)";
        s.where = where;
        script_.scenarios.push_back(std::move(s));
        preamble_ = static_cast<int>(script_.scenarios.size()) - 1;
      }
      target = preamble_;
    }
    Scenario& s = script_.scenarios[target];
    if (s.error.empty()) {
      s.error = expected;
      s.errorFound = found;
      s.errorAt = where;
    }
  }

  Script& script_;
  int current_ = -1;
  int preamble_ = -1;
};

}  // namespace

Script LoadScript(const std::string& path) {
  Script script;
  script.file = path;
  Loader loader(script);
  loader.LoadFile(path, path, 0, nullptr);
  return script;
}

}  // namespace scn
