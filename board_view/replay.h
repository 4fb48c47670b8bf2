#pragma once
// A game read from its file played again through the models, as the player
// played it: in a program of its own (nothing shown, nothing written), each
// draw clicked in the picker, each play laid with the drag rules and
// validated, every search run as it ran. What comes out is the state of the
// game after its last line and its record, for the main form to take.

#include <optional>
#include <string>
#include <vector>

#include "game/game_record.h"
#include "records/options.h"

namespace ostrane {

struct Lexicon;
class WordGraph;

struct Replayed {
  SavedGame state;                  // the game after its last line
  std::vector<RecordedTurn> turns;  // its record
  bool finished = false;            // it ran out: its last draw found nothing
  int plays = 0;
};

// `graph`, when given, works out each turn's exact top as the program does.
// On failure: nothing, and in `error` a French sentence naming the first bad
// line of the file. A file that ends with a play before the game's end is
// cut short, unless `uptoTheNextDraw`: then the state is the game's as the
// next draw starts (its rack empty), as a program stopped in the picker
// keeps it.
std::optional<Replayed> Replay(const Lexicon& lexicon, const WordGraph* graph, const Options& options,
                               const GameFile& file, std::string& error, bool uptoTheNextDraw = false);

}  // namespace ostrane
