#pragma once
// The word tree: every word of 2 to 9 letters as a letter tree in one flat
// array of nodes indexed by letter code (A = 1 ... Z = 26).
//
// Node 0 is the root, whose slots 1..26 lead to nodes 1..26; node 27 is
// never used; new nodes are numbered from 28 on in insertion order. The end
// of a word is marked on the edge, in the parent: IsWordInNode(parent, c).

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "lexicon/huge_array.h"

namespace ostrane {

class ClsDico {
 public:
  static constexpr int kSlots = 27;
  static constexpr int32_t kFirstFreeNode = 28;

  // Called at each index that is a multiple of 10000 (from 10000 on) while the
  // tree grows, with the percentage text the start-up form shows ("06 %").
  using Progress = std::function<void(int32_t index, const std::string& percentText)>;

  // Builds the tree from the bytes of the short-word list ("DICO": one word a
  // line, CR LF after each). A line that cannot be inserted ends the program
  // with internal error 102. Returns true.
  bool DictionaryOrg(std::string_view dicoBytes, const Progress& progress = nullptr);

  // The child of node `pere` by letter code `idx`, 0 when there is none.
  // Indices outside the tree or outside 0..26 end the program (index error).
  int32_t FindNode(int32_t pere, int idx) const {
    if (!InRange(pere, idx)) IndexError(pere, idx);
    return nodes_[pere].next[idx];
  }
  bool IsWordInNode(int32_t pere, int idx) const {
    if (!InRange(pere, idx)) IndexError(pere, idx);
    return (nodes_[pere].ends >> idx) & 1u;
  }

  // Unchecked steps for hot paths whose indices are known to be good.
  int32_t Child(int32_t pere, int idx) const noexcept { return nodes_[pere].next[idx]; }
  bool Ends(int32_t pere, int idx) const noexcept { return (nodes_[pere].ends >> idx) & 1u; }
  // Bit c set when a word ends with letter code c at this node.
  uint32_t EndMask(int32_t node) const noexcept { return nodes_[node].ends; }

  // The highest node number handed out.
  int32_t LngLibre() const { return lngLibre_; }
  // Highest node number in use (LngLibre(), or 27 for an empty tree).
  int32_t UpperBound() const { return int32_t(count_) - 1; }
  // Upper bound of the node array: it keeps spare nodes beyond the last one
  // handed out, which have no children and end no word.
  int32_t ArrayBound() const { return int32_t(capacity_) - 1; }
  // Words in the list (the upper bound of the split list, whose last element
  // is the empty tail after the last CR LF).
  int32_t NbMotsDico() const { return nbMots_; }
  // Length of the longest word in the tree.
  int LgMaxArbre() const { return lgMax_; }
  // Edges set outside the root, and edges marked as word ends.
  int64_t EdgeCount() const;
  int64_t WordEndCount() const;
  // Words per length 0..15 as read from the list.
  const std::vector<int32_t>& CountsByLength() const { return byLength_; }

 private:
  struct Node {
    int32_t next[kSlots];
    uint32_t ends;
  };
  bool InRange(int32_t pere, int idx) const noexcept {
    return pere >= 0 && size_t(pere) < capacity_ && idx >= 0 && idx < kSlots;
  }
  [[noreturn]] static void IndexError(int32_t pere, int idx);
  void SubAjouteMot(int32_t pere, std::string_view rest, std::string_view word);

  // The nodes live in one zero-filled block, reserved for the most nodes the
  // list could need and touched only as far as they are used.
  HugeBlock block_;
  Node* nodes_ = nullptr;
  size_t count_ = 0;     // nodes handed out, the root and letters included
  size_t capacity_ = 0;  // nodes the block holds
  int32_t lngLibre_ = 0;
  int32_t nbMots_ = 0;
  int lgMax_ = 0;
  std::vector<int32_t> byLength_;
};

}  // namespace ostrane
