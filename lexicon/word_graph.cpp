#include "lexicon/word_graph.h"

#include <algorithm>
#include <cstring>

#include "lexicon/lexicon.h"

namespace ostrane {
namespace {

constexpr int kLongest = 15;
constexpr char kMagic[8] = {'O', 'S', 'G', 'R', 'A', 'P', 'H', '1'};

// A node being made: its letters and the children of its letters so far.
struct Open {
  uint32_t children = 0;
  uint32_t ends = 0;
  uint32_t target[26];
};

uint64_t Mix(uint64_t h, uint64_t v) {
  h ^= v + 0x9E3779B97F4A7C15ull + (h << 6) + (h >> 2);
  return h;
}

}  // namespace

// The nodes made so far, each kept once: a node whose letters and children
// equal those of a node already kept is that node (the words that go on
// from two prefixes are the same words).
class GraphRegister {
 public:
  GraphRegister(std::vector<WordGraph::Node>& nodes, std::vector<uint32_t>& edges)
      : nodes_(nodes), edges_(edges) {
    table_.assign(1u << 16, 0);
  }

  uint32_t Keep(const Open& open) {
    uint64_t h = Mix(open.children, open.ends);
    for (uint32_t letters = open.children; letters; letters &= letters - 1)
      h = Mix(h, open.target[__builtin_ctz(letters)]);
    size_t mask = table_.size() - 1;
    size_t slot = size_t(h ^ (h >> 29)) & mask;
    while (const uint32_t id = table_[slot]) {
      if (Same(id, open)) return id;
      slot = (slot + 1) & mask;
    }
    const uint32_t id = uint32_t(nodes_.size());
    WordGraph::Node node;
    node.children = open.children;
    node.ends = open.ends;
    node.first = uint32_t(edges_.size());
    for (uint32_t letters = open.children; letters; letters &= letters - 1)
      edges_.push_back(open.target[__builtin_ctz(letters)]);
    nodes_.push_back(node);
    hashes_.push_back(h);
    table_[slot] = id;
    if (++used_ * 2 > table_.size()) Grow();
    return id;
  }

 private:
  bool Same(uint32_t id, const Open& open) const {
    const WordGraph::Node& n = nodes_[id];
    if (n.children != open.children || n.ends != open.ends) return false;
    const uint32_t* e = edges_.data() + n.first;
    for (uint32_t letters = open.children; letters; letters &= letters - 1, ++e)
      if (*e != open.target[__builtin_ctz(letters)]) return false;
    return true;
  }
  void Grow() {
    std::vector<uint32_t> bigger(table_.size() * 2, 0);
    const size_t mask = bigger.size() - 1;
    for (const uint32_t id : table_) {
      if (!id) continue;
      const uint64_t h = hashes_[id];
      size_t slot = size_t(h ^ (h >> 29)) & mask;
      while (bigger[slot]) slot = (slot + 1) & mask;
      bigger[slot] = id;
    }
    table_.swap(bigger);
  }

