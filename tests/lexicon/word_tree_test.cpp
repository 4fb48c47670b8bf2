// The word tree over the whole embedded list, and its construction rules.
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string_view>

#include "data/resources.h"
#include "lexicon/etager.h"
#include "lexicon/expressions.h"
#include "lexicon/tables.h"
#include "lexicon/word_list.h"
#include "tests/support/test_support.h"

namespace ostrane {
namespace {

using test::FatalCalled;

TEST(WordTree, EveryWordIsFoundEveryOtherPrefixIsNotAndNodesAreOnePerPrefixFrom28) {
  const SplitList list(ReadResource("DICO"));
  const Lexicon& lexicon = test::RealLexicon();
  const ClsDico& dico = lexicon.Dico;
  ClsExpressions searcher;
  searcher.SubDico(lexicon);
  std::set<std::string> words, prefixes;
  std::vector<int32_t> counts(16, 0);
  for (int32_t i = 0; i < list.UBound(); ++i) words.emplace(list.Element(i));
  for (const std::string& word : words) {
    ++counts[word.size()];
    ASSERT_TRUE(searcher.SubWordIsTrue(std::string_view(word))) << word;
    for (size_t length = 2; length <= word.size(); ++length) {
      const std::string prefix = word.substr(0, length);
      ASSERT_TRUE(!prefixes.insert(prefix).second ||
                  searcher.SubWordIsTrue(std::string_view(prefix)) == (words.count(prefix) == 1))
          << prefix;
    }
  }
  EXPECT_EQ(dico.LngLibre(), int32_t(27 + prefixes.size()));
  EXPECT_EQ(dico.EdgeCount(), int64_t(prefixes.size()));
  EXPECT_EQ(dico.WordEndCount(), int64_t(words.size()));
  EXPECT_EQ(dico.NbMotsDico(), int32_t(words.size()));
  EXPECT_EQ(dico.CountsByLength(), counts);
  EXPECT_EQ(dico.LgMaxArbre(), 9);
  // Root 0, the letters 1 to 26, node 27 unused, and the list's first word
  // gets the first new node.
  const std::string first(list.Element(0));
  EXPECT_EQ(dico.FindNode(LetterCode(first[0]), LetterCode(first[1])), 28);
  for (int c = 1; c <= 26; ++c) {
    EXPECT_EQ(dico.FindNode(0, c), c);
    EXPECT_FALSE(dico.IsWordInNode(0, c));
    EXPECT_EQ(dico.FindNode(27, c), 0);
  }
  for (int32_t node : {0, 1, 28, dico.LngLibre()}) {
    EXPECT_EQ(dico.FindNode(node, 0), 0);
    EXPECT_FALSE(dico.IsWordInNode(node, 0));
  }
  // A short word is upper-cased in place and reports the node of its end;
  // given a node, the walk goes on from it without reading the first letter.
  const std::string sample(list.Element(list.UBound() / 2));
  std::string word = sample;
  for (char& c : word) c = LowerAscii(c);
  int32_t node = 0, walked = LetterCode(sample[0]);
  EXPECT_TRUE(searcher.SubWordIsTrue(word, node));
  EXPECT_EQ(word, sample);
  for (size_t k = 1; k < sample.size(); ++k) walked = dico.FindNode(walked, LetterCode(sample[k]));
  EXPECT_EQ(node, walked);
  std::string other = "?" + sample.substr(1), one = "A";
  node = LetterCode(sample[0]);
  EXPECT_TRUE(searcher.SubWordIsTrue(other, node));
  node = 0;
  EXPECT_FALSE(searcher.SubWordIsTrue(one, node));
}

TEST(WordTree, LongWordsAreCheckedAsTheyStand) {
  ClsExpressions searcher;
  searcher.SubDico(test::RealLexicon());
  for (size_t length = 10; length <= 15; ++length) {
    const LongWordList& list = test::RealLexicon().LongWords(length);
    ASSERT_GT(list.UBound(), 0);
    for (int32_t i = 0; i < list.UBound(); i += 97) {
      std::string word(list.Element(i)), lower = word, changed = word;
      EXPECT_TRUE(searcher.SubWordIsTrue(std::string_view(word))) << word;
      // The long lists compare exactly: a word in small letters is not found.
      for (char& c : lower) c = LowerAscii(c);
      EXPECT_FALSE(searcher.SubWordIsTrue(std::string_view(lower))) << lower;
      changed.back() = changed.back() == 'Q' ? 'W' : 'Q';
      EXPECT_EQ(searcher.SubWordIsTrue(std::string_view(changed)), list.Contains(changed)) << changed;
    }
  }
  EXPECT_FALSE(searcher.SubWordIsTrue(std::string_view("ABCDEFGHIJKLMNOP")));
}

std::string FatalText(const std::function<void()>& run) {
  try {
    run();
  } catch (const FatalCalled& error) {
    return error.what();
  }
  return "no fatal error";
}

TEST(WordTree, QueriesOutsideTheTreeAndBadLinesAreFatal) {
  const Lexicon lexicon = test::SmallLexicon({"AA"});
  const ClsDico& dico = lexicon.Dico;
  test::FatalCatcher catcher;
  EXPECT_THROW(dico.FindNode(0, 27), FatalCalled);
  EXPECT_THROW(dico.FindNode(0, -1), FatalCalled);  // the blank "?"
  EXPECT_THROW(dico.FindNode(-1, 1), FatalCalled);
  // Spare nodes past the last one handed out answer like empty ones.
  EXPECT_EQ(dico.FindNode(dico.UpperBound() + 1, 1), 0);
  EXPECT_FALSE(dico.IsWordInNode(dico.ArrayBound(), 1));
  EXPECT_THROW(dico.IsWordInNode(dico.ArrayBound() + 1, 1), FatalCalled);
  const auto build = [](const std::vector<std::string>& words) {
    return [words] { ClsDico().DictionaryOrg(test::ListBytes(words)); };
  };
  EXPECT_EQ(FatalText(build({"AB", "A1"})),
            "Erreur interne 102 - 9\r\nL'indice n'appartient pas à la sélection.      ");
  EXPECT_EQ(FatalText(build({"AB", "C"})),
            "Erreur interne 102 - 5\r\nArgument ou appel de procédure incorrect.      ");
  EXPECT_THROW(build({"ab"})(), FatalCalled);
}

TEST(WordTree, ProgressComesAtEveryTenThousandthWord) {
  std::vector<std::string> words;
  for (int k = 0; k < 25000; ++k)
    words.push_back(std::string{char('A' + k / 17576), char('A' + k / 676 % 26), char('A' + k / 26 % 26),
                                char('A' + k % 26)});
  std::vector<std::pair<int32_t, std::string>> seen;
  ClsDico().DictionaryOrg(test::ListBytes(words),
                          [&](int32_t index, const std::string& text) { seen.emplace_back(index, text); });
  // 10000 * 100 / 25000 - 6
  EXPECT_EQ(seen, (std::vector<std::pair<int32_t, std::string>>{{10000, "34 %"}, {20000, "74 %"}}));
}

TEST(RackStack, PushesPopsAndItsTwoFatalEnds) {
  ClsEtager stack;
  EXPECT_EQ(stack.RazEtager(50), 0);
  test::FatalCatcher catcher;
  for (int i = 1; i <= 50; ++i) stack.SubTirer(i);
  EXPECT_THROW(stack.SubTirer(51), FatalCalled);
  int32_t value = 0;
  for (int i = 50; i >= 1; --i) {
    stack.SubMuse(value);
    EXPECT_EQ(value, i);
  }
  EXPECT_EQ(stack.Count(), 0);
  EXPECT_EQ(FatalText([&] { stack.SubMuse(value); }), "Erreur interne 101.\r\nImpossible de continuer      ");
}

}  // namespace
}  // namespace ostrane
