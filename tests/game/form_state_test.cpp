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

class FormState : public GameTest {
 protected:
  std::vector<int> sleeps;
};

TEST_F(FormState, LoadAndTheInvitationToStart) {
  program.HeureDepart = float((14 * 3600 + 23 * 60 + 17) / 86400.0);
  form = std::make_unique<FrmPlateau>(program, forms);
  form->Form_Load();
  FrmPlateau& f = *form;
  EXPECT_EQ(f.caption, "Ostrane");
  EXPECT_EQ(f.LblVer.text, "Version 1.23");
  EXPECT_EQ(f.CmdAbout.tip, "A propos de Ostrane");
  EXPECT_EQ(f.LblNomP.text, "Partie tabli 01");
  EXPECT_EQ(f.CmdNew.caption, "Débuter la partie");
  EXPECT_EQ(f.LblTpsDemarrage.text, "17 sec");  // the start's own seconds, as it stands
  EXPECT_FALSE(f.enabled);
  fake.timers.Advance(99);
  EXPECT_EQ(program.StrSac, "");  // the bag comes with TimDeb
  fake.timers.Advance(1);
  EXPECT_EQ(program.StrSac.size(), 102u);
  EXPECT_TRUE(f.enabled);
  EXPECT_EQ(f.LblIndic.text, "Pour commencer,\r\ncliquez sur\r\n''Débuter une partie''.");
  EXPECT_EQ(f.LblLetReste.text.substr(0, 36), "AAAAAAAAABBCCDDDEEEEEEEEEEEEEEEFFG\r\n");
}

TEST_F(FormState, ControlsFollowTheStatesOfAGame) {
  FrmPlateau& f = Load(kShortBag);
  const auto expect = [&](const char* state, bool newOn, bool arret, bool solution, bool valider, bool tiles) {
    SCOPED_TRACE(state);
    EXPECT_EQ(f.CmdNew.enabled, newOn);
    EXPECT_EQ(f.CmdGame.visible, !arret);
    EXPECT_EQ(f.CmdArret.visible, arret);
    EXPECT_EQ(f.CmdSolution.enabled, solution);
    EXPECT_EQ(f.CmdValider.enabled, valider);
    EXPECT_EQ(f.CmdRanger.enabled, valider);
    for (const Tile& tile : f.PicGamer) EXPECT_EQ(tile.enabled, tiles);
  };
  expect("ready", true, false, false, false, false);
  EXPECT_FALSE(f.LblLetReste.visible);
  f.CmdNew_Click();
  expect("placing", false, true, true, false, true);
  EXPECT_EQ(f.CmdArret.caption, "Arrêter la partie");
  EXPECT_EQ(f.CmdArret.tip, "Arrêter la partie en cours");
  EXPECT_TRUE(f.LblLetReste.visible);
  EXPECT_EQ(f.LblLTitre.text, "Lettres qu'il reste à piocher");
  EXPECT_EQ(f.LblTirage.text, "01");
  EXPECT_EQ(f.LblPtsJoueur.text, "0");
  EXPECT_EQ(f.BytChronoDemande, 1);
  ASSERT_TRUE(LayProposition());
  expect("proposal", false, true, true, true, true);
  EXPECT_EQ(f.LblPts.text, std::to_string(f.Proposition->CountP));
  f.CmdRanger_Click();
  expect("placing again", false, true, true, false, true);
  ASSERT_TRUE(LayProposition());
  f.CmdValider_Click();  // picking, searching, placing again
  expect("next turn", false, true, true, false, true);
  EXPECT_EQ(forms.jetonsShown, 2);
  EXPECT_EQ(f.LblPts.text, "0");
  EXPECT_EQ(f.IntNbCoups, 1);

  // Once the game is over, the stop button starts a new one.
  f.CmdArret.caption = "Nouvelle partie";
  f.ArretPartie();
  EXPECT_EQ(f.CmdArret.caption, "Arrêter la partie");
  EXPECT_EQ(forms.jetonsShown, 3);  // a new game, a new draw
  EXPECT_EQ(f.BlnAbandon, 0);
}

