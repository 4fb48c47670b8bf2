#pragma once
// The table of the thirty best games, "bestsco.ret" in the start directory:
// one game a line, 44 characters, CR LF after each, in code page 1252. New
// lines go at the end; order is made only for display, and the file is
// trimmed back to thirty lines when the table is shown with 31 or more.
//
// TimScoreStep is what the main form's TimScore timer does once a game has
// run out: it decides, asks, appends and says whether to open FrmBest.
// FrmBest is the table's form: it ranks, trims, lists, walks the selection
// down to the new game and praises.

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "records/form_link.h"
#include "records/host.h"
#include "records/text_files.h"

namespace ostrane {

struct Program;

inline constexpr const char* kBestScoresFileName = "bestsco.ret";
inline constexpr int kBestLineWidth = 44;

// The line of the table for a game, as the file holds it (code page 1252):
// the score and the name (UTF-8) each filled behind with at least one blank,
// to 7 and 18 characters, three blanks, the date "dd/mm/yy", three blanks,
// the time "hh:mm".
std::string BestScoreLine(int score, std::string_view nomPartie, const DateTime& when);

// The items of the file as the best-score step reads them: at most
// `maxItems`, each ending at a line end or at a comma, leading blanks
// skipped. A blank line is an empty item (its value is 0), and a comma in a
// game's name makes two items.
std::vector<std::string> ReadScoreItems(std::string_view bytes, size_t maxItems = 50);

// Whether a score enters the table read as these items: it beats the number
// at the head (first 5 characters) of some item, or fewer than 30 items were
// read. A tie with the lowest of a full table does not enter.
bool ScoreQualifies(int score, const std::vector<std::string>& items);

// What the best-score step leaves the main form to do.
struct ScoreStepResult {
  bool openBest = false;   // disable the main form and open FrmBest (BestNouveau is 1)
  bool appended = false;   // the game's line reached the file
};

// The best-score step at the end of a game that ran out. `lblPtsJoueur` is
// the score label of the main form. Sets ScoreCourant; asks through the
// program's message box; on a file failure shows "Erreur interne 104 - "
// (no access, 75) or "Erreur interne 105 - " (any other) and opens the table
// all the same, the game unrecorded if the failure came before the append.
ScoreStepResult TimScoreStep(Program& program, std::string_view lblPtsJoueur,
                             TextFiles& files = DiskFiles());

// The ranking of the table's lines (code page 1252, as read): entry r - 1 is
// the text of rank r, "001" and two blanks before the line. The head of a
// line is its first 4 characters as a whole number (absolute value); a head
// that is no number counts as 0, and a score of 0 never gets a rank. Equal
// scores get consecutive ranks in file order. At most lines.size() ranks.
std::vector<std::string> RankBestLines(const std::vector<std::string>& lines);

// The praise for the new game's rank.
std::string PraiseText(int rank);

class FrmBest {
 public:
  static constexpr const char* kCaption = "Les 30 meilleures parties";
  static constexpr std::array<const char*, 5> kHeaders = {"Rang", "Points", "Nom de la partie", "Date",
                                                          "Heure "};
  static constexpr const char* kFont = "Courier New";  // fixed width, so the columns line up
  static constexpr int kMaxLinesRead = 32;
  static constexpr int kTableSize = 30;

  enum class Focus { None, LstSco, Foc };

  // What the window shows. Texts are UTF-8.
  struct View {
    bool visible = false;
    Pointer pointer = Pointer::Default;
    std::vector<std::string> LstSco;  // "001  " and the line, best first, at most 30
    bool LstScoVisible = false;
    int ListIndex = -1;               // the selected line of LstSco, -1 for none
    bool CmdEffEnabled = false;
    Focus focus = Focus::None;
    bool unloaded = false;            // the form has closed: the window goes
  };

  // `enableMain` is called with true when the form unloads; the opener
  // disables the main form itself before the load.
  FrmBest(Program& program, EnableMainForm enableMain, TextFiles& files = DiskFiles());
  ~FrmBest();
  FrmBest(const FrmBest&) = delete;
  FrmBest& operator=(const FrmBest&) = delete;

  // Clears ListeChargee and PasDescente, shows the hourglass, starts TimDeb
  // (100 ms) and becomes visible. The list comes with TimDeb.
  void Form_Load();
  // Asks, then clears the list and deletes the file.
  void CmdEff_Click();
  // CmdFerme and the hidden Foc: unload.
  void CmdFerme_Click() { Form_Unload(); }
  void Foc_Click() { Form_Unload(); }
  // Stops the timers, enables the main form, BestNouveau = -1.
  void Form_Unload();

  const View& view() const { return view_; }
  int16_t NbLignes() const { return nbLignes_; }
  int16_t ListeChargee() const { return listeChargee_; }
  int16_t PasDescente() const { return pasDescente_; }
  int16_t RangScore() const { return rangScore_; }

  // Called after every change that a timer made, so that the window follows.
  std::function<void()> changed;

 private:
  void TimDeb_Timer();
  void TimLigne_Timer();
  void TimLigneBis_Timer();
  void ShowFileError(const FileError& error);
  void Changed() {
    if (changed) changed();
  }

  Program& program_;
  EnableMainForm enableMain_;
  TextFiles& files_;
  std::unique_ptr<Timer> timDeb_, timLigne_, timLigneBis_;
  View view_;
  int16_t nbLignes_ = 0;
  int16_t listeChargee_ = 0;
  int16_t pasDescente_ = 0;
  int16_t rangScore_ = 0;
};

}  // namespace ostrane
