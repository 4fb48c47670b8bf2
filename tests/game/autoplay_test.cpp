// ostrane-cli autoplay, run as a user runs it: a whole game that goes the
// players' road, through the game's name and the main form, and leaves the
// files a game leaves.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "tests/support/cli_run.h"

namespace ostrane::test {
namespace {

class Autoplay : public ::testing::Test {
 protected:
  void SetUp() override {
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    dir_ = std::filesystem::temp_directory_path() / ("ostrane-autoplay-" + std::string(info->name()));
    std::filesystem::remove_all(dir_);
    std::filesystem::create_directories(dir_);
  }
  void TearDown() override { std::filesystem::remove_all(dir_); }

  // Runs the tool in the test's folder; returns its exit status and output.
  int Run(const std::vector<std::string>& args, std::string* out = nullptr) {
    std::vector<std::string> all = {"autoplay", "--dir", dir_.string()};
    all.insert(all.end(), args.begin(), args.end());
    const CliRun run = RunCli(all);
    if (out) *out = run.out;
    return run.status;
  }
  void Write(const std::string& name, const std::string& bytes) {
    std::ofstream(dir_ / name, std::ios::binary) << bytes;
  }
  std::string Read(const std::string& name) {
    std::ifstream in(dir_ / name, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }

  std::filesystem::path dir_;
};

constexpr const char* kShortBag = "AACEEEEEEIMNRSSSTU";

TEST_F(Autoplay, TheGamesNameFormSetsLineTwoAsTheWindowsDo) {
  // No options file: the defaults, and line 2 set to 5 by the closing of the
  // game's name form, as after any game played in the windows.
  std::string out;
  ASSERT_EQ(Run({"--bag", kShortBag, "--seed", "3"}, &out), 0);
  EXPECT_NE(out.find("score "), std::string::npos);
  EXPECT_EQ(Read("Option.ret"),
            "Oui\r\n5\r\n120\r\nSonYes\r\nDureeYes\r\nImg plateau 2\r\nDef mots 23 1\r\nEncadrement 1\r\n"
            "ResolutionE 0\r\n");
  // The name the form offers is the game's name in the table.
  EXPECT_NE(Read("bestsco.ret").find("Partie tabli 01"), std::string::npos);
}

TEST_F(Autoplay, TheOtherOptionsOfTheFileGoThroughTheFormUnchanged) {
  Write("Option.ret",
        "Non\r\n3\r\n77\r\nSonNo\r\nDureeNo\r\nImg plateau 4\r\nDef mots 23 0\r\nEncadrement 0\r\nResolutionE 1\r\n");
  ASSERT_EQ(Run({"--bag", kShortBag, "--seed", "5"}), 0);
  EXPECT_EQ(Read("Option.ret"),
            "Non\r\n5\r\n77\r\nSonNo\r\nDureeNo\r\nImg plateau 4\r\nDef mots 23 0\r\nEncadrement 0\r\nResolutionE 1\r\n");
}

}  // namespace
}  // namespace ostrane::test
