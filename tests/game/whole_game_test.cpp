// Whole games played through the models as a player plays them through the
// windows: picks clicked in, the proposed play laid with drag gestures,
// validation clicked, boxes closed.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

#include "lexicon/tables.h"
#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  size_t start = 0;
  while (start <= text.size()) {
    const size_t end = text.find("\r\n", start);
    lines.push_back(text.substr(start, end == std::string::npos ? std::string::npos : end - start));
    if (end == std::string::npos) break;
    start = end + 2;
  }
  return lines;
}

// The tiles of a bag string, blanks as '?'.
std::map<char, int> Tiles(const std::string& bag) {
  std::map<char, int> tiles;
  for (const char c : bag) ++tiles[c];
  return tiles;
}

// The tiles lying on the board: a lower-case letter is its tile, an
// upper-case one a blank.
std::map<char, int> BoardTiles(const ClsPlateau& board) {
  std::map<char, int> tiles;
  for (int y = 0; y < 15; ++y)
    for (int x = 0; x < 15; ++x) {
      const char c = board.Square(x, y);
      if (c == 0) continue;
      ++tiles[c >= 'a' ? char(c - 32) : '?'];
    }
  return tiles;
}

std::string NormalBag() {
  std::string bag;
  for (size_t i = 0; i + 2 < StrPioche.size(); i += 3)
    bag.append(size_t((StrPioche[i] - '0') * 10 + StrPioche[i + 1] - '0'), StrPioche[i + 2]);
  return bag;
}

class WholeGame : public GameTest {
 protected:
  // Checks the end of a game that ran out, and goes on through FrmFini and
  // the table of best scores.
  void FinishAndCheck(const std::string& startBag, int plays) {
    FrmPlateau& f = *form;
    // Every tile of the bag lies on the board, none anywhere else.
    EXPECT_EQ(program.StrSac, "");
    EXPECT_EQ(program.BlnSacVide, -1);
    for (const Tile& tile : f.PicGamer) EXPECT_EQ(tile.Tag, "");
    EXPECT_EQ(BoardTiles(*f.ObjPlateau), Tiles(startBag));
    for (int y = 0; y < 15; ++y)
      for (int x = 0; x < 15; ++x) EXPECT_EQ(f.Plateau.Square(x, y), f.ObjPlateau->SubCase(x, y));

    // One history line a play, columns aligned, points adding up to the score.
    const std::vector<std::string> lines = Lines(f.TxtHisto.text);
    ASSERT_EQ(int(lines.size()), plays);
    EXPECT_EQ(f.IntNbCoups, plays);
    long sum = 0;
    for (size_t i = 0; i < lines.size(); ++i) {
      const std::string& line = lines[i];
      ASSERT_EQ(line.size(), 21u) << line;
      char number[3];
      std::snprintf(number, sizeof number, "%02d", int(i + 1));
      EXPECT_EQ(line.substr(0, 3), std::string(number) + " ");
      std::string word = line.substr(3, 15);
      word.erase(word.find_last_not_of(' ') + 1);
      EXPECT_TRUE(f.ObjMots.SubWordIsTrue(word)) << word;
      sum += std::stol(line.substr(18));
    }
    EXPECT_EQ(std::to_string(sum), f.LblPtsJoueur.text);

    // Natural end: the game's controls close.
    EXPECT_FALSE(f.CmdSolution.enabled || f.CmdArret.visible || f.CmdValider.enabled || f.PicWait.visible);
    EXPECT_TRUE(f.CmdGame.visible);
    EXPECT_EQ(f.CmdArret.caption, "Nouvelle partie");
    for (const Tile& tile : f.PicGamer) EXPECT_FALSE(tile.enabled);
    EXPECT_EQ(std::count(fake.sounds.played.begin(), fake.sounds.played.end(), 106), 1);

    // A second later FrmFini shows the score; its closing arms the best scores.
    EXPECT_TRUE(forms.finiScores.empty());
    fake.timers.Advance(FrmPlateau::kTimFrmFin);
    ASSERT_EQ(forms.finiScores.size(), 1u);
    EXPECT_EQ(forms.finiScores[0], f.LblPtsJoueur.text + " points");
    EXPECT_EQ(f.LblIndic.text, "\r\nFin de la partie.");
    EXPECT_TRUE(f.CmdGame.enabled);

    fake.timers.Advance(FrmPlateau::kTimScore);
    const std::string score = f.LblPtsJoueur.text;
    EXPECT_TRUE(fake.boxes.Showed("Vous avez réalisé un score de " + score +
                                  " points.\r\n\r\nVoulez-vous inscrire ce résultat dans le tableau      "
                                  "\r\nrécapitulant les trente meilleurs scores ?"));
    ASSERT_EQ(forms.bestShown, 1);
    const std::string best = ReadFile(dir.path() / "bestsco.ret");
    ASSERT_EQ(best.size(), 46u) << best;
    EXPECT_EQ(best.substr(0, 7), score + std::string(7 - score.size(), ' '));
    EXPECT_EQ(best.substr(7, 18), "Partie tabli 01   ");
    ASSERT_EQ(forms.bestLists.back().size(), 1u);
    EXPECT_EQ(forms.bestLists.back()[0], "001  " + best.substr(0, 44));
    EXPECT_TRUE(f.enabled);

    // Leaving asks only to quit, as the bag was found empty, and saves the options.
    EXPECT_EQ(f.CmdQuitte_Click(), FrmPlateau::Unload::EndProgram);
    EXPECT_EQ(fake.boxes.shown.back().text, "        Quitter le programme ?");
    EXPECT_EQ(ReadFile(dir.path() / "Option.ret"),
              "Non\r\n3\r\n120\r\nSonYes\r\nDureeYes\r\nImg plateau 2\r\nDef mots 23 1\r\nEncadrement 1\r\n"
              "ResolutionE 0\r\n");
  }
};

