#pragma once
// The record of the game in progress, beside the main form: each draw and
// each play in order, with the states the form kept around them. A play can
// be taken back (as many as were played), a draw made again, and the whole
// game written to a file of our own and read back (by playing it again
// through the models: board_view/replay.h).
//
// The file ("Ostrane partie enregistrée 1"), UTF-8, one field a line, each
// line closed by CR LF:
//
//   Ostrane partie enregistrée 1
//   Nom=Partie tabli 01            the game's name
//   Date=2026-11-24 15:30          when the game was started
//   Pioche=0                       the start bag chosen (0 normal, 1 to 3 the short ones)
//   Jokers=1                       the blanks at the first draw, as chosen (steers nothing)
//   Exact=non                      "oui": the solution proposed the exact top
//   Sac=AAAAAAAAABBCC...           the bag at the start, in its order
//   Tirage=ACEMNRU 1234567         the tiles drawn, in the order picked ("?" a blank),
//                                  and the state of the random generator after the draw
//   Coup=acumen H4 24              the play validated: as the board takes it (a blank in
//                                  upper case), its position, its points
//   Top=24                         the turn's exact top, when it was worked out
//   Tirage=...                     ... and so on; a last draw without a play is the rack
//                                  on the stand when the game was written
//   Fin
//
// A game that ran out ends with its last play (its last draw found nothing).

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/solution_set.h"
#include "records/game_journal.h"
#include "records/host.h"

namespace ostrane {

class FrmPlateau;

// One turn as the record keeps it.
struct RecordedTurn {
  SavedGame beforeDraw;                // the form before the draw, its rack empty
  std::optional<SavedGame> afterDraw;  // once the tiles drawn are on the stand
  std::string drawn;                   // the tiles drawn, in the order picked: "A".."Z", "?"
  std::optional<ClsWord> play;         // once validated
  int top = -1;                        // the turn's exact top, -1 when not worked out
};

// A game as its file keeps it.
struct GameFile {
  std::string name;
  DateTime date;
  int16_t pioche = 0;
  int16_t jokers = 1;
  bool exact = false;
  std::string bag;
  struct Turn {
    std::string drawn;
    uint64_t random = 0;
    int drawnLine = 0;  // the line of the file, for messages
    std::optional<ClsWord> play;
    int playLine = 0;
    int top = -1;
  };
  std::vector<Turn> turns;
};

inline constexpr const char* kGameFileFirstLine = "Ostrane partie enregistrée 1";
// The French messages of a file that cannot be read.
inline constexpr const char* kNotAGame = "Ce fichier n'est pas une partie enregistrée par Ostrane.";

std::string FormatGameFile(const GameFile& game);
// The game of a file's text; on failure nothing, and in `error` a French
// sentence naming the first bad line.
std::optional<GameFile> ParseGameFile(std::string_view text, std::string& error);

class GameRecord {
 public:
  // Follows `form` from now on (its hooks), with `clock` for the game's date.
  GameRecord(FrmPlateau& form, const Clock& clock);
  ~GameRecord();
  GameRecord(const GameRecord&) = delete;
  GameRecord& operator=(const GameRecord&) = delete;

  const std::vector<RecordedTurn>& Turns() const { return turns_; }
  int Plays() const;

  // "Annuler le dernier coup": the last play validated is taken back, the
  // form as it was with that play's rack on the stand (and its search run
  // again). Possible while the game runs, and after a natural end until the
  // score has been taken to the best scores.
  bool CanUndo() const;
  void Undo();
  // "Corriger le tirage": the tiles drawn go back to the bag and the picker
  // opens again for this draw. Possible while a rack is on the stand and no
  // play was validated from it.
  bool CanCorrectDraw() const;
  void CorrectDraw();

  // The game as a file keeps it.
  GameFile File() const;
  // Puts a replayed game's turns and start in place of this record's (the
  // form has taken its state already).
  void Adopt(const GameFile& start, std::vector<RecordedTurn> turns);

  // The start of the game, as the file keeps it.
  const GameFile& Start() const { return start_; }

  // Told at each turn boundary (after the form kept its journal), so that the
  // record can be kept beside it.
  std::function<void()> onChanged;

 private:
  void Drawing();
  void Boundary();
  void Validated(const ClsWord& play, int top);

  FrmPlateau& form_;
  const Clock& clock_;
  GameFile start_;
  std::vector<RecordedTurn> turns_;
  bool correcting_ = false;  // a draw made again: the same game goes on
};

}  // namespace ostrane
