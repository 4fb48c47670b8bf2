// ostrane-cli autoplay, run as a user runs it: a whole game that goes the
// players' road, through the game's name and the main form, and leaves the
// files a game leaves.
#include <gtest/gtest.h>

#include "tests/support/cli_run.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

TEST(Autoplay, TheGamesNameFormSetsLineTwoAsTheWindowsDoAndKeepsTheOtherOptions) {
  TempDir dir;
  const auto run = [&dir](const std::string& seed) {
    return RunCli({"autoplay", "--dir", dir.path().string(), "--bag", "AACEEEEEEIMNRSSSTU", "--seed", seed});
  };
  // No options file: the defaults, and line 2 set to 5 by the closing of the
  // game's name form, as after any game played in the windows.
  const CliRun first = run("3");
  ASSERT_EQ(first.status, 0) << first.err;
  // The history, one line a play, then "score N", N also heading the best-score line.
  const size_t at = first.out.find("\nscore ");
  ASSERT_NE(at, std::string::npos);
  EXPECT_EQ(first.out.substr(0, 3), "01 ");
  const std::string score = first.out.substr(at + 7, first.out.size() - at - 8);
  EXPECT_EQ(ReadFile(dir.path() / "bestsco.ret").substr(0, score.size() + 1), score + " ");
  EXPECT_EQ(ReadFile(dir.path() / "Option.ret"),
            "Oui\r\n5\r\n120\r\nSonYes\r\nDureeYes\r\n"
            "Img plateau 2\r\nDef mots 23 1\r\nEncadrement 1\r\nResolutionE 0\r\n");

  WriteFile(dir.path() / "Option.ret",
            "Non\r\n3\r\n77\r\nSonNo\r\nDureeNo\r\n"
            "Img plateau 4\r\nDef mots 23 0\r\nEncadrement 0\r\nResolutionE 1\r\n");
  ASSERT_EQ(run("5").status, 0);
  EXPECT_EQ(ReadFile(dir.path() / "Option.ret"),
            "Non\r\n5\r\n77\r\nSonNo\r\nDureeNo\r\n"
            "Img plateau 4\r\nDef mots 23 0\r\nEncadrement 0\r\nResolutionE 1\r\n");
}

}  // namespace
}  // namespace ostrane::test