  std::vector<WordGraph::Node>& nodes_;
  std::vector<uint32_t>& edges_;
  std::vector<uint32_t> table_;
  std::vector<uint64_t> hashes_ = std::vector<uint64_t>(1, 0);
  size_t used_ = 0;
};

bool WordGraph::Build(const std::vector<std::string_view>& sortedWords) {
  nodes_.assign(1, Node{});  // node 0 leads nowhere
  edges_.clear();
  nodes_.reserve(sortedWords.size() / 2 + 16);
  edges_.reserve(sortedWords.size() + 16);
  root_ = 0;
  words_ = 0;
  GraphRegister keep(nodes_, edges_);
  Open open[kLongest + 1];
  open[0] = Open{};
  std::string_view previous;

  // Keeps the open nodes below depth `depth` of the previous word, deepest
  // first, each child in its parent.
  const auto close = [&](size_t depth) {
    for (size_t i = previous.size() - 1; i > depth; --i) {
      const uint32_t id = keep.Keep(open[i]);
      const int letter = previous[i - 1] - 'A';
      open[i - 1].children |= 1u << letter;
      open[i - 1].target[letter] = id;
    }
  };

  for (const std::string_view word : sortedWords) {
    if (word.size() < 2 || word.size() > size_t(kLongest) || !(previous < word)) {
      *this = WordGraph();
      return false;
    }
    for (const char c : word) {
      if (c < 'A' || c > 'Z') {
        *this = WordGraph();
        return false;
      }
    }
    size_t common = 0;
    while (common < previous.size() && common < word.size() && previous[common] == word[common]) ++common;
    if (!previous.empty()) close(common);
    // The previous word a prefix of this one: its end node opens now.
    if (common == previous.size() && common > 0) open[common] = Open{};
    for (size_t i = common + 1; i < word.size(); ++i) open[i] = Open{};
    open[word.size() - 1].ends |= 1u << (word.back() - 'A');
    previous = word;
    ++words_;
  }
  if (!previous.empty()) close(0);
  root_ = keep.Keep(open[0]);
  return true;
}

bool WordGraph::Build(const Lexicon& lexicon) {
  std::string text;
  return Build(LexiconWords(lexicon, text));
}

std::vector<std::string_view> WordGraph::LexiconWords(const Lexicon& lexicon, std::string& text) {
  // The tree in letter order gives its words in order, written one after
  // the other into `text`; each long list is in order by its index; the
  // lists then merge.
  const ClsDico& dico = lexicon.Dico;
  size_t treeLetters = 0;
  for (size_t length = 2; length < dico.CountsByLength().size() && length <= 9; ++length)
    treeLetters += length * size_t(dico.CountsByLength()[length]);
  text.clear();
  text.reserve(treeLetters + 64);
  std::vector<uint32_t> ends;
  ends.reserve(size_t(dico.NbMotsDico()) + 1);
  char word[16];
  struct Walker {
    const ClsDico& dico;
    std::string& text;
    std::vector<uint32_t>& ends;
    char* word;
    void Walk(int32_t node, int depth) {
      if (depth >= 15) return;
      for (int code = 1; code <= 26; ++code) {
        word[depth] = char('A' + code - 1);
        if (dico.Ends(node, code)) {
          text.append(word, size_t(depth) + 1);
          ends.push_back(uint32_t(text.size()));
        }
        if (const int32_t child = dico.Child(node, code)) Walk(child, depth + 1);
      }
    }
  } walker{dico, text, ends, word};
  if (dico.NbMotsDico() > 0) {
    for (int code = 1; code <= 26; ++code) {
      word[0] = char('A' + code - 1);
      walker.Walk(code, 1);
    }
  }
  std::vector<std::string_view> words;
  size_t total = ends.size();
  for (size_t length = 10; length <= 15; ++length) total += size_t(std::max(0, lexicon.LongWords(length).UBound()));
  words.reserve(total);
  uint32_t start = 0;
  for (const uint32_t end : ends) {
    words.emplace_back(text.data() + start, end - start);
    start = end;
  }
  for (size_t length = 10; length <= 15; ++length) {
    const LongWordList& list = lexicon.LongWords(length);
    const size_t middle = words.size();
    for (int32_t i = 0; i < list.UBound(); ++i) {
      const std::string_view w = list.SortedElement(i);
      if (w.size() == length) words.push_back(w);
    }
    std::inplace_merge(words.begin(), words.begin() + std::ptrdiff_t(middle), words.end());
  }
  words.erase(std::unique(words.begin(), words.end()), words.end());
  return words;
}

bool WordGraph::Contains(std::string_view word) const {
  if (word.size() < 2 || word.size() > size_t(kLongest) || Empty()) return false;
  uint32_t node = root_;
  for (size_t i = 0; i + 1 < word.size(); ++i) {
    const char c = char(word[i] & ~0x20);
    if (c < 'A' || c > 'Z') return false;
    node = Child(node, c - 'A');
    if (!node) return false;
  }
  const char last = char(word.back() & ~0x20);
  return last >= 'A' && last <= 'Z' && ((nodes_[node].ends >> (last - 'A')) & 1u);
}

std::string WordGraph::ToBytes() const {
  std::string out(kMagic, sizeof kMagic);
  const uint64_t counts[4] = {nodes_.size(), edges_.size(), root_, words_};
  out.append(reinterpret_cast<const char*>(counts), sizeof counts);
  out.append(reinterpret_cast<const char*>(nodes_.data()), nodes_.size() * sizeof(Node));
  out.append(reinterpret_cast<const char*>(edges_.data()), edges_.size() * sizeof(uint32_t));
  return out;
}

bool WordGraph::FromBytes(std::string_view bytes) {
  *this = WordGraph();
  uint64_t counts[4];
  if (bytes.size() < sizeof kMagic + sizeof counts || std::memcmp(bytes.data(), kMagic, sizeof kMagic) != 0)
    return false;
  std::memcpy(counts, bytes.data() + sizeof kMagic, sizeof counts);
  const uint64_t nodeCount = counts[0], edgeCount = counts[1];
  if (nodeCount == 0 || nodeCount > (1u << 28) || edgeCount > (1u << 28) || counts[2] >= nodeCount) return false;
  const size_t head = sizeof kMagic + sizeof counts;
  if (bytes.size() != head + nodeCount * sizeof(Node) + edgeCount * sizeof(uint32_t)) return false;
  std::vector<Node> nodes(nodeCount);
  std::vector<uint32_t> edges(edgeCount);
  std::memcpy(nodes.data(), bytes.data() + head, nodeCount * sizeof(Node));
  std::memcpy(edges.data(), bytes.data() + head + nodeCount * sizeof(Node), edgeCount * sizeof(uint32_t));
  // Every step must stay inside the graph, and the graph must hold no cycle
  // (children are always kept before their parents).
  for (uint64_t id = 0; id < nodeCount; ++id) {
    const Node& n = nodes[id];
    if ((n.children | n.ends) >> 26) return false;
    const uint32_t count = BitsSet(n.children);
    if (uint64_t(n.first) + count > edgeCount) return false;
    for (uint32_t k = 0; k < count; ++k)
      if (edges[n.first + k] == 0 || edges[n.first + k] >= id) return false;
  }
  nodes_ = std::move(nodes);
  edges_ = std::move(edges);
  root_ = uint32_t(counts[2]);
  words_ = size_t(counts[3]);
  return true;
}

}  // namespace ostrane
