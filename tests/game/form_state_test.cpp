// The main form's state: its load, the controls in each state of a game,
// the questions on closing, the clock, the blink and the picture cycle, the
// solution shown, the word check and the small commands.
#include <gtest/gtest.h>

#include <fstream>

#include "lexicon/lexicon.h"
#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

std::string ReadFile(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

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
  EXPECT_EQ(f.IntPasJeton, 36);
  EXPECT_EQ(f.Plateau.image, 2);
  EXPECT_TRUE(f.OptPioche[0].value);
  EXPECT_TRUE(f.OptJok[1].value);
  EXPECT_FALSE(f.enabled);
  EXPECT_EQ(program.StrSac, "");  // the bag comes with TimDeb
  fake.timers.Advance(99);
  EXPECT_EQ(program.StrSac, "");
  fake.timers.Advance(1);
  EXPECT_EQ(program.StrSac.size(), 102u);
  EXPECT_TRUE(f.enabled);
  EXPECT_EQ(f.LblIndic.text, "Pour commencer,\r\ncliquez sur\r\n''Débuter une partie''.");
  EXPECT_EQ(f.LblDuree.foreColor, Color::Rgb(0x00, 0x80, 0x80));
  EXPECT_EQ(f.LblLetReste.text.substr(0, 36), "AAAAAAAAABBCCDDDEEEEEEEEEEEEEEEFFG\r\n");
  fake.timers.Advance(10000);
  EXPECT_EQ(program.StrSac.size(), 102u);  // once only
}

TEST_F(FormState, DurationOffGreysTheClock) {
  program.options.OptDuree = false;
  FrmPlateau& f = Load();
  EXPECT_EQ(f.LblDuree.foreColor, Color::Grey(0x80));
  f.CmdNew_Click();
  EXPECT_EQ(f.BytChronoDemande, 0);
  fake.timers.Advance(5 * FrmPlateau::kTimerEpie);
  EXPECT_EQ(f.LblDuree.text, "0:00:00");
}

TEST_F(FormState, ControlsFollowTheStatesOfAGame) {
  FrmPlateau& f = Load("AAAABEEEGIILLNNOST?");
  // Ready.
  EXPECT_TRUE(f.CmdNew.enabled);
  EXPECT_TRUE(f.CmdGame.visible);
  EXPECT_FALSE(f.CmdValider.enabled);
  EXPECT_FALSE(f.CmdRanger.enabled);
  for (const Tile& tile : f.PicGamer) EXPECT_FALSE(tile.enabled);
  EXPECT_EQ(f.TxtHisto.text, "");
  EXPECT_FALSE(f.LblLetReste.visible);

  // Placing.
  f.CmdNew_Click();
  EXPECT_FALSE(f.CmdNew.enabled);
  EXPECT_FALSE(f.CmdGame.visible);
  EXPECT_TRUE(f.CmdArret.visible);
  EXPECT_EQ(f.CmdArret.caption, "Arrêter la partie");
  EXPECT_EQ(f.CmdArret.tip, "Arrêter la partie en cours");
  EXPECT_TRUE(f.CmdSolution.enabled);
  EXPECT_FALSE(f.CmdValider.enabled);
  EXPECT_FALSE(f.CmdRanger.enabled);
  for (const Tile& tile : f.PicGamer) EXPECT_TRUE(tile.enabled);
  EXPECT_TRUE(f.LblLetReste.visible);
  EXPECT_TRUE(f.LblLTitre.visible);
  EXPECT_EQ(f.LblLTitre.text, "Lettres qu'il reste à piocher");
  EXPECT_EQ(f.LblTirage.text, "01");
  EXPECT_EQ(f.LblPtsJoueur.text, "0");
  EXPECT_TRUE(f.enabled);
  EXPECT_FALSE(f.PicWait.visible);
  EXPECT_EQ(f.BytChronoDemande, 1);
  ASSERT_TRUE(f.Proposition);

  // Proposal, and back to Placing with CmdRanger.
  ASSERT_TRUE(LayProposition());
  EXPECT_TRUE(f.CmdValider.enabled);
  EXPECT_TRUE(f.CmdRanger.enabled);
  EXPECT_EQ(f.LblPts.text, std::to_string(f.Proposition->CountP));
  f.CmdRanger_Click();
  EXPECT_FALSE(f.CmdValider.enabled);
  EXPECT_FALSE(f.CmdRanger.enabled);
  for (const Tile& tile : f.PicGamer) EXPECT_FALSE(f.TileAcrossPlateau(int(&tile - f.PicGamer.data())));

  // Validating passes the turn: Picking, Searching, Placing again.
  ASSERT_TRUE(LayProposition());
  const int before = forms.jetonsShown;
  f.CmdValider_Click();
  EXPECT_EQ(forms.jetonsShown, before + 1);
  EXPECT_TRUE(f.CmdSolution.enabled);
  EXPECT_FALSE(f.CmdValider.enabled);
  EXPECT_FALSE(f.CmdRanger.enabled);
  EXPECT_EQ(f.LblPts.text, "0");
  EXPECT_EQ(f.LblTirage.text, "01");
  EXPECT_EQ(f.IntNbCoups, 1);
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

  // On the way to a new game nothing is asked.
  const size_t asked = fake.boxes.shown.size();
  EXPECT_EQ(f.CmdGame_Click(), FrmPlateau::Unload::ToPartie);
  EXPECT_EQ(f.BlnChangePartie, -1);
  EXPECT_EQ(fake.boxes.shown.size(), asked);
}

