#pragma once
// The journal of the game in progress: "partie.ret" in the start directory.
// The main form writes it at each turn boundary (after a draw has filled the
// rack, after a validation has returned the rack to the bag) and removes it
// when the game ends on purpose: a natural end, a stop, leaving with Yes, a
// new game. Whatever else ends the program (a crash, a kill, a power cut,
// one of its own fatal errors) leaves it in place, and the next start offers
// to take the game up.
//
// The file is ours, UTF-8, one field a line, each line closed by CR LF:
//
//   Ostrane partie 1
//   Nom=Partie tabli 01           the game's name
//   Ligne=...............         15 lines, row A first: "." empty, a-z a tile,
//                                 A-Z a blank standing for that letter
//   Premier=Oui                   SubWordFirst: "Oui" or "Non"
//   Sac=?AABCE...                 StrSac
//   Points=123                    LblPtsJoueur
//   Coups=5                       IntNbCoups
//   Tirage=6                      VarTirage
//   LblTirage=05
//   Histo=01 MOT             12   one line of TxtHisto per play
//   SacVide=0                     BlnSacVide
//   Chrono=1 1 12 3 0             BytChronoDemande BytChronoActif VarSecondes VarMinutes VarHeures
//   Minuteur=00:03:12             LblTimer
//   Duree=0:03:12                 LblDuree
//   Chevalet=abe?rst              the rack's Tags in place order, when the draw is done
//   Moteur=3 7 -1 1234567         the search's own-row memory (column, row, set) and the random state
//   Tops=412                      the exact tops of the turns played, added up (only when not 0)
//   Liste=0123456789abcdef /home/… the player's own word list the game is played with: the digest of
//                                 its bytes and its file (only when it is not the embedded list)
//   Fin
//
// It is written whole into a temporary file of the same folder, which then
// replaces the journal in one rename: a journal is either the old one or the
// new one, never half of one. It is read back with every field checked (the
// squares, the letters, the counts, the history against the score, and the
// tiles of the board, the bag and the rack making up one start bag exactly);
// a file that fails any check is not used, and is removed.

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrane {

struct Program;

inline constexpr const char* kJournalFileName = "partie.ret";
inline constexpr const char* kJournalFirstLine = "Ostrane partie 1";

// The state of a game at a turn boundary, as the main form keeps it.
struct SavedGame {
  std::string NomPartie;
  std::array<std::string, 15> lignes;  // rows A to O, 15 squares each: '.', 'a'-'z' or 'A'-'Z'
  bool SubWordFirst = true;
  std::string StrSac;
  std::string LblPtsJoueur = "0";
  int16_t IntNbCoups = 0;
  int VarTirage = 1;
  std::string LblTirage = "01";
  std::vector<std::string> TxtHisto;  // its lines
  int16_t BlnSacVide = 0;
  uint8_t BytChronoDemande = 0;
  uint8_t BytChronoActif = 0;
  int VarSecondes = 0, VarMinutes = 0, VarHeures = 0;
  std::string LblTimer = "00:00:00";
  std::string LblDuree = "0:00:00";
  std::string Chevalet;  // lower-case letters and '?'; empty when the turn's draw is still to come
  // The search's memory of the last tile whose own row it treated: column,
  // row, and -1 while it holds (0 when it does not).
  int16_t ownRowColumn = 0, ownRowRow = 0, ownRowSet = 0;
  uint64_t randomState = 0;  // the program's random generator
  int32_t TopsTotal = 0;     // the exact tops of the turns played, added up (a line of its own, when not 0)
  // The player's own word list of the game: the digest of its bytes and its
  // file; no file for the embedded list.
  uint64_t wordListKey = 0;
  std::string wordListFile;

  bool operator==(const SavedGame&) const = default;
};

// The start bag of OptPioche `pioche`: 0 built from the tile table, 1 to 3
// the short sets.
std::string StartBag(int pioche);

// The tiles of a game, blanks as '?', sorted: those of the board (an
// upper-case square is a blank), the bag and the rack.
std::string GameTiles(const SavedGame& game);

// The text of the file.
std::string FormatSavedGame(const SavedGame& game);

// The game of a file's text, or nothing when any line or any check fails.
std::optional<SavedGame> ParseSavedGame(std::string_view text);

// The journal file of a start directory.
class GameJournal {
 public:
  explicit GameJournal(std::filesystem::path file) : file_(std::move(file)) {}

  const std::filesystem::path& File() const { return file_; }
  // The temporary file a save writes before it takes the journal's place.
  std::filesystem::path TemporaryFile() const;

  // Writes the game in place of the one kept. False when it could not be
  // written: the journal that was there stays as it was.
  bool Save(const SavedGame& game);
  // The game kept, when the file reads whole and every check holds. A file
  // that does not is removed.
  std::optional<SavedGame> Load();
  // No game kept any more. A journal that cannot be removed (its folder
  // taken read-only meanwhile) is written over with what no start offers
  // back.
  void Remove();
  bool Exists() const;

  // The record of the game beside the journal ("partie.enr": its draws and
  // plays, as a game's own file keeps them), so that a game taken up keeps
  // its plays to take back. Written whole like the journal, gone with it.
  std::filesystem::path RecordFile() const;
  bool SaveRecord(const std::string& text);
  std::optional<std::string> LoadRecord() const;

 private:
  std::filesystem::path file_;
};

// Whether two kept states are the same game (the clock and the word list
// apart).
bool SameGame(const SavedGame& a, const SavedGame& b);

// The question of the start when a game was left unfinished.
std::string ResumeQuestion(const SavedGame& game);

// At start, before the game's name is asked: when the journal holds a game,
// asks whether to take it up (Yes and No, Yes the default). Returns the game
// on Yes. On No, and when the file is damaged, the journal is removed and
// nothing comes back; with no journal nothing is asked.
std::optional<SavedGame> OfferResume(Program& program, GameJournal& journal);

}  // namespace ostrane
