#pragma once
// FrmPlateau, the main form: one game from its first draw to its score.
//
// The model holds every value of the form and the state of every control;
// the window shows them and forwards the player's actions to the commands
// below, which are also the operations the game calls by name
// (CmdRAZ_Click, CmdSolution_Click, CmdNew_Click are called directly).
// Questions go through Program::ShowMessage, modal forms through Forms,
// timers, sounds and documents through the program's Host.
//
// Coordinates are pixels of the window's client area (game/layout.h), except
// the guide lines and the arrow, which stand inside the board Plateau1.
//
// When to redraw: after every command the window forwards, whenever `changed`
// is called (a timer did something, or a command is about to start long work:
// the draw shown and the waiting panel up before the search, the form
// disabled while it runs, given back before the pause of the first plays),
// before each modal form or message box, and the board picture whenever
// Plateau.revision moves. While `enabled` is false the window takes no input
// and cannot be closed; its timers and its painting go on.

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "engine/board.h"
#include "engine/solution_set.h"
#include "game/controls.h"
#include "game/forms.h"
#include "lexicon/expressions.h"
#include "records/form_link.h"
#include "records/game_journal.h"
#include "records/host.h"

namespace ostrane {

struct Program;

// The page of the on-line dictionary, a setting of the build: the entry of
// `word` (letters A-Z, either case), or the dictionary's home for none.
std::string ChercheWebAddress(std::string_view word);

class FrmPlateau {
 public:
  // What closing the form leads to.
  enum class Unload {
    Cancelled,   // the player answered No: the form stays
    EndProgram,  // the options are saved; the program ends
    ToPartie,    // the form goes and FrmPartie opens for a new game
  };

  // The picture of the board Plateau1: the board image last painted (2
  // "Classique", 3 "Chocolat", 4 "Relief"; 0 while none has been) and the
  // face painted on each square since: "" where the image shows, a lower-case
  // letter for ImgLet as it is, an upper-case letter for ImgJok recoloured
  // dark red. Squares are (column, row), at index row * 15 + column.
  struct BoardPicture {
    int image = 0;
    std::array<std::string, 225> squares{};
    int revision = 0;  // moves at every repaint
    const std::string& Square(int column, int row) const { return squares[size_t(row * 15 + column)]; }
  };

  // A rack place of TabChevalet.
  struct Chevalet {
    std::string StrLettre;  // "" for a free place
    int16_t IntJeton = -1;  // the tile standing there
  };

  // The picture of the direction arrow ImgXY.
  enum class Arrow { ImgClassicHor, ImgClassicVer };
  // The picture of CmdSon.
  enum class SonPicture { ImgHP1, ImgHP2 };
  // Which control has the focus, as far as the form's rules look at it: the
  // word box TxtCtrl, the history TxtHisto, the hidden sink Foc, or any
  // other control.
  enum class Focus { Other, TxtCtrl, TxtHisto, Foc };

  static constexpr int kTimDeb = 100;
  static constexpr int kTimerEpie = 51000;
  static constexpr int kTimCligno = 400;
  static constexpr int kTimFrmFin = 1000;
  static constexpr int kTimScore = 200;
  static constexpr int kTimChrono = 1000;
  static constexpr int kTimPasseEnDupli = 500;
  static constexpr int kRackBound = 7;  // TabChevalet holds places 0 to 6
  static constexpr size_t kTxtCtrlMaxLength = 15;

  FrmPlateau(Program& program, Forms& forms);
  ~FrmPlateau();
  FrmPlateau(const FrmPlateau&) = delete;
  FrmPlateau& operator=(const FrmPlateau&) = delete;

  // ================================================================ commands
  // Life of the form.
  void Form_Load();
  void TimDeb_Timer();
  // Asks as the closing of the window does; see Unload.
  Unload Form_Unload();

  // The game.
  void CmdNew_Click();
  Unload CmdGame_Click();
  void SubActiveChevalet();
  void SubTirage();
  void SubAfficheSac();
  void CmdSolution_Click();
  void SubPositionSolution(const std::string& number, const std::string& letter);
  ClsWord SubEvalueProposition();
  void CmdValider_Click();
  void SubAjoutHisto(const ClsWord& word);
  void CmdRanger_Click();
  void CmdRAZ_Click();
  void TriAlpha();

  // End of a game.
  void SunFindePartie();
  void TimFrmFin_Timer();
  void TimScore_Timer();
  void CmdArret_Click();
  void ArretPartie();
  void CmdArretBis_Click();