TEST_F(FormState, TheClockShowsTicksDressedAsTime) {
  FrmPlateau& f = Load();
  f.CmdNew_Click();
  EXPECT_EQ(f.LblTimer.text, "00:00:00");
  // TimerEpie runs from the form's load, whatever the game does.
  fake.timers.Advance(FrmPlateau::kTimerEpie - fake.timers.Now() - 1);
  EXPECT_EQ(f.LblDuree.text, "0:00:00");
  fake.timers.Advance(1);
  EXPECT_EQ(f.LblTimer.text, "00:00:01");
  EXPECT_EQ(f.LblDuree.text, "0:00:01");
  for (int tick = 2; tick <= 59; ++tick) f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "00:00:59");
  EXPECT_EQ(f.VarMinutes, 1);  // risen already
  f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "00:01:00");
  for (int tick = 61; tick < 3599; ++tick) f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "00:59:58");
  f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "01:59:59");  // the hour rose before the text was made
  f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "01:00:00");
  EXPECT_EQ(f.LblDuree.text, "1:00:00");

  f.VarHeures = 12;
  f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "12:00:01");
  EXPECT_EQ(f.LblDuree.text, "2:00:01");  // the last seven characters

  // A stop clears the request: the next tick resets the counters, not the text.
  f.BytChronoDemande = 0;
  f.TimerEpie_Timer();
  EXPECT_EQ(f.BytChronoActif, 0);
  EXPECT_EQ(f.VarSecondes, 0);
  EXPECT_EQ(f.LblTimer.text, "12:00:01");
  f.TimerEpie_Timer();
  EXPECT_EQ(f.LblTimer.text, "12:00:01");
}

TEST_F(FormState, TheWaitingPicturesCycle) {
  FrmPlateau& f = Load();
  const auto shown = [&] {
    int which = 0, count = 0;
    for (int k = 1; k <= 3; ++k)
      if (f.Iabc[size_t(k)].visible) which = k, ++count;
    return count == 1 ? which : -count;
  };
  f.TimerEpie_Timer();
  EXPECT_EQ(shown(), 1);
  f.TimerEpie_Timer();
  EXPECT_EQ(shown(), 2);
  f.TimerEpie_Timer();
  EXPECT_EQ(shown(), 3);
  EXPECT_EQ(f.IntImageEpie, 0);
  f.TimerEpie_Timer();
  EXPECT_EQ(shown(), 1);
}

TEST_F(FormState, TheArrowBlinksFourTimesThenStays) {
  FrmPlateau& f = Load();
  f.ImgXY.visible = true;
  f.IntCligno = 5;
  f.StartBlink();
  EXPECT_EQ(f.IntCligno, 0);
  std::vector<bool> seen;
  for (int i = 0; i < 6; ++i) {
    fake.timers.Advance(FrmPlateau::kTimCligno);
    seen.push_back(f.ImgXY.visible);
  }
  EXPECT_EQ(seen, (std::vector<bool>{false, true, false, true, true, true}));

  // A release during the blink hides the arrow for good.
  f.StartBlink();
  fake.timers.Advance(FrmPlateau::kTimCligno);
  f.IntCligno = 9;
  f.ImgXY.visible = false;
  for (int i = 0; i < 4; ++i) {
    fake.timers.Advance(FrmPlateau::kTimCligno);
    EXPECT_FALSE(f.ImgXY.visible);
  }

  // With the bag found empty the first tick hides it.
  f.ImgXY.visible = true;
  program.BlnSacVide = -1;
  f.StartBlink();
  fake.timers.Advance(FrmPlateau::kTimCligno);
  EXPECT_FALSE(f.ImgXY.visible);
  fake.timers.Advance(FrmPlateau::kTimCligno * 4);
  EXPECT_FALSE(f.ImgXY.visible);
}

