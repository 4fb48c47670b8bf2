#pragma once
// The word list the program plays with: the embedded one, or the player's
// own, chosen from the windows and kept in the settings ("liste_de_mots").
// The list named there serves from the start of the program, and a new
// choice from the next game on (at once when no game has begun); a game
// taken up from the journal goes on with the list it was played with, and
// the player is told when that list is gone or has changed. A list that
// cannot serve leaves the one in use, and the player is told why.

#include <filesystem>
#include <optional>
#include <string>

#include "lexicon/lexicon.h"
#include "lexicon/user_list.h"

namespace ostrane {

struct Program;
struct SavedGame;

// What the windows say of a list.
//   "la liste intégrée (374 993 mots)"
//   "la liste « ods.txt » (402 325 mots, 3 lignes ignorées)"
std::string DescribeWordList(const WordListInUse& list);

class WordLists {
 public:
  // `embedded` reads the program's own resources; `cacheFolder` keeps the
  // compiled copies of the player's lists.
  WordLists(Program& program, Lexicon& lexicon, Lexicon::Reader embedded, std::filesystem::path cacheFolder);

  // At start, before the lexicon is loaded: the resources the start-up reads,
  // the list of the settings in place of the embedded one when it can serve.
  // `Told()` then holds what the player must be told, if anything.
  Lexicon::Reader StartReader();
  // The start-up has loaded the lexicon: the list's word graph goes to it,
  // and its texts are let go.
  void Started();

  // The list in use, as the windows say it; the one the settings name for
  // the next game ("la liste « ods.txt » (…)" once read, "la liste intégrée").
  std::string InUse() const;
  std::string Chosen() const;
  bool ChoiceWaits() const;  // the settings name another list than the one in use

  // The player's choice: `file`, or "" for the embedded list. A file is read
  // at once; one that cannot serve is refused (false) and `Told()` says why;
  // otherwise the choice goes to the settings (and its compiled copy is
  // ready for `BeforeNewGame`).
  bool Choose(const std::string& file);

  // Before a new game: the list of the settings in the lexicon, when it is
  // not the one in use or its file has changed. A list that cannot serve
  // leaves the one in use, and `Told()` says why.
  void BeforeNewGame();
  // Before a game taken up: the list it was played with in the lexicon.
  // `Told()` says so when that list is gone or changed.
  void ForTakenUpGame(const SavedGame& game);

  // What the player must be told after the last call ("" for nothing).
  const std::string& Told() const { return told_; }

 private:
  bool Load(const std::string& file);
  void LoadEmbedded();

  Program& program_;
  Lexicon& lexicon_;
  Lexicon::Reader embedded_;
  std::filesystem::path cacheFolder_;
  std::optional<CompiledWordList> ready_;  // the list the start-up reads
  WordListInUse chosen_;                   // the last file the player chose
  std::string told_;
};

}  // namespace ostrane
