// The small forms around the game: the game's name and options, the tour
// box and the screen check. The final score's text is checked with the
// whole games, the about box with the windows.
#include <gtest/gtest.h>

#include "records/game_name.h"
#include "records/guided_tour.h"
#include "records/screen_check.h"
#include "tests/records/record_fakes.h"

namespace ostrane::test {
namespace {

class GameNameForm : public ProgramFixture {
 protected:
  // Opens the form and lets its timer run.
  std::unique_ptr<FrmPartie> Open() {
    auto form = std::make_unique<FrmPartie>(program_, [this] { ++mainLoads_; });
    form->Form_Load();
    EXPECT_FALSE(form->view().visible);
    fake_.timers.Advance(200);
    return form;
  }
  int mainLoads_ = 0;
};

TEST_F(GameNameForm, OffersTheNextDefaultNameAfterItsTimerAndFiltersWhatIsTyped) {
  program_.NumPartie = 9;
  auto form = Open();
  EXPECT_TRUE(form->view().visible && form->view().focus == FrmPartie::Focus::TxtNom);
  EXPECT_EQ(form->view().TxtNom + "|" + form->view().Lbl0, "Partie tabli 10|Nom de la partie:");
  fake_.timers.Advance(1000);
  EXPECT_EQ(program_.NumPartie, 10);  // one shot
  const struct {
    std::string typed, kept;
  } names[] = {
      {"Ma/partie", "Mapartie"},
      {"Partie tab/x", "Partie tab/x"},   // the slash is eleventh: never examined
      {"Partie ta/b/x", "Partie tab/x"},  // the first goes, the second moves to eleventh
      {"//////////x/", "x"},              // each removal brings the next into the ten
      {"Été à l'eau", "té à leau"},       // É and the apostrophe are not allowed
      {"Jeu-1 çà öü", "Jeu-1 çà öü"},
      {"Partie 123456789012", "Partie 12345678"},  // the box holds fifteen
  };
  for (const auto& n : names) {
    form->TxtNom_Change(n.typed);
    EXPECT_EQ(form->view().TxtNom, n.kept) << n.typed;
  }
  // A name of one character cannot be confirmed.
  form->TxtNom_Change("/A");
  EXPECT_FALSE(form->view().CmdQEnabled);
  EXPECT_EQ(form->view().Lbl0, "Donnez un nom à cette partie:");
  form->CmdFoc_Click();  // Enter
  EXPECT_EQ(fake_.boxes.Texts(), std::vector<std::string>{"Vous devez donner un nom à la partie.      "});
  form->CmdQ_Click();  // disabled
  EXPECT_FALSE(form->view().unloaded);
  form->TxtNom_Change("AB");
  form->CmdFoc_Click();
  EXPECT_TRUE(form->view().unloaded);
  EXPECT_EQ(program_.NomPartie, "AB");
  EXPECT_EQ(mainLoads_, 1);
  // Closed without confirming: the old name stays, the main form comes once.
  auto other = Open();
  other->Form_Unload();
  other->Form_Unload();
  EXPECT_EQ(program_.NomPartie, "AB");
  EXPECT_EQ(program_.options.OptLigne2, 5);
  EXPECT_EQ(mainLoads_, 2);
}

TEST_F(GameNameForm, TheTicksReachTheOptionsAtTheClosingAndTheDefaultsAskFirst) {
  Options& o = program_.options;
  o = Options{.OptMessages = "Non", .OptSons = false, .OptImage = 3, .OptDef23 = 0};
  auto form = Open();
  EXPECT_EQ(form->view().OptAff, 3);
  form->Check_Click(FrmPartie::Check::ChkMess, true);
  form->Check_Click(FrmPartie::Check::ChkCadre, false);
  form->OptAff_Click(4);
  EXPECT_EQ(o.OptImage * 10 + (o.OptMessages == "Oui"), 40);  // the picture at once, the ticks at the closing
  form->CmdQ_Click();
  EXPECT_EQ(o, (Options{.OptLigne2 = 5, .OptSons = false, .OptImage = 4, .OptDef23 = 0, .OptCadre = 0}));
  EXPECT_FALSE(Exists(kOptionsFileName));  // memory only
  form = Open();
  form->TxtNom_Change("Autre nom");
  fake_.boxes.answers = {Answer::No};
  form->CmdDefaut_Click();
  EXPECT_EQ(fake_.boxes.shown.back().text, "Appliquer les options par défaut ?      ");
  form->CmdDefaut_Click();  // Yes
  EXPECT_EQ(form->view().TxtNom + std::to_string(form->view().OptAff), "Partie tabli 012");
  form->CmdQ_Click();
  EXPECT_EQ(o, (Options{.OptLigne2 = 5}));
}

class TourBox : public ProgramFixture {
 protected:
  FrmBoiteI Show(int step) {
    program_.IntEtapeVisite = int16_t(step);
    FrmBoiteI box(program_, "ZEBU", "28");
    box.Form_Load();
    return box;
  }
};

TEST_F(TourBox, EachStepShowsItsText) {
  program_.StrMsg = "reste";
  const struct {
    int step;
    const char* text;
    bool tick;
  } steps[] = {
      {7, "reste", true},  // another step shows what StrMsg held
      {1,
       "\r\n''Ostrane'' est un logiciel qui trouvera pour vous le meilleur score qu'il est possible de "
       "réaliser lors "
       "d'un tirage au jeu de tablinor.\r\nCet utilitaire va reproduire à l'identique le plateau de jeu sur "
       "lequel "
       "vous jouez seul ou avec d'autres partenaires. Pour cela vous n'aurez qu'à lui indiquer les jetons "
       "piochés "
       "par les différents joueurs.",
       false},
      {2,
       "Vous venez de commencer une partie de tablinor.\r\nPour que le programme puisse proposer une "
       "solution, vous "
       "devez sélectionner les lettres qui correspondent aux jetons piochés par le premier joueur.",
       false},
      {3, "Le programme va maintenant rechercher la meilleure solution possible.", true},
      {4,
       "Le meilleur mot trouvé est:\r\n\r\nPour placer ce mot, vous devez, à l'aide de la souris, faire "
       "glisser les "
       "jetons, du chevalet, vers le tableau de jeu.\r\nLa première lettre du mot sera positionnée sur la "
       "case "
       "fléchée en rouge.\r\nVous restez toute fois libre de placer un mot différent de celui qui est "
       "proposé.",
       true},
      {5,
       "\r\nLe mot ZEBU a été validé et rapporte 28 points.\r\n\r\nPour continuer la partie, le joueur "
       "suivant doit "
       "indiquer au programme les lettres qu'il a piochées.",
       true},
  };
  for (const auto& s : steps) {
    const FrmBoiteI box = Show(s.step);
    EXPECT_EQ(box.view().LblInfo, s.text) << s.step;
    EXPECT_EQ(box.view().ChkInfoVisible, s.tick) << s.step;
    EXPECT_EQ(box.view().LblInfoBisVisible, s.step == 1) << s.step;
    EXPECT_EQ(box.view().LblInfoTer, s.step == 4 ? "ZEBU" : "") << s.step;
  }
  EXPECT_EQ(Show(1).view().LblInfoBis, "Comment ça marche ?      ");
  // The tick silences the tour; CmdQ closes at once.
  FrmBoiteI box = Show(3);
  box.ChkInfo_Click(true);
  box.ChkInfo_Click(false);
  EXPECT_EQ(program_.options.OptMessages, "Non");
  box.CmdQ_Click();
  EXPECT_TRUE(box.view().unloaded);
  EXPECT_EQ(program_.IntEtapeVisite, 3);
}

TEST_F(TourBox, StepTenHasTwoPagesAndItsCloseBoxUnloadsIt) {
  FrmBoiteI box = Show(10);
  const auto& v = box.view();
  EXPECT_EQ(v.LblInfo,
            "\r\n''Ostrane'' est un logiciel qui trouvera pour vous le meilleur score qu'il   est possible "
            "de réaliser "
            "lors d'un tirage au jeu de tablinor.\r\nEn effet, cet utilitaire va reproduire à l'identique le "
            "plateau "
            "sur lequel vous jouez (seul ou avec d'autres partenaires).\r\nIl vous suffira d'indiquer, à "
            "chaque tour, "
            "les jetons piochés par les différents joueurs.");
  EXPECT_FALSE(v.ChkInfoVisible);
  box.CmdQ_Click();
  EXPECT_FALSE(v.unloaded);
  EXPECT_EQ(program_.IntEtapeVisite, 0);
  EXPECT_EQ(v.LblInfoBis, "A noter:");
  EXPECT_EQ(
      v.LblInfo,
      "\r\n\r\n- Le jeton du joker est représenté\r\npar le point d'interrogation '' ? ''.\r\n\r\n"
      "- Une fois que les jetons ont été\r\nété sélectionnés, cliquez sur la\r\ncommande '' Valider ''.      "
      "        ");
  box.CmdQ_Click();
  EXPECT_TRUE(v.unloaded);
  FrmBoiteI closed = Show(10);
  closed.Form_Unload();
  closed.CmdQ_Click();  // gone: no second page
  EXPECT_TRUE(closed.view().unloaded);
  EXPECT_EQ(closed.view().LblInfoBis, "Comment ça marche ?      ");
}

TEST_F(ProgramFixture, TheScreenCheckWarnsBelowSevenHundredLinesUntilSwitchedOff) {
  EXPECT_EQ(ScreenCheckTop(11520, 4500), 1840);
  int partieLoads = 0, ends = 0;
  const auto open = [&](int height) {
    FrmEcranResol::Links links{[height] { return height; }, [&] { ++partieLoads; }, [&] { ++ends; }};
    auto form = std::make_unique<FrmEcranResol>(program_, links);
    partieLoads = 0;
    form->Form_Load();
    fake_.timers.Advance(FrmEcranResol::kTimResoInterval - 1);
    EXPECT_EQ(partieLoads, 0);  // nothing before the timer
    fake_.timers.Advance(1);
    return form;
  };
  // Only OptResol 1 switches the check off.
  const struct {
    int optResol, height;
    bool warns;
  } cases[] = {{0, 699, true}, {0, 700, false}, {1, 200, false}, {2, 200, true}};
  for (const auto& c : cases) {
    program_.options.OptResol = uint8_t(c.optResol);
    EXPECT_EQ(ScreenCheckWarns(c.optResol, c.height), c.warns);
    auto form = open(c.height);
    EXPECT_EQ(form->view().visible, c.warns);
    EXPECT_EQ(partieLoads, c.warns ? 0 : 1);
  }
  program_.options.OptResol = 0;
  auto form = open(699);
  EXPECT_EQ(form->view().LblVer, "Version 1.23");
  EXPECT_EQ(form->Document(), dir_.path() / "lecran.rtf");
  form->CmdContinuer_Click();
  EXPECT_EQ(partieLoads, 1);
  EXPECT_EQ(program_.options.OptResol, 0);  // the same warning next time
  open(600)->Foc_Click();                   // quit
  EXPECT_EQ(ends, 1);
  open(600)->ChkResolution_Click(true);
  EXPECT_EQ(program_.options.OptResol, 1);
  EXPECT_EQ(partieLoads, 1);
}

}  // namespace
}  // namespace ostrane::test
