#pragma once
// Words from the lexicon: whether a string is a word, which words a rack can
// form, and which words fit a mask of fixed and free cells.
//
// Racks hold letters and "?" for a blank. A result is a word in capitals,
// followed, when blanks were used, by a blank and the letters they stand for
// in brackets, in the order of use: "ZEBRE (ZE)".

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "lexicon/etager.h"
#include "lexicon/messages.h"
#include "lexicon/yield.h"

namespace ostrane {

struct Lexicon;

class ClsExpressions {
 public:
  ClsExpressions();

  // Joins the lexicon; must come before anything else.
  void SubDico(const Lexicon& lexicon);
  // Where the questions of a too large search go; without one, every question
  // is answered Yes and every message is dropped.
  void SetMessageBoxes(MessageBoxes* boxes) { boxes_ = boxes; }
  // Called once per letter tried for a blank in the pattern search.
  void SetYield(YieldHook hook) { yield_ = hook; }

  // Is `mot` a word? 10 to 15 characters are compared as they stand with the
  // long lists; up to 9 are upper-cased in place and walked in the tree from
  // `noeud` (0: from the first letter), which holds the last node on return.
  bool SubWordIsTrue(std::string& mot, int32_t& noeud) const;
  // The same from node 0, on a copy.
  bool SubWordIsTrue(std::string_view mot) const;

  // All words that the rack can form, sorted. Moves the rack's "?" to its end.
  // Over 6000 results asks whether to go on; a No keeps the first 6000.
  int32_t SubCombinaisons(std::string& lettres);
  // All words that start at the mask's first cell, keep its fixed letters,
  // fill its "*" from the rack, and have at least `lgMini` letters, in the
  // order found. Moves the rack's "?" to its end.
  int32_t SubSuivant(std::string_view masque, std::string& lettres, int lgMini);

  // Result i, from 1; index 0 reads empty. Outside the results it is an index
  // error that ends the program.
  std::string_view GetMot(int32_t i) const;
  // The upper bound of the results: their count.
  int32_t SubEntierMot() const { return int32_t(offsets_.size()) - 1; }

  // Sorts of the results: plain character order, and longest first. Neither
  // runs at 10001 results or more; each then shows a message instead.
  void SubRange();
  void SubRangeLong();

 private:
  void Reset();
  void PrepareRack(std::string& lettres);
  void SubAjoute();
  void SubPermute(const char* letters, int count, int32_t node);
  void PermuteStep(char letter, const char* letters, int count, int i, int32_t node,
                   uint32_t& tried);
  void SubMasque(const char* letters, int count, int32_t& node, int& pos);
  void MasqueStep(char letter, const char* letters, int count, int i, int32_t& node, int& pos,
                  uint32_t& tried);
  void CutTo(int32_t count);
  void TooManyToSort();
  // The results in their order, for a sort; false when there is nothing to
  // sort, or too much (the message of TooManyToSort shown).
  bool ResultsToSort(std::vector<std::string_view>& order);
  // Rebuilds the results in the order of `order`.
  void Reorder(std::vector<std::string_view>& order);

  const Lexicon* lexicon_ = nullptr;
  MessageBoxes* boxes_ = nullptr;
  YieldHook yield_;
  ClsEtager pileNoeuds_;

  // Results: result i is buffer_[offsets_[i-1], offsets_[i]).
  std::string buffer_;
  std::vector<uint32_t> offsets_;
  int32_t capacity_ = 0;  // the bound of the results, NbMotsDico

  // The current walk.
  char rack_[64] = {};
  char mask_[64] = {};  // 1-based: mask_[1] is the first cell
  int maskLen_ = 0;
  char word_[64] = {};
  int wordLen_ = 0;
  char jokers_[64] = {};
  int jokersLen_ = 0;
  int minLen_ = 0;
  std::string scratch_;
};

}  // namespace ostrane
