// ostrane-cli check, words, pattern and lexicon, run as a user runs them.
#include <gtest/gtest.h>

#include "lexicon/expressions.h"
#include "tests/support/cli_run.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

TEST(LexiconCommandLine, CheckAnswersOuiOrNonWithShortWordsDefinedUpToTheLastLine) {
  const Definitions& definitions = RealLexicon().DefM23;
  const std::string& last = definitions.Line(definitions.UBound());
  const std::string key = last.substr(0, last.find("\xC2\xA7"));
  const CliRun run =
      RunCli({"check", "aa", "Maison", "zzz", "ABCDEFGHIJKLMNOP", "anticonstitutionnellement", key});
  ASSERT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "AA\toui\t" + *definitions.FindForCheck("AA") +
                         "\nMAISON\toui\nZZZ\tnon\nABCDEFGHIJKLMNOP\tnon\nANTICONSTITUTIONNELLEMENT\tnon\n" +
                         key + "\toui\t" + *definitions.FindForCheck(key) + "\n");
}

TEST(LexiconCommandLine, WordsAndPatternGiveTheSearchesResultsInOrder) {
  ClsExpressions searcher;
  searcher.SubDico(RealLexicon());
  const auto lines = [&](int32_t count) {
    std::string text;
    for (int32_t i = 1; i <= count; ++i) text += std::string(searcher.GetMot(i)) + "\n";
    return text;
  };
  std::string rack = "ZEBRE?";
  EXPECT_EQ(RunCli({"words", "zebre?"}).out, lines(searcher.SubCombinaisons(rack)));
  rack = "RST?";
  const std::string expected = lines(searcher.SubSuivant("*A**", rack, 3));
  ASSERT_FALSE(expected.empty());
  EXPECT_EQ(RunCli({"pattern", "*a**", "rst?", "3"}).out, expected);
}

TEST(LexiconCommandLine, LexiconCountsTheListsAndTheTree) {
  const ClsDico& dico = RealLexicon().Dico;
  std::string expected;
  long total = 0;
  for (size_t length = 2; length <= 15; ++length) {
    const long count = length <= 9 ? dico.CountsByLength()[length] : RealLexicon().LongWords(length).UBound();
    expected += std::to_string(length) + "\t" + std::to_string(count) + "\n";
    total += count;
  }
  expected += "total\t" + std::to_string(total) + "\nnodes\t" + std::to_string(dico.LngLibre()) +
              "\nedges\t" + std::to_string(dico.EdgeCount()) + "\nword-ends\t" +
              std::to_string(dico.WordEndCount()) + "\n";
  EXPECT_EQ(RunCli({"lexicon"}).out.substr(0, expected.size()), expected);
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
    if (args.front() == "nothing") continue;  // the usage follows
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
  }
}

}  // namespace
}  // namespace ostrane::test