TEST_F(WholeGame, ShortBagRunsOutAndEntersTheTable) {
  const std::string bag = "AAAABEEEGIILLNNOST?";
  FrmPlateau& f = Load(bag);
  EXPECT_EQ(f.LblLetReste.text, "\r\n" + bag);
  f.CmdNew_Click();
  EXPECT_EQ(forms.jetonsShown, 1);
  const int plays = PlayOut();
  ASSERT_GE(plays, 2);
  // Every play was the one proposed; one blank at most, so its points stand.
  ASSERT_EQ(int(forms.boiteD.size()), plays);
  const std::vector<std::string> lines = Lines(f.TxtHisto.text);
  for (int i = 0; i < plays; ++i) {
    const std::string& shown = forms.boiteD[size_t(i)];
    const std::string word = shown.substr(0, shown.find('|'));
    const std::string points = shown.substr(shown.find('|', shown.find('|') + 1) + 1);
    EXPECT_EQ(lines[size_t(i)].substr(3, word.size()), word);
    EXPECT_EQ(std::stoi(lines[size_t(i)].substr(18)), std::stoi(points));
  }
  // Each drop played sound 1, each search sound 3.
  long drops = std::count(fake.sounds.played.begin(), fake.sounds.played.end(), 101);
  EXPECT_EQ(drops, 19);
  EXPECT_EQ(std::count(fake.sounds.played.begin(), fake.sounds.played.end(), 103), plays);
  FinishAndCheck(bag, plays);
}

TEST_F(WholeGame, NormalBagWithRandomDrawsRunsOut) {
  // Some draws leave a rack that no play empties; a real bag's random draws
  // run out for most seeds, and the first that does is played to its end.
  bool finished = false;
  for (uint64_t seed = 1; seed <= 12 && !finished; ++seed) {
    Rng picks(seed);
    forms.randomPicks = &picks;
    program.engine.Random.Seed(seed);
    FrmPlateau& f = Load();
    ASSERT_EQ(program.StrSac, NormalBag());
    EXPECT_EQ(f.LblLetReste.text.substr(0, 36), std::string("AAAAAAAAABBCCDDDEEEEEEEEEEEEEEEFFG") + "\r\n");
    f.CmdNew_Click();
    const int plays = PlayOut(80);
    if (!f.CmdGame.visible) continue;  // stuck with a rack that has no play
    finished = true;
    EXPECT_GE(plays, 15);
    FinishAndCheck(NormalBag(), plays);
  }
  EXPECT_TRUE(finished);
}

