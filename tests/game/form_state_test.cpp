// The main form's state: its load, the controls in each state of a game,
// the questions on closing, the clock, the blink, the solution shown and
// the word check.
#include <gtest/gtest.h>

#include "lexicon/lexicon.h"
#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

constexpr const char* kShortBag = "AAAABEEEGIILLNNOST?";

class FormState : public GameTest {};

TEST_F(FormState, LoadAndTheInvitationToStart) {
  program.HeureDepart = float((14 * 3600 + 23 * 60 + 17) / 86400.0);
  FrmPlateau& f = run.Make();
  f.Form_Load();
  EXPECT_EQ(
      f.caption + "|" + f.LblVer.text + "|" + f.CmdAbout.tip + "|" + f.LblNomP.text + "|" + f.CmdNew.caption,
      "Ostrane|Version 1.23|A propos de Ostrane|Partie tabli 01|Débuter la partie");
  EXPECT_EQ(f.LblTpsDemarrage.text, "17 sec");  // the start's own seconds, as it stands
  fake.timers.Advance(99);
  EXPECT_FALSE(f.enabled || program.StrSac.size());  // the bag comes with TimDeb
  fake.timers.Advance(1);
  EXPECT_TRUE(f.enabled);
  EXPECT_EQ(f.LblIndic.text, "Pour commencer,\r\ncliquez sur\r\n''Débuter une partie''.");
  EXPECT_EQ(f.LblLetReste.text.substr(0, 36), "AAAAAAAAABBCCDDDEEEEEEEEEEEEEEEFFG\r\n");
}

TEST_F(FormState, ControlsFollowTheStatesOfAGame) {
  FrmPlateau& f = Load(kShortBag);
  // New, Arret in place of Game, Solution, Valider and Ranger, the tiles, the bag shown.
  const auto expect = [&f](const char* state, std::string flags) {
    std::string now;
    for (const bool on : {f.CmdNew.enabled, f.CmdArret.visible && !f.CmdGame.visible, f.CmdSolution.enabled,
                          f.CmdValider.enabled && f.CmdRanger.enabled,
                          f.PicGamer[0].enabled && f.PicGamer[6].enabled, f.LblLetReste.visible})
      now += on ? '1' : '0';
    EXPECT_EQ(now, flags) << state;
  };
  expect("ready", "100000");
  f.CmdNew_Click();
  expect("placing", "011011");
  EXPECT_EQ(f.CmdArret.caption + "|" + f.CmdArret.tip, "Arrêter la partie|Arrêter la partie en cours");
  EXPECT_EQ(f.LblLTitre.text, "Lettres qu'il reste à piocher");
  EXPECT_EQ(f.LblTirage.text + " " + f.LblPtsJoueur.text, "01 0");
  // The best play, in the box, the summary, the solution label and the arrow.
  EXPECT_EQ(forms.boiteD[0], "ABEE|E-8  Vertical|12||");
  EXPECT_EQ(f.LblIndic.text, "Solution: ABEE\r\nPosition: E-8 Vertical\r\nNombre de points: 12");
  EXPECT_EQ(f.LblSolution.text, "ABEE");
  EXPECT_EQ(f.ImgXYPicture, FrmPlateau::Arrow::ImgClassicVer);
  ASSERT_TRUE(LayProposition());
  expect("proposal", "011111");
  EXPECT_EQ(f.LblPts.text, "12");
  f.CmdRanger_Click();
  expect("placing again", "011011");
  ASSERT_TRUE(LayProposition());
  f.CmdValider_Click();  // picking, searching, placing again
  expect("next turn", "011011");
  EXPECT_EQ(forms.jetonsShown, 2);
  EXPECT_EQ(f.LblPts.text, "0");
  // Once the game is over, the stop button starts a new one.
  f.CmdArret.caption = "Nouvelle partie";
  f.ArretPartie();
  EXPECT_EQ(f.CmdArret.caption, "Arrêter la partie");
  EXPECT_EQ(forms.jetonsShown, 3);  // a new game, a new draw
}

TEST_F(FormState, ClosingAsksToQuitUntilTheSecondPlay) {
  FrmPlateau& f = Load();
  for (int plays = 0; plays < 3; ++plays) {
    fake.boxes.answers = {Answer::No};
    EXPECT_EQ(plays == 1 ? f.CmdQuitte_Click() : f.Form_Unload(), FrmPlateau::Unload::Cancelled);
    EXPECT_EQ(fake.boxes.shown.back().text, plays < 2 ? "        Quitter le programme ?"
                                                      : "Voulez-vous abandonner la partie en cours ?   ");
    EXPECT_EQ(fake.boxes.shown.back().style.defaultNo, plays == 2);
    if (plays == 0) f.CmdNew_Click();
    EXPECT_EQ(plays < 2 ? PlayOut(1) : 1, 1);
  }
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "Option.ret"));
  EXPECT_EQ(f.Form_Unload(), FrmPlateau::Unload::EndProgram);  // Yes
  EXPECT_TRUE(std::filesystem::exists(dir.path() / "Option.ret"));
}

