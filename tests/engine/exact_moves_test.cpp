// The exact move generator held to a brute force: every word of the list tried
// at every square in both directions with every way of laying the blanks, each
// judged and scored by the rules written again for the tests. The generator
// must find exactly those plays with exactly those points, on boards grown
// from a small list at random and on boards of games played with the real
// list; its best play must head its whole list; and the designed search must
// find nothing the generator lacks, nor a play worth more than its top.
#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <tuple>

#include "engine/exact_moves.h"
#include "lexicon/word_graph.h"
#include "tests/engine/engine_test_support.h"
#include "tests/support/test_support.h"

namespace ostrane::test {
namespace {

// A play as both sides see it: the word, its place, its true points.
struct Found {
  std::string word, place;
  int points = 0;
  auto operator<=>(const Found&) const = default;
};

std::string Describe(const std::set<Found>& plays) {
  std::ostringstream out;
  int shown = 0;
  for (const Found& f : plays) {
    if (shown++ == 8) {
      out << " ...";
      break;
    }
    out << " " << f.word << "@" << f.place << "=" << f.points;
  }
  return out.str();
}

std::string PlaceOf(int row, int column, bool down) {
  const std::string number = std::to_string(column + 1), letter(1, char('A' + row));
  return down ? number + letter : letter + number;
}

bool Occupied(const BoardSquares& board, int x, int y) {
  return x >= 0 && x < 15 && y >= 0 && y < 15 && board[size_t(y * 15 + x)] != 0;
}

// Every legal play: each word at each start, each way of laying the blanks
// on the free squares it covers, judged by the rules. A play of one tile is
// kept in the direction the validation gives it (down when a tile stands
// above or below it).
std::set<Found> BruteForce(const Lexicon& lexicon, const std::vector<std::string>& words,
                           const BoardSquares& board, bool firstPlay, const std::string& rack) {
  int inRack[26] = {}, blanks = 0;
  uint32_t available = 0;
  for (const char c : rack) {
    if (c == '?') {
      ++blanks;
    } else {
      ++inRack[c - 'a'];
      available |= 1u << (c - 'a');
    }
  }
  for (const char c : board)
    if (c) available |= 1u << (UpperAscii(c) - 'A');
  std::set<Found> found;
  for (const std::string& word : words) {
    uint32_t letters = 0;
    for (const char c : word) letters |= 1u << (c - 'A');
    if (__builtin_popcount(letters & ~available) > blanks) continue;
    const int n = int(word.size());
    for (const bool down : {false, true}) {
      for (int row = 0; row < 15; ++row) {
        for (int column = 0; column + n <= 15; ++column) {
          // (row, column) in the frame of the word's direction.
          const auto square = [&](int i) {
            return down ? std::pair{row, column + i} : std::pair{column + i, row};
          };
          std::vector<int> fresh;
          bool fits = true, touches = false, centre = false;
          int short_ = 0, need[26] = {};
          for (int i = 0; i < n && fits; ++i) {
            const auto [x, y] = square(i);
            const char b = board[size_t(y * 15 + x)];
            fits = !b || UpperAscii(b) == word[size_t(i)];
            centre = centre || (x == 7 && y == 7);
            touches = touches || b || Occupied(board, x - 1, y) || Occupied(board, x + 1, y) ||
                      Occupied(board, x, y - 1) || Occupied(board, x, y + 1);
            if (b) continue;
            fresh.push_back(i);
            short_ += ++need[word[size_t(i)] - 'A'] > inRack[word[size_t(i)] - 'A'];
          }
          // What no way of laying the blanks can mend: judged at once.
          if (!fits || fresh.empty() || int(fresh.size()) > int(rack.size()) || short_ > blanks) continue;
          if (firstPlay ? !centre : !touches) continue;
          const auto [x0, y0] = square(0);
          const auto [x1, y1] = square(n - 1);
          const std::string place = down ? PlaceOf(y0, x0, true) : PlaceOf(y0, x0, false);
          for (uint32_t asBlank = 0; asBlank < (1u << fresh.size()); ++asBlank) {
            if (__builtin_popcount(asBlank) > blanks) continue;
            int need[26] = {};
            std::string express;
            bool covered = true;
            for (int i = 0, f = 0; i < n; ++i) {
              const auto [x, y] = square(i);
              const char b = board[size_t(y * 15 + x)];
              if (b) {
                express += b;
                continue;
              }
              const bool blank = (asBlank >> f++) & 1u;
              express += blank ? word[size_t(i)] : LowerAscii(word[size_t(i)]);
              if (!blank) covered = covered && ++need[word[size_t(i)] - 'A'] <= inRack[word[size_t(i)] - 'A'];
            }
            if (!covered) continue;
            const Verdict verdict = Judge(lexicon, board, ClsWord{express, place, 0}, rack, firstPlay);
            if (!verdict.legal) continue;
            if (fresh.size() == 1 && !down) {
              const auto [x, y] = square(fresh[0]);
              if (Occupied(board, x, y - 1) || Occupied(board, x, y + 1)) continue;
            }
            found.insert({word, place, verdict.truePoints});
          }
          (void)x1;
          (void)y1;
        }
      }
    }
  }
  return found;
}

std::set<Found> Generated(ExactMoves& moves, const BoardSquares& board, bool firstPlay, const std::string& rack) {
  std::set<Found> found;
  for (const ExactPlay& p : moves.All(board.data(), firstPlay, rack)) {
    const bool fresh = found.insert({p.Word(), p.Place(), p.points}).second;
    EXPECT_TRUE(fresh) << "listed twice: " << p.Word() << " " << p.Place() << " " << p.points;
  }
  return found;
}

void ExpectSamePlays(const std::set<Found>& expected, const std::set<Found>& generated, const std::string& what) {
  std::set<Found> missed, invented;
  std::set_difference(expected.begin(), expected.end(), generated.begin(), generated.end(),
                      std::inserter(missed, missed.end()));
  std::set_difference(generated.begin(), generated.end(), expected.begin(), expected.end(),
                      std::inserter(invented, invented.end()));
  EXPECT_TRUE(missed.empty()) << what << ": missed" << Describe(missed);
  EXPECT_TRUE(invented.empty()) << what << ": invented" << Describe(invented);
}

// Lays a play on the board: its new tiles, blanks in upper case.
void Lay(BoardSquares& board, const ExactPlay& play) {
  for (int i = 0; i < play.length; ++i) {
    if (!((play.laid >> i) & 1u)) continue;
    const char letter = play.letters[i];
    board[size_t(play.Y(i) * 15 + play.X(i))] = (play.blank >> i) & 1u ? letter : LowerAscii(letter);
  }
}

// The best-only search names the play heading the whole list: the same word,
// square, direction, points and blanks.
void ExpectBestHeadsTheList(ExactMoves& moves, const BoardSquares& board, bool firstPlay, const std::string& rack,
                            const std::string& what) {
  const std::vector<ExactPlay> all = moves.All(board.data(), firstPlay, rack);
  const std::optional<ExactPlay> best = moves.Best(board.data(), firstPlay, rack);
  ASSERT_EQ(best.has_value(), !all.empty()) << what;
  if (!best) return;
  const auto identity = [](const ExactPlay& p) { return p.Shown() + " " + p.Place() + " " + std::to_string(p.points); };
  EXPECT_EQ(identity(*best), identity(all.front())) << what;
}

std::string RandomRack(Rng& rng, int blanks) {
  static const std::string bag = "aaaaaaaaabbccdddeeeeeeeeeeeeeeeffgghhiiiiiiiijklllllmmmnnnnnnooooooppqrrrrrrssssss"
                                 "ttttttuuuuuuvvwxyz";
  std::string rack(size_t(blanks), '?');
  while (rack.size() < 7) rack += bag[rng.Below(uint32_t(bag.size()))];
  return rack;
}

// A list of about 1,700 words of the real one: every word of two letters,
// and words of three to fifteen letters at random.
std::vector<std::string> SmallList() {
  std::string text;
  const std::vector<std::string_view> all = WordGraph::LexiconWords(RealLexicon(), text);
  Rng rng(20261124);
  std::vector<std::string> words;
  for (const std::string_view w : all) {
    const uint32_t keep = w.size() == 2 ? 1000 : w.size() == 3 ? 300 : w.size() <= 5 ? 15 : w.size() <= 8 ? 6 : 2;
    if (rng.Below(1000) < keep) words.emplace_back(w);
  }
  return words;
}

TEST(ExactMoves, FindsWhatTheBruteForceFindsOnBoardsGrownAtRandomFromASmallList) {
  const std::vector<std::string> words = SmallList();
  ASSERT_GT(words.size(), 1000u);
  const Lexicon lexicon = SmallLexicon(words);
  ExactMoves moves(lexicon.Graph());
  Rng rng(7);
  int positions = 0, plays = 0, withBlanksOnBoard = 0;
  for (int game = 0; game < 24; ++game) {
    BoardSquares board{};
    bool first = true;
    for (int turn = 0; turn < 12; ++turn) {
      for (int blanks = 0; blanks <= 2; ++blanks) {
        const std::string rack = RandomRack(rng, blanks);
        const std::set<Found> generated = Generated(moves, board, first, rack);
        const std::string what = "game " + std::to_string(game) + " turn " + std::to_string(turn) + " rack " + rack;
        ExpectSamePlays(BruteForce(lexicon, words, board, first, rack), generated, what);
        ExpectBestHeadsTheList(moves, board, first, rack, what);
        ++positions;
        plays += int(generated.size());
      }
      if (::testing::Test::HasFailure()) return;
      // The board grows by a play chosen at random.
      const std::string rack = RandomRack(rng, int(rng.Below(2)));
      const std::vector<ExactPlay>& list = moves.All(board.data(), first, rack);
      if (list.empty()) continue;
      Lay(board, list[rng.Below(uint32_t(list.size()))]);
      first = false;
      for (const char c : board) withBlanksOnBoard += c >= 'A' && c <= 'Z';
    }
  }
  EXPECT_EQ(positions, 24 * 12 * 3);
  EXPECT_GT(plays, 30000);           // the boards offer plenty
  EXPECT_GT(withBlanksOnBoard, 100);  // blanks stood on the boards too
}

TEST(ExactMoves, KeepsNothingOfABoardLeftWhenPlaysAreTakenBackOrBoardsComeInAnyOrder) {
  // One generator goes along games, then back through their boards and
  // across them in any order (as an undo, or an analysis of another game,
  // asks it): it lists what a new one lists, and its best heads its list.
  const std::vector<std::string> words = SmallList();
  const Lexicon lexicon = SmallLexicon(words);
  ExactMoves kept(lexicon.Graph());
  Rng rng(11);
  std::vector<std::pair<BoardSquares, bool>> boards;
  for (int game = 0; game < 6; ++game) {
    BoardSquares board{};
    bool first = true;
    for (int turn = 0; turn < 14; ++turn) {
      boards.emplace_back(board, first);
      const std::vector<ExactPlay>& list = kept.All(board.data(), first, RandomRack(rng, int(rng.Below(3))));
      if (list.empty()) continue;
      Lay(board, list[rng.Below(uint32_t(list.size()))]);
      first = false;
    }
  }
  std::vector<size_t> order;
  for (size_t i = boards.size(); i-- > 0;) order.push_back(i);  // every play taken back in turn
  for (size_t i = 0; i < boards.size(); ++i) order.push_back(rng.Below(uint32_t(boards.size())));
  for (const size_t i : order) {
    const auto& [board, first] = boards[i];
    const std::string rack = RandomRack(rng, int(rng.Below(3)));
    const std::string what = "board " + std::to_string(i) + " rack " + rack;
    ExactMoves fresh(lexicon.Graph());
    ExpectSamePlays(Generated(fresh, board, first, rack), Generated(kept, board, first, rack), what);
    ExpectBestHeadsTheList(kept, board, first, rack, what);
    if (::testing::Test::HasFailure()) return;
  }
}

TEST(ExactMoves, FindsTheBestPlayStillAfterMoreSearchesThanItsTablesCanCount) {
  // What a generator knows of a search is told from what it knew before by
  // a count of searches that starts again after 65,536: a few boards met
  // again and again past that point still get a new generator's best.
  const std::vector<std::string> words = SmallList();
  const Lexicon lexicon = SmallLexicon(words);
  ExactMoves kept(lexicon.Graph());
  Rng rng(65536);
  std::vector<BoardSquares> boards(1);
  for (int turn = 0; turn < 5; ++turn) {
    BoardSquares next = boards.back();
    const std::vector<ExactPlay>& list = kept.All(next.data(), turn == 0, RandomRack(rng, 0));
    if (list.empty()) break;
    Lay(next, list.front());
    boards.push_back(next);
  }
  ASSERT_GE(boards.size(), 4u);
  std::vector<std::string> racks;
  for (int i = 0; i < 12; ++i) racks.push_back(RandomRack(rng, i % 3));
  const auto identity = [](const std::optional<ExactPlay>& p) {
    return p ? p->Shown() + " " + p->Place() + " " + std::to_string(p->points) : std::string("none");
  };
  int compared = 0;
  for (int search = 0; search < 66000; ++search) {
    const size_t b = boards.size() - 1 - size_t(search / 4) % 2;
    const std::string& rack = racks[size_t(search) % racks.size()];
    const std::optional<ExactPlay> best = kept.Best(boards[b].data(), false, rack);
    if (search < 65400 || search % 3) continue;
    ExactMoves fresh(lexicon.Graph());
    ASSERT_EQ(identity(best), identity(fresh.Best(boards[b].data(), false, rack)))
        << "search " << search << " board " << b << " rack " << rack;
    ++compared;
  }
  EXPECT_EQ(compared, 200);
}

// Boards of games the designed search played with the real list.
std::vector<Turn> GameTurns() {
  std::vector<Turn> turns;
  SelfPlay(RealLexicon(), 31, 1, [&](const Turn& turn, ClsPlateau&, EngineContext&) {
    if (turn.number == 1 || turn.number == 9 || turn.number == 16) turns.push_back(turn);
  });
  return turns;
}

TEST(ExactMoves, FindsWhatTheBruteForceFindsWithTheRealList) {
  std::string text;
  const std::vector<std::string_view> all = WordGraph::LexiconWords(RealLexicon(), text);
  const std::vector<std::string> words(all.begin(), all.end());
  ExactMoves moves(RealLexicon().Graph());
  int positions = 0;
  for (const Turn& turn : GameTurns()) {
    // The rack drawn, then the same with its last letters turned to blanks.
    for (int blanks = 0; blanks <= 2; ++blanks) {
      std::string rack = turn.rack;
      for (int k = 0; k < blanks && k < int(rack.size()); ++k) rack[rack.size() - 1 - size_t(k)] = '?';
      // The brute force with blanks is slow: two on the empty board, one in the middle game.
      if (blanks > (turn.number == 1 ? 2 : turn.number == 9 ? 1 : 0)) continue;
      ++positions;
      ExpectSamePlays(BruteForce(RealLexicon(), words, turn.board, turn.firstPlay, rack),
                      Generated(moves, turn.board, turn.firstPlay, rack),
                      "game " + std::to_string(turn.game) + " turn " + std::to_string(turn.number) + " rack " + rack);
      if (::testing::Test::HasFailure()) return;
    }
  }
  EXPECT_EQ(positions, 6);
}

TEST(ExactMoves, TheBestPlayHeadsTheWholeListAndTheDesignedSearchFindsNothingMoreNorBetter) {
  ExactMoves moves(RealLexicon().Graph());
  int turns = 0, designedBelow = 0;
  SelfPlay(RealLexicon(), 5, 4, [&](const Turn& turn, ClsPlateau& board, EngineContext&) {
    ++turns;
    const std::vector<ExactPlay> all = moves.All(turn.board.data(), turn.firstPlay, turn.rack);
    const std::optional<ExactPlay> best = moves.Best(turn.board.data(), turn.firstPlay, turn.rack);
    ASSERT_EQ(best.has_value(), !all.empty());
    if (!best) return;
    EXPECT_EQ(best->Word() + best->Place() + std::to_string(best->points),
              all.front().Word() + all.front().Place() + std::to_string(all.front().points));
    for (size_t i = 1; i < all.size(); ++i) ASSERT_FALSE(PlayBefore(all[i], all[i - 1])) << "ranked out of order";
    std::set<Found> exact;
    for (const ExactPlay& p : all) {
      exact.insert({p.Word(), p.Place(), p.points});
      ASSERT_EQ(TruePoints(turn.board.data(), p.ToWord(turn.board.data())), p.points) << p.Word() << " " << p.Place();
    }
    // Each finding of the designed search, scored truly, is in the list.
    for (int32_t i = 1; i <= board.SolutionCount(); ++i) {
      const ClsWord& w = board.TabSolutions(i);
      if (w.IsEmpty()) continue;
      const Verdict verdict = Judge(RealLexicon(), turn.board, w, turn.rack, turn.firstPlay);
      ASSERT_TRUE(verdict.legal) << verdict.why;
      std::string upper = w.Express;
      for (char& c : upper) c = UpperAscii(c);
      const bool oneTileAcross = verdict.tilesLaid == 1 && w.Place[0] >= 'A';
      if (!oneTileAcross) {
        EXPECT_TRUE(exact.count({upper, w.Place, verdict.truePoints})) << upper << " " << w.Place;
      }
      EXPECT_LE(verdict.truePoints, best->points);
    }
    if (const auto proposal = board.SubSortie(5)) {
      const Verdict verdict = Judge(RealLexicon(), turn.board, *proposal, turn.rack, turn.firstPlay);
      EXPECT_EQ(TruePoints(turn.board.data(), *proposal), verdict.truePoints) << proposal->Express;
      designedBelow += verdict.truePoints < best->points;
    }
  });
  EXPECT_GT(turns, 60);
  EXPECT_GT(designedBelow, 0);  // the designed proposal is not always the top
}

TEST(ExactMoves, TheBestPlayHeadsTheListOnBoardsOfManyGamesWithRacksRichInBlanksAndInSevenLetterWords) {
  // Racks that make seven-letter words (their letters shuffled, some turned
  // to blanks) find the plays of every tile; random racks the rest.
  std::string text;
  const std::vector<std::string_view> all = WordGraph::LexiconWords(RealLexicon(), text);
  std::vector<std::string_view> sevens;
  for (const std::string_view w : all)
    if (w.size() == 7) sevens.push_back(w);
  ExactMoves moves(RealLexicon().Graph());
  Rng rng(424242);
  int positions = 0, withSevenTiles = 0;
  SelfPlay(RealLexicon(), 17, 3, [&](const Turn& turn, ClsPlateau&, EngineContext&) {
    if (turn.number % 3 != 1) return;
    for (int kind = 0; kind < 6; ++kind) {
      const int blanks = kind % 3;
      std::string rack;
      if (kind < 3) {
        rack = RandomRack(rng, blanks);
      } else {
        const std::string_view word = sevens[rng.Below(uint32_t(sevens.size()))];
        for (const char c : word) rack += LowerAscii(c);
        for (size_t k = rack.size(); k > 1; --k) std::swap(rack[k - 1], rack[rng.Below(uint32_t(k))]);
        for (int b = 0; b < blanks; ++b) rack[size_t(b)] = '?';
      }
      const std::string what = "game " + std::to_string(turn.game) + " turn " + std::to_string(turn.number) +
                               " rack " + rack;
      ExpectBestHeadsTheList(moves, turn.board, turn.firstPlay, rack, what);
      if (::testing::Test::HasFailure()) return;
      const std::optional<ExactPlay> best = moves.Best(turn.board.data(), turn.firstPlay, rack);
      withSevenTiles += best && best->tiles == 7;
      ++positions;
    }
  });
  EXPECT_GT(positions, 100);
  EXPECT_GT(withSevenTiles, 20);  // the plays of every tile were met, and found best
}

TEST(ExactMoves, PlaysReadAsTheBoardTakesThem) {
  // MAISON from H4 on the empty board: 18 points, as the validation counts.
  ExactMoves moves(RealLexicon().Graph());
  const BoardSquares empty{};
  const std::vector<ExactPlay>& plays = moves.All(empty.data(), true, "maison");
  const auto maison = std::find_if(plays.begin(), plays.end(), [](const ExactPlay& p) {
    return p.Word() == "MAISON" && p.Place() == "H4";
  });
  ASSERT_NE(maison, plays.end());
  EXPECT_EQ(maison->points, 18);
  EXPECT_EQ(maison->ToWord(empty.data()), (ClsWord{"maison", "H4", 18}));
  // A blank shows in upper case in the express and in lower case when shown.
  const std::vector<ExactPlay>& withBlank = moves.All(empty.data(), true, "maiso?");
  const auto blank = std::find_if(withBlank.begin(), withBlank.end(), [](const ExactPlay& p) {
    return p.Word() == "MAISON" && p.Place() == "8D" && p.blanks == 1;
  });
  ASSERT_NE(blank, withBlank.end());
  EXPECT_EQ(blank->Express(empty.data()), "maisoN");
  EXPECT_EQ(blank->Shown(), "MAISOn");
  EXPECT_EQ(blank->points, 16);  // (2 x 2 + 1 + 1 + 1 + 1 + 0) x 2: the M on a double letter, the O on the centre
}

}  // namespace
}  // namespace ostrane::test
