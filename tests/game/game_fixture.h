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
      PickInBagOrder(form);
    }
    EXPECT_TRUE(form.closed) << "the picker was left open";
  }
  void Show(FrmJoc& form) override {
    ++jocShown;
    if (onJoc) {
      onJoc(form);
      return;
    }
    std::string letter = "E";
    if (!jokerLetters.empty()) {
      letter = jokerLetters.front();
      jokerLetters.pop_front();
    }
    form.TxtJok_Change(letter);
    host_.timers.Advance(FrmJoc::kTimQuitInterval);
    EXPECT_TRUE(form.closed) << "the blank's box stayed open";
  }
  void Show(FrmBoiteD& form) override {
    boiteD.push_back(form.Lbl[1].text + "|" + form.Lbl[3].text + "|" + form.Lbl[5].text + "|" +
                     (form.LblMsg.visible ? form.LblMsg.text : std::string()) + "|" +
                     (form.LblDef.visible ? form.LblDef.text : std::string()));
    if (onBoiteD) onBoiteD(form);
    form.CmdQ_Click();
  }
  void Show(FrmBoiteI& form) override {
    tourSteps.push_back(program ? program->IntEtapeVisite : -1);
    if (onBoiteI) onBoiteI(form);
    for (int i = 0; i < 3 && !form.view().unloaded; ++i) form.CmdQ_Click();
  }
  void Show(FrmFini& form) override {
    finiScores.push_back(form.view().LblScore);
    form.CmdQuit_Click();
  }
  void Show(FrmBest& form) override {
    ++bestShown;
    host_.timers.Advance(3000);  // the list loads and the selection walks down
    bestLists.push_back(form.view().LstSco);
    form.CmdFerme_Click();
  }
  void Show(FrmAbout& form) override {
    ++aboutShown;
    form.CmdFerme_Click();
  }
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
  void PickInBagOrder(FrmJetons& form) { PickInBagOrder(form, *program, randomPicks); }

  const Program* program = nullptr;
  Rng* randomPicks = nullptr;  // picks drawn at random rather than in bag order
  std::function<void(FrmJetons&)> onJetons;
  std::function<void(FrmJoc&)> onJoc;
  std::function<void(FrmBoiteD&)> onBoiteD;
  std::function<void(FrmBoiteI&)> onBoiteI;
  std::deque<std::string> jokerLetters;

  int jetonsShown = 0, jocShown = 0, bestShown = 0, aboutShown = 0, endProgram = 0;
  std::vector<std::string> boiteD;
  std::vector<int> tourSteps;
  std::vector<std::string> finiScores;
  std::vector<std::vector<std::string>> bestLists;

 private:
  FakeHost& host_;
};

class GameTest : public ::testing::Test {
 protected:
  explicit GameTest(const Lexicon& lexicon = RealLexicon()) : program(lexicon, fake.host), forms(fake) {
    program.CheminApp = dir.path();
    program.NomPartie = "Partie tabli 01";
    program.options.OptMessages = "Non";
    forms.program = &program;
    program.engine.Random.Seed(7);
  }

  // Loads the main form and lets TimDeb build the bag; `bag` replaces it.
  FrmPlateau& Load(const std::string& bag = {}) {
    form = std::make_unique<FrmPlateau>(program, forms);
    form->Randomize = nullptr;  // the test seeds the generator itself
    form->Form_Load();
    fake.timers.Advance(FrmPlateau::kTimDeb);
    if (!bag.empty()) {
      program.StrSac = bag;
      form->SubAfficheSac();
    }
    drag = std::make_unique<TileDrag>(*form);
    return *form;
  }

  // Lays the proposed play of this turn with drag gestures.
  bool LayProposition() {
    if (!form->Proposition) return false;
    return LayWord(*form, *drag, *form->Proposition,
                   [this](char letter) { forms.jokerLetters.push_back(std::string(1, letter)); });
  }

  // Plays turns until the bag and rack run out or no play is proposed.
  // Returns the number of plays validated.
  int PlayOut(int maxTurns = 60) {
    int plays = 0;
    for (int turn = 0; turn < maxTurns && form->CmdSolution.enabled; ++turn) {
      if (!LayProposition()) break;
      if (!form->CmdValider.enabled) break;
      form->CmdValider_Click();
      ++plays;
    }
    return plays;
  }

  // Puts tile i with `tag` on square (column, row) without a drag.
  void Put(int i, const std::string& tag, int column, int row) {
    Tile& tile = form->PicGamer[size_t(i)];
    tile.Tag = tag;
    tile.visible = true;
    tile.enabled = true;
    tile.left = layout::SquareLeft(column);
    tile.top = layout::SquareTop(row);
  }
  // Puts tile i with `tag` on rack place p.
  void PutOnRack(int i, const std::string& tag, int place) {
    Tile& tile = form->PicGamer[size_t(i)];
    tile.Tag = tag;
    tile.visible = true;
    tile.enabled = true;
    tile.left = layout::RackLeft(place);
    tile.top = layout::RackTop();
    form->TabChevalet[size_t(place)] = FrmPlateau::Chevalet{tag, int16_t(i)};
  }

  TempDir dir;
  FakeHost fake;
  Program program;
  ScriptedForms forms;
  std::unique_ptr<FrmPlateau> form;
  std::unique_ptr<TileDrag> drag;
};

}  // namespace ostrane::test