TEST_F(FormState, TheClockShowsTicksDressedAsTimeAndThePicturesCycle) {
  FrmPlateau& f = Load();
  f.CmdNew_Click();
  EXPECT_EQ(f.LblDuree.foreColor, Color::Rgb(0x00, 0x80, 0x80));
  // TimerEpie runs from the form's load, whatever the game does: 51 seconds a tick.
  fake.timers.Advance(FrmPlateau::kTimerEpie - fake.timers.Now() - 1);
  EXPECT_EQ(f.LblDuree.text, "0:00:00");
  fake.timers.Advance(1);
  std::string pictures;
  const struct {
    int tick;
    const char* timer;
  } ticks[] = {{1, "00:00:01"},    {59, "00:00:59"},   {60, "00:01:00"},
               {3598, "00:59:58"}, {3599, "01:59:59"},  // the hour rose before the text was made
               {3600, "01:00:00"}};
  for (int tick = 1; const auto& t : ticks) {
    for (; tick < t.tick; ++tick) {
      for (int k = 1; k <= 3 && tick < 5; ++k) pictures += f.Iabc[size_t(k)].visible ? char('0' + k) : '.';
      f.TimerEpie_Timer();
    }
    EXPECT_EQ(f.LblTimer.text, t.timer);
  }
  EXPECT_EQ(pictures, "1...2...31..");
  f.VarHeures = 12;
  f.TimerEpie_Timer();
  EXPECT_EQ(f.LblDuree.text, "2:00:01");  // the last seven characters
  // A stop clears the request: the next tick resets the counters, not the text.
  f.BytChronoDemande = 0;
  f.TimerEpie_Timer();
  f.TimerEpie_Timer();
  EXPECT_EQ(f.VarSecondes, 0);
  EXPECT_EQ(f.LblTimer.text, "12:00:01");
  program.options.OptDuree = false;  // no duration: a grey clock that stays at 0
  Load().CmdNew_Click();
  fake.timers.Advance(5 * FrmPlateau::kTimerEpie);
  EXPECT_EQ(form->LblDuree.text, "0:00:00");
  EXPECT_EQ(form->LblDuree.foreColor, Color::Grey(0x80));
}

TEST_F(FormState, TheArrowBlinksFourTimesThenStaysAndNeverShowsWithoutTheFrame) {
  for (const int cadre : {0, 1}) {
    program.options.OptCadre = int16_t(cadre);
    FrmPlateau& f = Load(kShortBag);
    f.IntCligno = 7;
    f.CmdNew_Click();
    std::string seen;  // the count, and the arrow shown (+), the guide lines alone (?) or nothing (-)
    for (int i = 0; i < 7; ++i, fake.timers.Advance(FrmPlateau::kTimCligno))
      seen += std::to_string(f.IntCligno) + (f.ImgXY.visible                      ? "+"
                                             : f.LinVx.visible || f.LinVy.visible ? "?"
                                                                                  : "-");
    EXPECT_EQ(seen, cadre ? "0+1?2+3?0+0+0+" : "0-1-2-3-0-0-0-") << cadre;
  }
  // The guide lines meet on the first square; H8 counts as across at the first play.
  FrmPlateau& f = *form;
  program.engine.BytSens = 1;
  f.IntNbCoups = 0;
  f.SubPositionSolution("8", "H");
  EXPECT_EQ(program.engine.BytSens, 0);
  EXPECT_EQ(std::vector<int>({f.LinVx.x1, f.LinVx.x2, f.LinVx.y2, f.LinVy.y1, f.LinVy.y2, f.LinVy.x2,
                              f.ImgXYLeft, f.ImgXYTop}),
            std::vector<int>({271, 271, 252, 271, 271, 252, 251, 252}));
  // A bag found empty hides the arrow for good.
  program.BlnSacVide = -1;
  f.StartBlink();
  fake.timers.Advance(5 * FrmPlateau::kTimCligno);
  EXPECT_FALSE(f.ImgXY.visible);
}

TEST_F(FormState, NoPlayOrAShortPlayWithItsDefinition) {
  FrmPlateau& f = Load("QQQ");
  forms.onBoiteD = [&](FrmBoiteD&) { EXPECT_EQ(f.LblIndic.text, "\r\nPas de solution possible."); };
  f.CmdNew_Click();
  EXPECT_EQ(forms.boiteD, std::vector<std::string>{"|||Pas de solution possible.|"});
  EXPECT_EQ(f.LblIndic.text, "");  // the empty summary overwrites the message
  EXPECT_FALSE(f.Proposition || f.ImgXY.visible);
  FrmPlateau& g = Load("AAAAAAA");  // only "aa" can be played
  forms.onBoiteD = [&](FrmBoiteD& boite) {
    EXPECT_EQ(boite.heightTwips, 3060);
    boite.ChkShowDef_Click();
  };
  g.CmdNew_Click();
  EXPECT_EQ(forms.boiteD[1],
            "AA|H-7  Horizontal|4||Définition: " + *program.lexicon.DefM23.FindForSolution("AA"));
  EXPECT_EQ(program.options.OptDef23, 0);  // the box's tick turns definitions off
}

