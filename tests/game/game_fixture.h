#pragma once
// A game without a window: the fake host, the program's context, scripted
// modal forms that play the player's part, and the main form's model with
// its drag rules. Each test scripts what the player does in the forms.

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "board_view/drag_rules.h"
#include "game/forms.h"
#include "game/frm_boite_d.h"
#include "game/frm_jetons.h"
#include "game/frm_joc.h"
#include "game/frm_plateau.h"
#include "records/about.h"
#include "records/best_scores.h"
#include "records/final_score.h"
#include "records/game_journal.h"
#include "records/guided_tour.h"
#include "records/program.h"
#include "tests/support/fake_host.h"
#include "tests/support/test_support.h"

namespace ostrane::test {

// The player's part in the modal forms. By default: picks the bag's first
// letters up to the count the picker asks, gives each blank the next letter
// of `jokerLetters`, closes every box.
class ScriptedForms : public Forms {
 public:
  explicit ScriptedForms(FakeHost& host) : host_(host) {}

  void Show(FrmJetons& form) override {
    ++jetonsShown;
    host_.timers.Advance(250);  // the picker wakes up
    if (onJetons) {
      onJetons(form);
    } else {
      PickInBagOrder(form, *program, randomPicks);
    }
    EXPECT_TRUE(form.closed) << "the picker was left open";
  }
  void Show(FrmJoc& form) override {
    form.TxtJok_Change(jokerLetters.empty() ? "E" : jokerLetters.front());
    if (!jokerLetters.empty()) jokerLetters.pop_front();
    host_.timers.Advance(FrmJoc::kTimQuitInterval);
    EXPECT_TRUE(form.closed) << "the blank's box stayed open";
  }
  // Remembers "word|position|points|message|definition" of each best play.
  void Show(FrmBoiteD& form) override {
    boiteD.push_back(form.Lbl[1].text + "|" + form.Lbl[3].text + "|" + form.Lbl[5].text + "|" +
                     (form.LblMsg.visible ? form.LblMsg.text : std::string()) + "|" +
                     (form.LblDef.visible ? form.LblDef.text : std::string()));
    if (onBoiteD) onBoiteD(form);
    form.CmdQ_Click();
  }
  void Show(FrmBoiteI& form) override {
    tourSteps.push_back(program->IntEtapeVisite);
    for (int i = 0; i < 3 && !form.view().unloaded; ++i) form.CmdQ_Click();
  }
  void Show(FrmFini& form) override {
    finiScores.push_back(form.view().LblScore);
    form.CmdQuit_Click();
  }
  void Show(FrmBest& form) override {
    host_.timers.Advance(3000);  // the list loads and the selection walks down
    bestLists.push_back(form.view().LstSco);
    form.CmdFerme_Click();
  }
  void Show(FrmAbout& form) override { form.CmdFerme_Click(); }
  void EndProgram() override { ++endProgram; }

  // Clicks the bag's letters, in their order or drawn at random, until as
  // many as the picker asks are picked, then validates.
  static void PickInBagOrder(FrmJetons& form, const Program& program, Rng* random = nullptr) {
    while (!form.CmdValider.enabled || program.IntNbTire < form.IntNbATirer) {
      const std::string sac = program.StrSac;
      ASSERT_FALSE(sac.empty());
      const size_t at = random ? random->Below(uint32_t(sac.size())) : 0;
      const int index = sac[at] == '?' ? FrmJetons::kBlank : sac[at] - 'A' + 1;
      ASSERT_TRUE(form.CmdJeton[size_t(index)].enabled) << sac[at];
      form.CmdJeton_Click(index);
    }
    form.CmdValider_Click();
  }

  const Program* program = nullptr;
  Rng* randomPicks = nullptr;  // picks drawn at random rather than in bag order
  std::function<void(FrmJetons&)> onJetons;
  std::function<void(FrmBoiteD&)> onBoiteD;
  std::deque<std::string> jokerLetters;