TEST_F(FormState, AGameStartsTheBlinkWhenThereIsASolution) {
  FrmPlateau& f = Load("AAAABEEEGIILLNNOST?");
  f.IntCligno = 7;
  f.CmdNew_Click();
  ASSERT_NE(f.LngNbSolutions, 0);
  EXPECT_EQ(f.IntCligno, 0);
  EXPECT_TRUE(f.ImgXY.visible);
  fake.timers.Advance(FrmPlateau::kTimCligno);
  EXPECT_FALSE(f.ImgXY.visible);
}

TEST_F(FormState, WithoutTheFrameOptionTheArrowNeverShows) {
  program.options.OptCadre = 0;
  FrmPlateau& f = Load("AAAABEEEGIILLNNOST?");
  f.CmdNew_Click();
  ASSERT_NE(f.LngNbSolutions, 0);
  EXPECT_FALSE(f.ImgXY.visible || f.LinVx.visible || f.LinVy.visible);
  std::vector<int> counts;
  std::vector<bool> seen;
  for (int i = 0; i < 6; ++i) {
    fake.timers.Advance(FrmPlateau::kTimCligno);
    counts.push_back(f.IntCligno);
    seen.push_back(f.ImgXY.visible || f.LinVx.visible || f.LinVy.visible);
  }
  EXPECT_EQ(counts, (std::vector<int>{1, 2, 3, 0, 0, 0}));  // the blink runs its four ticks
  EXPECT_EQ(seen, std::vector<bool>(6, false));              // and nothing shows
  // A later turn neither.
  ASSERT_TRUE(LayProposition());
  f.CmdValider_Click();
  for (int i = 0; i < 6; ++i) {
    fake.timers.Advance(FrmPlateau::kTimCligno);
    EXPECT_FALSE(f.ImgXY.visible);
  }
}

TEST_F(FormState, TheWindowIsToldBeforeTheSearchAndThePause) {
  // What the window was last told at each moment of a turn: the tiles drawn
  // and the waiting panel before the search, the form disabled with the
  // hourglass while it runs, the form given back with the panel up through
  // the pause, the panel gone before the best play's box.
  struct Seen {
    bool picWait = false, enabled = false;
    Pointer pointer = Pointer::Default;
    int tilesOnRack = 0;
    FrmPlateau::Focus focus = FrmPlateau::Focus::Other;
  };
  FrmPlateau& f = Load("AAAABEEEGIILLNNOST?");
  std::vector<Seen> told;
  const auto last = [&told] { return told.empty() ? Seen{} : told.back(); };
  f.changed = [&] {
    Seen seen{f.PicWait.visible, f.enabled, f.MousePointer, 0, f.ActiveControl};
    for (const Tile& tile : f.PicGamer) seen.tilesOnRack += tile.visible && !tile.Tag.empty();
    told.push_back(seen);
  };
  // The search is all that yields between the draw and the best play's box.
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
  const auto expectSearching = [&](int tiles) {
    ASSERT_FALSE(atYields.empty());
    for (const Seen& seen : atYields) {
      EXPECT_TRUE(seen.picWait);
      EXPECT_FALSE(seen.enabled);
      EXPECT_EQ(seen.pointer, Pointer::Hourglass);
      EXPECT_EQ(seen.tilesOnRack, tiles);  // the new tiles are on the rack
      EXPECT_EQ(seen.focus, FrmPlateau::Focus::TxtHisto);
    }
  };

  f.CmdNew_Click();
  expectSearching(7);
  ASSERT_TRUE(atPause && atBox);
  EXPECT_TRUE(atPause->picWait);
  EXPECT_TRUE(atPause->enabled);
  EXPECT_EQ(atPause->pointer, Pointer::Default);
  EXPECT_EQ(sleeps, std::vector<int>{1000});
  EXPECT_FALSE(atBox->picWait);
  EXPECT_TRUE(last().enabled);
  EXPECT_FALSE(last().picWait);

  // At a validation: the form disabled at once, the picker over it; then the
  // next draw's tiles and the panel, and the form disabled through the search.
  ASSERT_TRUE(LayProposition());
  told.clear();
  atYields.clear();
  atPicker.reset();
  f.CmdValider_Click();
  ASSERT_FALSE(told.empty());
  EXPECT_FALSE(told.front().enabled);
  ASSERT_TRUE(atPicker);
  EXPECT_FALSE(atPicker->enabled);
  expectSearching(7);
  EXPECT_EQ(sleeps, (std::vector<int>{1000, 1000}));  // the second play pauses too
}

