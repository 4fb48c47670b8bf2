// Whole games played through the models as a player plays them through the
// windows: picks clicked in, the proposed play laid with drag gestures,
// validation clicked, boxes closed; and the journal of the game that goes
// with a natural end, a stop, and leaving from the picker.
#include <gtest/gtest.h>

#include <algorithm>

#include "records/options.h"
#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

constexpr const char* kAbandon = "Voulez-vous abandonner la partie en cours ?   ";

class WholeGame : public GameTest {
 protected:
  // Plays a game on `bag` (the start bag when empty) to its end; false when
  // a rack with no play stopped it.
  bool PlayToTheEnd(std::string bag) {
    FrmPlateau& f = Load(bag);
    if (bag.empty()) bag = StartBag(0);
    EXPECT_EQ(program.StrSac, bag);
    f.CmdNew_Click();
    const int plays = PlayOut();
    if (!f.CmdGame.visible) return false;
    // Every tile of the bag lies on the board (a capital is a blank), drawn
    // as the engine has it, and none anywhere else.
    std::string board;
    for (int i = 0; i < 225; ++i) {
      const char c = f.ObjPlateau->Square(i % 15, i / 15);
      if (c) board += c >= 'a' ? char(c - 32) : '?';
      EXPECT_EQ(f.Plateau.Square(i % 15, i / 15), f.ObjPlateau->SubCase(i % 15, i / 15));
    }
    std::sort(board.begin(), board.end());
    std::sort(bag.begin(), bag.end());
    EXPECT_EQ(board, bag);
    for (const Tile& tile : f.PicGamer) EXPECT_TRUE(tile.Tag.empty() && !tile.enabled);
    EXPECT_FALSE(run.journal->Exists());

    // One history line a play, each the proposed play of its turn, words of
    // the lexicon, points adding up to the score.
    const std::vector<std::string> lines = Lines(f.TxtHisto.text);
    EXPECT_EQ(int(lines.size()) * 10000 + int(forms.boiteD.size()) * 100 + f.IntNbCoups, plays * 10101);
    long sum = 0;
    for (size_t i = 0; i < lines.size() && i < forms.boiteD.size(); ++i) {
      const std::string word = lines[i].substr(3, lines[i].find(' ', 3) - 3);
      EXPECT_TRUE(f.ObjMots.SubWordIsTrue(word)) << word;
      EXPECT_EQ(forms.boiteD[i].substr(0, word.size() + 1), word + "|");
      sum += std::stol(lines[i].substr(18));
    }
    const std::string score = f.LblPtsJoueur.text;
    EXPECT_EQ(std::to_string(sum), score);

    // The controls close; a second later FrmFini shows the score, and its
    // closing brings the question and the table of best scores.
    EXPECT_FALSE(f.CmdSolution.enabled || f.CmdArret.visible || f.CmdValider.enabled || f.PicWait.visible);
    EXPECT_EQ(f.CmdArret.caption, "Nouvelle partie");
    EXPECT_EQ(std::count(fake.sounds.played.begin(), fake.sounds.played.end(), 106), 1);
    fake.timers.Advance(FrmPlateau::kTimFrmFin - 1);
    EXPECT_TRUE(forms.finiScores.empty());
    fake.timers.Advance(1 + FrmPlateau::kTimScore);
    EXPECT_EQ(forms.finiScores, std::vector<std::string>{score + " points"});
    EXPECT_EQ(f.LblIndic.text, "\r\nFin de la partie.");
    EXPECT_EQ(fake.boxes.Texts().back().find("Vous avez réalisé un score de " + score + " points."), 0u);
    const std::string best = ReadFile(dir.path() / "bestsco.ret");
    EXPECT_EQ(best.substr(0, 25), score + std::string(7 - score.size(), ' ') + "Partie tabli 01   ");
    EXPECT_EQ(forms.bestLists, std::vector<std::vector<std::string>>{{"001  " + best.substr(0, 44)}});
    EXPECT_TRUE(f.enabled && f.CmdGame.enabled);

    // Leaving asks only to quit, as the bag was found empty, and saves the options.
    program.options.OptImage = 3;
    EXPECT_EQ(f.CmdQuitte_Click(), FrmPlateau::Unload::EndProgram);
    EXPECT_EQ(fake.boxes.shown.back().text, "        Quitter le programme ?");
    Options saved;
    EXPECT_TRUE(ReadOptions(dir.path() / "Option.ret", saved) && saved == program.options);
    return true;
  }
};

TEST_F(WholeGame, ShortBagRunsOutAndEntersTheTable) {
  ASSERT_TRUE(PlayToTheEnd("AAAABEEEGIILLNNOST?"));
  // Each drop played sound 1, each search sound 3.
  EXPECT_EQ(std::count(fake.sounds.played.begin(), fake.sounds.played.end(), 101), 19);
  EXPECT_EQ(std::count(fake.sounds.played.begin(), fake.sounds.played.end(), 103), form->IntNbCoups);
}

