// ostrane-cli solve, score and bench, run as a user runs them.
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <sstream>

#include "tests/support/cli_run.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

class CommandLine : public ::testing::Test {
 protected:
  // A board file: empty, or with "maiSon" across from H8 (a blank S) and "met" down from 8H.
  std::string Board(const std::string& name, bool withWords, std::string text = "") {
    if (text.empty())
      for (int row = 0; row < 15; ++row) text += "...............\n";
    if (withWords) {
      text.replace(16 * 7 + 7, 6, "maiSon").replace(16 * 8 + 7, 1, "e").replace(16 * 9 + 7, 1, "t");
      text = std::regex_replace(text, std::regex("\n"), "\r\n") + "\r\n";  // Windows line ends are read too
    }
    WriteFile(dir.path() / name, text);
    return dir.path() / name;
  }
  TempDir dir;
};

TEST_F(CommandLine, ScoreGivesTheWorkedExampleAcrossAndDownAndTheBoardsLetters) {
  const std::string empty = Board("empty", false), words = Board("words", true);
  // With words, only the last s is new (a plain square): 2 + 1 + 1 + 0 + 1 + 1 + 1.
  const std::vector<std::string> cases[] = {{empty, "maison", "H4", "maison H4 18\n"},
                                            {empty, "maison", "4H", "maison 4H 18\n"},
                                            {empty, "maison (m)", "H4", "Maison H4 10\n"},
                                            {words, "maisons", "H8", "maiSons H8 7\n"}};
  for (const auto& c : cases) {
    const CliRun run = RunCli({"score", "--board", c[0], c[1], c[2]});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out, c[3]);
  }
}

TEST_F(CommandLine, SolvePrintsTheCountTheBestAndWithAllEveryFindingReproduciblyBySeed) {
  const std::string board = Board("solve", true);
  const CliRun best = RunCli({"solve", "zeste?", "--board", board});
  ASSERT_EQ(best.status, 0) << best.err;
  std::smatch match;
  const std::regex bestLine(
      R"(count (\d+)\nbest (\S+) ([A-O]\d{1,2}|\d{1,2}[A-O]) (\d+) (Horizontal|Vertical)\n)");
  ASSERT_TRUE(std::regex_match(best.out, match, bestLine)) << best.out;
  const int count = std::stoi(match[1]);
  EXPECT_GT(count, 10);
  EXPECT_EQ(match[5] == "Horizontal", match[3].str()[0] >= 'A');  // the direction follows the position
  const std::string bestPoints = match[4];
  const CliRun all = RunCli({"solve", "zeste?", "--board", board, "--all"});
  ASSERT_GT(all.out.size(), best.out.size());
  EXPECT_EQ(all.out.substr(all.out.size() - best.out.size()), best.out);
  std::istringstream lines(all.out.substr(0, all.out.size() - best.out.size()));
  int n = 0, most = 0;
  for (std::string line; std::getline(lines, line);) {
    ASSERT_TRUE(std::regex_match(line, match, std::regex(R"((\d+) (\S*) (\S*) (\d+))"))) << line;
    EXPECT_EQ(std::stoi(match[1]), ++n);
    most = std::max(most, std::stoi(match[4]));
  }
  EXPECT_EQ(n, count);
  EXPECT_EQ(std::to_string(most), bestPoints);
  EXPECT_EQ(RunCli({"solve", "", "--board", board}).out, "count 0\nbest none\n");
  // On an empty board, the directions come from the seed.
  const CliRun a = RunCli({"solve", "ertaisn", "--all", "--seed", "9"});
  ASSERT_EQ(a.status, 0) << a.err;
  EXPECT_EQ(a.out, RunCli({"solve", "ertaisn", "--all", "--seed", "9"}).out);
  EXPECT_NE(a.out, RunCli({"solve", "ertaisn", "--all", "--seed", "10"}).out);
}

TEST_F(CommandLine, BenchPrintsItsFiguresAndTheSameSignatureForTheSameSeed) {
  const CliRun a = RunCli({"bench", "--games", "2", "--seed", "5"});
  ASSERT_EQ(a.status, 0) << a.err;
  EXPECT_TRUE(
      std::regex_match(a.out, std::regex(R"(games 2\nseed 5\n([a-z ]+ [\d.]+( m?s)?\n){8}slowest search )"
                                         R"([\d.]+ ms \(game \d+ turn \d+ rack [a-z?]+\)\nsignature \d+\n)")))
      << a.out;
  const auto signature = [](const std::string& out) { return out.substr(out.find("signature ")); };
  EXPECT_EQ(signature(a.out), signature(RunCli({"bench", "--games", "2", "--seed", "5"}).out));
  EXPECT_NE(signature(a.out), signature(RunCli({"bench", "--games", "2", "--seed", "6"}).out));
}

TEST_F(CommandLine, BadInputGetsOneLineAndStatusTwo) {
  const std::string board = Board("good", false), shortBoard = Board("short", false, "...\n");
  std::string text = ReadFile(board);
  text[16 * 2 + 3] = '3';
  const std::string badBoard = Board("bad", false, text);
  for (const std::vector<std::string>& args :
       std::vector<std::vector<std::string>>{{"solve", "abc", "--board", badBoard},
                                             {"solve", "abc", "--board", shortBoard},
                                             {"solve", "abc", "--board", "/nonexistent/board"},
                                             {"solve", "ab1"},
                                             {"solve", "abcdefgh"},
                                             {"solve", "???abcd"},
                                             {"analyse", "??a?"},
                                             {"solve", "abc", "--seed", "x"},
                                             {"score", "maison", "H4"},
                                             {"score", "--board", board, "maison", "Z4"},
                                             {"score", "--board", board, "maison", "H12"},
                                             {"bench", "--games", "0"}}) {
    const CliRun run = RunCli(args);
    EXPECT_EQ(run.status, 2) << args[0] << " " << args.back();
    EXPECT_TRUE(run.out.empty());
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
  }
  EXPECT_NE(RunCli({"solve", "abc", "--board", badBoard}).err.find("line 3, column 4"), std::string::npos);
}

}  // namespace
}  // namespace ostrane::test