  int jetonsShown = 0, endProgram = 0;
  std::vector<std::string> boiteD, finiScores;
  std::vector<int> tourSteps;
  std::vector<std::vector<std::string>> bestLists;

 private:
  FakeHost& host_;
};

// One run of the program in a start folder: its host, shared values and
// modal forms, the journal of its game, and the main form with its drag rules.
struct GameRun {
  explicit GameRun(const std::filesystem::path& dir) : program(RealLexicon(), fake.host), forms(fake) {
    program.CheminApp = dir;
    program.NomPartie = "Partie tabli 01";
    program.options.OptMessages = "Non";
    program.engine.Random.Seed(7);
    forms.program = &program;
    journal = std::make_unique<GameJournal>(program.JournalFile());
  }
  FrmPlateau& Make() {
    form = std::make_unique<FrmPlateau>(program, forms);
    form->Randomize = nullptr;  // the test seeds the generator itself
    form->journal = journal.get();
    drag = std::make_unique<TileDrag>(*form);
    return *form;
  }
  // Loads the main form and lets TimDeb build the bag; `bag` replaces it.
  FrmPlateau& Load(const std::string& bag = {}) {
    Make().Form_Load();
    fake.timers.Advance(FrmPlateau::kTimDeb);
    if (!bag.empty()) {
      program.StrSac = bag;
      form->SubAfficheSac();
    }
    return *form;
  }
  // Lays the proposed play of this turn with drag gestures.
  bool LayProposition() {
    return form->Proposition && LayWord(*form, *drag, *form->Proposition, [this](char letter) {
             forms.jokerLetters.push_back(std::string(1, letter));
           });
  }
  // Lays and validates the proposed plays while the game runs; returns the
  // number of plays validated.
  int PlayOut(int maxTurns = 200) {
    int plays = 0;
    while (plays < maxTurns && form->CmdSolution.enabled && LayProposition() && form->CmdValider.enabled) {
      form->CmdValider_Click();
      ++plays;
    }
    return plays;
  }

  FakeHost fake;
  Program program;
  ScriptedForms forms;
  std::unique_ptr<GameJournal> journal;
  std::unique_ptr<FrmPlateau> form;
  std::unique_ptr<TileDrag> drag;
};

// The lines of a text cut at CR LF.
inline std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t start = 0, end = 0; end != std::string::npos; start = end + 2) {
    end = text.find("\r\n", start);
    lines.push_back(text.substr(start, end == std::string::npos ? end : end - start));
  }
  return lines;
}

class GameTest : public ::testing::Test {
 protected:
  FrmPlateau& Load(const std::string& bag = {}) { return run.Load(bag); }
  bool LayProposition() { return run.LayProposition(); }
  int PlayOut(int maxTurns = 200) { return run.PlayOut(maxTurns); }
  // Puts tile i with `tag` on square (column, row), or on rack place `place`.
  void Put(int i, const std::string& tag, int column, int row) { PutTile(*form, i, tag, column, row); }
  static void PutTile(FrmPlateau& f, int i, const std::string& tag, int column, int row) {
    Tile& tile = f.PicGamer[size_t(i)];
    tile.Tag = tag;
    tile.visible = tile.enabled = true;
    tile.left = layout::SquareLeft(column);
    tile.top = layout::SquareTop(row);
  }
  void PutOnRack(int i, const std::string& tag, int place) {
    Put(i, tag, 0, 0);
    form->PicGamer[size_t(i)].left = layout::RackLeft(place);
    form->PicGamer[size_t(i)].top = layout::RackTop();
    form->TabChevalet[size_t(place)] = FrmPlateau::Chevalet{tag, int16_t(i)};
  }

  TempDir dir;
  GameRun run{dir.path()};
  FakeHost& fake = run.fake;
  Program& program = run.program;
  ScriptedForms& forms = run.forms;
  std::unique_ptr<FrmPlateau>& form = run.form;
};

}  // namespace ostrane::test
