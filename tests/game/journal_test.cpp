// The game kept on disk: games played through the models whose program
// "crashes" (its models dropped without any closing) at a turn boundary or
// in the middle of a draw, then a new program takes the game up from the
// journal and finishes it exactly as the same game played without a break.
// Also when the journal goes (a natural end, a stop, leaving with Yes, a new
// game) and when it stays (No, a fatal end).
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <tuple>

#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

// The player's hand at the picker, the same over every run of the program:
// picks at random the first time and remembers each draw, or gives the
// draws remembered, in order.
struct Player {
  Rng* random = nullptr;
  std::vector<std::string> draws;
  size_t next = 0;
  int crashAtDraw = -1;  // the program dies after two picks of this draw (0 the first)
};

struct Crash {};

// One run of the program in a start directory: its host, its shared values,
// the player's modal forms, the journal and the main form.
struct ProgramRun {
  ProgramRun(const std::filesystem::path& dir, Player& player)
      : program(RealLexicon(), fake.host), forms(fake) {
    program.CheminApp = dir;
    program.NomPartie = "Partie tabli 04";
    program.options.OptMessages = "Non";
    program.engine.Random.Seed(7);
    forms.program = &program;
    journal = std::make_unique<GameJournal>(program.JournalFile());
    forms.onJetons = [this, &player](FrmJetons& jetons) { Pick(jetons, player); };
  }

  void Pick(FrmJetons& jetons, Player& player) {
    const int draw = int(player.next);
    if (player.random && draw == int(player.draws.size())) {
      ScriptedForms::PickInBagOrder(jetons, program, player.random);
      std::string letters;
      for (int k = 0; k <= program.IntNbTire; ++k) letters += program.TabTirage[size_t(k)];
      player.draws.push_back(letters);
    } else {
      ASSERT_LT(player.next, player.draws.size());
      const std::string& letters = player.draws[player.next];
      for (size_t k = 0; k < letters.size(); ++k) {
        if (draw == player.crashAtDraw && k == 2) {
          player.crashAtDraw = -1;
          throw Crash{};
        }
        const int index = letters[k] == '?' ? FrmJetons::kBlank : letters[k] - 'A' + 1;
        ASSERT_TRUE(jetons.CmdJeton[size_t(index)].enabled) << letters;
        jetons.CmdJeton_Click(index);
      }
      ASSERT_TRUE(jetons.CmdValider.enabled);
      jetons.CmdValider_Click();
    }
    ++player.next;
  }

  FrmPlateau& Make() {
    form = std::make_unique<FrmPlateau>(program, forms);
    form->Randomize = nullptr;
    form->journal = journal.get();
    drag = std::make_unique<TileDrag>(*form);
    return *form;
  }
  // A new game, on the start bag of OptPioche `pioche`.
  FrmPlateau& Begin(int pioche = 0) {
    program.IntPioche = int16_t(pioche);
    Make().Form_Load();
    fake.timers.Advance(FrmPlateau::kTimDeb);
    form->CmdNew_Click();
    return *form;
  }
  // The start of a later run: the question, answered Yes, and the kept game
  // taken up by the main form.
  FrmPlateau& TakeUp() {
    program.engine.Random.Seed(1234);  // a new program's generator stands elsewhere
    fake.boxes.answers = {Answer::Yes};
    std::optional<SavedGame> game = OfferResume(program, *journal);
    EXPECT_TRUE(game.has_value());
    Make();
    if (game) form->TakeUp(*game);
    form->Form_Load();
    fake.timers.Advance(FrmPlateau::kTimDeb);
    return *form;
  }

  // Lays and validates the proposed play, `turns` times at most, while the
  // game runs. Returns the plays made.
  int Play(int turns) {
    int plays = 0;
    while (plays < turns && form->CmdSolution.enabled && form->Proposition) {
      const bool laid = LayWord(*form, *drag, *form->Proposition, [this](char letter) {
        forms.jokerLetters.push_back(std::string(1, letter));
      });
      if (!laid || !form->CmdValider.enabled) break;
      form->CmdValider_Click();
      ++plays;
    }
    return plays;
  }