// ------------------------------------------------------- the best play

TEST_F(FormState, TheBestPlayIsShownInTheBoxAndTheSummary) {
  FrmPlateau& f = Load("AAAABEEEGIILLNNOST?");
  std::string boxPosition, boxPoints, boxWord;
  forms.onBoiteD = [&](FrmBoiteD& boite) {
    EXPECT_EQ(boite.caption, "Ostrane");
    EXPECT_EQ(boite.Lbl[0].text, "Meilleure suggestion: ");
    EXPECT_EQ(boite.Lbl[2].text, "Position: ");
    EXPECT_EQ(boite.Lbl[4].text, "Points: ");
    for (const Label& label : boite.Lbl) EXPECT_TRUE(label.visible);
    EXPECT_FALSE(boite.LblMsg.visible);
    boxWord = boite.Lbl[1].text;
    boxPosition = boite.Lbl[3].text;
    boxPoints = boite.Lbl[5].text;
    EXPECT_TRUE(f.enabled);  // the box gives the main form back
    EXPECT_FALSE(f.PicWait.visible);
  };
  f.Sleep = [&](int ms) { sleeps.push_back(ms); };
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
  EXPECT_FALSE(f.LblIndic.bold);
  EXPECT_EQ(sleeps, std::vector<int>{1000});  // the first plays wait a second
  EXPECT_EQ(fake.sounds.played, std::vector<int>{103});
  EXPECT_TRUE(f.ImgXY.visible);
  EXPECT_EQ(f.ImgXYPicture,
            program.engine.BytSens ? FrmPlateau::Arrow::ImgClassicVer : FrmPlateau::Arrow::ImgClassicHor);
}

TEST_F(FormState, NoPlayLeavesTheSummaryEmpty) {
  FrmPlateau& f = Load("QQQ");
  forms.onBoiteD = [&](FrmBoiteD& boite) {
    EXPECT_TRUE(boite.LblMsg.visible);
    EXPECT_EQ(boite.LblMsg.text, "Pas de solution possible.");
    EXPECT_FALSE(boite.Lbl[1].visible);
    EXPECT_EQ(f.LblIndic.text, "\r\nPas de solution possible.");
  };
  f.CmdNew_Click();
  EXPECT_EQ(f.LngNbSolutions, 0);
  EXPECT_FALSE(f.Proposition);
  EXPECT_EQ(f.LblIndic.text, "");  // the empty summary overwrites the message
  EXPECT_FALSE(f.ImgXY.visible);
  EXPECT_EQ(forms.boiteD.size(), 1u);
}

TEST_F(FormState, AShortBestPlayBringsItsDefinition) {
  FrmPlateau& f = Load("AAAAAAA");  // only "aa" can be played
  std::string definition;
  int height = 0;
  forms.onBoiteD = [&](FrmBoiteD& boite) {
    definition = boite.LblDef.visible ? boite.LblDef.text : "";
    height = boite.heightTwips;
    EXPECT_EQ(boite.ChkShowDef.visible, boite.LblDef.visible);
    boite.ChkShowDef_Click();
  };
  f.CmdNew_Click();
  ASSERT_TRUE(f.Proposition);
  ASSERT_EQ(f.LblSolution.text, "AA");
  const auto expected = program.lexicon.DefM23.FindForSolution("AA");
  ASSERT_TRUE(expected);
  EXPECT_EQ(definition, "Définition: " + *expected);
  EXPECT_EQ(height, 3060);
  EXPECT_EQ(program.options.OptDef23, 0);  // the box's tick turns definitions off
}

