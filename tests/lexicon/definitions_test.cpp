// The definitions of the short words: format, lookups and text conversion.
#include <gtest/gtest.h>

#include "data/resources.h"
#include "lexicon/expressions.h"
#include "lexicon/word_list.h"
#include "tests/support/test_support.h"

namespace ostrane {
namespace {

TEST(Definitions, EveryShortWordHasOneLineInListOrderAndTheDataEndsInANul) {
  const SplitList words(ReadResource("DICO"));
  std::vector<std::string> shortWords, keys;
  for (int32_t i = 0; i < words.UBound(); ++i)
    if (words.Element(i).size() <= 3) shortWords.emplace_back(words.Element(i));
  const Definitions& definitions = test::RealLexicon().DefM23;
  for (int32_t i = 0; i <= definitions.UBound(); ++i) {
    const std::string& line = definitions.Line(i);
    const size_t section = line.find("\xC2\xA7");
    ASSERT_NE(line.find('$', section), std::string::npos) << line;
    keys.push_back(line.substr(0, section));
    const auto definition = definitions.FindForCheck(keys.back());
    ASSERT_TRUE(definition.has_value() && !definition->empty()) << line;
    // At most 72 characters in the program's single-byte text.
    EXPECT_LE(Utf8ToCp1252(*definition).size(), 72u) << line;
  }
  EXPECT_EQ(keys, shortWords);
  // A NUL instead of a last line end, and padding.
  const std::string bytes = ReadResource("M23");
  EXPECT_EQ(bytes.size() % 4, 0u);
  const size_t end = bytes.find('\0');
  ASSERT_NE(end, std::string::npos);
  EXPECT_NE(bytes.substr(end - 2, 2), "\r\n");
  EXPECT_EQ(bytes.find_first_not_of('\0', end), std::string::npos);
}

TEST(Definitions, TheSolutionBoxNeverReadsTheLastLineAndCodePage1252RoundTrips) {
  Definitions definitions;
  definitions.Load(Utf8ToCp1252("AA\xC2\xA7"
                                "AA$n.m. Coulée de lave.\r\nZUT\xC2\xA7ZUT$interj. Marque le dépit.") +
                   '\0');
  ASSERT_EQ(definitions.UBound(), 1);
  EXPECT_EQ(definitions.FindForSolution("AA"), "n.m. Coulée de lave.");
  EXPECT_EQ(definitions.FindForCheck("ZUT"), "interj. Marque le dépit.");
  EXPECT_EQ(definitions.FindForSolution("ZUT"), std::nullopt);
  EXPECT_EQ(definitions.FindForCheck("BUE"), std::nullopt);
  std::string all;
  for (int b = 0x20; b < 0x100; ++b)
    if (b != 0x81 && b != 0x8D && b != 0x8F && b != 0x90 && b != 0x9D) all += char(b);
  EXPECT_EQ(Utf8ToCp1252(Cp1252ToUtf8(all)), all);
  EXPECT_EQ(Cp1252ToUtf8("\x80\x9C\xC9\xE7"), "€œÉç");
  EXPECT_EQ(Utf8ToCp1252("Œuvre ≠"), "\x8Cuvre ?");
}

}  // namespace
}  // namespace ostrane
