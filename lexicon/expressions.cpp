#include "lexicon/expressions.h"

#include <algorithm>
#include <cstring>

#include "lexicon/fatal.h"
#include "lexicon/lexicon.h"
#include "lexicon/tables.h"

namespace ostrane {
namespace {

constexpr int kMaxLength = 60;   // longest rack or mask the walk holds
constexpr int32_t kAskAbove = 6000;
constexpr int32_t kSortLimit = 10001;

inline uint32_t Bit(char letter) { return 1u << (letter - 'A'); }
inline bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }

}  // namespace

ClsExpressions::ClsExpressions() {
  pileNoeuds_.RazEtager(50);
  offsets_.push_back(0);
}

void ClsExpressions::SubDico(const Lexicon& lexicon) { lexicon_ = &lexicon; }

bool ClsExpressions::SubWordIsTrue(std::string& mot, int32_t& noeud) const {
  const size_t length = mot.size();
  if (length >= 10 && length <= 15) return lexicon_->LongWords(length).Contains(mot);
  if (length > 15) return false;
  for (char& c : mot) c = UpperAscii(c);
  if (length == 0) return false;
  const ClsDico& dico = lexicon_->Dico;
  if (noeud == 0) noeud = LetterCode(mot[0]);
  int32_t parent = 0;
  int code = 0;
  for (size_t k = 1; k < length; ++k) {
    parent = noeud;
    code = LetterCode(mot[k]);
    noeud = dico.FindNode(parent, code);
    if (noeud == 0) return false;
  }
  return dico.IsWordInNode(parent, code);
}

bool ClsExpressions::SubWordIsTrue(std::string_view mot) const {
  const size_t length = mot.size();
  if (length >= 10 && length <= 15) return lexicon_->LongWords(length).Contains(mot);
  if (length > 15 || length < 2) return false;
  const ClsDico& dico = lexicon_->Dico;
  int32_t node = LetterCode(UpperAscii(mot[0]));
  for (size_t k = 1; k + 1 < length; ++k) {
    node = dico.FindNode(node, LetterCode(UpperAscii(mot[k])));
    if (node == 0) return false;
  }
  return dico.IsWordInNode(node, LetterCode(UpperAscii(mot[length - 1])));
}

void ClsExpressions::Reset() {
  buffer_.clear();
  offsets_.assign(1, 0);
  capacity_ = lexicon_->Dico.NbMotsDico();
  jokersLen_ = 0;
  wordLen_ = 0;
}

void ClsExpressions::PrepareRack(std::string& lettres) {
  if (lettres.size() > size_t(kMaxLength)) FatalIndex("lettres", long(lettres.size()));
  // Real letters are tried before the blanks: the blanks go to the end.
  std::stable_partition(lettres.begin(), lettres.end(), [](char c) { return c != '?'; });
  for (size_t k = 0; k < lettres.size(); ++k) rack_[k] = UpperAscii(lettres[k]);
}

void ClsExpressions::SubAjoute() {
  if (int32_t(offsets_.size()) > capacity_) FatalIndex("résultats", long(offsets_.size()));
  buffer_.append(word_, size_t(wordLen_));
  if (jokersLen_ > 0) {
    buffer_ += " (";
    buffer_.append(jokers_, size_t(jokersLen_));
    buffer_ += ')';
  }
  offsets_.push_back(uint32_t(buffer_.size()));
}

std::string_view ClsExpressions::GetMot(int32_t i) const {
  if (i < 0 || i > SubEntierMot()) FatalIndex("résultat", i);
  if (i == 0) return {};
  return std::string_view(buffer_).substr(offsets_[size_t(i) - 1],
                                          offsets_[size_t(i)] - offsets_[size_t(i) - 1]);
}

// ---------------------------------------------------------------- free words

