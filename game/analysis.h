#pragma once
// The analysis of the draw on the stand, beside the designed game: every legal
// play of the rack on the board with its exact points, ranked (the exact
// generator's order), a filter by word or length, pages over the whole list;
// where the designed proposal stands in it; and the player's score against
// the exact tops of the turns played. It reads the main form and changes
// nothing of it: the window shows a play as a ghost on the board and lays one
// as the player would, through the drag rules.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/board_text.h"
#include "engine/exact_moves.h"

namespace ostrane {

class FrmPlateau;
class WordGraph;

// The exact analysis offered to a main form: its best play of a rack is the
// turn's top, and the proposal when the settings ask for it.
void OfferExactAnalysis(FrmPlateau& form, const WordGraph& graph);

class Analysis {
 public:
  static constexpr int kPageSize = 50;

  Analysis(const FrmPlateau& form, const WordGraph& graph);

  // Works the list out again when the board or the rack changed since;
  // true when it did.
  bool Update();

  // The rack as the analysis reads it (the tiles drawn, on the stand or laid
  // but not validated): lower-case letters, "?" for a blank.
  const std::string& Rack() const { return rack_; }
  const std::vector<ExactPlay>& Plays() const { return plays_; }
  const BoardSquares& Board() const { return board_; }

  // The filter: plays whose word holds `letters` (A-Z, either case; empty for
  // any), of `length` letters (0 for any). The page goes back to the first.
  void SetFilter(std::string_view letters, int length);
  const std::string& FilterLetters() const { return filterLetters_; }
  int FilterLength() const { return filterLength_; }
  // The plays the filter keeps, as indices into Plays() (their rank - 1).
  const std::vector<int>& Kept() const { return kept_; }
  int PageCount() const;
  int Page() const { return page_; }  // from 0
  void SetPage(int page);
  // The indices of the page shown.
  std::vector<int> PageRows() const;

  // Where the designed proposal of the turn stands: its true points and its
  // rank in the list (1 for the first; plays of equal points share the
  // first rank of their points). None when nothing was proposed, or once the
  // rack is spent.
  struct Standing {
    std::string word;   // as the box showed it, upper case
    std::string place;  // "H8" or "8H"
    int points = 0;     // true points
    int claimed = 0;    // the points the designed search gave it
    int rank = 0;
    int index = -1;     // in Plays(), -1 when the list holds it with other blanks only
  };
  std::optional<Standing> Proposal() const;

  // The player's score, the exact tops of the turns played added up, and the
  // score's share of them in percent (-1 while no turn was counted).
  int Score() const;
  int Tops() const;
  int Percent() const;

  // One line of the list: rank, word with its blanks in lower case,
  // position, direction, points, tiles laid.
  static std::string Direction(const ExactPlay& play) { return play.down ? "Vertical" : "Horizontal"; }

 private:
  void Filter();

  const FrmPlateau& form_;
  ExactMoves moves_;
  BoardSquares board_{};
  bool first_ = true;
  std::string rack_;
  bool computed_ = false;
  std::vector<ExactPlay> plays_;
  std::string filterLetters_;
  int filterLength_ = 0;
  std::vector<int> kept_;
  int page_ = 0;
};

}  // namespace ostrane