TEST_F(FormState, TheGuideLinesMeetOnTheFirstSquare) {
  FrmPlateau& f = Load();
  program.engine.BytSens = 1;
  f.SubPositionSolution("8", "H");
  EXPECT_EQ(program.engine.BytSens, 0);  // H8 counts as across at the first play
  EXPECT_EQ(f.LinVx.x1, 271);
  EXPECT_EQ(f.LinVx.x2, 271);
  EXPECT_EQ(f.LinVx.y2, 252);
  EXPECT_EQ(f.LinVy.y1, 271);
  EXPECT_EQ(f.LinVy.y2, 271);
  EXPECT_EQ(f.LinVy.x2, 252);
  EXPECT_EQ(f.ImgXYLeft, 251);
  EXPECT_EQ(f.ImgXYTop, 252);
  EXPECT_TRUE(f.LinVx.visible);
  EXPECT_TRUE(f.LinVy.visible);
  EXPECT_TRUE(f.ImgXY.visible);

  f.SubPositionSolution("8", "D");
  EXPECT_EQ(program.engine.BytSens, 1);
  f.SubPositionSolution("5", "H");
  EXPECT_EQ(program.engine.BytSens, 1);  // not on column 8: left as the search set it
  f.SubPositionSolution("1", "A");
  EXPECT_FALSE(f.LinVy.visible);
  EXPECT_FALSE(f.LinVx.visible);
  EXPECT_EQ(f.LinVx.x1, 19);

  f.IntNbCoups = 1;
  program.engine.BytSens = 1;
  f.SubPositionSolution("8", "H");
  EXPECT_EQ(program.engine.BytSens, 1);

  program.options.OptCadre = 0;
  f.IntNbCoups = 0;
  f.LinVx.x1 = 5;
  f.ImgXY.visible = false;
  f.SubPositionSolution("8", "H");
  EXPECT_EQ(program.engine.BytSens, 1);
  EXPECT_EQ(f.LinVx.x1, 5);
  EXPECT_FALSE(f.ImgXY.visible);
}

// -------------------------------------------------------- the word check

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
  // A word of 2 or 3 letters of the lexicon whose definition is shorter or
  // not shorter than 44 characters.
  std::string WordWithDefinition(bool shortOne) {
    const Definitions& defs = program.lexicon.DefM23;
    for (int32_t i = 0; i <= defs.UBound(); ++i) {
      const std::string& line = defs.Line(i);
      const std::string key = line.substr(0, line.find("§"));
      if (key.size() < 2 || key.size() > 3 || !form->ObjMots.SubWordIsTrue(key)) continue;
      const auto definition = defs.FindForCheck(key);
      if (!definition) continue;
      size_t chars = 0;
      for (const char c : *definition) chars += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
      if ((chars < 44) == shortOne) return key;
    }
    return "";
  }
};

TEST_F(WordCheck, OnlyLettersAndAtMostFifteen) {
  EXPECT_EQ(form->TxtCtrl_KeyPress('a'), 'a');  // lower case stays lower case
  EXPECT_EQ(form->TxtCtrl_KeyPress('1'), 0);
  EXPECT_EQ(form->TxtCtrl_KeyPress('?'), 0);
  EXPECT_EQ(form->TxtCtrl_KeyPress(' '), 0);
  EXPECT_EQ(form->TxtCtrl_KeyPress(8), 8);  // control characters pass
  Type("anticonstitutionnellement");
  EXPECT_EQ(form->TxtCtrl.text, "anticonstitutio");
  EXPECT_EQ(form->LblN.text, "15");
  EXPECT_EQ(form->TxtCtrl_KeyPress(8), 8);
  form->TxtCtrl_Change("a");
  EXPECT_FALSE(form->CmdCtrl.enabled);
  EXPECT_FALSE(form->CmdCtrl.isDefault);
  form->TxtCtrl_Change("ab");
  EXPECT_TRUE(form->CmdCtrl.enabled);
  EXPECT_TRUE(form->CmdCtrl.isDefault);
  EXPECT_EQ(form->LblA1.text, "");
}

TEST_F(WordCheck, APasteKeepsOnlyTheLetters) {
  // Whatever a paste or a drop brings, only the letters A to Z stay, and the
  // count is one a letter.
  form->TxtCtrl_Change("l'\xC3\xA9t\xC3\xA9");  // "l'été"
  EXPECT_EQ(form->TxtCtrl.text, "lt");
  EXPECT_EQ(form->LblN.text, "2");
  EXPECT_TRUE(form->CmdCtrl.enabled);
  form->CmdCtrl_Click();  // no fatal end: the word test sees letters only
  EXPECT_EQ(form->LblA1.text, "Le mot LT n'existe pas.");
  form->TxtCtrl_Change("a1");
  EXPECT_EQ(form->TxtCtrl.text, "a");
  EXPECT_EQ(form->LblN.text, "1");
  EXPECT_FALSE(form->CmdCtrl.enabled);
  form->TxtCtrl_Change("\xC3\xA9t\xC3\xA9");
  EXPECT_EQ(form->TxtCtrl.text, "t");
  form->TxtCtrl_Change("ai-me 2 ?\t\r\n[z]");
  EXPECT_EQ(form->TxtCtrl.text, "aimez");
  form->CmdCtrl_Click();
  EXPECT_EQ(form->LblA1.text, "Le mot AIMEZ existe.");
  form->TxtCtrl_Change("anticonstitutionnellement");
  EXPECT_EQ(form->TxtCtrl.text, "anticonstitutio");
  EXPECT_EQ(form->LblN.text, "15");
  // Every byte the box could be handed: the check never ends the program.
  std::string all;
  for (int c = 1; c < 256; ++c) all += char(c);
  for (size_t at = 0; at < all.size(); at += 7) {
    form->TxtCtrl_Change(all.substr(at, 12));
    for (const char c : form->TxtCtrl.text) EXPECT_TRUE(std::isalpha(static_cast<unsigned char>(c))) << int(c);
    form->CmdCtrl_Click();
  }
}

