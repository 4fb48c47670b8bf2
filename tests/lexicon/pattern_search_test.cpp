// Words from a rack and along a mask, checked against brute-force filters of
// the word list on many generated racks and masks.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "data/resources.h"
#include "lexicon/expressions.h"
#include "lexicon/word_list.h"
#include "tests/support/test_support.h"

namespace ostrane {
namespace {

struct ScriptedBoxes : MessageBoxes {
  Answer answer = Answer::Yes;
  std::vector<std::string> texts;
  Answer MsgBox(const std::string& text, BoxStyle style) override {
    texts.push_back(text);
    return style.buttons == Buttons::YesNo ? answer : Answer::Ok;
  }
};

std::vector<std::string> Results(const ClsExpressions& searcher, int32_t count) {
  std::vector<std::string> results;
  for (int32_t i = 1; i <= count; ++i) results.emplace_back(searcher.GetMot(i));
  return results;
}

std::vector<std::string> ShortWords() {
  const SplitList list(ReadResource("DICO"));
  std::vector<std::string> words;
  for (int32_t i = 0; i < list.UBound(); ++i) words.emplace_back(list.Element(i));
  return words;
}

// Uses tiles for a word: a letter the rack holds is taken as itself, anything
// else takes a blank, whose letter goes into the brackets. False when the
// tiles run out.
struct Tiles {
  int letters[26] = {};
  int blanks = 0;
  explicit Tiles(const std::string& rack) {
    for (char c : rack) c == '?' ? ++blanks : ++letters[c - 'A'];
  }
  int Letters() const {
    int n = 0;
    for (int k : letters) n += k;
    return n;
  }
  int Count() const { return blanks + Letters(); }
  bool Take(char c, std::string& jokers) {
    if (letters[c - 'A'] > 0) return --letters[c - 'A'], true;
    if (blanks > 0) return --blanks, jokers += c, true;
    return false;
  }
};

std::string Annotated(const std::string& word, const std::string& jokers) {
  return jokers.empty() ? word : word + " (" + jokers + ")";
}

// Every word of the tree that the rack can form.
std::vector<std::string> BruteCombinations(const std::vector<std::string>& words, const std::string& rack) {
  std::vector<std::string> found;
  for (const std::string& word : words) {
    Tiles tiles(rack);
    std::string jokers;
    bool ok = word.size() <= rack.size();
    for (size_t k = 0; ok && k < word.size(); ++k) ok = tiles.Take(word[k], jokers);
    if (ok) found.push_back(Annotated(word, jokers));
  }
  std::sort(found.begin(), found.end());
  return found;
}

// What the pattern search keeps for a mask: words of the tree that start at the
// first cell, keep the fixed letters and fill the free cells from the rack:
// ending on a free cell; ending on a fixed cell while tiles remain to lay (the
// fixed cells are walked while the first remaining tile is tried, so when only
// blanks remain, the blank's first letter "A" is already in the brackets); and,
// once the rack is spent with only fixed cells behind, the part up to the last
// free cell when it joined to the rest of the mask makes a word of any length.
std::vector<std::string> BruteMask(const std::vector<std::string>& words, const ClsExpressions& checker,
                                   const Lexicon& lexicon, const std::string& mask, const std::string& rack,
                                   int minLength) {
  std::vector<std::string> found;
  const size_t free = size_t(std::count(mask.begin(), mask.end(), '*'));
  const size_t lastFree = mask.find_last_of('*');
  const auto fill = [&](const std::string& word, std::string& jokers, Tiles& tiles) {
    for (size_t k = 0; k < word.size(); ++k) {
      if (mask[k] == '*') {
        if (!tiles.Take(word[k], jokers)) return false;
      } else if (mask[k] != word[k]) {
        return false;
      }
    }
    return true;
  };
  for (const std::string& word : words) {
    if (word.size() > mask.size() || int(word.size()) < minLength) continue;
    Tiles tiles(rack);
    std::string jokers;
    if (!fill(word, jokers, tiles)) continue;
    if (mask[word.size() - 1] == '*') {
      found.push_back(Annotated(word, jokers));
    } else if (tiles.Count() > 0) {
      found.push_back(Annotated(word, tiles.Letters() > 0 ? jokers : jokers + "A"));
    }
  }
  // The spent rack joined to a fixed tail.
  if (free == rack.size() && free > 0 && lastFree + 1 < mask.size() && int(lastFree + 1) >= minLength) {
    std::vector<std::string> candidates;
    if (mask.size() <= 9) {
      for (const std::string& word : words)
        if (word.size() == mask.size()) candidates.push_back(word);
    } else {
      const LongWordList& list = lexicon.LongWords(mask.size());
      for (int32_t i = 0; i < list.UBound(); ++i) candidates.emplace_back(list.Element(i));
    }
    for (const std::string& word : candidates) {
      Tiles tiles(rack);
      std::string jokers;
      if (!fill(word, jokers, tiles)) continue;
      const std::string head = word.substr(0, lastFree + 1);
      // The head must be a path of the tree: the prefix of some short word.
      bool path = false;
      for (const std::string& shortWord : words)
        if (shortWord.size() >= head.size() && shortWord.compare(0, head.size(), head) == 0) {
          path = true;
          break;
        }
      if (path && checker.SubWordIsTrue(std::string_view(word))) found.push_back(Annotated(head, jokers));
    }
  }
  std::sort(found.begin(), found.end());
  return found;
}

class PatternSearch : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { words_ = new std::vector<std::string>(ShortWords()); }
  static void TearDownTestSuite() { delete words_; }
  const std::vector<std::string>& Words() const { return *words_; }
  ClsExpressions Searcher() const {
    ClsExpressions searcher;
    searcher.SubDico(test::RealLexicon());
    return searcher;
  }
  static std::vector<std::string>* words_;
};
std::vector<std::string>* PatternSearch::words_ = nullptr;

std::string RandomRack(std::mt19937& random, int size, int blanks) {
  static const std::string bag = "AAAAAAAAABBCCDDDEEEEEEEEEEEEEEEFFGGHHIIIIIIIIJKLLLLLMMMNNNNNNOOOOOOPPQRRRRRRSSSSSSTTTTTTUUUUUUVVWXYZ";
  std::string rack;
  for (int k = 0; k < size - blanks; ++k) rack += bag[random() % bag.size()];
  rack.insert(0, std::string(size_t(blanks), '?'));  // the search moves them to the end
  return rack;
}

TEST_F(PatternSearch, CombinationsMatchABruteForceFilter) {
  std::mt19937 random(20261123);
  ClsExpressions searcher = Searcher();
  for (int round = 0; round < 60; ++round) {
    const int blanks = round % 3 == 0 ? (round % 2 ? 2 : 1) : 0;
    std::string rack = RandomRack(random, 2 + round % 6, blanks);
    std::string original = rack;
    SCOPED_TRACE(rack);
    const int32_t count = searcher.SubCombinaisons(rack);
    EXPECT_EQ(Results(searcher, count), BruteCombinations(Words(), original));
    // The blanks went to the end of the caller's rack, its letters kept.
    std::string expected = original;
    std::stable_partition(expected.begin(), expected.end(), [](char c) { return c != '?'; });
    EXPECT_EQ(rack, expected);
  }
}

TEST_F(PatternSearch, MasksMatchABruteForceFilter) {
  std::mt19937 random(4242);
  ClsExpressions searcher = Searcher();
  const ClsExpressions checker = Searcher();
  int nonEmpty = 0;
  for (int round = 0; round < 150; ++round) {
    // A mask made from a real word, some of its letters freed, sometimes cut.
    const std::string& source = Words()[random() % Words().size()];
    std::string mask = source;
    for (char& c : mask)
      if (random() % 3) c = '*';
    if (random() % 4 == 0) mask.resize(std::max<size_t>(2, mask.size() - 1));
    const size_t free = size_t(std::count(mask.begin(), mask.end(), '*'));
    const int blanks = round % 5 == 0 ? 1 : (round % 17 == 0 ? 2 : 0);
    int rackSize = int(free) + int(random() % 3) - 1;
    rackSize = std::clamp(rackSize, std::max(1, blanks), 7);
    std::string rack = RandomRack(random, rackSize, blanks);
    // Often give the rack the source's letters, so that the search finds something.
    if (round % 2 == 0) {
      std::string needed;
      for (size_t k = 0; k < mask.size(); ++k)
        if (mask[k] == '*') needed += source[k];
      rack = needed.substr(0, 7);
      if (blanks && !rack.empty()) rack[0] = '?';
    }
    const int minLength = 2 + int(random() % 3);
    SCOPED_TRACE(mask + " " + rack + " " + std::to_string(minLength));
    std::string working = rack;
    const std::vector<std::string> expected = BruteMask(Words(), checker, test::RealLexicon(), mask, rack, minLength);
    std::vector<std::string> actual = Results(searcher, searcher.SubSuivant(mask, working, minLength));
    std::sort(actual.begin(), actual.end());
    EXPECT_EQ(actual, expected);
    nonEmpty += !expected.empty();
  }
  EXPECT_GT(nonEmpty, 40);
}

TEST(PatternSearchCases, OrderAndTheStoredTextFollowTheWalk) {
  const Lexicon lexicon = test::SmallLexicon({"AB", "ABC", "AC", "BA", "CAB", "CAS", "ABACA", "CASERNEMENT"});
  ClsExpressions searcher;
  searcher.SubDico(lexicon);

  std::string rack = "A";
  // Mask "*C": nothing in the walk; the spent rack joined to "C" makes "AC",
  // and "A" is what is kept.
  EXPECT_EQ(Results(searcher, searcher.SubSuivant("*C", rack, 1)), std::vector<std::string>{"A"});
  rack = "A";
  EXPECT_EQ(Results(searcher, searcher.SubSuivant("*C", rack, 2)), std::vector<std::string>{});

  // A fixed letter walked while tiles remain is stored as the whole word.
  rack = "BC";
  EXPECT_EQ(Results(searcher, searcher.SubSuivant("A**", rack, 2)),
            (std::vector<std::string>{"AB", "ABC", "AC"}));
  rack = "CB";
  EXPECT_EQ(Results(searcher, searcher.SubSuivant("A**", rack, 2)),
            (std::vector<std::string>{"AC", "AB", "ABC"}));

  // The long lists are reached only through the spent rack.
  rack = "C";
  EXPECT_EQ(Results(searcher, searcher.SubSuivant("*ASERNEMENT", rack, 2)), std::vector<std::string>{});
  rack = "C";
  EXPECT_EQ(Results(searcher, searcher.SubSuivant("*ASERNEMENT", rack, 1)), std::vector<std::string>{"C"});

  // One cell is too short for a least length of 2.
  rack = "A";
  EXPECT_EQ(searcher.SubSuivant("*", rack, 2), 0);
  // Blanks: each letter once, in the order A to Z, real letters first.
  rack = "?B";
  EXPECT_EQ(Results(searcher, searcher.SubSuivant("**", rack, 2)),
            (std::vector<std::string>{"BA (A)", "AB (A)"}));
  EXPECT_EQ(rack, "B?");
}

TEST(PatternSearchCases, DoubledLettersAndBlanksGiveEachWordOnce) {
  const Lexicon lexicon = test::SmallLexicon({"AA", "AB", "BA", "ZA"});
  ClsExpressions searcher;
  searcher.SubDico(lexicon);
  std::string rack = "AA";
  EXPECT_EQ(Results(searcher, searcher.SubCombinaisons(rack)), std::vector<std::string>{"AA"});
  rack = "??";
  EXPECT_EQ(Results(searcher, searcher.SubCombinaisons(rack)),
            (std::vector<std::string>{"AA (AA)", "AB (AB)", "BA (BA)", "ZA (ZA)"}));
  rack = "";
  EXPECT_EQ(searcher.SubCombinaisons(rack), 0);
}

TEST(PatternSearchCases, AQuestionAbove6000AndAMessageFrom10001) {
  std::vector<std::string> words;
  for (char a = 'A'; a <= 'Z'; ++a)
    for (char b = 'A'; b <= 'Z'; ++b)
      for (char c = 'A'; c <= 'Z'; ++c) words.push_back(std::string{a, b, c});
  const Lexicon lexicon = test::SmallLexicon(words);
  ClsExpressions searcher;
  searcher.SubDico(lexicon);
  ScriptedBoxes boxes;
  searcher.SetMessageBoxes(&boxes);

  // 17576 results: the question, then two messages, and nothing sorted.
  std::string rack = "???";
  boxes.answer = Answer::Yes;
  EXPECT_EQ(searcher.SubCombinaisons(rack), 17576);
  ASSERT_EQ(boxes.texts.size(), 3u);
  EXPECT_EQ(boxes.texts[0],
            "Attention ! \r\nLe nombre de solutions est supérieur à 6000.\r\n"
            "Le système risque d'être fortement ralenti.\r\nContinuer la recherche ?      ");
  EXPECT_EQ(boxes.texts[1],
            "Résultat de la recherche: 17576 mots\r\nLe nombre de possibilités est trop important.\r\n"
            "Veuillez affiner votre recherche.");
  EXPECT_EQ(boxes.texts[2], boxes.texts[1]);
  EXPECT_EQ(searcher.GetMot(1), "AAA (AAA)");
  EXPECT_EQ(searcher.GetMot(2), "AAB (AAB)");

  // No: the first 6000 found, sorted.
  boxes.texts.clear();
  boxes.answer = Answer::No;
  rack = "???";
  EXPECT_EQ(searcher.SubCombinaisons(rack), 6000);
  EXPECT_EQ(boxes.texts.size(), 1u);
  const std::vector<std::string> kept = Results(searcher, 6000);
  EXPECT_TRUE(std::is_sorted(kept.begin(), kept.end()));
  EXPECT_EQ(kept.back(), "IWT (IWT)");  // the 6000th word walked: 8 x 676 + 592
}

TEST(PatternSearchCases, ResultsOutsideTheListAreFatal) {
  const Lexicon lexicon = test::SmallLexicon({"AA"});
  ClsExpressions searcher;
  searcher.SubDico(lexicon);
  std::string rack = "AA";
  ASSERT_EQ(searcher.SubCombinaisons(rack), 1);
  EXPECT_EQ(searcher.GetMot(0), "");
  test::FatalCatcher catcher;
  EXPECT_THROW(searcher.GetMot(2), test::FatalCalled);
  rack = "A1";
  EXPECT_THROW(searcher.SubCombinaisons(rack), test::FatalCalled);
}

}  // namespace
}  // namespace ostrane
