// The main form's state: its load, the controls in each state of a game,
// the questions on closing, the clock, the blink and the picture cycle, what
// the window is told around a search, the solution shown, the word check and
// the small commands.
#include <gtest/gtest.h>

#include "lexicon/lexicon.h"
#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

constexpr const char* kShortBag = "AAAABEEEGIILLNNOST?";
using Focus = FrmPlateau::Focus;

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
  // New, Arret shown, Solution, Valider and Ranger, the tiles.
  const auto expect = [&f](const char* state, std::string flags) {
    std::string now;
    for (const bool on :
         {f.CmdNew.enabled, f.CmdArret.visible && !f.CmdGame.visible, f.CmdSolution.enabled,
          f.CmdValider.enabled && f.CmdRanger.enabled, f.PicGamer[0].enabled, f.PicGamer[6].enabled})
      now += on ? '1' : '0';
    EXPECT_EQ(now, flags) << state;
  };
  expect("ready", "100000");
  EXPECT_FALSE(f.LblLetReste.visible);
  f.CmdNew_Click();
  expect("placing", "011011");
  EXPECT_EQ(f.CmdArret.caption + "|" + f.CmdArret.tip, "Arrêter la partie|Arrêter la partie en cours");
  EXPECT_TRUE(f.LblLetReste.visible);
  EXPECT_EQ(f.LblLTitre.text, "Lettres qu'il reste à piocher");
  EXPECT_EQ(f.LblTirage.text + " " + f.LblPtsJoueur.text, "01 0");
  EXPECT_EQ(f.BytChronoDemande, 1);
  ASSERT_TRUE(LayProposition());
  expect("proposal", "011111");
  EXPECT_EQ(f.LblPts.text, std::to_string(f.Proposition->CountP));
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
  EXPECT_EQ(f.BlnAbandon, 0);
}

TEST_F(FormState, ClosingAsksToQuitUntilTheSecondPlay) {
  FrmPlateau& f = Load();
  const std::string quit = "        Quitter le programme ?";
  for (int plays = 0; plays < 3; ++plays) {
    fake.boxes.answers = {Answer::No};
    EXPECT_EQ(plays == 1 ? f.CmdQuitte_Click() : f.Form_Unload(), FrmPlateau::Unload::Cancelled);
    EXPECT_EQ(fake.boxes.shown.back().text,
              plays < 2 ? quit : "Voulez-vous abandonner la partie en cours ?   ");
    EXPECT_EQ(fake.boxes.shown.back().style.defaultNo, plays == 2);
    if (plays == 0) f.CmdNew_Click();
    EXPECT_EQ(plays < 2 ? PlayOut(1) : 1, 1);
  }
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "Option.ret"));
  program.options.OptImage = 4;
  EXPECT_EQ(f.Form_Unload(), FrmPlateau::Unload::EndProgram);  // Yes
  EXPECT_NE(ReadFile(dir.path() / "Option.ret").find("Img plateau 4\r\n"), std::string::npos);
}