TEST_F(WordCheck, AnswersInCapitalsWithTheirColours) {
  Type("maison");
  form->CmdCtrl_Click();
  EXPECT_EQ(form->LblA1.text, "Le mot MAISON existe.");
  EXPECT_EQ(form->LblA1.foreColor, Color::Rgb(0, 0, 192));
  EXPECT_FALSE(form->PicDef.visible);  // six letters: no definition
  Type("xq");
  form->CmdCtrl_Click();
  EXPECT_EQ(form->LblA1.text, "Le mot XQ n'existe pas.");
  EXPECT_EQ(form->LblA1.foreColor, Color::Rgb(192, 0, 0));
  EXPECT_FALSE(form->PicDef.visible);
  form->TxtCtrl_Change("");
  form->CmdCtrl_Click();
  EXPECT_EQ(form->LblA1.text, "");
}

TEST_F(WordCheck, ShortWordsShowTheirDefinition) {
  const std::string shortDef = WordWithDefinition(true), longDef = WordWithDefinition(false);
  ASSERT_FALSE(shortDef.empty());
  ASSERT_FALSE(longDef.empty());
  std::string lower = shortDef;
  for (char& c : lower) c = char(std::tolower(static_cast<unsigned char>(c)));
  Type(lower);
  form->CmdCtrl_Click();
  EXPECT_EQ(form->LblA1.text, "Le mot " + shortDef + " existe.");
  EXPECT_TRUE(form->PicDef.visible);
  EXPECT_TRUE(form->LblDef.visible);
  EXPECT_EQ(form->LblShowDef.text, "\r\n" + *program.lexicon.DefM23.FindForCheck(shortDef));

  form->TxtCtrl_Change(longDef);
  form->CmdCtrl_Click();
  EXPECT_FALSE(form->LblDef.visible);
  EXPECT_EQ(form->LblShowDef.text, *program.lexicon.DefM23.FindForCheck(longDef));

  // The press shows the panel for fewer than three letters only.
  form->PicDef.visible = false;
  form->TxtCtrl_Change("aa");
  form->CmdCtrl_MouseDown();
  EXPECT_TRUE(form->PicDef.visible);
  form->PicDef.visible = false;
  form->TxtCtrl_Change("ami");
  form->CmdCtrl_MouseDown();
  EXPECT_FALSE(form->PicDef.visible);

  // The tick turns them off for good.
  form->ImgA_Click();
  EXPECT_FALSE(form->ImgA.visible);
  EXPECT_TRUE(form->ImgB.visible);
  EXPECT_EQ(program.options.OptDef23, 0);
  form->TxtCtrl_Change(shortDef);
  form->CmdCtrl_Click();
  EXPECT_FALSE(form->PicDef.visible);
  form->CmdCtrl_MouseDown();
  EXPECT_FALSE(form->PicDef.visible);
}

TEST_F(WordCheck, TheLastLineIsFoundHereButNotForASolution) {
  const Definitions& defs = program.lexicon.DefM23;
  const std::string& last = defs.Line(defs.UBound());
  const std::string key = last.substr(0, last.find("§"));
  ASSERT_TRUE(defs.FindForCheck(key));
  EXPECT_FALSE(defs.FindForSolution(key));
  form->TxtCtrl_Change(key);
  form->CmdCtrl_Click();
  EXPECT_EQ(form->LblShowDef.text.find(*defs.FindForCheck(key)) != std::string::npos, true);
}