TEST_F(FormState, ClosingAsksToQuitUntilTheSecondPlay) {
  FrmPlateau& f = Load();
  fake.boxes.answers = {Answer::No};
  EXPECT_EQ(f.Form_Unload(), FrmPlateau::Unload::Cancelled);
  EXPECT_EQ(fake.boxes.shown.back().text, "        Quitter le programme ?");
  EXPECT_FALSE(fake.boxes.shown.back().style.defaultNo);
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "Option.ret"));
  f.CmdNew_Click();
  ASSERT_EQ(PlayOut(1), 1);
  fake.boxes.answers = {Answer::No};
  EXPECT_EQ(f.CmdQuitte_Click(), FrmPlateau::Unload::Cancelled);
  EXPECT_EQ(fake.boxes.shown.back().text, "        Quitter le programme ?");  // one play is no game yet
  ASSERT_EQ(PlayOut(1), 1);
  fake.boxes.answers = {Answer::No};
  EXPECT_EQ(f.Form_Unload(), FrmPlateau::Unload::Cancelled);
  EXPECT_EQ(fake.boxes.shown.back().text, "Voulez-vous abandonner la partie en cours ?   ");
  EXPECT_TRUE(fake.boxes.shown.back().style.defaultNo);
  program.options.OptImage = 4;
  EXPECT_EQ(f.Form_Unload(), FrmPlateau::Unload::EndProgram);  // Yes
  EXPECT_NE(ReadFile(dir.path() / "Option.ret").find("Img plateau 4\r\n"), std::string::npos);
  const size_t asked = fake.boxes.shown.size();
  EXPECT_EQ(f.CmdGame_Click(), FrmPlateau::Unload::ToPartie);  // on the way to a new game nothing is asked
  EXPECT_EQ(fake.boxes.shown.size(), asked);
}

TEST_F(FormState, TheClockShowsTicksDressedAsTimeAndThePicturesCycle) {
  FrmPlateau& f = Load();
  f.CmdNew_Click();
  EXPECT_EQ(f.LblDuree.foreColor, Color::Rgb(0x00, 0x80, 0x80));
  // TimerEpie runs from the form's load, whatever the game does.
  fake.timers.Advance(FrmPlateau::kTimerEpie - fake.timers.Now() - 1);
  EXPECT_EQ(f.LblDuree.text, "0:00:00");
  fake.timers.Advance(1);
  EXPECT_EQ(f.LblTimer.text, "00:00:01");
  EXPECT_EQ(f.LblDuree.text, "0:00:01");
  const auto shown = [&] {
    int which = 0, count = 0;
    for (int k = 1; k <= 3; ++k)
      if (f.Iabc[size_t(k)].visible) which = k, ++count;
    return count == 1 ? which : -count;
  };
  std::vector<int> pictures = {shown()};
  for (int tick = 2; tick <= 59; ++tick) {
    f.TimerEpie_Timer();
    if (tick <= 4) pictures.push_back(shown());
  }
  EXPECT_EQ(pictures, (std::vector<int>{1, 2, 3, 1}));
  EXPECT_EQ(f.LblTimer.text, "00:00:59");
  f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "00:01:00");
  for (int tick = 61; tick < 3599; ++tick) f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "00:59:58");
  f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "01:59:59");  // the hour rose before the text was made
  f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "01:00:00");
  f.VarHeures = 12;
  f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "12:00:01");
  EXPECT_EQ(f.LblDuree.text, "2:00:01");  // the last seven characters
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
  FrmPlateau& f = Load(kShortBag);
  f.IntCligno = 7;
  f.CmdNew_Click();
  ASSERT_TRUE(f.Proposition);
  EXPECT_EQ(f.IntCligno, 0);
  std::vector<bool> seen = {f.ImgXY.visible};
  for (int i = 0; i < 6; ++i) {
    fake.timers.Advance(FrmPlateau::kTimCligno);
    seen.push_back(f.ImgXY.visible);
  }
  EXPECT_EQ(seen, (std::vector<bool>{true, false, true, false, true, true, true}));
  // A release during the blink hides the arrow for good; so does a bag found empty.
  for (const bool emptyBag : {false, true}) {
    f.ImgXY.visible = true;
    program.BlnSacVide = emptyBag ? -1 : 0;
    f.StartBlink();
    if (!emptyBag) {
      fake.timers.Advance(FrmPlateau::kTimCligno);
      f.IntCligno = 9;
      f.ImgXY.visible = false;
    }
    for (int i = 0; i < 5; ++i) {
      fake.timers.Advance(FrmPlateau::kTimCligno);
      EXPECT_FALSE(f.ImgXY.visible);
    }
  }

  program.BlnSacVide = 0;
  program.options.OptCadre = 0;
  FrmPlateau& g = Load(kShortBag);
  g.CmdNew_Click();
  ASSERT_TRUE(g.Proposition);
  std::vector<int> counts;
  for (int i = 0; i < 6; ++i) {
    EXPECT_FALSE(g.ImgXY.visible || g.LinVx.visible || g.LinVy.visible);
    fake.timers.Advance(FrmPlateau::kTimCligno);
    counts.push_back(g.IntCligno);
  }
  EXPECT_EQ(counts, (std::vector<int>{1, 2, 3, 0, 0, 0}));  // the blink runs its four ticks
}