TEST_F(FormState, TheClockShowsTicksDressedAsTimeAndThePicturesCycle) {
  FrmPlateau& f = Load();
  f.CmdNew_Click();
  EXPECT_EQ(f.LblDuree.foreColor, Color::Rgb(0x00, 0x80, 0x80));
  // TimerEpie runs from the form's load, whatever the game does.
  fake.timers.Advance(FrmPlateau::kTimerEpie - fake.timers.Now() - 1);
  EXPECT_EQ(f.LblDuree.text, "0:00:00");
  fake.timers.Advance(1);
  const auto shown = [&f] {
    int which = 0;
    for (int k = 1; k <= 3; ++k) which = which * 10 + (f.Iabc[size_t(k)].visible ? k : 0);
    return which;
  };
  std::vector<int> pictures = {shown()};
  const struct {
    int tick;
    const char* timer;
  } ticks[] = {{1, "00:00:01"},    {59, "00:00:59"},   {60, "00:01:00"},
               {3598, "00:59:58"}, {3599, "01:59:59"},  // the hour rose before the text was made
               {3600, "01:00:00"}};
  for (int tick = 1; const auto& t : ticks) {
    for (; tick < t.tick; ++tick) {
      f.TimerEpie_Timer();
      if (tick < 4) pictures.push_back(shown());
    }
    EXPECT_EQ(f.LblTimer.text, t.timer);
  }
  EXPECT_EQ(pictures, (std::vector<int>{100, 20, 3, 100}));
  f.VarHeures = 12;
  f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text + " " + f.LblDuree.text, "12:00:01 2:00:01");  // the last seven characters
  // A stop clears the request: the next tick resets the counters, not the text.
  f.BytChronoDemande = 0;
  f.TimerEpie_Timer();
  f.TimerEpie_Timer();
  EXPECT_EQ(f.VarSecondes, 0);
  EXPECT_EQ(f.LblTimer.text, "12:00:01");

  program.options.OptDuree = false;  // no duration: a grey clock that stays at 0
  FrmPlateau& g = Load();
  EXPECT_EQ(g.LblDuree.foreColor, Color::Grey(0x80));
  g.CmdNew_Click();
  fake.timers.Advance(5 * FrmPlateau::kTimerEpie);
  EXPECT_EQ(g.LblDuree.text, "0:00:00");
}

TEST_F(FormState, TheArrowBlinksFourTimesThenStaysAndNeverShowsWithoutTheFrame) {
  for (const int cadre : {1, 0}) {
    program.options.OptCadre = int16_t(cadre);
    FrmPlateau& f = Load(kShortBag);
    f.IntCligno = 7;
    f.CmdNew_Click();
    ASSERT_TRUE(f.Proposition);
    std::string seen;
    for (int i = 0; i < 7; ++i) {
      seen += std::to_string(f.IntCligno) + (f.ImgXY.visible                        ? "+"
                                             : (f.LinVx.visible || f.LinVy.visible) ? "?"
                                                                                    : "-");
      fake.timers.Advance(FrmPlateau::kTimCligno);
    }
    EXPECT_EQ(seen, cadre ? "0+1?2+3?0+0+0+" : "0-1-2-3-0-0-0-") << cadre;
  }
  // A bag found empty hides the arrow for good.
  program.BlnSacVide = -1;
  form->StartBlink();
  fake.timers.Advance(5 * FrmPlateau::kTimCligno);
  EXPECT_FALSE(form->ImgXY.visible);
}

TEST_F(FormState, TheWindowIsToldBeforeTheSearchAndThePause) {
  // What the window was last told at each moment of a turn, as "wait panel,
  // enabled, hourglass, tiles on the rack, focus on the history".
  FrmPlateau& f = Load(kShortBag);
  std::string told = "00000";
  f.changed = [&] {
    int tiles = 0;
    for (const Tile& tile : f.PicGamer) tiles += tile.visible && !tile.Tag.empty();
    told = std::to_string(f.PicWait.visible) + std::to_string(f.enabled) +
           std::to_string(f.MousePointer == Pointer::Hourglass) + std::to_string(tiles) +
           std::to_string(f.ActiveControl == Focus::TxtHisto);
  };
  bool searching = false;
  std::vector<std::string> atPicker, atYields, atPauses, atBox;
  forms.onJetons = [&](FrmJetons& jetons) {
    atPicker.push_back(told);
    ScriptedForms::PickInBagOrder(jetons, program);
    searching = true;
  };
  fake.events.onDoEvents = [&] {
    if (searching) atYields.push_back(told);
  };
  std::vector<int> sleeps;
  f.Sleep = [&](int ms) {
    sleeps.push_back(ms);
    atPauses.push_back(told);
  };
  forms.onBoiteD = [&](FrmBoiteD&) {
    searching = false;
    atBox.push_back(told);
  };
  f.CmdNew_Click();
  ASSERT_TRUE(LayProposition());
  f.CmdValider_Click();
  // The search runs with the new tiles on the rack, the form disabled under
  // the hourglass; the pause gives it back with the panel up; the panel goes
  // before the best play's box. At a validation the form is disabled at once.
  EXPECT_EQ(atPicker[1].substr(1, 1), "0");
  EXPECT_EQ(std::count(atYields.begin(), atYields.end(), "10171"), long(atYields.size()));
  EXPECT_GE(atYields.size(), 2u);
  EXPECT_EQ(atPauses, (std::vector<std::string>{"11071", "11071"}));
  EXPECT_EQ(atBox[0].substr(0, 2), "01");
  EXPECT_EQ(told.substr(0, 2), "01");
  EXPECT_EQ(sleeps, (std::vector<int>{1000, 1000}));
}

