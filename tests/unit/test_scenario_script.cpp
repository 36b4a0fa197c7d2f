// SPDX-License-Identifier: GPL-3.0-or-later
// Reading scenario files: the tokens of a line, the strings' escapes, and the splitting of a file
// and its includes into scenarios with the lines that failures report.
#include <gtest/gtest.h>

#include "TempFolder.h"
#include "scenario/ScriptFile.h"
#include "scenario/ScriptLexer.h"

using scn::LexLine;
using scn::Token;

namespace {

std::vector<std::string> Texts(const std::vector<Token>& tokens) {
  std::vector<std::string> out;
  for (const Token& t : tokens) out.push_back(t.text);
  return out;
}

using ScriptFiles = TempFolderTest;

}  // namespace

// Words, strings with every escape resolved, `;` as a token of its own, blanks inside parentheses
// kept in the word, and a # that begins a token starting a comment.
TEST(ScenarioLexer, SplitsWordsStringsAndSemicolons) {
  auto l = LexLine("  when modal surewindow do click surewindow.acceptbutt;expect  x(0, 1) = \"a b\" # c");
  ASSERT_TRUE(l.error.empty());
  EXPECT_EQ(Texts(l.tokens), (std::vector<std::string>{"when", "modal", "surewindow", "do", "click",
                                                       "surewindow.acceptbutt", ";", "expect", "x(0,1)", "=", "a b"}));
  EXPECT_EQ(l.tokens[6].kind, Token::Semicolon);
  EXPECT_EQ(l.tokens[10].kind, Token::Quoted);
  EXPECT_FALSE(LexLine(R"(expect Module1.sure = "true")").tokens[3].IsWord("true"));
  l = LexLine(R"(type "a\\b\"c\rd\ne\tf\x00\xff\x4A#")");
  ASSERT_TRUE(l.error.empty()) << l.error;
  EXPECT_EQ(l.tokens[1].text, std::string("a\\b\"c\rd\ne\tf\0\xff\x4A#", 15));
  EXPECT_TRUE(LexLine("   \t ").tokens.empty());
  EXPECT_TRUE(LexLine("  # a comment \"with a quote").tokens.empty());
  for (const char* bad : {"type \"open", "type \"\\q\"", "type \"\\x4\"", "type \"\\xG0\"", "type \"ends in \\",
                          "expect iwindow.number(3.Text = \"\""})
    EXPECT_FALSE(LexLine(bad).error.empty()) << bad;
}

// Each command keeps the line it is reported at: its own, or for a line of an included file (found
// relative to the file that includes it) the line of the outermost include, with the file and line
// it comes from. A line that cannot be read fails only the scenario it is in.
TEST_F(ScriptFiles, SplitsScenariosAndKeepsTheLinesTheyAreReportedAt) {
  Write("common/setup.inc", "when modal prefswindow do click prefswindow.closebutt\ninclude \"more.inc\"\n");
  Write("common/more.inc", "start\n");
  const std::string f = Write("a.scn",
                              "# two scenarios\n"
                              "scenario \"first\"\n"
                              "today 2026-01-02\r\n"
                              "include \"common/setup.inc\"\n"
                              "\n"
                              "quit\n"
                              "scenario \"bad string\"\n"
                              "type \"no end\n"
                              "scenario \"missing include\"\n"
                              "include \"nowhere.inc\"\n"
                              "scenario unnamed\n");
  const scn::Script s = scn::LoadScript(f);
  ASSERT_EQ(s.scenarios.size(), 4u);
  const scn::Scenario& sc = s.scenarios[0];
  EXPECT_EQ(sc.name, "first");
  ASSERT_TRUE(sc.error.empty()) << sc.error << " / " << sc.errorFound;
  ASSERT_EQ(sc.commands.size(), 4u);
  EXPECT_EQ(sc.commands[0].where.line, 3);
  EXPECT_EQ(sc.commands[1].tokens[0].text, "when");
  EXPECT_EQ(sc.commands[1].where.line, 4);
  EXPECT_NE(sc.commands[1].where.origin.find("setup.inc:1"), std::string::npos);
  EXPECT_EQ(sc.commands[2].where.line, 4);
  EXPECT_NE(sc.commands[2].where.origin.find("more.inc:1"), std::string::npos);
  EXPECT_EQ(sc.commands[3].where.line, 6);
  EXPECT_TRUE(sc.commands[3].where.origin.empty());
  EXPECT_EQ(s.scenarios[1].errorAt.line, 8);
  EXPECT_EQ(s.scenarios[2].errorAt.line, 10);
  EXPECT_EQ(s.scenarios[3].errorAt.line, 11);
  EXPECT_FALSE(s.scenarios[3].error.empty());
}

// A file that cannot be read, or that includes itself without end, is one failing scenario.
TEST_F(ScriptFiles, AFileThatCannotBeReadOrIncludesItselfIsOneFailure) {
  EXPECT_FALSE(scn::LoadScript(dir_ + "/absent.scn").scenarios.at(0).error.empty());
  Write("loop.inc", "include \"loop.inc\"\n");
  const scn::Script s = scn::LoadScript(Write("loop.scn", "scenario \"loop\"\ninclude \"loop.inc\"\n"));
  ASSERT_EQ(s.scenarios.size(), 1u);
  EXPECT_EQ(s.scenarios[0].errorAt.line, 2);
}