TEST_F(WholeGame, NormalBagWithRandomDrawsRunsOut) {
  // Some draws leave a rack that no play empties; the first seed whose
  // random draws run out is played to its end.
  bool finished = false;
  for (uint64_t seed = 1; seed <= 12 && !finished; ++seed) {
    Rng picks(seed);
    forms.randomPicks = &picks;
    forms.boiteD.clear();
    program.engine.Random.Seed(seed);
    finished = PlayToTheEnd("");
  }
  EXPECT_TRUE(finished);
  EXPECT_GE(form->IntNbCoups, 15);
}

TEST_F(WholeGame, ThePlayerStopsTheGame) {
  for (const int plays : {1, 2}) {
    FrmPlateau& f = Load();
    f.CmdNew_Click();
    ASSERT_EQ(PlayOut(plays), plays);
    const std::string bagShown = f.LblLetReste.text;
    fake.boxes.answers = {Answer::No};  // No keeps the game as it stands
    f.CmdArret_Click();
    EXPECT_EQ(fake.boxes.shown.back().text, kAbandon);
    EXPECT_TRUE(fake.boxes.shown.back().style.defaultNo && f.CmdArret.visible && run.journal->Exists());
    f.CmdArret_Click();  // Yes
    EXPECT_FALSE(run.journal->Exists());
    EXPECT_EQ(f.BlnAbandon, -1);
    EXPECT_EQ(f.TxtHisto.text + f.LblPtsJoueur.text + f.LblTirage.text + f.LblDuree.text, "000:00:00");
    EXPECT_EQ(f.LblLetReste.text, plays == 1 ? bagShown : "");  // the bag's display goes from the second play
    EXPECT_EQ(f.LblIndic.text,
              "Pour commencer une nouvelle\r\npartie, cliquez sur le bouton\r\n''Nouvelle partie''");
    EXPECT_FALSE(f.CmdArret.visible || f.CmdSolution.enabled || f.CmdValider.enabled || f.CmdNew.enabled);
    EXPECT_TRUE(f.CmdGame.visible && f.CmdGame.enabled);
    for (const Tile& tile : f.PicGamer) EXPECT_FALSE(tile.enabled || tile.visible);
    // The drawn board is cleared; the engine's board is not.
    EXPECT_EQ(std::count(f.Plateau.squares.begin(), f.Plateau.squares.end(), ""), 225);
    EXPECT_FALSE(f.ObjPlateau->IsEmpty() || f.ImgXY.visible);
    // A stop writes no best score; going to a new game asks nothing.
    fake.timers.Advance(5000);
    EXPECT_FALSE(std::filesystem::exists(dir.path() / "bestsco.ret"));
    const size_t boxes = fake.boxes.shown.size();
    EXPECT_EQ(f.CmdGame_Click(), FrmPlateau::Unload::ToPartie);
    EXPECT_EQ(fake.boxes.shown.size(), boxes);
  }
}

TEST_F(WholeGame, LeavingFromThePickerEndsTheProgram) {
  FrmPlateau& f = Load();
  f.CmdNew_Click();
  ASSERT_EQ(PlayOut(2), 2);
  program.options.OptSons = false;
  forms.onJetons = [&](FrmJetons& jetons) {
    jetons.CmdJeton_Click(1);
    fake.boxes.answers = {Answer::No};
    jetons.CmdQ_Click();  // No: the picking goes on
    EXPECT_FALSE(jetons.closed || std::filesystem::exists(dir.path() / "Option.ret"));
    EXPECT_TRUE(run.journal->Exists());
    jetons.CmdQ_Click();  // Yes
  };
  const size_t searches = forms.boiteD.size();
  ASSERT_EQ(PlayOut(1), 1);
  EXPECT_EQ(fake.boxes.shown.back().text, kAbandon);
  EXPECT_TRUE(fake.boxes.shown.back().style.defaultNo);
  EXPECT_EQ(forms.endProgram, 1);
  EXPECT_TRUE(f.ended && !f.visible && !run.journal->Exists());
  EXPECT_EQ(forms.boiteD.size(), searches);  // no search after leaving
  EXPECT_EQ(ReadFile(dir.path() / "Option.ret"),
            "Non\r\n3\r\n120\r\nSonNo\r\nDureeYes\r\n"
            "Img plateau 2\r\nDef mots 23 1\r\nEncadrement 1\r\nResolutionE 0\r\n");
}

TEST_F(WholeGame, TheTourAccompaniesTheFirstGame) {
  program.options.OptMessages = "Oui";
  FrmPlateau& f = Load("AAAABEEEGIILLNNOST?");
  EXPECT_EQ(forms.tourSteps, (std::vector<int>{1}));
  f.CmdNew_Click();
  EXPECT_EQ(forms.tourSteps, (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(program.BytVisite, 3);
  ASSERT_EQ(PlayOut(1), 1);
  EXPECT_EQ(forms.tourSteps, (std::vector<int>{1, 2, 3, 4, 5}));
  // Step 5 tells the word between its quotes, and its points.
  const std::string line = f.TxtHisto.text;
  EXPECT_EQ(program.StrMsg, "\r\nLe mot ''" + line.substr(3, line.find(' ', 3) - 3) +
                                "'' a été validé et rapporte " + line.substr(line.find_last_of(' ') + 1) +
                                " points.\r\n\r\nPour continuer la partie, le joueur suivant doit indiquer "
                                "au programme les lettres qu'il a piochées.");
}

}  // namespace
}  // namespace ostrane::test