  // Clock, blink and the small commands.
  void TimerEpie_Timer();
  void LblTimer_Change();
  void TimCligno_Timer();
  void StartBlink();  // IntCligno = 0 and TimCligno at 400 ms
  void TimChrono_Timer();
  void TimPasseEnDupli_Timer();
  void CmdEndRnd_Click();
  void CmdEnregistre_Click();
  void CmdSon_Click();
  void SubJoueSon(int index);
  void CmdMeilleur_Click();
  Unload CmdQuitte_Click();
  void CmdAide_Click();
  void CmdChercheWeb_Click();
  void CmdAbout_Click();
  void OptPioche_Click(int index);
  void OptJok_Click(int index);
  void CmdCacher_Click();
  void CmdMax_Click() { WindowState = 2; }
  void CmdMin_Click() { WindowState = 0; }
  // The tools frame dropped on the board at (x, y) of Plateau1.
  void Plateau1_DragDrop(int x, int y);

  // The word check. KeyPress takes the typed character's code and returns
  // the one to insert, 0 when it is refused; Change gets the box's new text
  // and keeps only its letters A-Z and a-z, at most 15.
  int TxtCtrl_KeyPress(int keyAscii);
  void TxtCtrl_Change(const std::string& text);
  void TxtCtrl_GotFocus();
  void TxtCtrl_LostFocus();
  // Moves the focus to `control`: the word box's LostFocus runs when it loses
  // it, its GotFocus when it takes it. The commands that send the focus to
  // Foc or TxtHisto come through here, and so does the window when the
  // player moves the focus into or out of the word box.
  void SetFocus(Focus control);
  void CmdCtrl_MouseDown();
  void CmdCtrl_Click();
  void ImgA_Click();

  // The board and the faces.
  void DrawGrille();
  // The three painters leave a face in PicTemp; SubPeintPose and
  // SubPeintLettre do nothing for a first character below "a".
  void SubPeintPose(const std::string& car);
  void SubPeintLettre(const std::string& car);
  void SubPeintBlanc(const std::string& car);

  // Whether tile i lies on the board: wholly inside Plateau1 in both
  // directions (validation, rack return), or across only (the evaluation).
  bool TileInsidePlateau(int i) const;
  bool TileAcrossPlateau(int i) const;
  // The square under a tile, each coordinate rounded half to even.
  int TileColumn(int i) const;
  int TileRow(int i) const;

  // ==================================================================== state
  // The game.
  std::unique_ptr<ClsPlateau> ObjPlateau;
  ClsExpressions ObjMots;
  int16_t IntNbCoups = 0;
  int VarTirage = 0;
  int16_t BlnAbandon = 0;
  int16_t BlnChangePartie = 0;
  int32_t LngNbSolutions = 0;
  int16_t IntPasJeton = 0;
  std::array<Chevalet, kRackBound> TabChevalet{};
  std::array<std::string, 103> TabLettres{}, TabTriees{};  // entries 1 to SngNbLettres
  float SngNbLettres = 0;

  // The clock.
  uint8_t BytChronoDemande = 0;
  uint8_t BytChronoActif = 0;
  int VarSecondes = 0, VarMinutes = 0, VarHeures = 0;

  // Blink, picture cycle, tools frame.
  int16_t IntCligno = 0;
  int16_t IntImageEpie = 0;
  int16_t BlnOutilsPlies = 0;

  // The last best play shown by CmdSolution_Click (nothing when there was
  // none): what the box showed, kept for whoever lays it.
  std::optional<ClsWord> Proposition;

  // The form itself.
  std::string caption;
  bool enabled = false;
  bool visible = true;
  Pointer MousePointer = Pointer::Default;
  int WindowState = 0;            // 0 normal, 2 maximised
  int TxtHistoScroll = 0;         // moves when TxtHisto is to show its last line
  Focus ActiveControl = Focus::Other;  // the window gives the focus to that control
  bool ended = false;             // the program has ended from a modal form
  bool ChercheWebOpened = false;  // what the platform answered to the last CmdChercheWeb

  // The controls.
  Button CmdNew, CmdGame, CmdArret, CmdSolution, CmdValider, CmdRanger;
  Button CmdMeilleur, CmdQuitte, CmdAide, CmdChercheWeb, CmdAbout;
  Button CmdSon;
  SonPicture CmdSonPicture = SonPicture::ImgHP1;
  Button CmdCacher, CmdMax, CmdMin;
  Button CmdEnregistre, CmdEndRnd, CmdRAZ, CmdArretBis;  // frame Fra2: called by the code
  Button CmdCtrl;
  TextBox TxtCtrl, TxtHisto;
  Label LblIndic, LblPtsJoueur, LblTirage, LblLetReste, LblLTitre, LblPts, LblPtsBis;
  Label LblDuree, LblTimer, LblSolution, LblNomP, LblVer, LblTpsDemarrage;
  Label LblN, LblA1, LblA11, LblDef, LblShowDef, LblWait;
  Control PicDef, PicWait;
  Control ImgXY;
  int ImgXYLeft = 0, ImgXYTop = 0;  // inside Plateau1
  Arrow ImgXYPicture = Arrow::ImgClassicHor;
  Line LinVx, LinVy;              // inside Plateau1
  std::array<Control, 4> Iabc{};  // 1 to 3
  Control ImgA, ImgB;
  Frame FraTools;
  std::array<OptionButton, 4> OptPioche{};  // 0 to 3
  std::array<OptionButton, 4> OptJok{};     // 1 to 3
  std::array<Tile, 7> PicGamer{};
  TileFace PicTemp;
  BoardPicture Plateau;