int32_t ClsExpressions::SubCombinaisons(std::string& lettres) {
  Reset();
  PrepareRack(lettres);
  SubPermute(rack_, int(lettres.size()), 0);

  int32_t count = SubEntierMot();
  if (count > kAskAbove) {
    std::string text = "Attention ! ";
    text += kCrLf;
    text += "Le nombre de solutions est supérieur à " + std::to_string(kAskAbove) + ".";
    text += kCrLf;
    text += "Le système risque d'être fortement ralenti.";
    text += kCrLf;
    text += "Continuer la recherche ?      ";
    if (boxes_ && boxes_->MsgBox(text, kYesNoDefaultNo) == Answer::No) {
      CutTo(kAskAbove);
      SubRange();
      return kAskAbove;
    }
  }
  SubRangeLong();
  SubRange();
  return count;
}

void ClsExpressions::SubPermute(const char* letters, int count, int32_t node) {
  uint32_t tried = 0;
  for (int i = 0; i < count; ++i) {
    const char c = letters[i];
    if (c == '?') {
      for (char letter = 'A'; letter <= 'Z'; ++letter) {
        jokers_[jokersLen_++] = letter;
        PermuteStep(letter, letters, count, i, node, tried);
        --jokersLen_;
      }
    } else {
      PermuteStep(c, letters, count, i, node, tried);
    }
  }
}

void ClsExpressions::PermuteStep(char letter, const char* letters, int count, int i,
                                 int32_t node, uint32_t& tried) {
  const ClsDico& dico = lexicon_->Dico;
  const int code = LetterCode(letter);
  if (!IsLetter(letter)) dico.FindNode(node, code);  // outside the tree: an index error
  if (tried & Bit(letter)) return;
  word_[wordLen_++] = letter;
  tried |= Bit(letter);
  if (dico.IsWordInNode(node, code)) SubAjoute();
  if (count > 1) {
    const int32_t child = dico.FindNode(node, code);
    if (child != 0) {
      char rest[kMaxLength];
      std::memcpy(rest, letters, size_t(i));
      std::memcpy(rest + i, letters + i + 1, size_t(count - i - 1));
      SubPermute(rest, count - 1, child);
    }
  }
  --wordLen_;
}

// ------------------------------------------------------------- masked words

int32_t ClsExpressions::SubSuivant(std::string_view masque, std::string& lettres, int lgMini) {
  Reset();
  PrepareRack(lettres);
  if (masque.size() > size_t(kMaxLength)) FatalIndex("masque", long(masque.size()));
  maskLen_ = int(masque.size());
  for (int k = 0; k < maskLen_; ++k) mask_[k + 1] = UpperAscii(masque[size_t(k)]);
  minLen_ = lgMini;
  int32_t node = 0;
  int pos = 0;
  SubMasque(rack_, int(lettres.size()), node, pos);
  return SubEntierMot();
}

void ClsExpressions::SubMasque(const char* letters, int count, int32_t& node, int& pos) {
  uint32_t tried = 0;
  for (int i = 0; i < count; ++i) {
    const char c = letters[i];
    if (c == '?') {
      for (char letter = 'A'; letter <= 'Z'; ++letter) {
        yield_();
        jokers_[jokersLen_++] = letter;
        if (!(tried & Bit(letter))) MasqueStep(letter, letters, count, i, node, pos, tried);
        --jokersLen_;
      }
    } else {
      if (IsLetter(c) && (tried & Bit(c))) continue;
      MasqueStep(c, letters, count, i, node, pos, tried);
    }
  }
  if (wordLen_ == 0) return;

  // Give back the fixed letters walked at the end of the word.
  while (mask_[wordLen_] != '*') {
    --wordLen_;
    --pos;
    pileNoeuds_.SubMuse(node);
    if (wordLen_ == 0) break;
  }

  // With the rack spent and only fixed cells behind, the word may still be
  // completed by them: the word is stored without that tail.
  if (count == 0 && wordLen_ < maskLen_ &&
      std::find(mask_ + wordLen_ + 1, mask_ + maskLen_ + 1, '*') == mask_ + maskLen_ + 1) {
    scratch_.assign(word_, size_t(wordLen_));
    scratch_.append(mask_ + wordLen_ + 1, size_t(maskLen_ - wordLen_));
    if (SubWordIsTrue(std::string_view(scratch_)) && wordLen_ >= minLen_) SubAjoute();
  }
}