  std::string Board() const {
    std::string squares;
    for (int y = 0; y < 15; ++y)
      for (int x = 0; x < 15; ++x)
        squares += form->ObjPlateau->Square(x, y) ? form->ObjPlateau->Square(x, y) : '.';
    return squares;
  }

  FakeHost fake;
  Program program;
  ScriptedForms forms;
  std::unique_ptr<GameJournal> journal;
  std::unique_ptr<FrmPlateau> form;
  std::unique_ptr<TileDrag> drag;
};

// How a game ended.
struct Outcome {
  std::string history, score, board, bag;
  bool finished = false;
  bool operator==(const Outcome&) const = default;
};

Outcome OutcomeOf(const ProgramRun& run) {
  return Outcome{run.form->TxtHisto.text, run.form->LblPtsJoueur.text, run.Board(), run.program.StrSac,
                 run.form->CmdGame.visible && !run.form->CmdArret.visible && run.program.BlnSacVide == -1};
}

class KeptGame : public ::testing::Test {
 public:
  std::filesystem::path Folder(const std::string& name) {
    const std::filesystem::path folder = dir.path() / name;
    std::filesystem::create_directories(folder);
    return folder;
  }

 protected:
  TempDir dir;
};

// ---------------------------------------------------- a crash and the take-up

// Plays a whole game without a break, then the same game (same picks, same
// seed) with the program killed at each given moment and taken up again.
void CrashAndCompare(KeptGame& test, uint64_t seed, int pioche, int crashAfterPlays, bool inThePicker) {
  SCOPED_TRACE("seed " + std::to_string(seed) + ", bag " + std::to_string(pioche) + ", crash after " +
               std::to_string(crashAfterPlays) + (inThePicker ? " plays, in the picker" : " plays"));
  Rng random(seed);
  Player player;
  player.random = &random;
  const std::string tag = std::to_string(seed) + "-" + std::to_string(pioche) + "-" +
                          std::to_string(crashAfterPlays) + (inThePicker ? "p" : "");
  Outcome whole;
  std::vector<std::string> proposals;
  {
    ProgramRun run(test.Folder("whole-" + tag), player);
    run.Begin(pioche);
    run.Play(200);
    whole = OutcomeOf(run);
    proposals = run.forms.boiteD;
  }
  ASSERT_GT(int(proposals.size()), crashAfterPlays);

  player.next = 0;
  player.random = nullptr;
  const std::filesystem::path folder = test.Folder("broken-" + tag);
  std::string shownBeforeTheCrash;
  {
    ProgramRun first(folder, player);
    if (inThePicker) player.crashAtDraw = crashAfterPlays;
    try {
      first.Begin(pioche);
      first.Play(crashAfterPlays);
      ASSERT_FALSE(inThePicker) << "the picker went through";
    } catch (const Crash&) {
      ASSERT_TRUE(inThePicker);
    }
    if (!first.forms.boiteD.empty()) shownBeforeTheCrash = first.forms.boiteD.back();
    ASSERT_TRUE(first.journal->Exists());
    // The program dies here: nothing is closed, nothing asked.
  }
  // The player's next draw: the one cut short, or the one after the kept rack's.
  EXPECT_EQ(player.next, size_t(crashAfterPlays + (inThePicker ? 0 : 1)));

  const std::optional<SavedGame> kept = GameJournal(folder / "partie.ret").Load();
  ASSERT_TRUE(kept.has_value());
  EXPECT_EQ(kept->IntNbCoups, crashAfterPlays);
  EXPECT_EQ(kept->Chevalet.empty(), inThePicker);
  ProgramRun second(folder, player);
  // At the picker, the form taken up is the kept game, field for field.
  int pickers = 0;
  second.forms.onJetons = [&](FrmJetons& jetons) {
    if (pickers++ == 0 && inThePicker) {
      EXPECT_EQ(second.form->Snapshot(), *kept);
    }
    second.Pick(jetons, player);
  };
  FrmPlateau& form = second.TakeUp();
  if (!inThePicker) {
    // The rack was drawn: the same tiles, no picker, the same best play.
    EXPECT_EQ(second.forms.jetonsShown, 0);
    ASSERT_EQ(second.forms.boiteD.size(), 1u);
    EXPECT_EQ(second.forms.boiteD[0], shownBeforeTheCrash);
  } else {
    EXPECT_EQ(second.forms.jetonsShown, 1);
  }
  EXPECT_EQ(second.forms.boiteD.back(), proposals[size_t(crashAfterPlays)]);
  EXPECT_EQ(form.IntNbCoups, crashAfterPlays);
  second.Play(200);
  const Outcome resumed = OutcomeOf(second);
  EXPECT_EQ(resumed, whole) << resumed.history << "\n---\n" << whole.history;
  if (resumed.finished) {
    // The natural end took the journal away, and the game went on to its score.
    EXPECT_FALSE(second.journal->Exists());
    second.fake.timers.Advance(FrmPlateau::kTimFrmFin);
    second.fake.timers.Advance(FrmPlateau::kTimScore);
    ASSERT_EQ(second.forms.finiScores.size(), 1u);
    EXPECT_EQ(second.forms.finiScores[0], whole.score + " points");
    std::ifstream best(folder / "bestsco.ret", std::ios::binary);
    std::string line;
    ASSERT_TRUE(std::getline(best, line));
    EXPECT_EQ(line.substr(0, 25),
              whole.score + std::string(7 - whole.score.size(), ' ') + "Partie tabli 04   ");
  } else {
    EXPECT_TRUE(second.journal->Exists());  // stuck with no play: the game is still there
  }
}