TEST_F(FormState, TheWindowIsToldBeforeTheSearchAndThePause) {
  // What the window was last told at each moment of a turn: the tiles drawn
  // and the waiting panel before the search, the form disabled with the
  // hourglass while it runs, given back with the panel up through the pause,
  // the panel gone before the best play's box.
  struct Seen {
    bool picWait = false, enabled = false;
    Pointer pointer = Pointer::Default;
    int tilesOnRack = 0;
    FrmPlateau::Focus focus = FrmPlateau::Focus::Other;
  };
  FrmPlateau& f = Load(kShortBag);
  std::vector<Seen> told;
  const auto last = [&told] { return told.empty() ? Seen{} : told.back(); };
  f.changed = [&] {
    Seen seen{f.PicWait.visible, f.enabled, f.MousePointer, 0, f.ActiveControl};
    for (const Tile& tile : f.PicGamer) seen.tilesOnRack += tile.visible && !tile.Tag.empty();
    told.push_back(seen);
  };
  bool searching = false;
  std::optional<Seen> atPicker, atPause, atBox;
  std::vector<Seen> atYields;
  forms.onJetons = [&](FrmJetons& jetons) {
    atPicker = last();
    ScriptedForms::PickInBagOrder(jetons, program);
    searching = true;
  };
  fake.events.onDoEvents = [&] {
    if (searching) atYields.push_back(last());
  };
  f.Sleep = [&](int ms) {
    sleeps.push_back(ms);
    atPause = last();
  };
  forms.onBoiteD = [&](FrmBoiteD&) {
    searching = false;
    atBox = last();
  };
  const auto expectSearching = [&] {
    ASSERT_FALSE(atYields.empty());
    for (const Seen& seen : atYields) {
      EXPECT_TRUE(seen.picWait && !seen.enabled);
      EXPECT_EQ(seen.pointer, Pointer::Hourglass);
      EXPECT_EQ(seen.tilesOnRack, 7);  // the new tiles are on the rack
      EXPECT_EQ(seen.focus, FrmPlateau::Focus::TxtHisto);
    }
  };
  f.CmdNew_Click();
  expectSearching();
  ASSERT_TRUE(atPause && atBox);
  EXPECT_TRUE(atPause->picWait && atPause->enabled);
  EXPECT_EQ(atPause->pointer, Pointer::Default);
  EXPECT_FALSE(atBox->picWait);
  EXPECT_TRUE(last().enabled && !last().picWait);

  // At a validation: the form disabled at once, the picker over it, then the
  // search as before; the second play pauses too.
  ASSERT_TRUE(LayProposition());
  told.clear();
  atYields.clear();
  f.CmdValider_Click();
  EXPECT_FALSE(told.front().enabled);
  EXPECT_FALSE(atPicker->enabled);
  expectSearching();
  EXPECT_EQ(sleeps, (std::vector<int>{1000, 1000}));
}

