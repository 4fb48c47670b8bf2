// The options file: its exact text, and reading missing, short and odd files.
#include <gtest/gtest.h>

#include <filesystem>

#include "records/options.h"
#include "tests/support/test_support.h"

namespace ostrane {
namespace {

class OptionsFile : public ::testing::Test {
 protected:
  void Write(const std::string& text) { test::WriteFile(file_, text); }
  std::string Read() { return test::ReadFile(file_); }
  test::TempDir dir_;
  std::filesystem::path file_ = dir_.path() / kOptionsFileName;
};

constexpr const char* kDefaultText =
    "Oui\r\n3\r\n120\r\nSonYes\r\nDureeYes\r\nImg plateau 2\r\nDef mots 23 1\r\nEncadrement 1\r\nResolutionE 0\r\n";

TEST_F(OptionsFile, DefaultsAndEveryValueRoundTrip) {
  ASSERT_TRUE(WriteOptions(file_, Options{}));
  EXPECT_EQ(Read(), kDefaultText);
  Options changed;
  changed.OptMessages = "Non";
  changed.OptLigne2 = 5;
  changed.OptLigne3 = -7;
  changed.OptSons = false;
  changed.OptDuree = false;
  changed.OptImage = 4;
  changed.OptDef23 = 0;
  changed.OptCadre = 0;
  changed.OptResol = 1;
  ASSERT_TRUE(WriteOptions(file_, changed));
  EXPECT_EQ(Read(), "Non\r\n5\r\n-7\r\nSonNo\r\nDureeNo\r\nImg plateau 4\r\nDef mots 23 0\r\nEncadrement 0\r\nResolutionE 1\r\n");
  Options read;
  ASSERT_TRUE(ReadOptions(file_, read));
  EXPECT_EQ(read, changed);
}

TEST_F(OptionsFile, MissingShortOrBrokenFilesGiveAllDefaults) {
  Options read;
  read.OptImage = 4;
  EXPECT_FALSE(ReadOptions(file_, read));
  EXPECT_EQ(read, Options{});
  EXPECT_FALSE(std::filesystem::exists(file_));  // reading creates nothing

  for (const std::string& text : {
           std::string("Non\r\n5\r\n120\r\nSonNo\r\nDureeNo\r\nImg plateau 3\r\nDef mots 23 0\r\nEncadrement 0\r\n"),
           std::string("Non\r\nabc\r\n120\r\nSonNo\r\nDureeNo\r\nImg plateau 3\r\nDef mots 23 0\r\nEncadrement 0\r\nResolutionE 1\r\n"),
           std::string("Non\r\n5\r\n120\r\nSonNo\r\nDureeNo\r\nImg plateau x\r\nDef mots 23 0\r\nEncadrement 0\r\nResolutionE 1\r\n"),
           std::string(""),
       }) {
    Write(text);
    read.OptMessages = "Non";
    EXPECT_FALSE(ReadOptions(file_, read)) << text;
    EXPECT_EQ(read, Options{}) << text;
  }
}

TEST_F(OptionsFile, OddLinesReadByTheirRules) {
  // Anything but "SonNo" is sound on; only the last character of lines 6 to 9
  // counts; line 1 is taken whole; extra lines are ignored.
  Write("Peut-etre\r\n3\r\n120\r\nSonno\r\nDureeNo\r\nImg plateau 12\r\nDef23=0\r\nXX1\r\n9\r\nextra\r\n");
  Options read;
  ASSERT_TRUE(ReadOptions(file_, read));
  EXPECT_EQ(read.OptMessages, "Peut-etre");
  EXPECT_TRUE(read.OptSons);
  EXPECT_FALSE(read.OptDuree);
  EXPECT_EQ(read.OptImage, 2);
  EXPECT_EQ(read.OptDef23, 0);
  EXPECT_EQ(read.OptCadre, 1);
  EXPECT_EQ(read.OptResol, 9);
  // Lines closed by line feeds alone are read as well.
  Write("Non\n3\n120\nSonYes\nDureeYes\nImg plateau 3\nDef mots 23 1\nEncadrement 1\nResolutionE 0");
  ASSERT_TRUE(ReadOptions(file_, read));
  EXPECT_EQ(read.OptImage, 3);
}

TEST_F(OptionsFile, LinesTwoAndThreeReadAsWholeNumbers) {
  // Line 2 is a 16-bit number, line 3 a 32-bit one: a fraction is rounded,
  // halves to the even neighbour; an empty line is 0; a value beyond the
  // field, or text that is no number, gives every option its default.
  const auto withLines = [](const std::string& two, const std::string& three) {
    return "Non\r\n" + two + "\r\n" + three +
           "\r\nSonNo\r\nDureeYes\r\nImg plateau 3\r\nDef mots 23 0\r\nEncadrement 1\r\nResolutionE 1\r\n";
  };
  const struct {
    const char* two;
    const char* three;
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
  for (const auto& g : good) {
    Write(withLines(g.two, g.three));
    Options read;
    ASSERT_TRUE(ReadOptions(file_, read)) << g.two << " / " << g.three;
    EXPECT_EQ(read.OptLigne2, g.ligne2) << g.two;
    EXPECT_EQ(read.OptLigne3, g.ligne3) << g.three;
    EXPECT_EQ(read.OptMessages, "Non");  // the rest of the file is read too
    EXPECT_FALSE(read.OptSons);
    EXPECT_EQ(read.OptImage, 3);
  }
  const struct {
    const char* two;
    const char* three;
  } bad[] = {
      {"70000", "120"},        {"32768", "120"},      {"-32769", "120"},     {"32767.5", "120"},
      {"3", "2147483648"},     {"3", "-2147483649"},  {"3", "9E99"},         {"abc", "120"},
      {"3", "12 a"},           {"3a", "120"},         {"+", "120"},          {".", "120"},
      {"3", "1E"},             {"1,5", "120"},        {"3", "1E999"},
  };
  for (const auto& b : bad) {
    Write(withLines(b.two, b.three));
    Options read;
    read.OptMessages = "Non";
    EXPECT_FALSE(ReadOptions(file_, read)) << b.two << " / " << b.three;
    EXPECT_EQ(read, Options{}) << b.two << " / " << b.three;
  }
}

}  // namespace
}  // namespace ostrane