TEST_F(FormState, TheBestPlayIsShownInTheBoxTheSummaryAndTheArrow) {
  FrmPlateau& f = Load(kShortBag);
  forms.onBoiteD = [&](FrmBoiteD& boite) {
    EXPECT_EQ(boite.Lbl[0].text + boite.Lbl[2].text + boite.Lbl[4].text,
              "Meilleure suggestion: Position: Points: ");
    EXPECT_TRUE(f.enabled);  // the box gives the main form back
  };
  f.CmdNew_Click();
  ASSERT_TRUE(f.Proposition);
  const ClsWord& w = *f.Proposition;
  const bool down = std::isdigit(static_cast<unsigned char>(w.Place[0]));
  const std::string number = down ? w.Place.substr(0, w.Place.size() - 1) : w.Place.substr(1);
  const std::string letter = down ? w.Place.substr(w.Place.size() - 1) : w.Place.substr(0, 1);
  std::string upper = w.Express;
  for (char& c : upper) c = char(std::toupper(static_cast<unsigned char>(c)));
  const std::string direction = down ? " Vertical" : " Horizontal";
  EXPECT_EQ(forms.boiteD[0],
            upper + "|" + letter + "-" + number + " " + direction + "|" + std::to_string(w.CountP) + "||");
  EXPECT_EQ(f.LblSolution.text, upper);
  EXPECT_EQ(f.LblIndic.text, "Solution: " + upper + "\r\nPosition: " + letter + "-" + number + direction +
                                 "\r\nNombre de points: " + std::to_string(w.CountP));
  EXPECT_EQ(fake.sounds.played, std::vector<int>{103});
  EXPECT_EQ(f.ImgXYPicture, down ? FrmPlateau::Arrow::ImgClassicVer : FrmPlateau::Arrow::ImgClassicHor);

  // The guide lines meet on the first square; H8 counts as across at the first play.
  program.engine.BytSens = 1;
  f.IntNbCoups = 0;
  f.SubPositionSolution("8", "H");
  EXPECT_EQ(program.engine.BytSens, 0);
  EXPECT_EQ(std::vector<int>({f.LinVx.x1, f.LinVx.x2, f.LinVx.y2, f.LinVy.y1, f.LinVy.y2, f.LinVy.x2,
                              f.ImgXYLeft, f.ImgXYTop}),
            std::vector<int>({271, 271, 252, 271, 271, 252, 251, 252}));
  f.SubPositionSolution("1", "A");
  EXPECT_FALSE(f.LinVy.visible || f.LinVx.visible);
  program.engine.BytSens = 1;
  f.SubPositionSolution("5", "H");  // not on column 8: left as the search set it
  EXPECT_EQ(program.engine.BytSens, 1);
}

