// The record of a game: plays taken back one after the other to the first
// draw, each time to exactly the state the game had then (and its proposal
// again); a draw made again; the game written to its file and played again
// from it to the same state; the text of a known game; files that are not
// games, are cut short or hold a play that cannot be laid.
#include <gtest/gtest.h>

#include "board_view/replay.h"
#include "game/game_export.h"
#include "game/game_record.h"
#include "game/quiet_host.h"
#include "lexicon/tables.h"
#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

std::string Upper(std::string text) {
  for (char& c : text) c = UpperAscii(c);
  return text;
}

// What a state of the game is, the clock apart (time does not move in these
// games, but a state is what the player sees of the game itself).
std::string GameOf(SavedGame game) {
  game.BytChronoActif = game.BytChronoDemande = 0;
  game.VarSecondes = game.VarMinutes = game.VarHeures = 0;
  game.LblTimer = game.LblDuree = "";
  return FormatSavedGame(game);
}

class Record : public GameTest {
 protected:
  // A game on the whole bag, its tiles picked at random with `seed`, with
  // its record; each turn's state and proposal kept before its play.
  void Start(uint64_t seed, const std::string& bag = {}) {
    picks_ = std::make_unique<Rng>(seed);
    forms.randomPicks = picks_.get();
    Load(bag);
    record_ = std::make_unique<GameRecord>(*form, fake.clock);
    form->CmdNew_Click();
  }
  int PlayTurns(int turns) {
    int played = 0;
    for (; played < turns && form->CmdSolution.enabled && form->Proposition; ++played) {
      states_.push_back(GameOf(form->Snapshot()));
      proposals_.push_back(*form->Proposition);
      if (!LayProposition() || !form->CmdValider.enabled) break;
      form->CmdValider_Click();
    }
    return played;
  }
  std::unique_ptr<Rng> picks_;
  std::unique_ptr<GameRecord> record_;
  std::vector<std::string> states_;
  std::vector<ClsWord> proposals_;
};

TEST_F(Record, EveryPlayTakenBackBringsTheGameBackAsItWasAndItsProposalAgain) {
  for (const uint64_t seed : {3u, 17u, 41u}) {
    states_.clear();
    proposals_.clear();
    Start(seed);
    const int plays = PlayTurns(12);
    ASSERT_GE(plays, 6);
    EXPECT_EQ(record_->Plays(), plays);
    for (int k = plays - 1; k >= 0; --k) {
      ASSERT_TRUE(record_->CanUndo());
      record_->Undo();
      ASSERT_EQ(GameOf(form->Snapshot()), states_[size_t(k)]) << "seed " << seed << " play " << k + 1;
      ASSERT_TRUE(form->Proposition.has_value());
      EXPECT_EQ(*form->Proposition, proposals_[size_t(k)]);
      // The journal follows at once.
      EXPECT_EQ(GameOf(*run.journal->Load()), states_[size_t(k)]);
    }
    EXPECT_FALSE(record_->CanUndo());
    EXPECT_EQ(form->IntNbCoups, 0);
    EXPECT_TRUE(form->ObjPlateau->IsEmpty() && form->ObjPlateau->SubWordFirst());
    // And the game goes on from there, as it went the first time.
    ASSERT_TRUE(LayProposition());
    form->CmdValider_Click();
    EXPECT_EQ(form->IntNbCoups, 1);
  }
}

TEST_F(Record, TheEndOfAGameIsTakenBackUntilTheScoreGoesToTheTable) {
  Start(5, "AAAABEEEGIILLNNOST?");
  PlayTurns(20);
  ASSERT_FALSE(form->CmdSolution.enabled);  // the short bag ran out
  const int score = std::atoi(form->LblPtsJoueur.text.c_str());
  ASSERT_TRUE(record_->CanUndo());
  record_->Undo();
  EXPECT_TRUE(form->CmdSolution.enabled && form->CmdArret.visible && !form->CmdGame.visible);
  EXPECT_EQ(std::atoi(form->LblPtsJoueur.text.c_str()), score - proposals_.back().CountP);
  fake.timers.Advance(FrmPlateau::kTimFrmFin + FrmPlateau::kTimScore);
  EXPECT_TRUE(forms.finiScores.empty());  // the end's boxes do not come
  // Played again to the end, and this time the score goes to the table.
  ASSERT_TRUE(LayProposition());
  form->CmdValider_Click();
  fake.timers.Advance(FrmPlateau::kTimFrmFin);
  fake.timers.Advance(FrmPlateau::kTimScore);
  EXPECT_EQ(forms.finiScores.size(), 1u);
  EXPECT_FALSE(record_->CanUndo());
}

TEST_F(Record, ADrawMadeAgainPutsItsTilesBackAndOpensThePicker) {
  Start(9);
  PlayTurns(2);
  const std::string before = form->Snapshot().StrSac;
  std::string rack;
  for (const Tile& t : form->PicGamer) rack += t.Tag;
  ASSERT_TRUE(record_->CanCorrectDraw());
  // The picker this time takes the bag's first letters.
  forms.randomPicks = nullptr;
  const int pickers = forms.jetonsShown;
  record_->CorrectDraw();
  EXPECT_EQ(forms.jetonsShown, pickers + 1);
  std::string again;
  for (const Tile& t : form->PicGamer) again += t.Tag;
  std::string bagNow = form->Snapshot().StrSac + again, bagBefore = before + rack;
  std::sort(bagNow.begin(), bagNow.end(), [](char a, char b) { return UpperAscii(a) < UpperAscii(b); });
  std::sort(bagBefore.begin(), bagBefore.end(), [](char a, char b) { return UpperAscii(a) < UpperAscii(b); });
  EXPECT_EQ(Upper(bagNow), Upper(bagBefore));  // the same tiles in all
  EXPECT_EQ(form->IntNbCoups, 2);
  EXPECT_EQ(record_->Turns().size(), 3u);
  EXPECT_TRUE(form->Proposition.has_value());  // searched
  // A play laid, not validated: the draw may still be made again; once
  // validated, no longer (the next draw's may).
  ASSERT_TRUE(LayProposition());
  EXPECT_TRUE(record_->CanCorrectDraw());
  form->CmdValider_Click();
  EXPECT_TRUE(record_->CanCorrectDraw());
  EXPECT_EQ(record_->Turns()[2].play->Express, proposals_.empty() ? "" : record_->Turns()[2].play->Express);
}

