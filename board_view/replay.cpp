#include "board_view/replay.h"

#include <deque>
#include <functional>

#include "board_view/drag_rules.h"
#include "game/analysis.h"
#include "game/forms.h"
#include "game/frm_boite_d.h"
#include "game/frm_jetons.h"
#include "game/frm_joc.h"
#include "game/frm_plateau.h"
#include "game/quiet_host.h"
#include "records/about.h"
#include "records/best_scores.h"
#include "records/final_score.h"
#include "records/guided_tour.h"
#include "records/program.h"

namespace ostrane {
namespace {

// The player's hand, reading the file: the draws picked letter by letter,
// the letters of blanks given, every box closed.
class ReplayForms : public Forms {
 public:
  ReplayForms(Program& program, ManualTimers& timers, const GameFile& file)
      : program_(program), timers_(timers), file_(file) {}

  void Show(FrmJetons& form) override {
    timers_.Advance(250);  // the picker wakes up
    if (error.empty() && next_ >= file_.turns.size() && onDrawAfterTheFile) {
      // The game as it stood before this draw; the picker is left with
      // anything, and what follows is not the file's.
      onDrawAfterTheFile();
      onDrawAfterTheFile = nullptr;
      PickAnything(form);
      return;
    }
    if (!error.empty() || next_ >= file_.turns.size()) {
      if (error.empty()) error = "Le fichier s'arrête avant le tirage qui suit le dernier coup.";
      // Leaving from the picker would end the program: the tiles the bag
      // holds are picked, and the replay stops on the error.
      PickAnything(form);
      return;
    }
    const GameFile::Turn& turn = file_.turns[next_++];
    program_.engine.Random.Seed(turn.random);
    for (const char letter : turn.drawn) {
      const int index = letter == '?' ? FrmJetons::kBlank : letter - 'A' + 1;
      if (!form.CmdJeton[size_t(index)].enabled) {
        error = "Ligne " + std::to_string(turn.drawnLine) + " : la lettre " + (letter == '?' ? std::string("« ? »") : std::string(1, letter)) +
                " n'est plus dans le sac pour ce tirage.";
        PickAnything(form);
        return;
      }
      form.CmdJeton_Click(index);
    }
    if (!form.CmdValider.enabled) {
      error = "Ligne " + std::to_string(turn.drawnLine) + " : il manque des jetons à ce tirage.";
      PickAnything(form);
      return;
    }
    form.CmdValider_Click();
  }
  void Show(FrmJoc& form) override {
    std::string letter = "E";
    if (!blankLetters.empty()) {
      letter = std::string(1, blankLetters.front());
      blankLetters.pop_front();
    }
    form.TxtJok_Change(letter);
    form.TimQuit_Timer();
  }
  void Show(FrmBoiteD& form) override { form.CmdQ_Click(); }
  void Show(FrmBoiteI& form) override {
    for (int i = 0; i < 3 && !form.view().unloaded; ++i) form.CmdQ_Click();
  }
  void Show(FrmFini& form) override { form.CmdQuit_Click(); }
  void Show(FrmBest& form) override { form.CmdFerme_Click(); }
  void Show(FrmAbout& form) override { form.CmdFerme_Click(); }
  void EndProgram() override { ended = true; }

  size_t Drawn() const { return next_; }

  std::deque<char> blankLetters;
  std::string error;
  std::function<void()> onDrawAfterTheFile;
  bool ended = false;

 private:
  void PickAnything(FrmJetons& form) {
    while (!form.CmdValider.enabled && program_.IntNbTire < form.IntNbATirer && !program_.StrSac.empty()) {
      const char c = program_.StrSac[0];
      form.CmdJeton_Click(c == '?' ? FrmJetons::kBlank : c - 'A' + 1);
    }
    form.CmdValider_Click();
  }