TEST_F(FormState, TheBestPlayIsShownInTheBoxTheSummaryAndTheArrow) {
  FrmPlateau& f = Load(kShortBag);
  std::string boxPosition, boxPoints, boxWord;
  forms.onBoiteD = [&](FrmBoiteD& boite) {
    EXPECT_EQ(boite.Lbl[0].text + boite.Lbl[2].text + boite.Lbl[4].text,
              "Meilleure suggestion: Position: Points: ");
    EXPECT_FALSE(boite.LblMsg.visible);
    boxWord = boite.Lbl[1].text;
    boxPosition = boite.Lbl[3].text;
    boxPoints = boite.Lbl[5].text;
    EXPECT_TRUE(f.enabled);  // the box gives the main form back
  };
  f.CmdNew_Click();
  ASSERT_TRUE(f.Proposition);
  const ClsWord& w = *f.Proposition;
  const bool down = w.Place[0] >= '0' && w.Place[0] <= '9';
  const std::string number = down ? w.Place.substr(0, w.Place.size() - 1) : w.Place.substr(1);
  const std::string letter = down ? w.Place.substr(w.Place.size() - 1) : w.Place.substr(0, 1);
  std::string upper = w.Express;
  for (char& c : upper) c = char(std::toupper(static_cast<unsigned char>(c)));
  const std::string direction = down ? " Vertical" : " Horizontal";
  EXPECT_EQ(boxWord, upper);
  EXPECT_EQ(boxPoints, std::to_string(w.CountP));
  EXPECT_EQ(boxPosition, letter + "-" + number + " " + direction);
  EXPECT_EQ(f.LblSolution.text, upper);
  EXPECT_EQ(f.LblIndic.text, "Solution: " + upper + "\r\nPosition: " + letter + "-" + number + direction +
                                 "\r\nNombre de points: " + std::to_string(w.CountP));
  EXPECT_EQ(fake.sounds.played, std::vector<int>{103});
  EXPECT_EQ(f.ImgXYPicture,
            program.engine.BytSens ? FrmPlateau::Arrow::ImgClassicVer : FrmPlateau::Arrow::ImgClassicHor);

  // The guide lines meet on the first square; H8 counts as across at the first play.
  program.engine.BytSens = 1;
  f.IntNbCoups = 0;
  f.SubPositionSolution("8", "H");
  EXPECT_EQ(program.engine.BytSens, 0);
  EXPECT_EQ(std::vector<int>({f.LinVx.x1, f.LinVx.x2, f.LinVx.y2, f.LinVy.y1, f.LinVy.y2, f.LinVy.x2}),
            std::vector<int>({271, 271, 252, 271, 271, 252}));
  EXPECT_EQ(f.ImgXYLeft, 251);
  EXPECT_EQ(f.ImgXYTop, 252);
  f.SubPositionSolution("1", "A");
  EXPECT_FALSE(f.LinVy.visible || f.LinVx.visible);
  program.engine.BytSens = 1;
  f.SubPositionSolution("5", "H");  // not on column 8: left as the search set it
  EXPECT_EQ(program.engine.BytSens, 1);
}

TEST_F(FormState, NoPlayOrAShortPlayWithItsDefinition) {
  FrmPlateau& f = Load("QQQ");
  forms.onBoiteD = [&](FrmBoiteD& boite) {
    EXPECT_EQ(boite.LblMsg.text, "Pas de solution possible.");
    EXPECT_TRUE(boite.LblMsg.visible && !boite.Lbl[1].visible);
    EXPECT_EQ(f.LblIndic.text, "\r\nPas de solution possible.");
  };
  f.CmdNew_Click();
  EXPECT_FALSE(f.Proposition);
  EXPECT_EQ(f.LblIndic.text, "");  // the empty summary overwrites the message
  EXPECT_FALSE(f.ImgXY.visible);
  EXPECT_EQ(forms.boiteD.size(), 1u);

  FrmPlateau& g = Load("AAAAAAA");  // only "aa" can be played
  std::string definition;
  int height = 0;
  forms.onBoiteD = [&](FrmBoiteD& boite) {
    definition = boite.LblDef.visible ? boite.LblDef.text : "";
    height = boite.heightTwips;
    boite.ChkShowDef_Click();
  };
  g.CmdNew_Click();
  ASSERT_EQ(g.LblSolution.text, "AA");
  EXPECT_EQ(definition, "Définition: " + *program.lexicon.DefM23.FindForSolution("AA"));
  EXPECT_EQ(height, 3060);
  EXPECT_EQ(program.options.OptDef23, 0);  // the box's tick turns definitions off
}

class WordCheck : public GameTest {
 protected:
  void SetUp() override { Load(); }
  void Type(const std::string& text) {
    std::string typed;
    for (const char c : text) {
      const int key = form->TxtCtrl_KeyPress(c);
      if (key != 0) typed += char(key);
      form->TxtCtrl_Change(typed);
    }
  }
};

