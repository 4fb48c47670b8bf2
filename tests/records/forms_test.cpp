// The small forms around the game: the game's name and options, the tour
// box, the screen check, the final score, the about box, and the save of
// the options.
#include <gtest/gtest.h>

#include "records/about.h"
#include "records/final_score.h"
#include "records/game_name.h"
#include "records/guided_tour.h"
#include "records/screen_check.h"
#include "tests/records/record_fakes.h"

namespace ostrane {
namespace {

// ------------------------------------------------------------ FrmPartie

TEST(ChangeCaractere, ReplacesTheFirstOccurrenceOnly) {
  EXPECT_EQ(sChangeCaractere("a/b/c", "/", ""), "ab/c");
  EXPECT_EQ(sChangeCaractere("a/b/c", "/", "-"), "a-b/c");
  EXPECT_EQ(sChangeCaractere("abcabc", "bc", "X"), "aXabc");  // the whole match is skipped
  EXPECT_EQ(sChangeCaractere("abc", "", "X"), "abc");
  EXPECT_EQ(sChangeCaractere("", "a", "X"), "");
  EXPECT_EQ(sChangeCaractere("    ", " ", "X"), "    ");  // only spaces: unchanged
  EXPECT_EQ(sChangeCaractere("abc", "z", "X"), "abc");
  EXPECT_EQ(sChangeCaractere("été", "é", "e"), "eté");
}

TEST(DefaultGameName, TwoDigitsBelowTen) {
  EXPECT_EQ(DefaultGameName(1), "Partie tabli 01");
  EXPECT_EQ(DefaultGameName(9), "Partie tabli 09");
  EXPECT_EQ(DefaultGameName(10), "Partie tabli 10");
  EXPECT_EQ(DefaultGameName(123), "Partie tabli 123");
}

class GameNameForm : public test::ProgramFixture {
 protected:
  std::unique_ptr<FrmPartie> Open() {
    auto form = std::make_unique<FrmPartie>(program_, [this] { ++mainLoads_; });
    form->Form_Load();
    return form;
  }
  int mainLoads_ = 0;
};

TEST_F(GameNameForm, OffersTheNextDefaultNameAfterItsTimer) {
  program_.NomPartie = "Ma partie";
  program_.NumPartie = 0;
  auto form = Open();
  EXPECT_FALSE(form->view().visible);
  EXPECT_EQ(form->view().TxtNom, "Ma partie");
  timers_.Advance(199);
  EXPECT_EQ(program_.NumPartie, 0);
  timers_.Advance(1);
  EXPECT_TRUE(form->view().visible);
  EXPECT_EQ(form->view().focus, FrmPartie::Focus::TxtNom);
  EXPECT_EQ(program_.NumPartie, 1);
  EXPECT_EQ(form->view().TxtNom, "Partie tabli 01");
  EXPECT_TRUE(form->view().CmdQEnabled);
  EXPECT_EQ(form->view().Lbl0, "Nom de la partie:");
  timers_.Advance(1000);
  EXPECT_EQ(program_.NumPartie, 1);  // one shot

  program_.NumPartie = 9;
  auto again = Open();
  timers_.Advance(200);
  EXPECT_EQ(again->view().TxtNom, "Partie tabli 10");
}

TEST_F(GameNameForm, NameFilteringKeepsTheTenPlaceQuirk) {
  auto form = Open();
  struct Case {
    std::string typed, kept;
  };
  for (const Case& c : {
           Case{"Ma/partie", "Mapartie"},
           Case{"a/b/c", "abc"},
           Case{"Partie tab/x", "Partie tab/x"},      // the slash is eleventh: never examined
           Case{"Partie ta/b/x", "Partie tab/x"},     // the first goes, the second moves to eleventh
           Case{"//////////x/", "x"},                 // each removal brings the next into the ten
           Case{"Été à l'eau", "té à leau"},          // É and the apostrophe are not allowed
           Case{"Jeu-1 çà öü", "Jeu-1 çà öü"},
           Case{"Partie 123456789012", "Partie 12345678"},  // the box holds fifteen
           Case{"Partie tabli,99", "Partie tabli,99"},
       }) {
    form->TxtNom_Change(c.typed);
    EXPECT_EQ(form->view().TxtNom, c.kept) << c.typed;
  }
}

TEST_F(GameNameForm, OneCharacterCannotBeConfirmed) {
  program_.NomPartie = "Ancien";
  auto form = Open();
  timers_.Advance(200);
  form->TxtNom_Change("/A");
  EXPECT_EQ(form->view().TxtNom, "A");
  EXPECT_FALSE(form->view().CmdQEnabled);
  EXPECT_EQ(form->view().Lbl0, "Donnez un nom à cette partie:");
  form->Check_Click(FrmPartie::Check::ChkSons, false);
  EXPECT_EQ(form->view().focus, FrmPartie::Focus::CmdFoc);
  form->CmdFoc_Click();  // Enter
  EXPECT_EQ(boxes_.Texts(), std::vector<std::string>{"Vous devez donner un nom à la partie.      "});
  EXPECT_EQ(form->view().focus, FrmPartie::Focus::TxtNom);
  EXPECT_FALSE(form->view().unloaded);
  form->CmdQ_Click();  // disabled
  EXPECT_FALSE(form->view().unloaded);
  EXPECT_EQ(program_.NomPartie, "Ancien");
  EXPECT_EQ(mainLoads_, 0);

  form->TxtNom_Change("AB");
  EXPECT_TRUE(form->view().CmdQEnabled);
  form->CmdFoc_Click();
  EXPECT_TRUE(form->view().unloaded);
  EXPECT_EQ(program_.NomPartie, "AB");
  EXPECT_EQ(mainLoads_, 1);
}

TEST_F(GameNameForm, ControlsComeFromTheOptionsAndGoBackOnClosing) {
  Options& o = program_.options;
  o.OptMessages = "Non";
  o.OptSons = false;
  o.OptDuree = true;
  o.OptDef23 = 0;
  o.OptCadre = 1;
  o.OptImage = 3;
  o.OptLigne2 = 3;
  auto form = Open();
  const auto& v = form->view();
  EXPECT_FALSE(v.ChkMess);
  EXPECT_FALSE(v.ChkSons);
  EXPECT_TRUE(v.ChrDuree);
  EXPECT_FALSE(v.ChkDef23);
  EXPECT_TRUE(v.ChkCadre);
  EXPECT_EQ(v.OptAff, 3);

  form->Check_Click(FrmPartie::Check::ChkMess, true);
  form->Check_Click(FrmPartie::Check::ChkDef23, true);
  form->Check_Click(FrmPartie::Check::ChkCadre, false);
  form->Check_Click(FrmPartie::Check::ChrDuree, false);
  EXPECT_EQ(o.OptMessages, "Non");  // the ticks reach the options only at the closing
  form->OptAff_Click(4);
  EXPECT_EQ(o.OptImage, 4);  // the picture at once
  form->CmdQ_Click();
  EXPECT_FALSE(v.unloaded);  // no name yet: CmdQ is disabled
  timers_.Advance(200);
  form->CmdQ_Click();
  EXPECT_EQ(o.OptMessages, "Oui");
  EXPECT_FALSE(o.OptSons);
  EXPECT_FALSE(o.OptDuree);
  EXPECT_EQ(o.OptDef23, 1);
  EXPECT_EQ(o.OptCadre, 0);
  EXPECT_EQ(o.OptImage, 4);
  EXPECT_EQ(o.OptLigne2, 5);
  EXPECT_EQ(mainLoads_, 1);
  EXPECT_FALSE(Exists(kOptionsFileName));  // memory only
}

TEST_F(GameNameForm, ClosingWithoutConfirmingKeepsTheOldName) {
  program_.NomPartie = "Ancien";
  auto form = Open();
  timers_.Advance(200);
  form->Form_Unload();
  EXPECT_EQ(program_.NomPartie, "Ancien");
  EXPECT_EQ(program_.options.OptLigne2, 5);
  EXPECT_EQ(mainLoads_, 1);
  form->Form_Unload();
  EXPECT_EQ(mainLoads_, 1);
}

TEST_F(GameNameForm, DefaultsAskFirst) {
  Options& o = program_.options;
  o.OptMessages = "Non";
  o.OptSons = o.OptDuree = false;
  o.OptDef23 = o.OptCadre = 0;
  o.OptImage = 4;
  program_.NumPartie = 6;
  auto form = Open();
  timers_.Advance(200);
  form->TxtNom_Change("Autre nom");

  boxes_.answers = {Answer::No};
  form->CmdDefaut_Click();
  EXPECT_EQ(boxes_.shown.back().text, "Appliquer les options par défaut ?      ");
  EXPECT_EQ(boxes_.shown.back().style.buttons, Buttons::YesNo);
  EXPECT_EQ(form->view().focus, FrmPartie::Focus::CmdFoc);
  EXPECT_EQ(form->view().TxtNom, "Autre nom");
  EXPECT_EQ(program_.NumPartie, 7);

  form->CmdDefaut_Click();  // Yes
  const auto& v = form->view();
  EXPECT_EQ(program_.NumPartie, 1);
  EXPECT_EQ(v.TxtNom, "Partie tabli 01");
  EXPECT_TRUE(v.ChkMess && v.ChkSons && v.ChrDuree && v.ChkDef23 && v.ChkCadre);
  EXPECT_EQ(v.OptAff, 2);
  EXPECT_EQ(o.OptImage, 2);
  form->CmdQ_Click();
  EXPECT_EQ(o, (Options{.OptMessages = "Oui", .OptLigne2 = 5}));
  EXPECT_EQ(program_.NomPartie, "Partie tabli 01");
}

TEST_F(GameNameForm, PictureOutsideTheButtonsSelectsNone) {
  program_.options.OptImage = 7;
  auto form = Open();
  EXPECT_EQ(form->view().OptAff, 0);
  form->CmdQ_Click();
  EXPECT_EQ(program_.options.OptImage, 7);
}

// ------------------------------------------------------------ FrmBoiteI

class TourBox : public test::ProgramFixture {
 protected:
  FrmBoiteI Show(int step, std::string solution = "", std::string points = "") {
    program_.IntEtapeVisite = int16_t(step);
    FrmBoiteI box(program_, std::move(solution), std::move(points));
    box.Form_Load();
    return box;
  }
};

TEST_F(TourBox, StepTextsAndLabels) {
  {
    const FrmBoiteI box = Show(1);
    const auto& v = box.view();
    EXPECT_EQ(v.LblInfo,
              "\r\n''Ostrane'' est un logiciel qui trouvera pour vous le meilleur score qu'il est possible de "
              "réaliser lors d'un tirage au jeu de tablinor.\r\nCet utilitaire va reproduire à l'identique le "
              "plateau de jeu sur lequel vous jouez seul ou avec d'autres partenaires. Pour cela vous n'aurez "
              "qu'à lui indiquer les jetons piochés par les différents joueurs.");
    EXPECT_EQ(program_.StrMsg, v.LblInfo);
    EXPECT_FALSE(v.ChkInfoVisible);
    EXPECT_TRUE(v.LblInfoQuarVisible);
    EXPECT_TRUE(v.LblInfoBisVisible);
    EXPECT_FALSE(v.LblInfoBisBold);
    EXPECT_EQ(v.LblInfoBis, "Comment ça marche ?      ");
    EXPECT_FALSE(v.LblInfoTerVisible);
    EXPECT_EQ(v.LblInfoFontPoints, 8);
    EXPECT_EQ(v.LblInfoRaise, 120);
  }
  {
    const FrmBoiteI box = Show(2);
    const auto& v = box.view();
    EXPECT_EQ(v.LblInfo,
              "Vous venez de commencer une partie de tablinor.\r\nPour que le programme puisse proposer une "
              "solution, vous devez sélectionner les lettres qui correspondent aux jetons piochés par le "
              "premier joueur.");
    EXPECT_FALSE(v.ChkInfoVisible);
    EXPECT_FALSE(v.LblInfoBisVisible);
    EXPECT_FALSE(v.LblInfoQuarVisible);
    EXPECT_TRUE(v.Lowered);
    EXPECT_EQ(v.BelowJetons, 240);
  }
  {
    const FrmBoiteI box = Show(3);
    const auto& v = box.view();
    EXPECT_EQ(v.LblInfo, "Le programme va maintenant rechercher la meilleure solution possible.");
    EXPECT_TRUE(v.ChkInfoVisible);
    EXPECT_EQ(v.LblInfoTop, 840);
    EXPECT_TRUE(v.LblInfoCentred);
  }
  {
    const FrmBoiteI box = Show(4, "ZEBU");
    const auto& v = box.view();
    EXPECT_EQ(v.LblInfo,
              "Le meilleur mot trouvé est:\r\n\r\nPour placer ce mot, vous devez, à l'aide de la souris, faire "
              "glisser les jetons, du chevalet, vers le tableau de jeu.\r\nLa première lettre du mot sera "
              "positionnée sur la case fléchée en rouge.\r\nVous restez toute fois libre de placer un mot "
              "différent de celui qui est proposé.");
    EXPECT_TRUE(v.LblInfoTerVisible);
    EXPECT_EQ(v.LblInfoTer, "ZEBU");
    EXPECT_EQ(v.LblInfoTop, 360);
    EXPECT_TRUE(v.ChkInfoVisible);
  }
  {
    const FrmBoiteI box = Show(5, "ZEBU", "28");
    EXPECT_EQ(box.view().LblInfo,
              "\r\nLe mot ZEBU a été validé et rapporte 28 points.\r\n\r\nPour continuer la partie, le joueur "
              "suivant doit indiquer au programme les lettres qu'il a piochées.");
    EXPECT_TRUE(box.view().ChkInfoVisible);
  }
}

TEST_F(TourBox, AnotherStepShowsWhatStrMsgHeld) {
  program_.StrMsg = "reste";
  const FrmBoiteI box = Show(7);
  EXPECT_EQ(box.view().LblInfo, "reste");
  EXPECT_EQ(program_.StrMsg, "reste");
}

TEST_F(TourBox, StepTenHasTwoPages) {
  FrmBoiteI box = Show(10);
  const auto& v = box.view();
  EXPECT_EQ(v.LblInfo,
            "\r\n''Ostrane'' est un logiciel qui trouvera pour vous le meilleur score qu'il   est possible de "
            "réaliser lors d'un tirage au jeu de tablinor.\r\nEn effet, cet utilitaire va reproduire à "
            "l'identique le plateau sur lequel vous jouez (seul ou avec d'autres partenaires).\r\nIl vous "
            "suffira d'indiquer, à chaque tour, les jetons piochés par les différents joueurs.");
  EXPECT_FALSE(v.ChkInfoVisible);
  EXPECT_EQ(v.LblInfoBis, "Comment ça marche ?      ");
  EXPECT_FALSE(v.LblInfoBisBold);
  EXPECT_EQ(v.LblInfoExtraHeight, 330);
  EXPECT_EQ(v.FraExtraHeight, 300);
  EXPECT_EQ(v.LblInfoRaise, 120);

  box.CmdQ_Click();
  EXPECT_FALSE(v.unloaded);
  EXPECT_EQ(program_.IntEtapeVisite, 0);
  EXPECT_EQ(v.LblInfoBis, "A noter:");
  EXPECT_TRUE(v.LblInfoCentred);
  EXPECT_EQ(v.LblInfo,
            "\r\n\r\n- Le jeton du joker est représenté\r\npar le point d'interrogation '' ? ''.\r\n\r\n"
            "- Une fois que les jetons ont été\r\nété sélectionnés, cliquez sur la\r\n"
            "commande '' Valider ''.              ");
  box.CmdQ_Click();
  EXPECT_TRUE(v.unloaded);
}

TEST_F(TourBox, TheCloseBoxUnloadsStepTenOnEitherPage) {
  {
    FrmBoiteI box = Show(10);
    box.Form_Unload();
    EXPECT_TRUE(box.view().unloaded);
    EXPECT_EQ(box.view().LblInfoBis, "Comment ça marche ?      ");  // no second page
    EXPECT_EQ(program_.IntEtapeVisite, 10);
    box.CmdQ_Click();  // gone: nothing more happens
    EXPECT_EQ(box.view().LblInfoBis, "Comment ça marche ?      ");
  }
  {
    FrmBoiteI box = Show(10);
    box.CmdQ_Click();
    EXPECT_EQ(box.view().LblInfoBis, "A noter:");
    box.Form_Unload();
    EXPECT_TRUE(box.view().unloaded);
  }
}

TEST_F(TourBox, OtherStepsCloseAtOnceAndTheTickSilencesTheTour) {
  FrmBoiteI box = Show(3);
  box.ChkInfo_Click(true);
  EXPECT_EQ(program_.options.OptMessages, "Non");
  box.ChkInfo_Click(false);
  EXPECT_EQ(program_.options.OptMessages, "Non");
  box.CmdQ_Click();
  EXPECT_TRUE(box.view().unloaded);
  EXPECT_EQ(program_.IntEtapeVisite, 3);
}

// -------------------------------------------------------- FrmEcranResol

class ScreenCheck : public test::ProgramFixture {
 protected:
  std::unique_ptr<FrmEcranResol> Open(int height) {
    FrmEcranResol::Links links;
    links.screenHeight = [height] { return height; };
    links.loadFrmPartie = [this] { ++partieLoads_; };
    links.endProgram = [this] { ++ends_; };
    auto form = std::make_unique<FrmEcranResol>(program_, links);
    form->Form_Load();
    return form;
  }
  int partieLoads_ = 0, ends_ = 0;
};

TEST_F(ScreenCheck, TheDecision) {
  EXPECT_TRUE(ScreenCheckWarns(0, 699));
  EXPECT_FALSE(ScreenCheckWarns(0, 700));
  EXPECT_FALSE(ScreenCheckWarns(1, 699));
  EXPECT_FALSE(ScreenCheckWarns(1, 200));
  EXPECT_TRUE(ScreenCheckWarns(2, 200));  // only 1 switches the check off
  EXPECT_EQ(ScreenCheckTop(11520, 4500), 1840);
}

TEST_F(ScreenCheck, ExactlySevenHundredPassesUnseen) {
  auto form = Open(700);
  EXPECT_EQ(partieLoads_, 0);  // nothing before the timer
  timers_.Advance(FrmEcranResol::kTimResoInterval);
  EXPECT_EQ(partieLoads_, 1);
  EXPECT_FALSE(form->view().visible);
  EXPECT_TRUE(form->view().unloaded);
  timers_.Advance(1000);
  EXPECT_EQ(partieLoads_, 1);
}

TEST_F(ScreenCheck, SmallScreenWarnsAndWaits) {
  auto form = Open(699);
  timers_.Advance(FrmEcranResol::kTimResoInterval);
  EXPECT_TRUE(form->view().visible);
  EXPECT_EQ(form->view().Caption, "Ostrane");
  EXPECT_EQ(form->view().LblVer, "Version 1.23");
  EXPECT_EQ(partieLoads_, 0);
  EXPECT_EQ(form->Document(), dir_ / "lecran.rtf");
  form->CmdContinuer_Click();
  EXPECT_EQ(partieLoads_, 1);
  EXPECT_EQ(program_.options.OptResol, 0);  // the same warning comes next time
  EXPECT_TRUE(form->view().unloaded);
}

TEST_F(ScreenCheck, OptResolOneSkipsTheCheckOnAnyScreen) {
  program_.options.OptResol = 1;
  auto form = Open(300);
  timers_.Advance(FrmEcranResol::kTimResoInterval);
  EXPECT_EQ(partieLoads_, 1);
  EXPECT_FALSE(form->view().visible);
}

TEST_F(ScreenCheck, TickingTheBoxSwitchesTheCheckOffAndPassesOn) {
  auto form = Open(600);
  timers_.Advance(FrmEcranResol::kTimResoInterval);
  form->ChkResolution_Click(true);
  EXPECT_EQ(program_.options.OptResol, 1);
  EXPECT_EQ(partieLoads_, 1);
  EXPECT_EQ(ends_, 0);
}

TEST_F(ScreenCheck, QuitEndsTheProgram) {
  auto form = Open(600);
  timers_.Advance(FrmEcranResol::kTimResoInterval);
  form->Foc_Click();
  EXPECT_EQ(ends_, 1);
  EXPECT_EQ(partieLoads_, 0);
}

// --------------------------------------------------- FrmFini and FrmAbout

TEST(FinalScoreForm, ShowsPointsAndArmsTheNextStepOnce) {
  int unloads = 0;
  FrmFini form("312", [&] { ++unloads; });
  form.Form_Load();
  EXPECT_EQ(form.view().LblScore, "312 points");
  EXPECT_EQ(form.view().pointer, Pointer::Default);
  form.CmdQuit_Click();
  form.Foc_Click();
  EXPECT_EQ(unloads, 1);
}

TEST_F(TourBox, AboutBoxDisablesTheMainFormUntilItCloses) {
  std::vector<bool> main;
  int mails = 0;
  FrmAbout about(program_, [&](bool on) { main.push_back(on); }, [&] { ++mails; });
  about.Form_Load();
  EXPECT_EQ(main, std::vector<bool>{false});
  EXPECT_EQ(about.view().LblU, "Programme d'aide pour le jeu de tablinor");
  EXPECT_EQ(about.view().LblVer.rfind("Version 1.23", 0), 0u);
  EXPECT_NE(about.view().LblS.find("GPL-3.0-or-later"), std::string::npos);
  EXPECT_NE(about.view().LblT.find("Dicollecte/Grammalecte v7.0"), std::string::npos);
  EXPECT_NE(about.view().LblT.find("MPL 2.0"), std::string::npos);
  about.CmdSite_Click();
  EXPECT_EQ(shell_.opened, std::vector<std::string>{ProgramSiteAddress()});
  about.CmdMail_Click();
  EXPECT_EQ(mails, 1);
  about.Foc_Click();
  about.CmdFerme_Click();
  EXPECT_EQ(main, (std::vector<bool>{false, true}));
}

// --------------------------------------------------------- SaveOptions

TEST_F(TourBox, SaveOptionsWritesTheProgramsOptionsIntoItsFolder) {
  program_.options.OptMessages = "Non";
  program_.options.OptResol = 1;
  ASSERT_TRUE(SaveOptions(program_));
  EXPECT_EQ(ReadFile(kOptionsFileName),
            "Non\r\n3\r\n120\r\nSonYes\r\nDureeYes\r\nImg plateau 2\r\nDef mots 23 1\r\nEncadrement 1\r\n"
            "ResolutionE 1\r\n");
  program_.CheminApp = dir_ / "missing";
  EXPECT_FALSE(SaveOptions(program_));
}

}  // namespace
}  // namespace ostrane
