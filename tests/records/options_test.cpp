// The options file: its exact text, and reading missing, short and odd files.
#include "records/options.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/test_support.h"

namespace ostrane {
namespace {

class OptionsFile : public ::testing::Test {
 protected:
  // Writes `text`, reads it into options that are not the defaults.
  bool ReadText(const std::string& text, Options& read) {
    test::WriteFile(file_, text);
    read.OptMessages = "Autre";
    return ReadOptions(file_, read);
  }
  test::TempDir dir_;
  std::filesystem::path file_ = dir_.path() / kOptionsFileName;
};

TEST_F(OptionsFile, DefaultsAndEveryValueRoundTrip) {
  ASSERT_TRUE(WriteOptions(file_, Options{}));
  EXPECT_EQ(test::ReadFile(file_),
            "Oui\r\n3\r\n120\r\nSonYes\r\nDureeYes\r\n"
            "Img plateau 2\r\nDef mots 23 1\r\nEncadrement 1\r\nResolutionE 0\r\n");
  const Options changed{"Non", 5, -7, false, false, 4, 0, 0, 1};
  ASSERT_TRUE(WriteOptions(file_, changed));
  EXPECT_EQ(test::ReadFile(file_),
            "Non\r\n5\r\n-7\r\nSonNo\r\nDureeNo\r\n"
            "Img plateau 4\r\nDef mots 23 0\r\nEncadrement 0\r\nResolutionE 1\r\n");
  Options read;
  ASSERT_TRUE(ReadOptions(file_, read));
  EXPECT_EQ(read, changed);
  EXPECT_FALSE(WriteOptions(dir_.path() / "missing" / kOptionsFileName, changed));
}

TEST_F(OptionsFile, OddLinesReadByTheirRules) {
  // Anything but "SonNo" is sound on; only the last character of lines 6 to 9
  // counts; line 1 is taken whole; extra lines are ignored; line feeds alone
  // end lines as well.
  Options read;
  ASSERT_TRUE(
      ReadText("Peut-etre\r\n3\r\n120\r\nSonno\r\nDureeNo\r\n"
               "Img plateau 12\r\nDef23=0\r\nXX1\r\n9\r\nextra\r\n",
               read));
  EXPECT_EQ(read, (Options{"Peut-etre", 3, 120, true, false, 2, 0, 1, 9}));
  ASSERT_TRUE(ReadText(
      "Non\n3\n120\nSonYes\nDureeYes\nImg plateau 3\nDef mots 23 1\nEncadrement 1\nResolutionE 0", read));
  EXPECT_EQ(read.OptImage, 3);
}

TEST_F(OptionsFile, MissingShortOrBrokenFilesGiveAllDefaults) {
  Options read;
  read.OptImage = 4;
  EXPECT_FALSE(ReadOptions(file_, read));
  EXPECT_EQ(read, Options{});
  EXPECT_FALSE(std::filesystem::exists(file_));  // reading creates nothing
  // Line 2 is a 16-bit number, line 3 a 32-bit one: a fraction is rounded,
  // halves to the even neighbour; an empty line is 0; a value beyond the
  // field, text that is no number, or a line missing gives every option its default.
  const struct {
    const char *two, *three;
    int16_t ligne2;
    int32_t ligne3;
  } good[] = {
      {"3.5", "120", 4, 120},
      {"2.5", "-2.5", 2, -2},
      {"4.49", "0.51", 4, 1},
      {"", "", 0, 0},
      {"   ", " 77 ", 0, 77},
      {"-32768", "2147483647", -32768, 2147483647},
      {"32767", "-2147483648", 32767, int32_t(-2147483647 - 1)},
      {"32767.4", "1E3", 32767, 1000},
      {"+5", "12d2", 5, 1200},
      {".5", "7.", 0, 7},
  };
  const std::string rest =
      "\r\nSonNo\r\nDureeYes\r\n"
      "Img plateau 3\r\nDef mots 23 0\r\nEncadrement 1\r\nResolutionE 1\r\n";
  for (const auto& g : good) {
    ASSERT_TRUE(ReadText("Non\r\n" + std::string(g.two) + "\r\n" + g.three + rest, read))
        << g.two << " / " << g.three;
    EXPECT_EQ(read, (Options{"Non", g.ligne2, g.ligne3, false, true, 3, 0, 1, 1}))
        << g.two << " / " << g.three;
  }
  const std::vector<std::string> bad = {
      "Non\r\n70000\r\n120",    "Non\r\n32768\r\n120",     "Non\r\n-32769\r\n120", "Non\r\n32767.5\r\n120",
      "Non\r\n3\r\n2147483648", "Non\r\n3\r\n-2147483649", "Non\r\n3\r\n9E99",     "Non\r\nabc\r\n120",
      "Non\r\n3\r\n12 a",       "Non\r\n3a\r\n120",        "Non\r\n+\r\n120",      "Non\r\n.\r\n120",
      "Non\r\n3\r\n1E",         "Non\r\n1,5\r\n120",       "Non\r\n3\r\n1E999",
  };
  for (const std::string& text : bad) {
    EXPECT_FALSE(ReadText(text + rest, read)) << text;
    EXPECT_EQ(read, Options{}) << text;
  }
  for (const std::string text : {"",
                                 "Non\r\n5\r\n120\r\nSonNo\r\nDureeNo\r\n"
                                 "Img plateau 3\r\nDef mots 23 0\r\nEncadrement 0\r\n",
                                 "Non\r\n5\r\n120\r\nSonNo\r\nDureeNo\r\n"
                                 "Img plateau x\r\nDef mots 23 0\r\nEncadrement 0\r\nResolutionE 1\r\n"}) {
    EXPECT_FALSE(ReadText(text, read)) << text;
    EXPECT_EQ(read, Options{}) << text;
  }
}

}  // namespace
}  // namespace ostrane