TEST_F(WordCheck, OnlyLettersGetInAtMostFifteenAndTheAnswerIsInCapitals) {
  EXPECT_EQ(form->TxtCtrl_KeyPress('a'), 'a');
  for (const char refused : {'1', '?', ' '}) EXPECT_EQ(form->TxtCtrl_KeyPress(refused), 0);
  EXPECT_EQ(form->TxtCtrl_KeyPress(8), 8);  // control characters pass
  Type("anticonstitutionnellement");
  EXPECT_EQ(form->TxtCtrl.text, "anticonstitutio");
  EXPECT_EQ(form->LblN.text, "15");
  // Whatever a paste or a drop brings, only the letters A to Z stay.
  const struct {
    std::string pasted, kept;
    bool check;
  } pastes[] = {{"l'\xC3\xA9t\xC3\xA9", "lt", true}, {"a1", "a", false}, {"ai-me 2 ?\t\r\n[z]", "aimez", true}};
  for (const auto& p : pastes) {
    form->TxtCtrl_Change(p.pasted);
    EXPECT_EQ(form->TxtCtrl.text, p.kept);
    EXPECT_EQ(form->LblN.text, std::to_string(p.kept.size()));
    EXPECT_EQ(form->CmdCtrl.enabled, p.check);
    EXPECT_EQ(form->CmdCtrl.isDefault, p.check);
  }
  form->CmdCtrl_Click();
  EXPECT_EQ(form->LblA1.text, "Le mot AIMEZ existe.");
  EXPECT_EQ(form->LblA1.foreColor, Color::Rgb(0, 0, 192));
  EXPECT_FALSE(form->PicDef.visible);  // five letters: no definition
  form->TxtCtrl_Change("xq");
  form->CmdCtrl_Click();
  EXPECT_EQ(form->LblA1.text, "Le mot XQ n'existe pas.");
  EXPECT_EQ(form->LblA1.foreColor, Color::Rgb(192, 0, 0));
  // Every byte the box could be handed: the check never ends the program.
  std::string all;
  for (int c = 1; c < 256; ++c) all += char(c);
  for (size_t at = 0; at < all.size(); at += 7) {
    form->TxtCtrl_Change(all.substr(at, 12));
    for (const char c : form->TxtCtrl.text) EXPECT_TRUE(std::isalpha(static_cast<unsigned char>(c))) << int(c);
    form->CmdCtrl_Click();
  }
}

TEST_F(WordCheck, ShortWordsShowTheirDefinitionUntilTheTickTurnsThemOff) {
  const Definitions& defs = program.lexicon.DefM23;
  std::string shortDef, longDef;  // definitions under and from 44 characters
  for (int32_t i = 0; i <= defs.UBound() && (shortDef.empty() || longDef.empty()); ++i) {
    const std::string key = defs.Line(i).substr(0, defs.Line(i).find("§"));
    const auto definition = defs.FindForCheck(key);
    if (!definition || !form->ObjMots.SubWordIsTrue(key)) continue;
    (Utf8ToCp1252(*definition).size() < 44 ? shortDef : longDef) = key;
  }
  ASSERT_FALSE(shortDef.empty() || longDef.empty());
  form->TxtCtrl_Change(shortDef);
  form->CmdCtrl_Click();
  EXPECT_EQ(form->LblA1.text, "Le mot " + shortDef + " existe.");
  EXPECT_TRUE(form->PicDef.visible && form->LblDef.visible);
  EXPECT_EQ(form->LblShowDef.text, "\r\n" + *defs.FindForCheck(shortDef));
  form->TxtCtrl_Change(longDef);
  form->CmdCtrl_Click();
  EXPECT_FALSE(form->LblDef.visible);
  EXPECT_EQ(form->LblShowDef.text, *defs.FindForCheck(longDef));
  // The last line of the definitions is found here, though never for a solution.
  const std::string last = defs.Line(defs.UBound()).substr(0, defs.Line(defs.UBound()).find("§"));
  form->TxtCtrl_Change(last);
  form->CmdCtrl_Click();
  EXPECT_NE(form->LblShowDef.text.find(*defs.FindForCheck(last)), std::string::npos);
  // The press shows the panel for fewer than three letters only.
  for (const std::string word : {"aa", "ami"}) {
    form->PicDef.visible = false;
    form->TxtCtrl_Change(word);
    form->CmdCtrl_MouseDown();
    EXPECT_EQ(form->PicDef.visible, word.size() < 3);
  }
  form->ImgA_Click();
  EXPECT_TRUE(form->ImgB.visible && !form->ImgA.visible);
  EXPECT_EQ(program.options.OptDef23, 0);
  form->TxtCtrl_Change(shortDef);
  form->CmdCtrl_Click();
  form->CmdCtrl_MouseDown();
  EXPECT_FALSE(form->PicDef.visible);
}