TEST_F(FormState, NoPlayOrAShortPlayWithItsDefinition) {
  FrmPlateau& f = Load("QQQ");
  forms.onBoiteD = [&](FrmBoiteD& boite) {
    EXPECT_FALSE(boite.Lbl[1].visible);
    EXPECT_EQ(f.LblIndic.text, "\r\nPas de solution possible.");
  };
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

class WordCheck : public GameTest {
 protected:
  void SetUp() override { Load(); }
  void Check(const std::string& word) {
    form->TxtCtrl_Change(word);
    form->CmdCtrl_Click();
  }
};

TEST_F(WordCheck, OnlyLettersGetInAtMostFifteenAndTheAnswerIsInCapitals) {
  for (const char c : std::string("a1? \b"))
    EXPECT_EQ(form->TxtCtrl_KeyPress(c), c == 'a' || c == '\b' ? c : 0);
  // Whatever a paste or a drop brings, only the letters A to Z stay, fifteen at most.
  const struct {
    std::string pasted, kept;
  } pastes[] = {{"anticonstitutionnellement", "anticonstitutio"},
                {"l'\xC3\xA9t\xC3\xA9", "lt"},
                {"a1", "a"},
                {"ai-me 2 ?\t\r\n[z]", "aimez"}};
  for (const auto& p : pastes) {
    form->TxtCtrl_Change(p.pasted);
    EXPECT_EQ(form->TxtCtrl.text + " " + form->LblN.text, p.kept + " " + std::to_string(p.kept.size()));
    EXPECT_EQ(form->CmdCtrl.enabled && form->CmdCtrl.isDefault, p.kept.size() > 1);
  }
  form->CmdCtrl_Click();
  EXPECT_EQ(form->LblA1.text, "Le mot AIMEZ existe.");
  EXPECT_EQ(form->LblA1.foreColor, Color::Rgb(0, 0, 192));
  EXPECT_FALSE(form->PicDef.visible);  // five letters: no definition
  Check("xq");
  EXPECT_EQ(form->LblA1.text, "Le mot XQ n'existe pas.");
  EXPECT_EQ(form->LblA1.foreColor, Color::Rgb(192, 0, 0));
  // Every byte the box could be handed: the check never ends the program.
  std::string all;
  for (int c = 1; c < 256; ++c) all += char(c);
  for (size_t at = 0; at < all.size(); at += 7) {
    Check(all.substr(at, 12));
    for (const char c : form->TxtCtrl.text)
      EXPECT_TRUE(std::isalpha(static_cast<unsigned char>(c))) << int(c);
  }
}

TEST_F(WordCheck, ShortWordsShowTheirDefinitionUntilTheTickTurnsThemOff) {
  const Definitions& defs = program.lexicon.DefM23;
  const auto key = [&defs](int32_t i) { return defs.Line(i).substr(0, defs.Line(i).find("§")); };
  std::string shortDef, longDef;  // definitions under and from 44 characters
  for (int32_t i = 0; i <= defs.UBound() && (shortDef.empty() || longDef.empty()); ++i) {
    if (!defs.FindForCheck(key(i)) || !form->ObjMots.SubWordIsTrue(key(i))) continue;
    (Utf8ToCp1252(*defs.FindForCheck(key(i))).size() < 44 ? shortDef : longDef) = key(i);
  }
  ASSERT_FALSE(shortDef.empty() || longDef.empty());
  Check(shortDef);
  EXPECT_TRUE(form->PicDef.visible && form->LblDef.visible);
  EXPECT_EQ(form->LblShowDef.text, "\r\n" + *defs.FindForCheck(shortDef));
  Check(longDef);
  EXPECT_FALSE(form->LblDef.visible);
  EXPECT_EQ(form->LblShowDef.text, *defs.FindForCheck(longDef));
  // The last line of the definitions is found here, though never for a solution.
  Check(key(defs.UBound()));
  EXPECT_NE(form->LblShowDef.text.find(*defs.FindForCheck(key(defs.UBound()))), std::string::npos);
  // The press shows the panel for fewer than three letters only, until the tick.
  for (const std::string word : {"aa", "ami"}) {
    form->PicDef.visible = false;
    form->TxtCtrl_Change(word);
    form->CmdCtrl_MouseDown();
    EXPECT_EQ(form->PicDef.visible, word.size() < 3);
  }
  form->ImgA_Click();
  EXPECT_TRUE(form->ImgB.visible && !form->ImgA.visible);
  EXPECT_EQ(program.options.OptDef23, 0);
  Check(shortDef);
  form->CmdCtrl_MouseDown();
  EXPECT_FALSE(form->PicDef.visible);
}

TEST_F(WordCheck, CommandsThatMoveTheFocusTakeItFromTheWordBox) {
  program.StrSac = kShortBag;
  const struct {
    const char* name;
    std::function<void()> run;
    Focus to;
  } commands[] = {
      {"CmdCacher", [this] { form->CmdCacher_Click(); }, Focus::Foc},
      {"CmdRanger", [this] { form->CmdRanger_Click(); }, Focus::Foc},
      {"CmdMeilleur", [this] { form->CmdMeilleur_Click(); }, Focus::Foc},
      {"CmdQuitte answered No", [this] { form->CmdQuitte_Click(); }, Focus::Foc},
      {"CmdNew", [this] { form->CmdNew_Click(); }, Focus::TxtHisto},  // the search's focus
      {"CmdSolution", [this] { form->CmdSolution_Click(); }, Focus::TxtHisto},
      {"CmdValider",
       [this] {
         ASSERT_TRUE(LayProposition());
         form->SetFocus(Focus::TxtCtrl);
         Check("aa");
         form->CmdValider_Click();
       },
       Focus::TxtHisto},
      {"CmdArret answered Yes", [this] { form->CmdArret_Click(); }, Focus::Foc},
  };
  fake.boxes.answers = {Answer::No};  // for CmdQuitte, the only question before CmdArret
  for (const auto& command : commands) {
    SCOPED_TRACE(command.name);
    form->SetFocus(Focus::TxtCtrl);
    EXPECT_EQ(form->TxtCtrl.backColor, Color::Grey(224));
    EXPECT_EQ(form->LblN.foreColor, Color::Grey(64));
    Check("aa");
    ASSERT_TRUE(form->PicDef.visible && form->CmdCtrl.isDefault);
    command.run();
    EXPECT_EQ(form->ActiveControl, command.to);
    EXPECT_EQ(form->LblA1.text, "Entrez un mot dans la zone de texte.");
    EXPECT_EQ(form->LblA1.foreColor, Color::Grey(128));
    EXPECT_EQ(form->TxtCtrl.backColor, Color::Grey(192));
    EXPECT_EQ(form->LblN.foreColor, Color::Grey(224));
    EXPECT_FALSE(form->PicDef.visible || form->CmdCtrl.isDefault);
  }
  // With the focus elsewhere, a command leaves the word check's answer alone.
  form->SetFocus(Focus::Other);
  Check("aa");
  form->CmdCacher_Click();
  EXPECT_EQ(form->LblA1.text, "Le mot AA existe.");
  EXPECT_TRUE(form->CmdCtrl.isDefault);
}

TEST_F(FormState, SoundsBoardPicturesAndFaces) {
  FrmPlateau& f = Load();
  for (const int sound : {4, 7, 1}) f.SubJoueSon(sound);
  f.CmdSon_Click();  // off: silent
  EXPECT_EQ(f.CmdSonPicture, FrmPlateau::SonPicture::ImgHP2);
  f.SubJoueSon(6);
  f.CmdSon_Click();  // on: sound 3 at once
  EXPECT_EQ(f.CmdSonPicture, FrmPlateau::SonPicture::ImgHP1);
  EXPECT_EQ(fake.sounds.played, (std::vector<int>{101, 103}));
  // An image outside 1..4 paints no board: what was painted stays under the
  // letters; the first selection paints "Classique".
  for (const int image : {3, 5, 1}) {
    program.options.OptImage = int16_t(image);
    f.ObjPlateau->SubCaserWord(ClsWord{image == 3 ? "Ete" : "a", image == 3 ? "H8" : "A1", 0});
    f.DrawGrille();
    EXPECT_EQ(std::to_string(f.Plateau.image) + f.Plateau.Square(7, 7) + f.Plateau.Square(0, 0),
              image == 3   ? "3E"
              : image == 5 ? "3Ea"
                           : "2Ea");
  }
  f.SubPeintPose("k");
  EXPECT_EQ(f.PicTemp, (TileFace{TileFace::Picture::ImgLet, 10, TileFace::Tint::Blue}));
  f.SubPeintBlanc("E");
  EXPECT_EQ(f.PicTemp, (TileFace{TileFace::Picture::ImgJok, 4, TileFace::Tint::DarkRed}));
}

}  // namespace
}  // namespace ostrane::test