TEST_F(WordCheck, FocusColours) {
  form->TxtCtrl_GotFocus();
  EXPECT_EQ(form->TxtCtrl.backColor, Color::Grey(224));
  EXPECT_EQ(form->LblA11.backColor, Color::Grey(224));
  EXPECT_EQ(form->LblN.foreColor, Color::Grey(64));
  form->CmdCtrl.isDefault = true;
  form->PicDef.visible = true;
  form->TxtCtrl_LostFocus();
  EXPECT_EQ(form->TxtCtrl.backColor, Color::Grey(192));
  EXPECT_EQ(form->LblA11.backColor, Color::Grey(192));
  EXPECT_EQ(form->LblA1.foreColor, Color::Grey(128));
  EXPECT_EQ(form->TxtCtrl.foreColor, Color::Grey(128));
  EXPECT_EQ(form->LblN.foreColor, Color::Grey(224));
  EXPECT_EQ(form->LblA1.text, "Entrez un mot dans la zone de texte.");
  EXPECT_FALSE(form->PicDef.visible);
  EXPECT_FALSE(form->CmdCtrl.isDefault);
}

TEST_F(WordCheck, CommandsThatMoveTheFocusTakeItFromTheWordBox) {
  // Each command that sends the focus to Foc or TxtHisto: the word box, when
  // it had the focus, loses it as a player sees it lose it.
  using Focus = FrmPlateau::Focus;
  program.StrSac = "AAAABEEEGIILLNNOST?";
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
         EXPECT_EQ(form->CmdQuitte_Click(), FrmPlateau::Unload::Cancelled);
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
      {"CmdArret answered Yes",
       [this] {
         fake.boxes.answers = {Answer::Yes};
         form->CmdArret_Click();
       },
       Focus::Foc},
  };
  for (const auto& command : commands) {
    SCOPED_TRACE(command.name);
    form->SetFocus(Focus::TxtCtrl);
    EXPECT_EQ(form->TxtCtrl.backColor, Color::Grey(224));
    form->TxtCtrl_Change("aa");
    form->CmdCtrl_Click();
    ASSERT_EQ(form->LblA1.text, "Le mot AA existe.");
    ASSERT_TRUE(form->PicDef.visible);
    ASSERT_TRUE(form->CmdCtrl.isDefault);
    command.run();
    EXPECT_EQ(form->ActiveControl, command.to);
    EXPECT_EQ(form->LblA1.text, "Entrez un mot dans la zone de texte.");
    EXPECT_EQ(form->LblA1.foreColor, Color::Grey(128));
    EXPECT_EQ(form->TxtCtrl.backColor, Color::Grey(192));
    EXPECT_EQ(form->LblN.foreColor, Color::Grey(224));
    EXPECT_FALSE(form->PicDef.visible);
    EXPECT_FALSE(form->CmdCtrl.isDefault);
  }

  // With the focus elsewhere, a command leaves the word check's answer alone.
  form->SetFocus(Focus::Other);
  form->TxtCtrl_Change("aa");
  form->CmdCtrl_Click();
  form->CmdCacher_Click();
  EXPECT_EQ(form->ActiveControl, Focus::Foc);
  EXPECT_EQ(form->LblA1.text, "Le mot AA existe.");
  EXPECT_TRUE(form->CmdCtrl.isDefault);
}

// ------------------------------------------------------- small commands

TEST_F(FormState, SoundsAndTheSoundButton) {
  FrmPlateau& f = Load();
  f.SubJoueSon(4);
  f.SubJoueSon(7);
  EXPECT_TRUE(fake.sounds.played.empty());
  f.SubJoueSon(1);
  EXPECT_EQ(fake.sounds.played, std::vector<int>{101});
  f.CmdSon_Click();  // off: silent
  EXPECT_FALSE(program.options.OptSons);
  EXPECT_EQ(f.CmdSonPicture, FrmPlateau::SonPicture::ImgHP2);
  f.SubJoueSon(6);
  EXPECT_EQ(fake.sounds.played.size(), 1u);
  f.CmdSon_Click();  // on: sound 3 at once
  EXPECT_TRUE(program.options.OptSons);
  EXPECT_EQ(f.CmdSonPicture, FrmPlateau::SonPicture::ImgHP1);
  EXPECT_EQ(fake.sounds.played, (std::vector<int>{101, 103}));
}

TEST_F(FormState, HelpDictionaryAboutAndBestScores) {
  FrmPlateau& f = Load();
  f.CmdAide_Click();
  f.CmdChercheWeb_Click();
  ASSERT_EQ(fake.shell.opened.size(), 2u);
  EXPECT_EQ(fake.shell.opened[0], "z_a_aide.htm");
  const std::string page = fake.shell.opened[1];
  EXPECT_EQ(page.substr(page.size() - 24), "/documents/recherche.htm");
  f.CmdAbout_Click();
  EXPECT_EQ(forms.aboutShown, 1);
  EXPECT_TRUE(f.enabled);
  f.CmdMeilleur_Click();
  EXPECT_EQ(forms.bestShown, 1);
  EXPECT_EQ(program.BestNouveau, -1);
  EXPECT_TRUE(f.enabled);
  EXPECT_TRUE(forms.bestLists.back().empty());
}

