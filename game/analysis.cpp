#include "game/analysis.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "game/frm_plateau.h"
#include "lexicon/tables.h"
#include "lexicon/word_graph.h"

namespace ostrane {
namespace {

BoardSquares SquaresOf(const FrmPlateau& form, bool& first) {
  BoardSquares squares{};
  first = true;
  if (!form.ObjPlateau) return squares;
  first = form.ObjPlateau->SubWordFirst();
  for (int y = 0; y < 15; ++y)
    for (int x = 0; x < 15; ++x) squares[size_t(y * 15 + x)] = form.ObjPlateau->Square(x, y);
  return squares;
}

}  // namespace

void OfferExactAnalysis(FrmPlateau& form, const WordGraph& graph) {
  auto moves = std::make_shared<ExactMoves>(graph);
  form.ExactBest = [&form, moves](const std::string& rack, bool& down) -> std::optional<ClsWord> {
    bool first = true;
    const BoardSquares squares = SquaresOf(form, first);
    const std::optional<ExactPlay> best = moves->Best(squares.data(), first, rack);
    if (!best) return std::nullopt;
    down = best->down;
    return best->ToWord(squares.data());
  };
}

Analysis::Analysis(const FrmPlateau& form, const WordGraph& graph) : form_(form), moves_(graph) {}

bool Analysis::Update() {
  bool first = true;
  const BoardSquares board = SquaresOf(form_, first);
  std::string rack;
  for (const Tile& tile : form_.PicGamer) {
    if (tile.Tag.empty()) continue;
    const char c = tile.Tag.size() == 1 ? tile.Tag[0] : '?';
    rack += c >= 'a' && c <= 'z' ? c : '?';
  }
  if (computed_ && board == board_ && first == first_ && rack == rack_) return false;
  board_ = board;
  first_ = first;
  rack_ = rack;
  computed_ = true;
  plays_ = moves_.All(board_.data(), first_, rack_);
  Filter();
  return true;
}

void Analysis::SetFilter(std::string_view letters, int length) {
  filterLetters_.clear();
  for (const char c : letters)
    if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) filterLetters_ += UpperAscii(c);
  filterLength_ = std::max(0, length);
  Filter();
}

void Analysis::Filter() {
  kept_.clear();
  for (int i = 0; i < int(plays_.size()); ++i) {
    const ExactPlay& p = plays_[size_t(i)];
    if (filterLength_ && p.length != filterLength_) continue;
    if (!filterLetters_.empty() && p.Word().find(filterLetters_) == std::string::npos) continue;
    kept_.push_back(i);
  }
  page_ = 0;
}

int Analysis::PageCount() const { return std::max(1, (int(kept_.size()) + kPageSize - 1) / kPageSize); }

void Analysis::SetPage(int page) { page_ = std::clamp(page, 0, PageCount() - 1); }

std::vector<int> Analysis::PageRows() const {
  const size_t from = size_t(page_) * kPageSize, to = std::min(kept_.size(), from + kPageSize);
  return from < to ? std::vector<int>(kept_.begin() + std::ptrdiff_t(from), kept_.begin() + std::ptrdiff_t(to))
                   : std::vector<int>();
}

std::optional<Analysis::Standing> Analysis::Proposal() const {
  // Only while its rack is on the stand: once played, the board has it.
  if (!form_.Proposition || rack_.empty()) return std::nullopt;
  const ClsWord& proposed = *form_.Proposition;
  Standing s;
  s.word = proposed.Express;
  for (char& c : s.word) c = UpperAscii(c);
  s.place = proposed.Place;
  s.claimed = proposed.CountP;
  s.points = TruePoints(board_.data(), proposed);
  s.rank = 1 + int(std::count_if(plays_.begin(), plays_.end(), [&](const ExactPlay& p) { return p.points > s.points; }));
  for (int i = 0; i < int(plays_.size()); ++i) {
    const ExactPlay& p = plays_[size_t(i)];
    if (p.Place() == s.place && p.Express(board_.data()) == proposed.Express) {
      s.index = i;
      break;
    }
  }
  return s;
}

int Analysis::Score() const { return std::atoi(form_.LblPtsJoueur.text.c_str()); }

int Analysis::Tops() const { return form_.TopsTotal; }

int Analysis::Percent() const {
  if (form_.TopsTotal <= 0) return -1;
  return int((int64_t(Score()) * 100 + form_.TopsTotal / 2) / form_.TopsTotal);
}

}  // namespace ostrane