TEST_F(KeptGame, ACrashAfterTheDrawLosesNothing) {
  for (const auto& [seed, pioche, crash] : std::vector<std::tuple<uint64_t, int, int>>{
           {3, 0, 0}, {3, 0, 4}, {5, 0, 9}, {8, 0, 1}, {2, 3, 1}, {4, 1, 2}})
    CrashAndCompare(*this, seed, pioche, crash, false);
}

TEST_F(KeptGame, ACrashInThePickerLosesNothing) {
  for (const auto& [seed, pioche, crash] :
       std::vector<std::tuple<uint64_t, int, int>>{{3, 0, 2}, {5, 0, 7}, {8, 0, 1}, {2, 3, 1}, {6, 2, 1}})
    CrashAndCompare(*this, seed, pioche, crash, true);
}

TEST_F(KeptGame, TheTakenUpFormIsAGameUnderWay) {
  Rng random(11);
  Player player;
  player.random = &random;
  const std::filesystem::path folder = Folder("game");
  SavedGame kept;
  {
    ProgramRun first(folder, player);
    first.program.options.OptDuree = true;
    FrmPlateau& f = first.Begin();
    ASSERT_EQ(first.Play(3), 3);
    first.fake.timers.Advance(3 * FrmPlateau::kTimerEpie);  // three ticks of the clock, after the last save
    EXPECT_EQ(f.LblDuree.text, "0:00:03");
    std::optional<SavedGame> read = first.journal->Load();
    ASSERT_TRUE(read.has_value());
    kept = *read;
  }
  EXPECT_EQ(kept.IntNbCoups, 3);
  EXPECT_EQ(kept.Chevalet.size(), 7u);
  EXPECT_EQ(kept.LblDuree, "0:00:00");  // the clock as it stood at the draw
  EXPECT_EQ(kept.BytChronoDemande, 1);

  ProgramRun second(folder, player);
  second.program.options.OptMessages = "Oui";  // the tour's first step is for a game to begin
  second.program.NomPartie = "Partie tabli 01";
  FrmPlateau& f = second.TakeUp();
  EXPECT_EQ(second.fake.boxes.shown[0].text,
            "Une partie n'a pas été terminée : « Partie tabli 04 » (3 coups, " + kept.LblPtsJoueur +
                " points).\r\nVoulez-vous la reprendre ?");
  EXPECT_EQ(second.program.NomPartie, "Partie tabli 04");
  EXPECT_EQ(f.LblNomP.text, "Partie tabli 04");
  EXPECT_TRUE(second.forms.tourSteps.empty());
  EXPECT_EQ(second.forms.jetonsShown, 0);
  ASSERT_EQ(second.forms.boiteD.size(), 1u);

  // Everything kept is back: the form's own snapshot is the kept game, and
  // the rack as the draw left it, tile k on place k with its letter's face.
  SavedGame now = f.Snapshot();  // the search since may have moved the engine's memory
  now.ownRowColumn = kept.ownRowColumn;
  now.ownRowRow = kept.ownRowRow;
  now.ownRowSet = kept.ownRowSet;
  now.randomState = kept.randomState;
  EXPECT_EQ(now, kept);
  EXPECT_EQ(f.LblTirage.text, "03");
  for (int y = 0; y < 15; ++y)
    for (int x = 0; x < 15; ++x) EXPECT_EQ(f.Plateau.Square(x, y), f.ObjPlateau->SubCase(x, y));
  for (int k = 0; k < 7; ++k) {
    const Tile& tile = f.PicGamer[size_t(k)];
    EXPECT_TRUE(tile.visible && tile.enabled);
    EXPECT_EQ(tile.left, layout::RackLeft(k));
    EXPECT_EQ(f.TabChevalet[size_t(k)].IntJeton, k);
    EXPECT_EQ(tile.face.index, tile.Tag == "?" ? 26 : tile.Tag[0] - 'a');
  }
  // The game's controls as in any game under way.
  EXPECT_FALSE(f.CmdNew.enabled || f.CmdGame.visible || f.CmdValider.enabled || f.PicWait.visible);
  EXPECT_TRUE(f.CmdArret.visible && f.CmdSolution.enabled && f.enabled && f.LblLetReste.visible);
  EXPECT_TRUE(f.Proposition.has_value() && f.ImgXY.visible);
  EXPECT_GE(second.fake.timers.Running(), 2);  // TimerEpie and the blink

  // The clock goes on from where it was kept.
  second.fake.timers.Advance(FrmPlateau::kTimerEpie);
  EXPECT_EQ(f.LblDuree.text, "0:00:01");

  // Closing asks about the game under way; No keeps the journal, Yes takes it away.
  second.fake.boxes.answers = {Answer::No};
  EXPECT_EQ(f.CmdQuitte_Click(), FrmPlateau::Unload::Cancelled);
  EXPECT_EQ(second.fake.boxes.shown.back().text, "Voulez-vous abandonner la partie en cours ?   ");
  EXPECT_TRUE(second.journal->Exists());
  EXPECT_EQ(f.CmdQuitte_Click(), FrmPlateau::Unload::EndProgram);
  EXPECT_FALSE(second.journal->Exists());
}

