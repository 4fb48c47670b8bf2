// The word tree over the whole embedded list, its construction rules, and the
// searches on it: words from a rack and along a mask.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <set>
#include <string_view>

#include "data/resources.h"
#include "lexicon/etager.h"
#include "lexicon/expressions.h"
#include "lexicon/tables.h"
#include "lexicon/word_list.h"
#include "tests/support/fake_host.h"
#include "tests/support/test_support.h"

namespace ostrane {
namespace {

using test::FatalCalled;

// The short word list, once.
const std::vector<std::string>& Words() {
  static const std::vector<std::string> words = [] {
    const SplitList list(ReadResource("DICO"));
    std::vector<std::string> all;
    for (int32_t i = 0; i < list.UBound(); ++i) all.emplace_back(list.Element(i));
    return all;
  }();
  return words;
}

TEST(WordTree, HoldsTheListAndNoOtherPrefixNumberedFrom28AndComparesLongWordsAsTheyStand) {
  const Lexicon& lexicon = test::RealLexicon();
  const ClsDico& dico = lexicon.Dico;
  ClsExpressions searcher;
  searcher.SubDico(lexicon);
  const std::set<std::string> words(Words().begin(), Words().end());
  std::set<std::string> prefixes;
  std::vector<int32_t> counts(16, 0);
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
  const std::string& first = Words().front();
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
  // The long lists compare exactly: a word in small letters is not found.
  for (size_t length = 10; length <= 15; ++length) {
    const LongWordList& longWords = lexicon.LongWords(length);
    ASSERT_GT(longWords.UBound(), 0);
    for (int32_t i = 0; i < longWords.UBound(); i += 97) {
      std::string word(longWords.Element(i)), lower = word, changed = word;
      EXPECT_TRUE(searcher.SubWordIsTrue(std::string_view(word))) << word;
      for (char& c : lower) c = LowerAscii(c);
      EXPECT_FALSE(searcher.SubWordIsTrue(std::string_view(lower))) << lower;
      changed.back() = changed.back() == 'Q' ? 'W' : 'Q';
      EXPECT_EQ(searcher.SubWordIsTrue(std::string_view(changed)), longWords.Contains(changed)) << changed;
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

// Words from a rack and along a mask, checked against brute-force filters of
// the word list on many generated racks and masks.
std::vector<std::string> Results(const ClsExpressions& searcher, int32_t count) {
  std::vector<std::string> results;
  for (int32_t i = 1; i <= count; ++i) results.emplace_back(searcher.GetMot(i));
  return results;
}

// Uses tiles for a word: a letter the rack holds is taken as itself, anything
// else takes a blank, whose letter goes into the brackets. False when the
// tiles run out.
struct Tiles {
  int letters[26] = {};
  int blanks = 0, left = 0;
  std::string jokers;
  explicit Tiles(const std::string& rack) : left(int(rack.size())) {
    for (char c : rack) c == '?' ? ++blanks : ++letters[c - 'A'];
  }
  bool Take(char c) {
    --left;
    int& count = letters[c - 'A'] > 0 ? letters[c - 'A'] : blanks;
    if (&count == &blanks && blanks > 0) jokers += c;
    return count-- > 0;
  }
  std::string Annotated(const std::string& word) const {
    return jokers.empty() ? word : word + " (" + jokers + ")";
  }
};

class PatternSearch : public ::testing::Test {
 protected:
  void SetUp() override { searcher_.SubDico(test::RealLexicon()); }

  // Fills the free cells of the mask from the tiles along `word`.
  static bool Fill(const std::string& mask, const std::string& word, Tiles& tiles) {
    for (size_t k = 0; k < word.size(); ++k)
      if (mask[k] == '*' ? !tiles.Take(word[k]) : mask[k] != word[k]) return false;
    return true;
  }

  // What the pattern search keeps for a mask: words of the tree that start at
  // the first cell, keep the fixed letters and fill the free cells from the
  // rack: ending on a free cell; ending on a fixed cell while tiles remain to
  // lay (the fixed cells are walked while the first remaining tile is tried,
  // so when only blanks remain, the blank's first letter "A" is already in the
  // brackets); and, once the rack is spent with only fixed cells behind, the
  // part up to the last free cell when it joined to the rest of the mask makes
  // a word of any length.
  std::vector<std::string> BruteMask(const std::string& mask, const std::string& rack, int minLength) const {
    std::vector<std::string> found;
    for (const std::string& word : Words()) {
      Tiles tiles(rack);
      if (word.size() > mask.size() || int(word.size()) < minLength || !Fill(mask, word, tiles)) continue;
      if (mask[word.size() - 1] != '*' && tiles.left == 0) continue;
      if (mask[word.size() - 1] != '*' && tiles.left == tiles.blanks) tiles.jokers += 'A';
      found.push_back(tiles.Annotated(word));
    }
    const size_t lastFree = mask.find_last_of('*');
    const size_t free = size_t(std::count(mask.begin(), mask.end(), '*'));
    if (free == rack.size() && free > 0 && lastFree + 1 < mask.size() && int(lastFree + 1) >= minLength) {
      for (const std::string& word : Words()) {  // the masks come from short words: so do the joined words
        Tiles tiles(rack);
        if (word.size() != mask.size() || !Fill(mask, word, tiles)) continue;
        // The head must be a path of the tree: the prefix of some short word.
        const std::string head = word.substr(0, lastFree + 1);
        if (std::any_of(Words().begin(), Words().end(),
                        [&](const std::string& w) { return w.starts_with(head); }))
          found.push_back(tiles.Annotated(head));
      }
    }
    std::sort(found.begin(), found.end());
    return found;
  }

  static std::string RandomRack(std::mt19937& random, int size, int blanks) {
    static const std::string bag =
        "AAAAAAAAABBCCDDDEEEEEEEEEEEEEEEFFGGHHIIIIIIIIJKLLLLLMMMNNNNNNOOOOOOPPQRRRRRRSSSSSSTTTTTTUUUUUUVVWXY"
        "Z";
    std::string rack(size_t(blanks), '?');  // the search moves them to the end
    for (int k = 0; k < size - blanks; ++k) rack += bag[random() % bag.size()];
    return rack;
  }

  ClsExpressions searcher_;
};

TEST_F(PatternSearch, CombinationsMatchABruteForceFilter) {
  std::mt19937 random(20261123);
  for (int round = 0; round < 60; ++round) {
    const std::string original = RandomRack(random, 2 + round % 6, round % 3 == 0 ? (round % 2 ? 2 : 1) : 0);
    std::vector<std::string> expected;
    for (const std::string& word : Words()) {
      Tiles tiles(original);
      if (word.size() <= original.size() &&
          std::all_of(word.begin(), word.end(), [&](char c) { return tiles.Take(c); }))
        expected.push_back(tiles.Annotated(word));
    }
    std::sort(expected.begin(), expected.end());
    std::string rack = original;
    EXPECT_EQ(Results(searcher_, searcher_.SubCombinaisons(rack)), expected) << original;
    // The blanks went to the end of the caller's rack, its letters kept.
    std::string moved = original;
    std::stable_partition(moved.begin(), moved.end(), [](char c) { return c != '?'; });
    EXPECT_EQ(rack, moved);
  }
}

TEST_F(PatternSearch, MasksMatchABruteForceFilter) {
  std::mt19937 random(4242);
  int nonEmpty = 0;
  for (int round = 0; round < 150; ++round) {
    // A mask made from a real word, some of its letters freed, sometimes cut.
    const std::string& source = Words()[random() % Words().size()];
    std::string mask = source;
    for (char& c : mask)
      if (random() % 3) c = '*';
    if (random() % 4 == 0) mask.resize(std::max<size_t>(2, mask.size() - 1));
    const int free = int(std::count(mask.begin(), mask.end(), '*'));
    const int blanks = round % 5 == 0 ? 1 : (round % 17 == 0 ? 2 : 0);
    const int rackSize = std::clamp(free + int(random() % 3) - 1, std::max(1, blanks), 7);
    std::string rack = RandomRack(random, rackSize, blanks);
    // Often give the rack the source's letters, so that the search finds something.
    if (round % 2 == 0) {
      rack.clear();
      for (size_t k = 0; k < mask.size(); ++k)
        if (mask[k] == '*' && rack.size() < 7) rack += source[k];
      if (blanks && !rack.empty()) rack[0] = '?';
    }
    const int minLength = 2 + int(random() % 3);
    const std::vector<std::string> expected = BruteMask(mask, rack, minLength);
    std::vector<std::string> actual = Results(searcher_, searcher_.SubSuivant(mask, rack, minLength));
    std::sort(actual.begin(), actual.end());
    EXPECT_EQ(actual, expected) << mask << " " << rack << " " << minLength;
    nonEmpty += !expected.empty();
  }
  EXPECT_GT(nonEmpty, 40);
}

// The order of the results follows the walk (real letters first, then each
// blank letter from A to Z); the stored text is the whole word when a fixed
// letter is walked while tiles remain, the part laid when the spent rack
// joins the rest of the mask; the long lists are reached only that way.
TEST(PatternSearchCases, OrderAndTheStoredTextFollowTheWalk) {
  const Lexicon lexicon =
      test::SmallLexicon({"AA", "AB", "ABC", "AC", "BA", "ZA", "CAB", "CAS", "ABACA", "CASERNEMENT"});
  ClsExpressions searcher;
  searcher.SubDico(lexicon);
  const struct {
    std::string mask, rack;
    int minLength;
    std::vector<std::string> expected;
  } cases[] = {
      {"*C", "A", 1, {"A"}},
      {"*C", "A", 2, {}},
      {"A**", "BC", 2, {"AB", "ABC", "AC"}},
      {"A**", "CB", 2, {"AC", "AB", "ABC"}},
      {"*ASERNEMENT", "C", 2, {}},
      {"*ASERNEMENT", "C", 1, {"C"}},
      {"*", "A", 2, {}},
      {"**", "?B", 2, {"BA (A)", "AB (A)"}},
      {"", "AA", 0, {"AA"}},  // no mask: the words the rack forms, sorted
      {"", "??", 0, {"AA (AA)", "AB (AB)", "AC (AC)", "BA (BA)", "ZA (ZA)"}},
      {"", "", 0, {}},
  };
  for (const auto& c : cases) {
    std::string rack = c.rack;
    const int32_t count =
        c.mask.empty() ? searcher.SubCombinaisons(rack) : searcher.SubSuivant(c.mask, rack, c.minLength);
    EXPECT_EQ(Results(searcher, count), c.expected) << c.mask << " " << c.rack;
  }
}

TEST(PatternSearchCases, AQuestionAbove6000AMessageFrom10001AndFatalIndexes) {
  std::vector<std::string> words;
  for (int k = 0; k < 17576; ++k)
    words.push_back(std::string{char('A' + k / 676), char('A' + k / 26 % 26), char('A' + k % 26)});
  const Lexicon lexicon = test::SmallLexicon(words);
  ClsExpressions searcher;
  searcher.SubDico(lexicon);
  test::AnsweringBoxes boxes;
  searcher.SetMessageBoxes(&boxes);
  // Yes: 17576 results, the question, then two messages, and nothing sorted.
  std::string rack = "???";
  EXPECT_EQ(searcher.SubCombinaisons(rack), 17576);
  const std::string tooMany =
      "Résultat de la recherche: 17576 mots\r\nLe nombre de possibilités est trop important.\r\n"
      "Veuillez affiner votre recherche.";
  EXPECT_EQ(boxes.Texts(),
            (std::vector<std::string>{"Attention ! \r\nLe nombre de solutions est supérieur à 6000.\r\n"
                                      "Le système risque d'être fortement ralenti.\r\n"
                                      "Continuer la recherche ?      ",
                                      tooMany, tooMany}));
  EXPECT_EQ(searcher.GetMot(2), "AAB (AAB)");
  // No: the first 6000 found, sorted.
  boxes.shown.clear();
  boxes.answers = {Answer::No};
  rack = "???";
  EXPECT_EQ(searcher.SubCombinaisons(rack), 6000);
  EXPECT_EQ(boxes.shown.size(), 1u);
  const std::vector<std::string> kept = Results(searcher, 6000);
  EXPECT_TRUE(std::is_sorted(kept.begin(), kept.end()));
  EXPECT_EQ(kept.back(), "IWT (IWT)");  // the 6000th word walked: 8 x 676 + 592
  EXPECT_EQ(searcher.GetMot(0), "");
  test::FatalCatcher catcher;
  EXPECT_THROW(searcher.GetMot(6001), test::FatalCalled);
  rack = "A1";
  EXPECT_THROW(searcher.SubCombinaisons(rack), test::FatalCalled);
}

}  // namespace
}  // namespace ostrane