TEST_F(FormState, TheToolsFrameFoldsAndComesBack) {
  FrmPlateau& f = Load();
  EXPECT_EQ(f.FraTools.caption, "              Outils (cliquez pour déplacer)       ");
  f.Plateau1_DragDrop(200, 300);
  EXPECT_EQ(f.FraTools.left, 200);
  EXPECT_EQ(f.FraTools.top, 300);
  f.CmdCacher_Click();
  EXPECT_EQ(f.BlnOutilsPlies, 1);
  EXPECT_EQ(f.FraTools.left, 0);
  EXPECT_EQ(f.FraTools.top, 0);
  EXPECT_EQ(f.FraTools.width, 24);
  EXPECT_EQ(f.FraTools.height, 15);
  f.CmdCacher_Click();
  EXPECT_EQ(f.FraTools.left, 16);
  EXPECT_EQ(f.FraTools.top, 16);
  EXPECT_EQ(f.FraTools.width, 249);
  EXPECT_EQ(f.FraTools.height, 117);
  f.CmdMin_Click();
  EXPECT_EQ(f.WindowState, 0);
  f.CmdMax_Click();
  EXPECT_EQ(f.WindowState, 2);
}

TEST_F(FormState, TheArretButtonRestartsOnceTheGameIsOver) {
  FrmPlateau& f = Load("EEEEEEEEEEEEEEEE");
  f.CmdNew_Click();
  f.CmdArret.caption = "Nouvelle partie";  // as the end of a game leaves it
  f.CmdArret.visible = true;
  const int before = forms.jetonsShown;
  f.ArretPartie();
  EXPECT_EQ(f.CmdArret.caption, "Arrêter la partie");
  EXPECT_EQ(f.CmdArret.tip, "Arrêter la partie en cours");
  EXPECT_EQ(forms.jetonsShown, before + 1);  // a new game, a new draw
  EXPECT_EQ(f.LblLetReste.text, "");
  EXPECT_EQ(f.BlnAbandon, 0);
}

// ------------------------------------------------------ board and faces

TEST_F(FormState, TheBoardPictureAndTheFaces) {
  FrmPlateau& f = Load();
  f.ObjPlateau->SubCaserWord(ClsWord{"Ete", "H8", 0});
  program.options.OptImage = 3;
  f.DrawGrille();
  EXPECT_EQ(f.Plateau.image, 3);
  EXPECT_EQ(f.Plateau.Square(7, 7), "E");
  EXPECT_EQ(f.Plateau.Square(8, 7), "t");
  const int revision = f.Plateau.revision;

  // An image outside 1..4 paints nothing: what was painted stays under the letters.
  program.options.OptImage = 5;
  f.ObjPlateau = std::make_unique<ClsPlateau>(program.lexicon, program.engine);
  f.ObjPlateau->SubCaserWord(ClsWord{"a", "A1", 0});
  f.DrawGrille();
  EXPECT_EQ(f.Plateau.image, 3);
  EXPECT_EQ(f.Plateau.Square(7, 7), "E");
  EXPECT_EQ(f.Plateau.Square(0, 0), "a");
  EXPECT_GT(f.Plateau.revision, revision);
  program.options.OptImage = 1;  // the first selection paints "Classique"
  f.DrawGrille();
  EXPECT_EQ(f.Plateau.image, 2);
  EXPECT_EQ(f.Plateau.Square(7, 7), "");

  f.SubPeintPose("k");
  EXPECT_EQ(f.PicTemp, (TileFace{TileFace::Picture::ImgLet, 10, TileFace::Tint::Blue}));
  f.SubPeintPose("?");
  f.SubPeintLettre("K");
  EXPECT_EQ(f.PicTemp, (TileFace{TileFace::Picture::ImgLet, 10, TileFace::Tint::Blue}));  // left as it was
  f.SubPeintLettre("k");
  EXPECT_EQ(f.PicTemp.tint, TileFace::Tint::Black);
  f.SubPeintBlanc("E");
  EXPECT_EQ(f.PicTemp, (TileFace{TileFace::Picture::ImgJok, 4, TileFace::Tint::DarkRed}));
}

}  // namespace
}  // namespace ostrane::test