TEST_F(KeptGame, TheRoundTripHoldsAtEveryTurnOfPlayedGames) {
  for (uint64_t seed = 1; seed <= 6; ++seed) {
    Rng random(seed);
    Player player;
    player.random = &random;
    ProgramRun run(Folder("game-" + std::to_string(seed)), player);
    // Each picker opens right after a validation's save: the journal is the form's state.
    int checked = 0;
    run.forms.onJetons = [&](FrmJetons& jetons) {
      if (run.journal->Exists()) {
        EXPECT_EQ(run.journal->Load(), run.form->Snapshot());
        ++checked;
      }
      run.Pick(jetons, player);
    };
    run.Begin(int(seed % 4));
    while (run.form->CmdSolution.enabled) {
      const SavedGame now = run.form->Snapshot();
      EXPECT_EQ(ParseSavedGame(FormatSavedGame(now)), now);
      if (run.Play(1) != 1) break;
    }
    EXPECT_GT(checked, 0);
    EXPECT_LE(checked, int(run.form->IntNbCoups));
  }
}

// --------------------------------------------------- when the journal goes

TEST_F(KeptGame, ANaturalEndTakesTheJournalAway) {
  Player player;
  Rng random(1);
  player.random = &random;
  ProgramRun run(Folder("game"), player);
  run.Begin(3);
  run.Play(1);
  EXPECT_TRUE(run.journal->Exists());
  run.Play(200);
  ASSERT_EQ(run.program.BlnSacVide, -1);
  EXPECT_FALSE(run.journal->Exists());
}