TEST_F(FormState, TheWordCheckTakesLettersAndAnswersWithTheDefinitionOfShortWords) {
  FrmPlateau& f = Load();
  for (const char c : std::string("a1? \b")) EXPECT_EQ(f.TxtCtrl_KeyPress(c), c == 'a' || c == '\b' ? c : 0);
  // Whatever a paste or a drop brings, only the letters A to Z stay, fifteen at most.
  const struct {
    std::string pasted, kept, answer;
  } checks[] = {{"anticonstitutionnellement", "anticonstitutio", "Le mot ANTICONSTITUTIO n'existe pas."},
                {"l'\xC3\xA9t\xC3\xA9", "lt", "Le mot LT n'existe pas."},
                {"ai-me 2 ?\t\r\n[z]", "aimez", "Le mot AIMEZ existe."},
                {"a1", "a", ""}};  // one letter: no check
  for (const auto& c : checks) {
    f.TxtCtrl_Change(c.pasted);
    EXPECT_EQ(f.TxtCtrl.text + " " + f.LblN.text, c.kept + " " + std::to_string(c.kept.size()));
    EXPECT_EQ(f.CmdCtrl.enabled && f.CmdCtrl.isDefault, c.kept.size() > 1);
    if (c.kept.size() > 1) f.CmdCtrl_Click();
    EXPECT_EQ(f.LblA1.text, c.answer);
    const Color blueOrRed =
        c.answer.find("pas") == std::string::npos ? Color::Rgb(0, 0, 192) : Color::Rgb(192, 0, 0);
    EXPECT_EQ(f.LblA1.foreColor, c.answer.empty() ? f.LblA1.foreColor : blueOrRed);
    EXPECT_FALSE(f.PicDef.visible);  // no definition beyond three letters
  }
  // A short word shows its definition, until the tick turns them off.
  f.TxtCtrl_Change("aa");
  f.CmdCtrl_Click();
  EXPECT_TRUE(f.PicDef.visible && f.LblDef.visible);
  EXPECT_EQ(f.LblShowDef.text.substr(0, 2), "\r\n");
  EXPECT_NE(f.LblShowDef.text.find(*program.lexicon.DefM23.FindForCheck("AA")), std::string::npos);
  f.ImgA_Click();
  EXPECT_TRUE(f.ImgB.visible && !f.ImgA.visible && program.options.OptDef23 == 0);
  f.PicDef.visible = false;
  f.CmdCtrl_MouseDown();
  EXPECT_FALSE(f.PicDef.visible);
  // Leaving the word box puts its answer back to the invitation.
  f.SetFocus(FrmPlateau::Focus::TxtCtrl);
  f.CmdCacher_Click();
  EXPECT_EQ(f.ActiveControl, FrmPlateau::Focus::Foc);
  EXPECT_EQ(f.LblA1.text, "Entrez un mot dans la zone de texte.");
  EXPECT_FALSE(f.CmdCtrl.isDefault);
}

TEST_F(FormState, TheOnLineDictionaryOpensAtTheWordThePlayerIsLookingAt) {
  FrmPlateau& f = Load(kShortBag);
  // Nothing typed, nothing proposed: the dictionary's home.
  f.CmdChercheWeb_Click();
  // The proposed play, its blanks as letters.
  f.CmdNew_Click();
  ASSERT_TRUE(f.Proposition.has_value());
  f.Proposition->Express = "ABeE";
  f.CmdChercheWeb_Click();
  // The word typed in the word box comes first.
  f.TxtCtrl_Change("Zebre");
  f.CmdChercheWeb_Click();
  EXPECT_EQ(fake.shell.opened, (std::vector<std::string>{"https://fr.wiktionary.org/",
                                                         "https://fr.wiktionary.org/w/index.php?search=abee",
                                                         "https://fr.wiktionary.org/w/index.php?search=zebre"}));
}

TEST_F(FormState, TheAboutBoxSaysWhenNoSiteOrContactIsConfigured) {
  // The tests' build is given neither: the player is told so, nothing is opened.
  if (!ProgramSiteAddress().empty() || !ProgramContactAddress().empty())
    GTEST_SKIP() << "this build was given a site or a contact address";
  FrmAbout about(program, nullptr);
  about.Form_Load();
  about.CmdSite_Click();
  EXPECT_FALSE(about.CmdMail_Click());
  ASSERT_EQ(fake.boxes.shown.size(), 2u);
  EXPECT_EQ(fake.boxes.shown[0].text, "Aucun site internet n'est configuré pour cette version d'Ostrane.");
  EXPECT_EQ(fake.boxes.shown[1].text, "Aucune adresse de contact n'est configurée pour cette version d'Ostrane.");
  EXPECT_TRUE(fake.shell.opened.empty());
}

}  // namespace
}  // namespace ostrane::test