TEST_F(WordCheck, CommandsThatMoveTheFocusTakeItFromTheWordBox) {
  using Focus = FrmPlateau::Focus;
  program.StrSac = kShortBag;
  const struct {
    const char* name;
    std::function<void()> run;
    Focus to;
  } commands[] = {
      {"CmdCacher", [this] { form->CmdCacher_Click(); }, Focus::Foc},
      {"CmdRanger", [this] { form->CmdRanger_Click(); }, Focus::Foc},
      {"CmdMeilleur", [this] { form->CmdMeilleur_Click(); }, Focus::Foc},
      {"CmdQuitte answered No",
       [this] {
         fake.boxes.answers = {Answer::No};
         form->CmdQuitte_Click();
       },
       Focus::Foc},
      {"CmdNew", [this] { form->CmdNew_Click(); }, Focus::TxtHisto},  // the search's focus
      {"CmdSolution", [this] { form->CmdSolution_Click(); }, Focus::TxtHisto},
      {"CmdValider",
       [this] {
         ASSERT_TRUE(LayProposition());
         form->SetFocus(Focus::TxtCtrl);
         form->TxtCtrl_Change("aa");
         form->CmdCtrl_Click();
         form->CmdValider_Click();
       },
       Focus::TxtHisto},
      {"CmdArret answered Yes", [this] { form->CmdArret_Click(); }, Focus::Foc},
  };
  for (const auto& command : commands) {
    SCOPED_TRACE(command.name);
    form->SetFocus(Focus::TxtCtrl);
    EXPECT_EQ(form->TxtCtrl.backColor, Color::Grey(224));
    EXPECT_EQ(form->LblN.foreColor, Color::Grey(64));
    form->TxtCtrl_Change("aa");
    form->CmdCtrl_Click();
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
  form->TxtCtrl_Change("aa");
  form->CmdCtrl_Click();
  form->CmdCacher_Click();
  EXPECT_EQ(form->LblA1.text, "Le mot AA existe.");
  EXPECT_TRUE(form->CmdCtrl.isDefault);
}

TEST_F(FormState, SoundsBoardPicturesAndFaces) {
  FrmPlateau& f = Load();
  f.SubJoueSon(4);
  f.SubJoueSon(7);
  f.SubJoueSon(1);
  f.CmdSon_Click();  // off: silent
  EXPECT_EQ(f.CmdSonPicture, FrmPlateau::SonPicture::ImgHP2);
  f.SubJoueSon(6);
  f.CmdSon_Click();  // on: sound 3 at once
  EXPECT_EQ(f.CmdSonPicture, FrmPlateau::SonPicture::ImgHP1);
  EXPECT_EQ(fake.sounds.played, (std::vector<int>{101, 103}));

  f.ObjPlateau->SubCaserWord(ClsWord{"Ete", "H8", 0});
  program.options.OptImage = 3;
  f.DrawGrille();
  EXPECT_EQ(f.Plateau.image, 3);
  EXPECT_EQ(f.Plateau.Square(7, 7) + f.Plateau.Square(8, 7), "Et");
  // An image outside 1..4 paints no board: what was painted stays under the letters.
  program.options.OptImage = 5;
  f.ObjPlateau = std::make_unique<ClsPlateau>(program.lexicon, program.engine);
  f.ObjPlateau->SubCaserWord(ClsWord{"a", "A1", 0});
  f.DrawGrille();
  EXPECT_EQ(f.Plateau.image, 3);
  EXPECT_EQ(f.Plateau.Square(7, 7) + f.Plateau.Square(0, 0), "Ea");
  program.options.OptImage = 1;  // the first selection paints "Classique"
  f.DrawGrille();
  EXPECT_EQ(f.Plateau.image, 2);
  EXPECT_EQ(f.Plateau.Square(7, 7), "");

  f.SubPeintPose("k");
  EXPECT_EQ(f.PicTemp, (TileFace{TileFace::Picture::ImgLet, 10, TileFace::Tint::Blue}));
  f.SubPeintPose("?");
  f.SubPeintLettre("K");
  EXPECT_EQ(f.PicTemp.tint, TileFace::Tint::Blue);  // left as it was
  f.SubPeintBlanc("E");
  EXPECT_EQ(f.PicTemp, (TileFace{TileFace::Picture::ImgJok, 4, TileFace::Tint::DarkRed}));
}

}  // namespace
}  // namespace ostrane::test