  Program& program_;
  ManualTimers& timers_;
  const GameFile& file_;
  size_t next_ = 0;
};

}  // namespace

std::optional<Replayed> Replay(const Lexicon& lexicon, const WordGraph* graph, const Options& options,
                               const GameFile& file, std::string& error, bool uptoTheNextDraw) {
  QuietHost host;
  host.clock.now = file.date;
  Program program(lexicon, host.host);
  program.options = options;
  program.options.OptMessages = "Non";
  program.options.OptSons = false;
  program.settings.proposeExact = file.exact;
  program.NomPartie = file.name;
  program.IntPioche = file.pioche;
  program.IntJok = file.jokers;
  ReplayForms forms(program, host.timers, file);
  FrmPlateau form(program, forms);
  form.Randomize = nullptr;
  form.Sleep = nullptr;
  if (graph) OfferExactAnalysis(form, *graph);
  TileDrag drag(form);
  GameRecord record(form, host.clock);
  std::optional<SavedGame> beforeNextDraw;
  std::vector<RecordedTurn> turnsBeforeNextDraw;
  if (uptoTheNextDraw)
    forms.onDrawAfterTheFile = [&] {
      beforeNextDraw = form.Snapshot();
      turnsBeforeNextDraw = record.Turns();
      turnsBeforeNextDraw.pop_back();  // the draw that was starting
    };

  form.Form_Load();
  host.timers.Advance(FrmPlateau::kTimDeb);
  program.StrSac = file.bag;
  form.SubAfficheSac();
  if (file.turns.empty()) {
    error = "Le fichier ne contient aucun tirage.";
    return std::nullopt;
  }
  form.CmdNew_Click();
  for (size_t t = 0; t < file.turns.size(); ++t) {
    if (!forms.error.empty()) break;
    const GameFile::Turn& turn = file.turns[t];
    if (!turn.play) break;
    const std::string where = "Ligne " + std::to_string(turn.playLine) + " : le coup « " + turn.play->Express + " " +
                              turn.play->Place + " »";
    const bool laid = form.CmdSolution.enabled && LayWord(form, drag, *turn.play, [&forms](char letter) {
      forms.blankLetters.push_back(letter);
    });
    if (!laid) {
      error = where + " ne se pose pas avec les jetons de ce tirage.";
      return std::nullopt;
    }
    if (!form.CmdValider.enabled) {
      error = where + " n'est pas un coup valable sur ce plateau.";
      return std::nullopt;
    }
    const ClsWord judged = form.SubEvalueProposition();
    if (judged.CountP != turn.play->CountP) {
      error = where + " vaut " + std::to_string(judged.CountP) + " points, et non " +
              std::to_string(turn.play->CountP) + ".";
      return std::nullopt;
    }
    form.CmdValider_Click();
    if (forms.ended) {
      error = where + " : la partie s'est arrêtée.";
      return std::nullopt;
    }
    if (!form.CmdSolution.enabled && t + 1 < file.turns.size()) {
      error = "Ligne " + std::to_string(file.turns[t + 1].drawnLine) + " : la partie était finie avant ce tirage.";
      return std::nullopt;
    }
  }
  if (!forms.error.empty()) {
    error = forms.error;
    return std::nullopt;
  }
  if (forms.Drawn() != file.turns.size()) {
    error = "Ligne " + std::to_string(file.turns[forms.Drawn()].drawnLine) + " : ce tirage vient après la fin de la partie.";
    return std::nullopt;
  }
  Replayed replayed;
  if (beforeNextDraw) {
    replayed.state = *beforeNextDraw;
    replayed.turns = std::move(turnsBeforeNextDraw);
    replayed.plays = replayed.state.IntNbCoups;
    return replayed;
  }
  replayed.state = form.Snapshot();
  replayed.turns = record.Turns();
  replayed.finished = !form.CmdSolution.enabled;
  replayed.plays = form.IntNbCoups;
  return replayed;
}

}  // namespace ostrane
