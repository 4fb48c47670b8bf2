#pragma once
// The word lists and the definitions as the program carries them: single-byte
// text, one entry a line, each line closed by CR LF. Splitting keeps the part
// after the last CR LF as one extra element (empty or NUL padding), which is
// never a word: every reader stops one below the upper bound.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrane {

// A list split on CR LF, holding its own copy of the text.
class SplitList {
 public:
  SplitList() = default;
  explicit SplitList(std::string_view bytes) { Load(bytes); }
  void Load(std::string_view bytes);

  // Upper bound of the split array: the number of elements minus one.
  int32_t UBound() const { return int32_t(starts_.size()) - 2; }
  std::string_view Element(int32_t i) const;

 private:
  std::string text_;
  std::vector<uint32_t> starts_;  // element i is text_[starts_[i], starts_[i+1] - 2)
};

// The words of one length from 10 to 15 letters. A word is found as a scan of
// elements 0 to UBound() - 1 with an exact comparison would find it, but by a
// binary search over a sorted index.
class LongWordList {
 public:
  void Load(std::string_view bytes);
  int32_t UBound() const { return list_.UBound(); }
  std::string_view Element(int32_t i) const { return list_.Element(i); }
  bool Contains(std::string_view word) const;
  // Element i of the list in alphabetical order, i from 0 to UBound() - 1.
  std::string_view SortedElement(int32_t i) const { return Element(sorted_[size_t(i)]); }

 private:
  SplitList list_;
  std::vector<int32_t> sorted_;  // element indices in alphabetical order
};

// Code page 1252 to UTF-8.
std::string Cp1252ToUtf8(std::string_view bytes);
// UTF-8 to code page 1252; characters it cannot hold become "?".
std::string Utf8ToCp1252(std::string_view text);

// The definitions of the 2- and 3-letter words: lines of the form
// key "§" shown form "$" definition, held as UTF-8.
class Definitions {
 public:
  void Load(std::string_view cp1252Bytes);
  int32_t UBound() const { return int32_t(lines_.size()) - 1; }
  const std::string& Line(int32_t i) const { return lines_.at(size_t(i)); }

  // The definition of an upper-case word, looked up from line 0 to `last`
  // included: the text behind the first "§", and of that behind the first "$".
  std::optional<std::string> Find(std::string_view upperWord, int32_t last) const;
  // As the word check looks: every line.
  std::optional<std::string> FindForCheck(std::string_view upperWord) const {
    return Find(upperWord, UBound());
  }
  // As the solution box looks: all lines but the last.
  std::optional<std::string> FindForSolution(std::string_view upperWord) const {
    return Find(upperWord, UBound() - 1);
  }

 private:
  std::vector<std::string> lines_;
};

}  // namespace ostrane
