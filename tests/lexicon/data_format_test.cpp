// The embedded lists in the program's byte format, and their round trip
// through the loader.
#include <gtest/gtest.h>

#include <set>

#include "data/resources.h"
#include "lexicon/word_list.h"
#include "tests/support/test_support.h"

namespace ostrane {
namespace {

// Splits raw bytes the simple way: words, then whatever follows the last CR LF.
struct RawList {
  std::vector<std::string> words;
  std::string tail;
};

RawList Raw(const std::string& bytes) {
  RawList raw;
  size_t pos = 0;
  for (size_t crlf; (crlf = bytes.find("\r\n", pos)) != std::string::npos; pos = crlf + 2)
    raw.words.push_back(bytes.substr(pos, crlf - pos));
  raw.tail = bytes.substr(pos);
  return raw;
}

bool AllCapitals(const std::string& word) {
  for (char c : word)
    if (c < 'A' || c > 'Z') return false;
  return true;
}

TEST(WordListData, EveryListIsInTheByteFormat) {
  std::set<std::string> seen;
  for (const std::string name :
       {"DICO", "DIC10", "DIC11", "DIC12", "DIC13", "DIC14", "DIC15"}) {
    SCOPED_TRACE(name);
    const std::string bytes = ReadResource(name);
    ASSERT_FALSE(bytes.empty());
    EXPECT_EQ(bytes.size() % 4, 0u);
    const RawList raw = Raw(bytes);
    ASSERT_FALSE(raw.words.empty());
    EXPECT_EQ(raw.tail, std::string(raw.tail.size(), '\0'));
    EXPECT_LT(raw.tail.size(), 4u);
    for (const std::string& word : raw.words) {
      ASSERT_TRUE(AllCapitals(word)) << word;
      if (name == "DICO") {
        ASSERT_GE(word.size(), 2u) << word;
        ASSERT_LE(word.size(), 9u) << word;
      } else {
        ASSERT_EQ("DIC" + std::to_string(word.size()), name) << word;
      }
      ASSERT_TRUE(seen.insert(word).second) << "twice: " << word;
    }
  }
}

TEST(WordListData, ShortListIsSortedByLengthThenAlphabetically) {
  const RawList raw = Raw(ReadResource("DICO"));
  int descents = 0;
  for (size_t i = 1; i < raw.words.size(); ++i) {
    const std::string& a = raw.words[i - 1];
    const std::string& b = raw.words[i];
    ASSERT_TRUE(a.size() < b.size() || (a.size() == b.size() && a < b)) << a << " " << b;
    descents += b < a;
  }
  // One place per change of length where the next word sorts lower.
  EXPECT_EQ(descents, 7);
}

TEST(WordListData, LongListsAreAlphabetical) {
  for (int length = 10; length <= 15; ++length) {
    const RawList raw = Raw(ReadResource("DIC" + std::to_string(length)));
    EXPECT_TRUE(std::is_sorted(raw.words.begin(), raw.words.end())) << length;
  }
}

TEST(WordListData, SplitKeepsOneTrailingElementThatIsNoWord) {
  for (int length = 10; length <= 15; ++length) {
    const std::string bytes = ReadResource("DIC" + std::to_string(length));
    LongWordList list;
    list.Load(bytes);
    const RawList raw = Raw(bytes);
    ASSERT_EQ(list.UBound(), int32_t(raw.words.size()));
    EXPECT_EQ(list.Element(list.UBound()), raw.tail);
    EXPECT_FALSE(list.Contains(raw.tail));
    EXPECT_EQ(list.Element(0), raw.words.front());
    EXPECT_EQ(list.Element(list.UBound() - 1), raw.words.back());
  }
}

TEST(WordListData, ListBytesRoundTripThroughTheLoader) {
  const std::vector<std::string> words = {"ABRACADABRA", "ABRACADABRE", "ZYGOMATIQUE"};
  const std::string bytes = test::ListBytes(words);
  EXPECT_EQ(bytes.size() % 4, 0u);
  LongWordList list;
  list.Load(bytes);
  ASSERT_EQ(list.UBound(), 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(list.Element(i), words[size_t(i)]);
  EXPECT_EQ(list.Element(3), std::string(bytes.size() - 39, '\0'));
}

TEST(WordListData, LongListFindsExactlyWhatAScanFinds) {
  // An unsorted list still answers like a scan of its elements.
  LongWordList list;
  list.Load(test::ListBytes({"ZZZZZZZZZZ", "AAAAAAAAAA", "MMMMMMMMMM"}));
  EXPECT_TRUE(list.Contains("AAAAAAAAAA"));
  EXPECT_TRUE(list.Contains("ZZZZZZZZZZ"));
  EXPECT_TRUE(list.Contains("MMMMMMMMMM"));
  EXPECT_FALSE(list.Contains("mmmmmmmmmm"));
  EXPECT_FALSE(list.Contains("BBBBBBBBBB"));
  EXPECT_FALSE(list.Contains(""));
}

TEST(WordListData, IndexOutsideTheListIsFatal) {
  test::FatalCatcher catcher;
  LongWordList list;
  list.Load(test::ListBytes({"AAAAAAAAAA"}));
  EXPECT_THROW(list.Element(2), test::FatalCalled);
  EXPECT_THROW(list.Element(-1), test::FatalCalled);
}

}  // namespace
}  // namespace ostrane
