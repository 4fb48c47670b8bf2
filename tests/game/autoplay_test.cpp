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
  EXPECT_NE(first.out.find("\nscore "), std::string::npos);
  EXPECT_EQ(ReadFile(dir.path() / "Option.ret"),
            "Oui\r\n5\r\n120\r\nSonYes\r\nDureeYes\r\nImg plateau 2\r\nDef mots 23 1\r\nEncadrement 1\r\nResolutionE 0\r\n");
  EXPECT_NE(ReadFile(dir.path() / "bestsco.ret").find("Partie tabli 01"), std::string::npos);

  WriteFile(dir.path() / "Option.ret",
            "Non\r\n3\r\n77\r\nSonNo\r\nDureeNo\r\nImg plateau 4\r\nDef mots 23 0\r\nEncadrement 0\r\nResolutionE 1\r\n");
  ASSERT_EQ(run("5").status, 0);
  EXPECT_EQ(ReadFile(dir.path() / "Option.ret"),
            "Non\r\n5\r\n77\r\nSonNo\r\nDureeNo\r\nImg plateau 4\r\nDef mots 23 0\r\nEncadrement 0\r\nResolutionE 1\r\n");
}

}  // namespace
}  // namespace ostrane::test