TEST_F(KeptGame, AStopAnsweredYesTakesTheJournalAway) {
  Player player;
  Rng random(2);
  player.random = &random;
  ProgramRun run(Folder("game"), player);
  FrmPlateau& f = run.Begin();
  ASSERT_EQ(run.Play(2), 2);
  run.fake.boxes.answers = {Answer::No};
  f.CmdArret_Click();
  EXPECT_TRUE(run.journal->Exists());
  f.CmdArret_Click();
  EXPECT_FALSE(run.journal->Exists());
  // A new game asks nothing and keeps nothing of the old one.
  EXPECT_EQ(f.CmdGame_Click(), FrmPlateau::Unload::ToPartie);
  EXPECT_FALSE(run.journal->Exists());
}

TEST_F(KeptGame, LeavingWithYesTakesTheJournalAway) {
  Player player;
  Rng random(3);
  player.random = &random;
  {
    ProgramRun run(Folder("quit"), player);
    FrmPlateau& f = run.Begin();
    ASSERT_EQ(run.Play(1), 1);
    // One play: closing asks only whether to quit.
    run.fake.boxes.answers = {Answer::No};
    EXPECT_EQ(f.Form_Unload(), FrmPlateau::Unload::Cancelled);
    EXPECT_EQ(run.fake.boxes.shown.back().text, "        Quitter le programme ?");
    EXPECT_TRUE(run.journal->Exists());
    EXPECT_EQ(f.Form_Unload(), FrmPlateau::Unload::EndProgram);
    EXPECT_FALSE(run.journal->Exists());
  }
  {
    player.next = 0;
    ProgramRun run(Folder("picker"), player);
    FrmPlateau& f = run.Begin();
    ASSERT_EQ(run.Play(2), 2);
    run.forms.onJetons = [&](FrmJetons& jetons) {
      jetons.CmdJeton_Click(5);
      run.fake.boxes.answers = {Answer::No};
      jetons.CmdQ_Click();
      EXPECT_TRUE(run.journal->Exists());
      jetons.CmdQ_Click();  // Yes
    };
    ASSERT_TRUE(
        LayWord(f, *run.drag, *f.Proposition, [&](char l) { run.forms.jokerLetters.push_back({l}); }));
    f.CmdValider_Click();
    EXPECT_EQ(run.forms.endProgram, 1);
    EXPECT_FALSE(run.journal->Exists());
  }
  {
    player.next = 0;
    ProgramRun run(Folder("game"), player);
    FrmPlateau& f = run.Begin();
    ASSERT_EQ(run.Play(1), 1);
    EXPECT_EQ(f.CmdGame_Click(), FrmPlateau::Unload::ToPartie);
    EXPECT_FALSE(run.journal->Exists());
  }
}

TEST_F(KeptGame, AFatalEndLeavesTheJournal) {
  Player player;
  Rng random(4);
  player.random = &random;
  const std::filesystem::path folder = Folder("game");
  SavedGame before;
  {
    ProgramRun run(folder, player);
    FrmPlateau& f = run.Begin();
    ASSERT_EQ(run.Play(2), 2);
    before = *run.journal->Load();
    // A tile dropped past the rack's last place ends the program.
    FatalCatcher catcher;
    Tile& tile = f.PicGamer[0];
    run.drag->PicGamer_MouseDown(0, 1, 17, 17, tile.left + 17, tile.top + 17);
    tile.left = layout::kRegletteLeft + 238;
    EXPECT_THROW(run.drag->PicGamer_MouseUp(0, 1), FatalCalled);
    EXPECT_TRUE(run.journal->Exists());
  }
  ProgramRun next(folder, player);
  next.fake.boxes.answers = {Answer::No};
  EXPECT_EQ(next.journal->Load(), before);
  // Answered No at the start, the game is dropped.
  EXPECT_FALSE(OfferResume(next.program, *next.journal).has_value());
  EXPECT_FALSE(next.journal->Exists());
}

}  // namespace
}  // namespace ostrane::test
