#include "engine/solution_set.h"

#include <cmath>
#include <cstdlib>

#include "engine/board.h"
#include "lexicon/fatal.h"

namespace ostrane {

bool FlatPlay::Set(std::string_view expressText, std::string_view placeText, int16_t points) {
  if (expressText.size() > kExpress || placeText.size() > kPlace) return false;
  expressText.copy(express, expressText.size());
  placeText.copy(place, placeText.size());
  expressLength = uint8_t(expressText.size());
  placeLength = uint8_t(placeText.size());
  CountP = points;
  whole = -1;
  return true;
}

void ClsPlateau::KeepPlay(const ClsWord& word, FlatPlay& flat) {
  if (flat.Set(word.Express, word.Place, word.CountP)) return;
  flat = FlatPlay{};
  flat.CountP = word.CountP;
  flat.whole = int32_t(wholePlays_.size());
  wholePlays_.push_back(word);
}

ClsWord ClsPlateau::WordOf(const FlatPlay& flat) const {
  if (flat.whole >= 0) return wholePlays_[size_t(flat.whole)];
  ClsWord word;
  word.Express.assign(flat.Express());
  word.Place.assign(flat.Place());
  word.CountP = flat.CountP;
  return word;
}

void ClsPlateau::StoreSolution(const ClsWord& word, int orientation) {
  if (AtLimit(lngProchain_ > kSolutionsBound || context_.LngSens + 1 > EngineContext::kTabSensBound)) return;
  if (lngProchain_ > kSolutionsBound) FatalIndex("TabSolutions", lngProchain_);
  KeepPlay(word, plays_.emplace_back());
  StoreFound(int32_t(plays_.size()) - 1, orientation);
}

void ClsPlateau::StoreFound(int32_t play, int orientation) {
  if (AtLimit(lngProchain_ > kSolutionsBound || context_.LngSens + 1 > EngineContext::kTabSensBound)) return;
  if (lngProchain_ > kSolutionsBound) FatalIndex("TabSolutions", lngProchain_);
  found_.push_back(play);
  int32_t& count = context_.LngSens;
  ++count;
  if (count < 1 || count > EngineContext::kTabSensBound) FatalIndex("TabSens", count);
  context_.TabSens[size_t(count)] = orientation;
  ++lngProchain_;
}

const ClsWord& ClsPlateau::TabSolutions(int32_t i) const {
  static const ClsWord kNone;
  if (i < 0 || i > kSolutionsBound) FatalIndex("TabSolutions", i);
  if (i >= lngProchain_) return kNone;
  while (words_.size() < plays_.size()) words_.push_back(WordOf(plays_[words_.size()]));
  return words_[size_t(found_[size_t(i)])];
}

std::optional<ClsWord> ClsPlateau::SubSortie(int niveau) {
  // The first play with the highest score: the test is strict.
  int best = 0;
  int32_t bestIndex = 0;
  for (int32_t i = 1; i < lngProchain_; ++i) {
    if (plays_[size_t(found_[size_t(i)])].CountP > best) {
      best = plays_[size_t(found_[size_t(i)])].CountP;
      context_.BytSens = uint8_t(context_.TabSens[size_t(i)] & 0xFF);
      bestIndex = i;
    }
  }
  if (niveau == 5) {
    if (bestIndex == 0) return std::nullopt;
    return WordOf(plays_[size_t(found_[size_t(bestIndex)])]);
  }

  // A play near a fraction of the best score, less two. BytSens keeps the
  // direction of the best play, not of the one chosen.
  const long target = std::lrint(double(best - 2) * niveau / 5.0);
  long nearest = 9999;
  int32_t chosen = 0;
  for (int32_t i = 1; i < lngProchain_; ++i) {
    const long distance = std::labs(long(plays_[size_t(found_[size_t(i)])].CountP) - target);
    if (distance < nearest) {
      nearest = distance;
      chosen = i;
    }
  }
  if (chosen == 0) return std::nullopt;
  return WordOf(plays_[size_t(found_[size_t(chosen)])]);
}

}  // namespace ostrane