TEST_F(WholeGame, PlayerStopsAfterTwoPlays) {
  FrmPlateau& f = Load();
  f.CmdNew_Click();
  ASSERT_EQ(PlayOut(2), 2);
  ASSERT_TRUE(f.CmdArret.visible);
  const std::string bagShown = f.LblLetReste.text;
  ASSERT_FALSE(bagShown.empty());

  // No keeps the game as it stands.
  fake.boxes.answers = {Answer::No};
  f.CmdArret_Click();
  EXPECT_EQ(fake.boxes.shown.back().text, "Voulez-vous abandonner la partie en cours ?   ");
  EXPECT_TRUE(fake.boxes.shown.back().style.defaultNo);
  EXPECT_TRUE(f.CmdArret.visible);
  EXPECT_NE(f.TxtHisto.text, "");

  f.CmdArret_Click();  // Yes
  EXPECT_EQ(f.BlnAbandon, -1);
  EXPECT_EQ(f.TxtHisto.text, "");
  EXPECT_EQ(f.LblPtsJoueur.text, "0");
  EXPECT_EQ(f.LblTirage.text, "0");
  EXPECT_EQ(f.LblLetReste.text, "");  // two plays made: the bag's display goes
  EXPECT_EQ(f.LblDuree.text, "0:00:00");
  EXPECT_EQ(f.LblIndic.text,
            "Pour commencer une nouvelle\r\npartie, cliquez sur le bouton\r\n''Nouvelle partie''");
  EXPECT_FALSE(f.CmdArret.visible || f.CmdSolution.enabled || f.CmdValider.enabled || f.CmdNew.enabled);
  EXPECT_TRUE(f.CmdGame.visible && f.CmdGame.enabled);
  for (const Tile& tile : f.PicGamer) EXPECT_FALSE(tile.enabled || tile.visible);
  // The drawn board is cleared; the engine's board is not.
  EXPECT_EQ(f.Plateau.image, 2);
  for (const std::string& square : f.Plateau.squares) EXPECT_EQ(square, "");
  EXPECT_FALSE(f.ObjPlateau->IsEmpty());
  EXPECT_FALSE(f.ImgXY.visible);

  // A stop writes no best score; going to a new game asks nothing.
  fake.timers.Advance(5000);
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "bestsco.ret"));
  const size_t boxes = fake.boxes.shown.size();
  EXPECT_EQ(f.CmdGame_Click(), FrmPlateau::Unload::ToPartie);
  EXPECT_EQ(fake.boxes.shown.size(), boxes);
}

TEST_F(WholeGame, StopBeforeTheSecondPlayKeepsTheBagShown) {
  FrmPlateau& f = Load();
  f.CmdNew_Click();
  ASSERT_EQ(PlayOut(1), 1);
  const std::string bagShown = f.LblLetReste.text;
  f.CmdArret_Click();
  EXPECT_EQ(f.LblLetReste.text, bagShown);
}

TEST_F(WholeGame, LeavingFromThePickerEndsTheProgram) {
  FrmPlateau& f = Load();
  program.options.OptSons = false;
  forms.onJetons = [&](FrmJetons& jetons) {
    jetons.CmdJeton_Click(1);
    jetons.CmdJeton_Click(2);
    fake.boxes.answers = {Answer::No};
    jetons.CmdQ_Click();  // No: the picking goes on
    EXPECT_FALSE(jetons.closed);
    EXPECT_FALSE(std::filesystem::exists(dir.path() / "Option.ret"));
    jetons.CmdQ_Click();  // Yes
  };
  f.CmdNew_Click();
  EXPECT_EQ(fake.boxes.shown.back().text, "Voulez-vous abandonner la partie en cours ?   ");
  EXPECT_TRUE(fake.boxes.shown.back().style.defaultNo);
  EXPECT_EQ(forms.endProgram, 1);
  EXPECT_TRUE(f.ended);
  EXPECT_FALSE(f.visible);
  EXPECT_TRUE(forms.boiteD.empty());  // no search after leaving
  EXPECT_EQ(ReadFile(dir.path() / "Option.ret"),
            "Non\r\n3\r\n120\r\nSonNo\r\nDureeYes\r\nImg plateau 2\r\nDef mots 23 1\r\nEncadrement 1\r\n"
            "ResolutionE 0\r\n");
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
  const std::string line = Lines(f.TxtHisto.text)[0];
  std::string word = line.substr(3, 15);
  word.erase(word.find_last_not_of(' ') + 1);
  const std::string points = line.substr(line.find_last_of(' ') + 1);
  EXPECT_EQ(program.StrMsg,
            "\r\nLe mot ''" + word + "'' a été validé et rapporte " + points +
                " points.\r\n\r\nPour continuer la partie, le joueur suivant doit indiquer au "
                "programme les lettres qu'il a piochées.");
}

}  // namespace
}  // namespace ostrane::test
