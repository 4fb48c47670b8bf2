// The embedded word lists and definitions in the program's byte format, and
// their round trip through the loaders.
#include <gtest/gtest.h>

#include <set>

#include "data/resources.h"
#include "lexicon/expressions.h"
#include "lexicon/word_list.h"
#include "tests/support/test_support.h"

namespace ostrane {
namespace {

TEST(WordListData, EveryListIsInTheByteFormatSortedAndLoadsBackWithItsTail) {
  std::set<std::string> seen;
  for (const std::string name : {"DICO", "DIC10", "DIC11", "DIC12", "DIC13", "DIC14", "DIC15"}) {
    SCOPED_TRACE(name);
    const std::string bytes = ReadResource(name);
    EXPECT_EQ(bytes.size() % 4, 0u);
    // Split the simple way: words, then whatever follows the last CR LF.
    std::vector<std::string> words;
    size_t pos = 0;
    for (size_t crlf; (crlf = bytes.find("\r\n", pos)) != std::string::npos; pos = crlf + 2)
      words.push_back(bytes.substr(pos, crlf - pos));
    const std::string tail = bytes.substr(pos);
    ASSERT_GT(words.size(), 100u);
    EXPECT_EQ(tail, std::string(tail.size(), '\0'));
    EXPECT_LT(tail.size(), 4u);
    int descents = 0;
    for (size_t i = 0; i < words.size(); ++i) {
      const std::string& word = words[i];
      ASSERT_EQ(word.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), std::string::npos) << word;
      ASSERT_TRUE(name == "DICO" ? word.size() >= 2 && word.size() <= 9
                                 : name == "DIC" + std::to_string(word.size()))
          << word;
      ASSERT_TRUE(seen.insert(word).second) << "twice: " << word;
      // By length, then alphabetically.
      const std::string& before = words[i == 0 ? 0 : i - 1];
      ASSERT_TRUE(i == 0 || before.size() < word.size() || before < word) << word;
      descents += word < before;
    }
    // One place per change of length where the next word sorts lower.
    EXPECT_EQ(descents, name == "DICO" ? 7 : 0);
    LongWordList list;
    list.Load(bytes);
    ASSERT_EQ(list.UBound(), int32_t(words.size()));
    EXPECT_EQ(list.Element(0), words.front());
    EXPECT_EQ(list.Element(list.UBound() - 1), words.back());
    EXPECT_EQ(list.Element(list.UBound()), tail);
    EXPECT_FALSE(list.Contains(tail));
  }
}

TEST(WordListData, ListBytesRoundTripAndAnUnsortedListAnswersLikeAScan) {
  const std::vector<std::string> words = {"ZYGOMATIQUE", "ABRACADABRA", "MMMMMMMMMM"};
  const std::string bytes = test::ListBytes(words);
  LongWordList list;
  list.Load(bytes);
  ASSERT_EQ(list.UBound(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(list.Element(i), words[size_t(i)]);
  EXPECT_EQ(list.Element(3), std::string(2, '\0'));
  for (const std::string& word : words) EXPECT_TRUE(list.Contains(word));
  for (const std::string word : {"mmmmmmmmmm", "BBBBBBBBBB", ""}) EXPECT_FALSE(list.Contains(word)) << word;
  test::FatalCatcher catcher;
  EXPECT_THROW(list.Element(4), test::FatalCalled);
  EXPECT_THROW(list.Element(-1), test::FatalCalled);
}

// The definitions of the short words: format, lookups and text conversion.
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

TEST(WordListData, TheKnownFaultsOfTheEmbeddedListStayMended) {
  ClsExpressions check;
  check.SubDico(test::RealLexicon());
  const auto knows = [&](const char* word) { return check.SubWordIsTrue(std::string_view(word)); };
  // Common nouns that are also titles, and words that live in locutions.
  for (const char* word : {"MAITRE", "MAITRESSE", "DOCTEUR", "PROFESSEUR", "MONSIEUR", "MADAME", "MADEMOISELLE",
                           "MAMAN", "PAPA", "SEIGNEUR", "MESSIRE", "ANTAN", "ENVI", "JEUN", "EMBLEE", "CATIMINI",
                           "TAPINOIS", "FORTIORI"})
    EXPECT_TRUE(knows(word)) << word;
  // Short words the players' lists admit, and those they do not.
  for (const char* word : {"CRE", "KAN", "LOL", "MIN", "NEO", "REZ", "YUE", "APP", "DEO", "GIF", "LED", "PHO"})
    EXPECT_TRUE(knows(word)) << word;
  for (const char* word : {"ABA", "AVO", "HOC"}) EXPECT_FALSE(knows(word)) << word;
  // Abbreviations, whole kinds of them.
  for (const char* word : {"ABC", "ALGO", "COOP", "ETYM", "TECH", "TANH", "SINH", "ARCSINH", "QBIT", "KIBIBIT"})
    EXPECT_FALSE(knows(word)) << word;
}

TEST(Definitions, NoDefinitionCallsInvariableAWordWhosePluralTheListHas) {
  // Except where the look-alike plural is another word (DOS, FAX, LAS...).
  const std::set<std::string> otherWord = {"DO", "FA", "LA", "MI", "MOI", "OUI", "ORE", "PIE", "RA", "SI"};
  ClsExpressions check;
  check.SubDico(test::RealLexicon());
  const Definitions& definitions = test::RealLexicon().DefM23;
  int plurals = 0;
  for (int32_t i = 0; i <= definitions.UBound(); ++i) {
    const std::string& line = definitions.Line(i);
    const std::string key = line.substr(0, line.find("\xC2\xA7"));
    const std::string definition = line.substr(line.find('$') + 1);
    if (otherWord.count(key)) continue;
    const bool plural = check.SubWordIsTrue(std::string_view(key + "S")) || check.SubWordIsTrue(std::string_view(key + "X"));
    plurals += plural;
    if (plural) {
      EXPECT_EQ(definition.find("inv."), std::string::npos) << line;
    }
  }
  EXPECT_GT(plurals, 100);  // the check saw many
  EXPECT_NE(definitions.FindForCheck("XI")->find("(plur. xis)"), std::string::npos);
}

}  // namespace
}  // namespace ostrane
