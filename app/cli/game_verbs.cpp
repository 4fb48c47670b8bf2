// ostrane-cli autoplay: one whole game through the game-flow models, played
// as a player plays it through the windows: the game's name, the main form,
// the draws, the plays and the end.
#include <cstdio>
#include <ctime>
#include <deque>
#include <filesystem>
#include <string>

#include "app/cli/cli.h"
#include "board_view/drag_rules.h"
#include "engine/context.h"
#include "game/forms.h"
#include "game/frm_boite_d.h"
#include "game/frm_jetons.h"
#include "game/frm_joc.h"
#include "game/frm_plateau.h"
#include "game/manual_timers.h"
#include "game/quiet_host.h"
#include "records/about.h"
#include "records/best_scores.h"
#include "records/final_score.h"
#include "records/game_name.h"
#include "records/guided_tour.h"
#include "records/options.h"
#include "records/program.h"

namespace ostrane::cli {
namespace {

// The clock of the computer, for the date of the best scores.
class SystemClock : public Clock {
 public:
  DateTime Now() const override {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return DateTime{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                    local.tm_hour,        local.tm_min,     local.tm_sec};
  }
};

// The player's hand in the modal forms.
class PlayerForms : public Forms {
 public:
  PlayerForms(Program& program, ManualTimers& timers, bool randomOrder, uint64_t seed)
      : program_(program), timers_(timers), randomOrder_(randomOrder), picks_(seed) {}

  void Show(FrmJetons& form) override {
    timers_.Advance(250);  // the picker wakes up
    while (!form.CmdValider.enabled || program_.IntNbTire < form.IntNbATirer) {
      const std::string& sac = program_.StrSac;
      if (sac.empty()) break;
      const size_t at = randomOrder_ ? picks_.Below(uint32_t(sac.size())) : 0;
      const int index = sac[at] == '?' ? FrmJetons::kBlank : sac[at] - 'A' + 1;
      if (!form.CmdJeton[size_t(index)].enabled) break;
      form.CmdJeton_Click(index);
    }
    form.CmdValider_Click();
  }
  void Show(FrmJoc& form) override {
    std::string letter = "E";
    if (!blankLetters.empty()) {
      letter = blankLetters.front();
      blankLetters.pop_front();
    }
    form.TxtJok_Change(letter);
    timers_.Advance(FrmJoc::kTimQuitInterval);
  }
  void Show(FrmBoiteD& form) override { form.CmdQ_Click(); }
  void Show(FrmBoiteI& form) override {
    for (int i = 0; i < 3 && !form.view().unloaded; ++i) form.CmdQ_Click();
  }
  void Show(FrmFini& form) override { form.CmdQuit_Click(); }
  void Show(FrmBest& form) override {
    timers_.Advance(5000);  // the list loads and its selection walks down
    form.CmdFerme_Click();
  }
  void Show(FrmAbout& form) override { form.CmdFerme_Click(); }
  void EndProgram() override { ended = true; }

  std::deque<std::string> blankLetters;
  bool ended = false;

 private:
  Program& program_;
  ManualTimers& timers_;
  bool randomOrder_;
  Rng picks_;
};

std::string WithLineFeeds(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    out += text[i];
  }
  return out;
}

}  // namespace

int RunAutoplay(const Args& args) {
  std::string bag = "normal";
  bool seeded = false;
  uint64_t seed = 0;
  std::filesystem::path dir = ".";
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if ((arg == "--bag" || arg == "--seed" || arg == "--dir") && i + 1 >= args.size())
      throw UsageError(arg + " needs a value");
    if (arg == "--bag") {
      bag = args[++i];
    } else if (arg == "--seed") {
      seed = uint64_t(CheckedNumber(args[++i], "seed"));
      seeded = true;
    } else if (arg == "--dir") {
      dir = args[++i];
    } else {
      throw UsageError("unknown argument '" + arg + "'");
    }
  }
  if (bag != "normal") {
    for (char& c : bag) {
      if (c >= 'a' && c <= 'z') c = char(c - 32);
      if (!((c >= 'A' && c <= 'Z') || c == '?'))
        throw UsageError("--bag '" + bag + "': only letters A-Z and '?' for a blank");
    }
    if (bag.empty() || bag.size() > 102) throw UsageError("--bag: from 1 to 102 tiles");
  }
  std::error_code error;
  if (!std::filesystem::is_directory(dir, error))
    throw UsageError("--dir '" + dir.string() + "': no such folder");

  ManualTimers timers;
  YesBoxes boxes;
  SystemClock clock;
  Silence sounds;
  NoShell shell;
  NoEvents events;
  Host host{boxes, timers, clock, sounds, shell, events};
  Program program(SharedLexicon(), host);
  program.CheminApp = dir;
  ReadOptions(program.OptionsFile(), program.options);
  program.engine.Random.Seed(seed);
  PlayerForms forms(program, timers, seeded, seed);

  // The road to the game goes through the game's name, as in the windows:
  // the name offered ("Partie tabli 01") is taken as it is, and the form's
  // closing puts its options into memory and loads the main form.
  bool mainFormLoaded = false;
  {
    FrmPartie partie(program, [&mainFormLoaded] { mainFormLoaded = true; });
    partie.Form_Load();
    timers.Advance(200);  // TimDeb shows the form and offers the name
    partie.CmdQ_Click();
  }
  if (!mainFormLoaded) {
    std::fprintf(stderr, "ostrane-cli autoplay: the game's name was not taken\n");
    return 1;
  }

  FrmPlateau form(program, forms);
  form.Randomize = nullptr;  // the seed decides the first play's direction
  form.Form_Load();
  timers.Advance(FrmPlateau::kTimDeb);
  if (bag != "normal") {
    program.StrSac = bag;
    form.SubAfficheSac();
  }
  TileDrag drag(form);

  form.CmdNew_Click();
  bool stuck = false;
  while (!forms.ended && form.CmdSolution.enabled) {
    const bool laid = form.Proposition && LayWord(form, drag, *form.Proposition, [&](char letter) {
                        forms.blankLetters.push_back(std::string(1, letter));
                      });
    if (!laid || !form.CmdValider.enabled) {
      stuck = true;
      break;
    }
    form.CmdValider_Click();
  }

  const std::string history = WithLineFeeds(form.TxtHisto.text);
  const std::string score = form.LblPtsJoueur.text;
  if (stuck) {
    std::string rack;
    for (const Tile& tile : form.PicGamer) rack += tile.Tag;
    std::fprintf(stderr, "ostrane-cli autoplay: no play for the rack '%s': the game is stopped\n",
                 rack.c_str());
    form.CmdArret_Click();
  } else {
    timers.Advance(FrmPlateau::kTimFrmFin);  // FrmFini
    timers.Advance(FrmPlateau::kTimScore);   // the best scores
  }
  if (!history.empty()) std::printf("%s\n", history.c_str());
  std::printf("score %s\n", score.c_str());
  form.CmdQuitte_Click();  // saves "Option.ret"
  return 0;
}

}  // namespace ostrane::cli
