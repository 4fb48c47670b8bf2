#pragma once
// The engine's values shared by the whole program: the direction of each
// stored play, their running count, the direction of the play last chosen,
// and the one random generator. One object lives as long as the program; each
// ClsPlateau is handed it at construction. The game flow sets LngSens back to
// 0 when it validates a play and reads BytSens after SubSortie.

#include <cstdint>
#include <memory>
#include <vector>

namespace ostrane {

struct WordTreeIndex;  // engine/move_search.h
struct SearchScratch;  // engine/move_search.h

// A small reproducible generator: the same seed gives the same draws on every
// machine and build.
class Rng {
 public:
  explicit Rng(uint64_t seed = 0) { Seed(seed); }
  void Seed(uint64_t seed) { state_ = seed; }
  // Where it stands: Seed(State()) later goes on with the same draws.
  uint64_t State() const { return state_; }
  // The next 64 random bits (splitmix64).
  uint64_t Next() {
    uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  // A number in [0, 1).
  double Rnd() { return double(Next() >> 11) * (1.0 / 9007199254740992.0); }
  // A whole number in [0, n), n > 0.
  uint32_t Below(uint32_t n) { return uint32_t(Rnd() * n); }

 private:
  uint64_t state_ = 0;
};

struct EngineContext {
  static constexpr int32_t kTabSensBound = 100000;

  // Direction of each stored play, indices 1 to 100000: 0 across, 1 down.
  std::vector<int32_t> TabSens = std::vector<int32_t>(size_t(kTabSensBound) + 1, 0);
  // The running count of TabSens. Only the validation of a play sets it back to 0.
  int32_t LngSens = 0;
  // Direction of the play last chosen by SubSortie: 0 across, otherwise 1.
  uint8_t BytSens = 0;
  // Draws the direction of each first play.
  Rng Random;

  // What the search works out once from the word tree; made by the first
  // search and kept for the next boards.
  std::shared_ptr<const WordTreeIndex> TreeIndex;
  // The working lists of a search, lent to the board that searches.
  std::shared_ptr<SearchScratch> Scratch;
};

}  // namespace ostrane
