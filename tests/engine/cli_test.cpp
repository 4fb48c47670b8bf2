// ostrane-cli solve, score and bench, run as a user runs them.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

#include "engine/board_text.h"
#include "tests/engine/engine_test_support.h"
#include "tests/support/cli_run.h"

namespace ostrane::test {
namespace {

CliRun Cli(const std::vector<std::string>& args) { return RunCli(args); }

std::string WriteBoard(const std::string& name, const std::string& text) {
  const auto path = std::filesystem::temp_directory_path() / ("ostrane-board-" + std::to_string(getpid()) + "-" + name);
  std::ofstream(path) << text;
  return path.string();
}

std::string Empty() {
  std::string text;
  for (int i = 0; i < 15; ++i) text += "...............\n";
  return text;
}

std::string WithWords() {
  std::string text = Empty();
  // "maiSon" across from H8 (a blank S), and "met" down from 8H.
  const std::string row = ".......maiSon..";
  text.replace(16 * 7, 15, row);
  text[16 * 8 + 7] = 'e';
  text[16 * 9 + 7] = 't';
  return text;
}

TEST(CommandLine, ScoreGivesTheWorkedExampleAcrossAndDown) {
  const std::string board = WriteBoard("empty", Empty());
  CliRun run = Cli({"score", "--board", board, "maison", "H4"});
  EXPECT_EQ(run.status, 0) << run.err;
  EXPECT_EQ(run.out, "maison H4 18\n");
  run = Cli({"score", "--board", board, "maison", "4H"});
  EXPECT_EQ(run.out, "maison 4H 18\n");
  run = Cli({"score", "--board", board, "maison (m)", "H4"});
  EXPECT_EQ(run.out, "Maison H4 10\n");
  // On a board with tiles: the board's own letters come back in its case.
  const std::string words = WriteBoard("words", WithWords());
  run = Cli({"score", "--board", words, "maisons", "H8"});
  EXPECT_EQ(run.status, 0) << run.err;
  // Only the last s is new (a plain square): 2 + 1 + 1 + 0 + 1 + 1 + 1.
  EXPECT_EQ(run.out, "maiSons H8 7\n");
}

TEST(CommandLine, SolvePrintsTheCountTheBestAndWithAllEveryFinding) {
  const std::string board = WriteBoard("solve", WithWords());
  const CliRun best = Cli({"solve", "zeste?", "--board", board});
  ASSERT_EQ(best.status, 0) << best.err;
  const std::regex bestLine(R"(count (\d+)\nbest (\S+) ([A-O]\d{1,2}|\d{1,2}[A-O]) (\d+) (Horizontal|Vertical)\n)");
  std::smatch match;
  ASSERT_TRUE(std::regex_match(best.out, match, bestLine)) << best.out;
  const int count = std::stoi(match[1]);
  EXPECT_GT(count, 10);
  // The direction follows the form of the position.
  EXPECT_EQ(match[5] == "Horizontal", match[3].str()[0] >= 'A');

  const CliRun all = Cli({"solve", "zeste?", "--board", board, "--all"});
  ASSERT_EQ(all.status, 0);
  std::istringstream lines(all.out);
  std::string line;
  int n = 0, bestPoints = 0;
  const std::regex finding(R"((\d+) (\S*) (\S*) (\d+))");
  while (std::getline(lines, line) && line.rfind("count", 0) != 0) {
    ASSERT_TRUE(std::regex_match(line, match, finding)) << line;
    EXPECT_EQ(std::stoi(match[1]), ++n);
    bestPoints = std::max(bestPoints, std::stoi(match[4]));
  }
  EXPECT_EQ(n, count);
  EXPECT_EQ(all.out.substr(all.out.size() - best.out.size()), best.out);
  EXPECT_NE(best.out.find(" " + std::to_string(bestPoints) + " "), std::string::npos);
}

TEST(CommandLine, SolveOnAnEmptyBoardIsReproducibleBySeed) {
  const CliRun a = Cli({"solve", "ertaisn", "--all", "--seed", "9"});
  const CliRun b = Cli({"solve", "ertaisn", "--all", "--seed", "9"});
  const CliRun c = Cli({"solve", "ertaisn", "--all", "--seed", "10"});
  ASSERT_EQ(a.status, 0) << a.err;
  EXPECT_EQ(a.out, b.out);
  EXPECT_NE(a.out, c.out);  // other directions
  const std::string board = WriteBoard("nothing", WithWords());
  EXPECT_EQ(Cli({"solve", "", "--board", board}).out, "count 0\nbest none\n");
}

TEST(CommandLine, BenchPrintsItsFiguresAndTheSameSignatureForTheSameSeed) {
  const CliRun a = Cli({"bench", "--games", "2", "--seed", "5"});
  const CliRun b = Cli({"bench", "--games", "2", "--seed", "5"});
  ASSERT_EQ(a.status, 0) << a.err;
  for (const char* key : {"games 2\n", "searches ", "findings ", "search time ", "total time ",
                          "per search ", "searches per second ", "slowest search ", "signature "})
    EXPECT_NE(a.out.find(key), std::string::npos) << key;
  const auto signature = [](const std::string& out) { return out.substr(out.find("signature ")); };
  EXPECT_EQ(signature(a.out), signature(b.out));
  EXPECT_NE(signature(a.out), signature(Cli({"bench", "--games", "2", "--seed", "6"}).out));
}

TEST(CommandLine, BadInputGetsOneLineAndStatusTwo) {
  std::string bad = Empty();
  bad[16 * 2 + 3] = '3';
  const std::string badBoard = WriteBoard("bad", bad);
  const std::string shortBoard = WriteBoard("short", "...\n");
  const std::string board = WriteBoard("good", Empty());
  for (const std::vector<std::string>& args :
       std::vector<std::vector<std::string>>{{"solve", "abc", "--board", badBoard},
                                             {"solve", "abc", "--board", shortBoard},
                                             {"solve", "abc", "--board", "/nonexistent/board"},
                                             {"solve", "ab1"},
                                             {"solve", "abcdefgh"},
                                             {"solve", "abc", "--seed", "x"},
                                             {"score", "maison", "H4"},
                                             {"score", "--board", board, "maison", "Z4"},
                                             {"score", "--board", board, "maison", "H12"},
                                             {"bench", "--games", "0"}}) {
    const CliRun run = Cli(args);
    EXPECT_EQ(run.status, 2) << args[0] << " " << args.back();
    EXPECT_TRUE(run.out.empty());
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << run.err;
  }
  EXPECT_NE(Cli({"solve", "abc", "--board", badBoard}).err.find("line 3, column 4"), std::string::npos);
}

}  // namespace
}  // namespace ostrane::test