TEST_F(Record, AGameWrittenToItsFileIsPlayedAgainToTheSameState) {
  for (const uint64_t seed : {2u, 13u}) {
    for (const bool toTheEnd : {false, true}) {
      states_.clear();
      Start(seed, toTheEnd ? "AACEEEEEEIMNRSSSTU" : "");
      PlayTurns(toTheEnd ? 30 : 7);
      const std::string text = FormatGameFile(record_->File());
      std::string error;
      const std::optional<GameFile> read = ParseGameFile(text, error);
      ASSERT_TRUE(read.has_value()) << error << "\n" << text;
      EXPECT_EQ(FormatGameFile(*read), text);  // byte for byte
      const std::optional<Replayed> replayed =
          Replay(RealLexicon(), nullptr, program.options, *read, error);
      ASSERT_TRUE(replayed.has_value()) << error << "\n" << text;
      EXPECT_EQ(GameOf(replayed->state), GameOf(form->Snapshot()));
      EXPECT_EQ(replayed->finished, !form->CmdSolution.enabled);
      EXPECT_EQ(replayed->turns.size(), record_->Turns().size());
      // The opened game continues in a form of its own: its record is whole.
      GameRun opened(dir.path() / "opened");
      std::filesystem::create_directories(dir.path() / "opened");
      FrmPlateau& other = opened.Load();
      GameRecord otherRecord(other, opened.fake.clock);
      other.Restore(replayed->state, replayed->finished);
      otherRecord.Adopt(*read, replayed->turns);
      EXPECT_EQ(FormatGameFile(otherRecord.File()), text);
      if (!replayed->finished) {
        EXPECT_EQ(*other.Proposition, *form->Proposition);
        ASSERT_TRUE(otherRecord.CanUndo());
        otherRecord.Undo();
        EXPECT_EQ(other.IntNbCoups, form->IntNbCoups - 1);
      } else {
        EXPECT_EQ(other.LblIndic.text, "\r\nFin de la partie.");
        EXPECT_FALSE(otherRecord.CanUndo());
      }
    }
  }
}

TEST_F(Record, AKnownGameReadsAsPlainText) {
  Start(7, "AACEEEEEEIMNRSSSTU");
  fake.clock.now = DateTime{2026, 11, 24, 15, 30, 0};
  PlayTurns(30);
  ASSERT_FALSE(form->CmdSolution.enabled);  // played to the end of the short bag
  GameFile file = record_->File();
  file.date = DateTime{2026, 11, 24, 15, 30, 0};
  EXPECT_EQ(GameText(file), ReadFile(std::filesystem::path(OSTRANE_SOURCE_DIR) / "tests/game/data/partie_courte.txt"));
}

TEST_F(Record, FilesThatAreNotGamesAreCutShortOrCannotBePlayedSayWhere) {
  Start(2);
  PlayTurns(3);
  const std::string good = FormatGameFile(record_->File());
  const auto errorOf = [&](const std::string& text) {
    std::string error;
    const std::optional<GameFile> read = ParseGameFile(text, error);
    if (read && !Replay(RealLexicon(), nullptr, program.options, *read, error)) return error;
    return read ? std::string("(read)") : error;
  };
  EXPECT_EQ(errorOf("Ostrane partie 1\r\nNom=x\r\n"), std::string(kNotAGame) + " (ligne 1)");
  EXPECT_EQ(errorOf("%PDF-1.4 binaire\x01\x02"), std::string(kNotAGame) + " (ligne 1)");
  // Cut in the middle of the third line's turn.
  const size_t cut = good.find("Coup=", good.find("Coup=") + 1);
  const std::string cutShort = "Le fichier s'arrête avant sa fin";
  EXPECT_EQ(errorOf(good.substr(0, cut)).substr(0, cutShort.size()), cutShort);
  // A play whose points were changed, and a draw of a letter the bag lacks.
  std::string points = good;
  const size_t coup = points.find("Coup=");
  const size_t end = points.find("\r\n", coup);
  const size_t space = points.rfind(' ', end);
  points.replace(space + 1, end - space - 1, "999");
  const int line = int(std::count(good.begin(), good.begin() + std::ptrdiff_t(coup), '\n')) + 1;
  EXPECT_EQ(errorOf(points).substr(0, 8 + std::to_string(line).size()), "Ligne " + std::to_string(line) + " :");
  EXPECT_NE(errorOf(points).find("et non 999"), std::string::npos);
  std::string letters = good;
  const size_t tirage = letters.find("Tirage=");
  letters.replace(tirage + 7, 2, "ZZ");
  EXPECT_NE(errorOf(letters).find("n'est plus dans le sac"), std::string::npos);
  EXPECT_EQ(errorOf(good), "(read)");
}

}  // namespace
}  // namespace ostrane::test
