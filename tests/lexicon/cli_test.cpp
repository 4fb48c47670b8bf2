// ostrane-cli check, words, pattern and lexicon, run as a user runs them.
#include <gtest/gtest.h>

#include <sstream>

#include "data/resources.h"
#include "lexicon/expressions.h"
#include "tests/support/cli_run.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

TEST(LexiconCommandLine, CheckAnswersOuiOrNonWithShortWordsDefined) {
  const CliRun run = RunCli({"check", "aa", "Maison", "zzz", "ABCDEFGHIJKLMNOP", "anticonstitutionnellement"});
  ASSERT_EQ(run.status, 0) << run.err;
  const auto definition = RealLexicon().DefM23.FindForCheck("AA");
  ASSERT_TRUE(definition.has_value());
  EXPECT_EQ(Lines(run.out), (std::vector<std::string>{"AA\toui\t" + *definition, "MAISON\toui", "ZZZ\tnon",
                                                      "ABCDEFGHIJKLMNOP\tnon", "ANTICONSTITUTIONNELLEMENT\tnon"}));
  // The last line of the definitions is reached by the check.
  const Definitions& definitions = RealLexicon().DefM23;
  const std::string& last = definitions.Line(definitions.UBound());
  const std::string key = last.substr(0, last.find("\xC2\xA7"));
  const CliRun lastRun = RunCli({"check", key});
  EXPECT_EQ(lastRun.out.substr(0, key.size() + 5), key + "\toui\t");
}

TEST(LexiconCommandLine, WordsAndPatternGiveTheSearchesResultsInOrder) {
  ClsExpressions searcher;
  searcher.SubDico(RealLexicon());
  std::string rack = "ZEBRE?";
  const int32_t count = searcher.SubCombinaisons(rack);
  std::string expected;
  for (int32_t i = 1; i <= count; ++i) expected += std::string(searcher.GetMot(i)) + "\n";
  EXPECT_EQ(RunCli({"words", "zebre?"}).out, expected);

  rack = "RST?";
  const int32_t found = searcher.SubSuivant("*A**", rack, 3);
  expected.clear();
  for (int32_t i = 1; i <= found; ++i) expected += std::string(searcher.GetMot(i)) + "\n";
  ASSERT_GT(found, 0);
  EXPECT_EQ(RunCli({"pattern", "*a**", "rst?", "3"}).out, expected);
}

TEST(LexiconCommandLine, LexiconCountsTheLists) {
  const CliRun run = RunCli({"lexicon"});
  ASSERT_EQ(run.status, 0);
  const std::vector<std::string> lines = Lines(run.out);
  ASSERT_EQ(lines.size(), 19u);
  long total = 0;
  for (int length = 2; length <= 15; ++length) {
    const std::string& line = lines[size_t(length - 2)];
    EXPECT_EQ(line.substr(0, line.find('\t')), std::to_string(length));
    total += std::stol(line.substr(line.find('\t') + 1));
  }
  EXPECT_EQ(lines[14], "total\t" + std::to_string(total));
  EXPECT_EQ(lines[15], "nodes\t" + std::to_string(RealLexicon().Dico.LngLibre()));
  EXPECT_EQ(lines[17], "word-ends\t" + std::to_string(RealLexicon().Dico.NbMotsDico()));
}

TEST(LexiconCommandLine, BadArgumentsGiveOneLineAndStatusTwo) {
  for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
           {"words", "ab1"},
           {"words"},
           {"pattern", "", "abc"},
           {"pattern", "*A*", "ab-"},
           {"pattern", "*1*", "abc"},
           {"pattern", "*A*", "abc", "x"},
           {"check"},
           {"check", "l'été"},
           {"lexicon", "more"},
           {"nothing"},
       }) {
    const CliRun run = RunCli(args);
    SCOPED_TRACE(args.front());
    EXPECT_EQ(run.status, 2);
    EXPECT_TRUE(run.out.empty());
    if (args.front() != "nothing") {
      EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
    }
  }
}

}  // namespace
}  // namespace ostrane::test
