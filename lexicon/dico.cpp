#include "lexicon/dico.h"

#include <cmath>
#include <cstdio>

#include "lexicon/fatal.h"
#include "lexicon/tables.h"
#include "lexicon/word_list.h"

namespace ostrane {
namespace {

// The run-time errors that a bad line of the list raises, with their texts.
constexpr int kErrIndex = 9;
constexpr int kErrArgument = 5;
constexpr std::string_view kTextIndex = "L'indice n'appartient pas à la sélection";
constexpr std::string_view kTextArgument = "Argument ou appel de procédure incorrect";

[[noreturn]] void InsertionError(int number) {
  Fatal(InternalError102Text(number, number == kErrIndex ? kTextIndex : kTextArgument));
}

std::string PercentText(int32_t index, int32_t count) {
  // The percentage runs a little behind, so that the long lists loaded
  // afterwards can go on from 95 %.
  long value = count > 0 ? std::lround(double(index) * 100.0 / double(count) - 6.0) : 0;
  if (value < 0) value = 0;
  char text[32];
  std::snprintf(text, sizeof text, "%02ld %%", value);
  return text;
}

}  // namespace

void ClsDico::IndexError(int32_t pere, int idx) {
  FatalIndex("noeud " + std::to_string(pere) + ", lettre", idx);
}

bool ClsDico::DictionaryOrg(std::string_view dicoBytes, const Progress& progress) {
  const SplitList lines(dicoBytes);
  nbMots_ = lines.UBound();
  byLength_.assign(16, 0);
  lgMax_ = 0;

  // One node per distinct prefix of two letters or more, plus the fixed 28:
  // never more than the letters after the first of every word.
  size_t most = size_t(kFirstFreeNode);
  for (int32_t i = 0; i < nbMots_; ++i) most += lines.Element(i).size();
  block_ = HugeBlock(most * sizeof(Node));
  nodes_ = reinterpret_cast<Node*>(block_.data());
  capacity_ = most;
  count_ = size_t(kFirstFreeNode);
  lngLibre_ = kFirstFreeNode - 1;
  for (int i = 1; i <= 26; ++i) nodes_[0].next[i] = i;

  for (int32_t i = 0; i < nbMots_; ++i) {
    const std::string_view word = lines.Element(i);
    if (progress && i >= 10000 && i % 10000 == 0) progress(i, PercentText(i, nbMots_));
    if (word.empty()) InsertionError(kErrArgument);
    const char first = word.front();
    if (first < 'A' || first > 'Z') InsertionError(kErrIndex);
    SubAjouteMot(LetterCode(first), word.substr(1), word);
  }
  return true;
}

void ClsDico::SubAjouteMot(int32_t pere, std::string_view rest, std::string_view word) {
  if (rest.empty()) InsertionError(kErrArgument);
  for (;;) {
    const int c = LetterCode(rest.front());
    if (c < 0 || c >= kSlots) InsertionError(kErrIndex);
    Node* const nodes = nodes_;
    int32_t next = nodes[pere].next[c];
    if (next == 0) {
      next = ++lngLibre_;
      ++count_;
    }
    nodes[pere].next[c] = next;
    rest.remove_prefix(1);
    if (rest.empty()) {
      nodes[pere].ends |= 1u << c;
      break;
    }
    pere = next;
  }
  const size_t len = word.size();
  ++byLength_[len < 16 ? len : 15];
  if (int(len) > lgMax_) lgMax_ = int(len);
}

int64_t ClsDico::EdgeCount() const {
  int64_t edges = 0;
  for (size_t n = 1; n < count_; ++n)
    for (int c = 0; c < kSlots; ++c) edges += nodes_[n].next[c] != 0;
  return edges;
}

int64_t ClsDico::WordEndCount() const {
  int64_t ends = 0;
  for (size_t n = 0; n < count_; ++n) ends += __builtin_popcount(nodes_[n].ends);
  return ends;
}

}  // namespace ostrane