void ClsExpressions::MasqueStep(char letter, const char* letters, int count, int i,
                                int32_t& node, int& pos, uint32_t& tried) {
  const ClsDico& dico = lexicon_->Dico;
  if (pos >= maskLen_) return;
  ++pos;

  // Walk the fixed letters in front of the next free cell.
  while (mask_[pos] != '*') {
    const char fixed = mask_[pos];
    const int x = LetterCode(fixed);
    const int32_t child = dico.FindNode(node, x);
    if (child == 0) {
      --pos;
      return;
    }
    word_[wordLen_++] = fixed;
    ++pos;
    if (dico.IsWordInNode(node, x) && wordLen_ >= minLen_) SubAjoute();
    pileNoeuds_.SubTirer(node);
    node = child;
    if (wordLen_ == maskLen_) {
      --pos;
      return;
    }
  }

  // The free cell takes the letter.
  const int x = LetterCode(letter);
  word_[wordLen_++] = letter;
  if (IsLetter(letter)) tried |= Bit(letter);
  if (dico.IsWordInNode(node, x) && wordLen_ >= minLen_) SubAjoute();
  if (pos < maskLen_) {
    int32_t child = dico.FindNode(node, x);
    if (child != 0) {
      char rest[kMaxLength];
      std::memcpy(rest, letters, size_t(i));
      std::memcpy(rest + i, letters + i + 1, size_t(count - i - 1));
      SubMasque(rest, count - 1, child, pos);
    }
  }
  --wordLen_;
  --pos;
}

// --------------------------------------------------------------------- sorts

void ClsExpressions::CutTo(int32_t count) {
  if (count < SubEntierMot()) {
    offsets_.resize(size_t(count) + 1);
    buffer_.resize(offsets_.back());
  }
}

void ClsExpressions::TooManyToSort() {
  if (!boxes_) return;
  std::string text = "Résultat de la recherche: " + std::to_string(SubEntierMot()) + " mots";
  text += kCrLf;
  text += "Le nombre de possibilités est trop important.";
  text += kCrLf;
  text += "Veuillez affiner votre recherche.";
  boxes_->MsgBox(text, kOkOnly);
}

void ClsExpressions::Reorder(std::vector<std::string_view>& order) {
  std::string buffer;
  buffer.reserve(buffer_.size());
  std::vector<uint32_t> offsets(1, 0);
  offsets.reserve(order.size() + 1);
  for (std::string_view word : order) {
    buffer.append(word);
    offsets.push_back(uint32_t(buffer.size()));
  }
  buffer_.swap(buffer);
  offsets_.swap(offsets);
}

bool ClsExpressions::ResultsToSort(std::vector<std::string_view>& order) {
  const int32_t n = SubEntierMot();
  if (n == 0) return false;
  if (n >= kSortLimit) {
    TooManyToSort();
    return false;
  }
  order.reserve(size_t(n));
  for (int32_t i = 1; i <= n; ++i) order.push_back(GetMot(i));
  return true;
}

void ClsExpressions::SubRange() {
  std::vector<std::string_view> order;
  if (!ResultsToSort(order)) return;
  std::sort(order.begin(), order.end());
  Reorder(order);
}

void ClsExpressions::SubRangeLong() {
  // Longest first, equal lengths in the order found. SubRange always comes
  // after it, so this order never lasts.
  std::vector<std::string_view> order;
  if (!ResultsToSort(order)) return;
  std::stable_sort(order.begin(), order.end(),
                   [](std::string_view a, std::string_view b) { return a.size() > b.size(); });
  Reorder(order);
}

}  // namespace ostrane
