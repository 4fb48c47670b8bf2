// ostrane-cli check, words, pattern and lexicon, run as a user runs them.
#include <gtest/gtest.h>

#include "lexicon/expressions.h"
#include "lexicon/word_list.h"
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

TEST(LexiconCommandLine, HelpListsEveryVerbOnTheStandardOutput) {
  const CliRun help = RunCli({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_TRUE(help.err.empty()) << help.err;
  for (const char* verb : {"check", "words", "pattern", "lexicon", "solve", "analyse", "score", "bench", "autoplay"}) {
    SCOPED_TRACE(verb);
    EXPECT_NE(help.out.find(std::string("\n  ostrane-cli ") + verb), std::string::npos) << "its usage";
    EXPECT_NE(help.out.find(std::string("\n  ") + verb + " "), std::string::npos) << "what it does";
  }
  EXPECT_NE(help.out.find("--lexicon FILE"), std::string::npos);
  const CliRun version = RunCli({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.out, "ostrane-cli 1.23\n");
  // With no verb at all, the usage goes to the error output.
  const CliRun nothing = RunCli({});
  EXPECT_EQ(nothing.status, 2);
  EXPECT_TRUE(nothing.out.empty());
  EXPECT_NE(nothing.err.find("usage: ostrane-cli VERB"), std::string::npos);
}

TEST(LexiconCommandLine, CheckFoldsAccentsAndAnswersEveryGoodArgument) {
  const CliRun run = RunCli({"check", "été", "l'été", "MAÎTRE", "cœur", "porte-clé", "é", "anticonstitutionnellement"});
  EXPECT_EQ(run.status, 1);  // two arguments were no words
  EXPECT_EQ(run.out, "ETE\toui\t" + *RealLexicon().DefM23.FindForCheck("ETE") +
                         "\nMAITRE\toui\nCOEUR\toui\nE\tnon\nANTICONSTITUTIONNELLEMENT\tnon\n");
  EXPECT_EQ(run.err,
            "ostrane-cli check: « l'été » : seulement des lettres, sans tiret, apostrophe, chiffre ni espace\n"
            "ostrane-cli check: « porte-clé » : seulement des lettres, sans tiret, apostrophe, chiffre ni espace\n");
  EXPECT_EQ(RunCli({"check", "a b"}).err,
            "ostrane-cli check: « a b » : seulement des lettres, sans tiret, apostrophe, chiffre ni espace\n");
  EXPECT_EQ(RunCli({"check", " "}).err, "ostrane-cli check: «   » : aucune lettre\n");
}

TEST(LexiconCommandLine, EveryVerbTakesThePlayersOwnList) {
  TempDir dir;
  setenv("XDG_CACHE_HOME", (dir.path() / "cache").c_str(), 1);  // the tool's compiled copies go there
  const std::filesystem::path list = dir.path() / "ma liste.txt";
  WriteFile(list, "# quelques mots\nMaître\nmaîtres\nchat\nchats\nété\nl'été\nzygomatiques\n");
  const std::string option = "--lexicon=" + list.string();
  const CliRun check = RunCli({"--lexicon", list.string(), "check", "maitre", "maison", "ete"});
  ASSERT_EQ(check.status, 0) << check.err;
  // ETE keeps its embedded definition; MAISON is no word of this list.
  EXPECT_EQ(check.out, "MAITRE\toui\nMAISON\tnon\nETE\toui\t" + *RealLexicon().DefM23.FindForCheck("ETE") + "\n");
  EXPECT_EQ(check.err, "ostrane-cli: liste « ma liste.txt » : 6 mots, 1 ligne ignorée\n");
  const CliRun again = RunCli({"check", "chats", option});
  EXPECT_EQ(again.out, "CHATS\toui\n");
  EXPECT_EQ(again.err, "ostrane-cli: liste « ma liste.txt » : 6 mots, 1 ligne ignorée (copie compilée)\n");
  EXPECT_EQ(RunCli({"words", "stach", option}).out, "CHAT\nCHATS\n");
  EXPECT_EQ(RunCli({"pattern", "*****", "stachz", option}).out, "CHAT\nCHATS\n");
  EXPECT_EQ(RunCli({"lexicon", option}).out.substr(0, 12), "2\t0\n3\t1\n4\t1\n");
  EXPECT_EQ(RunCli({"solve", "chatsxx", "--exact", option}).out.substr(0, 11), "best chats ");
  EXPECT_EQ(RunCli({"analyse", "tahc", option}).out.substr(0, 7), "1 CHAT ");
  EXPECT_TRUE(std::filesystem::exists(dir.path() / "cache" / "ostrane" / "listes"));

  // Files that cannot be lists: the reason, status 2, nothing answered.
  WriteFile(dir.path() / "vide.txt", "# rien\n1\n");
  const std::vector<std::pair<std::string, std::string>> bad = {
      {(dir.path() / "absente.txt").string(), "Le fichier « " + (dir.path() / "absente.txt").string() + " » n'existe pas."},
      {(dir.path() / "vide.txt").string(), "Le fichier « vide.txt » ne contient aucun mot de 2 à 15 lettres (1 ligne ignorée)."},
      {dir.path().string(), "« " + dir.path().string() + " » est un dossier, pas une liste de mots."}};
  for (const auto& [file, message] : bad) {
    const CliRun run = RunCli({"check", "chat", "--lexicon", file});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err, "ostrane-cli: " + message + "\n");
  }
  EXPECT_EQ(RunCli({"check", "chat", "--lexicon"}).status, 2);
}

}  // namespace
}  // namespace ostrane::test