  // ---------------------------------------------------- the game kept on disk
  // Where the game is kept at each turn boundary: after a draw has filled the
  // rack, and after a validation has returned the rack to the bag. It goes at
  // a natural end, a stop, leaving with Yes (here or from the picker) and
  // CmdGame; anything else that ends the program leaves it. None when null.
  GameJournal* journal = nullptr;
  // The game as the journal keeps it; meaningful at a turn boundary.
  SavedGame Snapshot() const;
  // Loads a kept game into this form: call before TimDeb fires, best before
  // Form_Load, which shows the game's name. TimDeb then takes the game up
  // where it was left instead of building a new bag: board, bag, score,
  // history, counters and clock as kept, the game's controls as in a game
  // under way. A rack that was drawn is back on the rack and searched as at
  // the start of a turn; otherwise the turn's draw opens the picker, and the
  // game goes on as after a validation.
  void TakeUp(SavedGame game);
  // Puts a game under way back to a state it kept (a play taken back, a
  // draw made again): board, bag, score, history, counters, clock and the
  // search's memory as kept; the end of a game, when it came, taken back;
  // tiles laid but not validated go. A state kept after the draw has its
  // tiles back on the rack and searched as at the start of the turn;
  // otherwise the turn's draw opens the picker; or, for a game that ran out
  // (`finished`), the form shows its end (without the final score's box or
  // the best scores). The journal follows.
  void Restore(const SavedGame& game, bool finished = false);
  // Whether the score of a game that ran out has been taken to the table of
  // the best scores (its end can no longer be taken back).
  bool BestScoreStepDone = false;

  // ------------------------------------------- the exact analysis beside it
  // Set by whoever offers the exact analysis: the best play of a rack (as
  // CmdSolution_Click builds it) on this form's board, with `down` set for a
  // play down; nothing when the rack has none. Unset, the form is the
  // designed one. Set, the search of a turn is scored against it: its
  // points are the turn's top, and a search that would pass the designed
  // search's limits stops and proposes it instead of ending the program.
  std::function<std::optional<ClsWord>(const std::string& rack, bool& down)> ExactBest;
  // The top of the turn under way (-1 before its search, or without the
  // exact analysis), and what the tops of the turns played add up to.
  int TurnTop = -1;
  int32_t TopsTotal = 0;
  // Told at each turn boundary, after the journal was kept; when a draw is
  // about to open the picker; and when a play has been validated (with the
  // turn's top), before the rack goes back to the bag.
  std::function<void()> onTurnBoundary;
  std::function<void()> onDrawing;
  std::function<void(const ClsWord& play, int top)> onValidated;
  // Told once when the journal cannot be written; by default the player is
  // told, in a box, that the game in progress is not protected.
  std::function<void()> onJournalFailure;

  // Called after every change that a timer made, and at the points where a
  // command shows or hides PicWait or disables or enables the form, so that
  // the window follows before long work starts.
  std::function<void()> changed;
  // The pause of the first two plays (one second); none when empty. As the
  // platform's Sleep, it lets nothing of the player in.
  std::function<void(int milliseconds)> Sleep;
  // Seeds the program's random generator, at each game start and draw; by
  // default from the time of day of the program's clock.
  std::function<void()> Randomize;

  Program& program() { return program_; }
  Forms& forms() { return forms_; }

 private:
  void Changed() {
    if (changed) changed();
  }
  void ShowBoiteI();
  void ShowMessage(const std::string& text, BoxStyle style);
  void SetTileFace(int i, const TileFace& face) { PicGamer[size_t(i)].face = face; }
  // The draw of a turn and what follows it: the end when the rack stays
  // empty, otherwise the search.
  void DrawAndGoOn();
  // TimDeb of a form that takes up a kept game.
  void ResumeGame();
  // A kept state put on the form (the take-up's and Restore's common part).
  void ApplyKept(const SavedGame& game, bool finished = false);
  void SaveJournal();
  void RemoveJournal();

  Program& program_;
  Forms& forms_;
  std::unique_ptr<Timer> TimDeb, TimCligno, TimerEpie, TimFrmFin, TimScore, TimChrono, TimPasseEnDupli;
  std::unique_ptr<FrmFini> frmFini_;  // loaded at the end, shown by TimFrmFin
  std::optional<SavedGame> takeUp_;   // the kept game TimDeb is to take up
  bool journalFailed_ = false;       // the player was told the journal cannot be written
};

}  // namespace ostrane
