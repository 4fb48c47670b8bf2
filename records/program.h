#pragma once
// The values the whole program shares, gathered in one object that every
// form is handed: where the program runs, its options, the game's name, the
// bag and the picking, the guided tour, the last message and its answer.

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>

#include "engine/context.h"
#include "lexicon/messages.h"
#include "lexicon/user_list.h"
#include "records/host.h"
#include "records/options.h"
#include "records/settings.h"

namespace ostrane {

struct Lexicon;

struct Program {
  Program(const Lexicon& lexicon, Host& host) : lexicon(lexicon), host(host) {}

  const Lexicon& lexicon;
  Host& host;

  // Start-up.
  std::filesystem::path CheminApp;  // the start directory: "Option.ret" and "bestsco.ret" live there
  std::string TitreProg = "Ostrane";
  std::string VersionProg = "1.23";
  float HeureDepart = 0;  // time of day of the start, as a fraction of a day

  // Options ("Option.ret") and the game's name.
  Options options;
  // The program's own settings ("ostrane.ini"), for what it adds to the game.
  Settings settings;
  // The word list the lexicon holds: the embedded one, or the player's.
  WordListInUse wordList;
  std::string NomPartie;
  int16_t NumPartie = 0;

  // Best scores.
  int16_t ScoreCourant = 0;
  int16_t BestNouveau = 0;  // 0 by the button, 1 after a new entry, -1 once the table has closed

  // Messages: the text being shown and the answer to the last box.
  std::string StrMsg;
  Answer IntReponse = Answer::Ok;

  // Guided tour.
  int16_t IntEtapeVisite = 0;
  uint8_t BytVisite = 1;

  // The bag and the picking of tiles.
  std::string StrSac;
  int16_t BlnSacVide = 0;  // -1 once a draw found the bag empty
  int16_t IntPioche = 0;   // start bag: 0 normal, 1 to 3 the short sets
  int16_t IntJok = 1;      // blanks at the first draw: stored and shown, steers nothing
  std::string StrJoker;    // the letter given to a blank: one capital, or "Nul"
  int16_t IntNbSac = 0;
  std::array<std::string, 7> TabTirage{};
  std::array<int16_t, 7> TabRangTirage{};
  int16_t IntNbTire = 0;
  int32_t IntJetonsHaut = 0, IntJetonsGauche = 0;  // where the picker stood when it last closed

  // The engine's shared values: TabSens, LngSens, BytSens and the random
  // generator of the first plays.
  EngineContext engine;

  // Shows StrMsg in the program's box and keeps the answer in IntReponse.
  Answer ShowMessage(BoxStyle style) {
    IntReponse = host.boxes.MsgBox(StrMsg, style);
    return IntReponse;
  }
  std::filesystem::path OptionsFile() const { return CheminApp / kOptionsFileName; }
  std::filesystem::path BestScoresFile() const { return CheminApp / "bestsco.ret"; }
  std::filesystem::path JournalFile() const { return CheminApp / "partie.ret"; }  // the game in progress
  std::filesystem::path SettingsFile() const { return CheminApp / kSettingsFileName; }
};

}  // namespace ostrane
