#pragma once
// The word graph: every word of a list (2 to 15 letters A to Z) in one
// minimal acyclic automaton, read from left to right. It serves the exact
// move generator and the word lists of the player's own: made once from a
// sorted list, read-only after, and written to a file and read back whole.
//
// A node is the set of words that go on from a prefix. Its letters are a
// bit set (bit 0 = A): `children` the letters that lead on, `ends` the
// letters that end a word here (the prefix followed by that letter is a
// word). The children of a node are kept side by side in letter order, so
// that a step is one bit count and one read. Node 0 leads nowhere; the root
// is node Root().

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ostrane {

struct Lexicon;

class WordGraph {
 public:
  struct Node {
    uint32_t children = 0;  // letters that lead on (bit 0 = A)
    uint32_t ends = 0;      // letters that end a word here (bit 0 = A)
    uint32_t first = 0;     // index in the edge array of the child by the lowest letter of `children`
  };

  WordGraph() = default;

  // From words in strictly increasing order, upper case A-Z, 2 to 15 letters
  // each. False (and an empty graph) when the order or a word is wrong.
  bool Build(const std::vector<std::string_view>& sortedWords);
  // Every word of the lexicon: its tree and its long lists, merged in order.
  bool Build(const Lexicon& lexicon);

  bool Empty() const { return nodes_.size() <= 1; }
  uint32_t Root() const { return root_; }
  const Node& At(uint32_t node) const { return nodes_[node]; }
  // The child by `letter` (0 = A), 0 when none.
  uint32_t Child(uint32_t node, int letter) const {
    const Node& n = nodes_[node];
    if (!((n.children >> letter) & 1u)) return 0;
    return edges_[n.first + BitsSet(n.children & ((1u << letter) - 1u))];
  }
  // The number of bits set, in a few instructions on any x86-64 (the
  // builtin is a library call where the processor is not assumed to count).
  static uint32_t BitsSet(uint32_t x) {
    x = x - ((x >> 1) & 0x55555555u);
    x = (x & 0x33333333u) + ((x >> 2) & 0x33333333u);
    x = (x + (x >> 4)) & 0x0F0F0F0Fu;
    return (x * 0x01010101u) >> 24;
  }
  // Whether `word` (A-Z, any case) is in the list.
  bool Contains(std::string_view word) const;

  size_t NodeCount() const { return nodes_.size(); }
  size_t EdgeCount() const { return edges_.size(); }
  size_t WordCount() const { return words_; }
  size_t Bytes() const { return nodes_.size() * sizeof(Node) + edges_.size() * sizeof(uint32_t); }

  // Calls `visit` with each word, in increasing order.
  template <class Visit>
  void ForEachWord(Visit&& visit) const {
    char word[16];
    Walk(root_, word, 0, visit);
  }

  // The graph as bytes, and back; FromBytes is false for anything that is not
  // a whole graph of this format.
  std::string ToBytes() const;
  bool FromBytes(std::string_view bytes);

  // The words of a lexicon in increasing order (its tree and long lists);
  // the words of the tree are written into `text`, which must outlive them.
  static std::vector<std::string_view> LexiconWords(const Lexicon& lexicon, std::string& text);

 private:
  template <class Visit>
  void Walk(uint32_t node, char* word, int depth, Visit& visit) const {
    const Node& n = nodes_[node];
    uint32_t letters = n.children | n.ends;
    while (letters) {
      const int letter = __builtin_ctz(letters);
      letters &= letters - 1;
      word[depth] = char('A' + letter);
      if ((n.ends >> letter) & 1u) visit(std::string_view(word, size_t(depth) + 1));
      if ((n.children >> letter) & 1u) Walk(Child(node, letter), word, depth + 1, visit);
    }
  }

  std::vector<Node> nodes_;
  std::vector<uint32_t> edges_;
  uint32_t root_ = 0;
  size_t words_ = 0;
};

}  // namespace ostrane
