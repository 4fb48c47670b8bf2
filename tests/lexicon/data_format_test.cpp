// The embedded lists in the program's byte format, and their round trip
// through the loader.
#include <gtest/gtest.h>

#include <set>

#include "data/resources.h"
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
  EXPECT_EQ(bytes, std::string("ZYGOMATIQUE\r\nABRACADABRA\r\nMMMMMMMMMM\r\n\0\0", 40));
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

}  // namespace
}  // namespace ostrane
