// The word tree over the whole embedded list, and its construction rules.
#include <gtest/gtest.h>

#include <set>
#include <string_view>
#include <unordered_set>

#include "data/resources.h"
#include "lexicon/etager.h"
#include "lexicon/expressions.h"
#include "lexicon/fatal.h"
#include "lexicon/tables.h"
#include "lexicon/word_list.h"
#include "tests/support/test_support.h"

namespace ostrane {
namespace {

std::vector<std::string> ShortWords() {
  const SplitList list(ReadResource("DICO"));
  std::vector<std::string> words;
  for (int32_t i = 0; i < list.UBound(); ++i) words.emplace_back(list.Element(i));
  return words;
}

class WholeTree : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { words_ = new std::vector<std::string>(ShortWords()); }
  static void TearDownTestSuite() { delete words_; }
  static const std::vector<std::string>& Words() { return *words_; }
  const Lexicon& lexicon_ = test::RealLexicon();
  ClsExpressions MakeSearcher() const {
    ClsExpressions searcher;
    searcher.SubDico(lexicon_);
    return searcher;
  }

 private:
  static std::vector<std::string>* words_;
};
std::vector<std::string>* WholeTree::words_ = nullptr;

TEST_F(WholeTree, EveryWordIsFoundAndEveryOtherPrefixIsNot) {
  const std::unordered_set<std::string> all(Words().begin(), Words().end());
  const ClsExpressions searcher = MakeSearcher();
  for (const std::string& word : Words()) {
    ASSERT_TRUE(searcher.SubWordIsTrue(std::string_view(word))) << word;
    for (size_t length = 2; length < word.size(); ++length) {
      const std::string prefix = word.substr(0, length);
      ASSERT_EQ(searcher.SubWordIsTrue(std::string_view(prefix)), all.count(prefix) == 1) << prefix;
    }
  }
}

TEST_F(WholeTree, NodesAreOnePerDistinctPrefixNumberedFrom28) {
  const ClsDico& dico = lexicon_.Dico;
  std::set<std::string> prefixes;
  for (const std::string& word : Words())
    for (size_t length = 2; length <= word.size(); ++length) prefixes.insert(word.substr(0, length));
  EXPECT_EQ(dico.LngLibre(), int32_t(27 + prefixes.size()));
  EXPECT_EQ(dico.EdgeCount(), int64_t(prefixes.size()));
  EXPECT_EQ(dico.WordEndCount(), int64_t(Words().size()));
  EXPECT_EQ(dico.NbMotsDico(), int32_t(Words().size()));

  // The first word of the list gets the first new node.
  const std::string& first = Words().front();
  EXPECT_EQ(dico.FindNode(LetterCode(first[0]), LetterCode(first[1])), ClsDico::kFirstFreeNode);
  for (int c = 1; c <= 26; ++c) {
    EXPECT_EQ(dico.FindNode(0, c), c);
    EXPECT_FALSE(dico.IsWordInNode(0, c));
    EXPECT_EQ(dico.FindNode(27, c), 0);
  }
  for (int32_t node : {0, 1, 28, dico.LngLibre()}) {
    EXPECT_EQ(dico.FindNode(node, 0), 0);
    EXPECT_FALSE(dico.IsWordInNode(node, 0));
  }
}

TEST_F(WholeTree, WordsPerLengthMatchTheList) {
  std::vector<int32_t> counts(16, 0);
  for (const std::string& word : Words()) ++counts[word.size()];
  EXPECT_EQ(lexicon_.Dico.CountsByLength(), counts);
  EXPECT_EQ(lexicon_.Dico.LgMaxArbre(), 9);
}

TEST_F(WholeTree, LongWordsAreCheckedAsTheyStand) {
  const ClsExpressions searcher = MakeSearcher();
  for (size_t length = 10; length <= 15; ++length) {
    const LongWordList& list = lexicon_.LongWords(length);
    ASSERT_GT(list.UBound(), 0);
    for (int32_t i = 0; i < list.UBound(); i += 97) {
      std::string word(list.Element(i));
      EXPECT_TRUE(searcher.SubWordIsTrue(std::string_view(word))) << word;
      std::string lower = word;
      for (char& c : lower) c = LowerAscii(c);
      // The long lists compare exactly: a word in small letters is not found.
      EXPECT_FALSE(searcher.SubWordIsTrue(std::string_view(lower))) << lower;
      std::string changed = word;
      changed.back() = changed.back() == 'Q' ? 'W' : 'Q';
      if (!list.Contains(changed)) {
        EXPECT_FALSE(searcher.SubWordIsTrue(std::string_view(changed)));
      }
    }
    // The extra element behind the last CR LF is never a word.
    EXPECT_FALSE(list.Contains(list.Element(list.UBound())));
  }
  EXPECT_FALSE(searcher.SubWordIsTrue(std::string_view("ABCDEFGHIJKLMNOP")));
}

TEST_F(WholeTree, ShortWordsAreUpperCasedInPlaceAndReportTheirLastNode) {
  const ClsExpressions searcher = MakeSearcher();
  const std::string& sample = Words()[Words().size() / 2];
  std::string word = sample;
  for (char& c : word) c = LowerAscii(c);
  int32_t node = 0;
  EXPECT_TRUE(searcher.SubWordIsTrue(word, node));
  EXPECT_EQ(word, sample);
  // The node reached is that of the whole word.
  int32_t walked = LetterCode(sample[0]);
  for (size_t k = 1; k < sample.size(); ++k) walked = lexicon_.Dico.FindNode(walked, LetterCode(sample[k]));
  EXPECT_EQ(node, walked);

  // Given a node, the first letter is not looked at: the walk goes on from it.
  std::string other = "?" + sample.substr(1);
  int32_t start = LetterCode(sample[0]);
  EXPECT_TRUE(searcher.SubWordIsTrue(other, start));

  std::string one = "A";
  int32_t fresh = 0;
  EXPECT_FALSE(searcher.SubWordIsTrue(one, fresh));
}

TEST(WordTree, SmallTreeSharesEdgesAndMarksEnds) {
  const Lexicon lexicon = test::SmallLexicon({"AA", "ABAT", "ABATS", "BU"});
  const ClsDico& dico = lexicon.Dico;
  EXPECT_EQ(dico.FindNode(1, 1), 28);  // AA
  EXPECT_TRUE(dico.IsWordInNode(1, 1));
  const int32_t ab = dico.FindNode(1, 2);
  const int32_t aba = dico.FindNode(ab, 1);
  const int32_t abat = dico.FindNode(aba, 20);
  EXPECT_NE(aba, 0);
  EXPECT_FALSE(dico.IsWordInNode(ab, 1));  // ABA has a node but is no word
  EXPECT_TRUE(dico.IsWordInNode(aba, 20));
  EXPECT_TRUE(dico.IsWordInNode(abat, 19));
  EXPECT_NE(dico.FindNode(abat, 19), 0);  // the last letter gets a node too
  EXPECT_EQ(dico.LngLibre(), 27 + 6);     // AA AB ABA ABAT ABATS BU
}

TEST(WordTree, QueriesOutsideTheTreeAreFatal) {
  const Lexicon lexicon = test::SmallLexicon({"AA"});
  test::FatalCatcher catcher;
  EXPECT_THROW(lexicon.Dico.FindNode(0, 27), test::FatalCalled);
  EXPECT_THROW(lexicon.Dico.FindNode(0, -1), test::FatalCalled);  // the blank "?"
  // Spare nodes past the last one handed out answer like empty ones.
  EXPECT_EQ(lexicon.Dico.FindNode(lexicon.Dico.UpperBound() + 1, 1), 0);
  EXPECT_FALSE(lexicon.Dico.IsWordInNode(lexicon.Dico.ArrayBound(), 1));
  EXPECT_THROW(lexicon.Dico.IsWordInNode(lexicon.Dico.ArrayBound() + 1, 1), test::FatalCalled);
  EXPECT_THROW(lexicon.Dico.FindNode(-1, 1), test::FatalCalled);
}

TEST(WordTree, BadLinesEndTheBuildWithInternalError102) {
  test::FatalCatcher catcher;
  const auto build = [](const std::vector<std::string>& words) {
    ClsDico dico;
    dico.DictionaryOrg(test::ListBytes(words));
  };
  try {
    build({"AB", "A1"});
    FAIL();
  } catch (const test::FatalCalled& error) {
    EXPECT_EQ(std::string(error.what()),
              "Erreur interne 102 - 9\r\nL'indice n'appartient pas à la sélection.      ");
  }
  try {
    build({"AB", "C"});
    FAIL();
  } catch (const test::FatalCalled& error) {
    EXPECT_EQ(std::string(error.what()),
              "Erreur interne 102 - 5\r\nArgument ou appel de procédure incorrect.      ");
  }
  EXPECT_THROW(build({"ab"}), test::FatalCalled);
}

TEST(WordTree, ProgressComesAtEveryTenThousandthWord) {
  std::vector<std::string> words;
  for (char a = 'A'; a <= 'B'; ++a)
    for (char b = 'A'; b <= 'Z'; ++b)
      for (char c = 'A'; c <= 'Z'; ++c)
        for (char d = 'A'; d <= 'Z'; ++d)
          if (words.size() < 25000) words.push_back(std::string{a, b, c, d});
  std::vector<std::pair<int32_t, std::string>> seen;
  ClsDico dico;
  dico.DictionaryOrg(test::ListBytes(words),
                     [&](int32_t index, const std::string& text) { seen.emplace_back(index, text); });
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[0], std::make_pair(10000, std::string("34 %")));  // 10000 * 100 / 25000 - 6
  EXPECT_EQ(seen[1], std::make_pair(20000, std::string("74 %")));
}

TEST(RackStack, PushesPopsAndItsTwoFatalEnds) {
  ClsEtager stack;
  EXPECT_EQ(stack.RazEtager(50), 0);
  stack.SubTirer(12345);
  int32_t value = 0;
  stack.SubMuse(value);
  EXPECT_EQ(value, 12345);
  EXPECT_EQ(stack.Count(), 0);

  test::FatalCatcher catcher;
  for (int i = 1; i <= 50; ++i) stack.SubTirer(i);
  EXPECT_THROW(stack.SubTirer(51), test::FatalCalled);
  for (int i = 50; i >= 1; --i) {
    stack.SubMuse(value);
    EXPECT_EQ(value, i);
  }
  try {
    stack.SubMuse(value);
    FAIL();
  } catch (const test::FatalCalled& error) {
    EXPECT_EQ(std::string(error.what()), "Erreur interne 101.\r\nImpossible de continuer      ");
  }
}

}  // namespace
}  // namespace ostrane
