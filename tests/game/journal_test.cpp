// The game kept on disk: games played through the models whose program
// "crashes" (its models dropped without any closing) at a turn boundary or
// in the middle of a draw, then a new program takes the game up from the
// journal and finishes it exactly as the same game played without a break.
// Also a new game, which takes the journal away, and a fatal end, which
// leaves it (the other endings are checked with the whole games). The
// file's text and the question's wording are the records tests' part.
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <tuple>

#include "game/texts.h"

#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

// The player's hand at the picker, the same over every run of the program:
// picks at random the first time and remembers each draw, or gives the
// draws remembered, in order.
struct Player {
  explicit Player(Rng* picks = nullptr) : random(picks) {}
  Rng* random;
  std::vector<std::string> draws;
  size_t next = 0;
  int crashAtDraw = -1;  // the program dies after two picks of this draw (0 the first)
};

struct Crash {};

// A run of the program that keeps its game in the journal of `dir`.
struct JournalRun : GameRun {
  JournalRun(const std::filesystem::path& dir, Player& player) : GameRun(dir), player(player) {
    std::filesystem::create_directories(dir);
    forms.onJetons = [this](FrmJetons& jetons) { Pick(jetons); };
  }
  void Pick(FrmJetons& jetons) {
    if (player.random && player.next == player.draws.size()) {
      ScriptedForms::PickInBagOrder(jetons, program, player.random);
      std::string letters;
      for (int k = 0; k <= program.IntNbTire; ++k) letters += program.TabTirage[size_t(k)];
      player.draws.push_back(letters);
    } else {
      ASSERT_LT(player.next, player.draws.size());
      const std::string& letters = player.draws[player.next];
      for (size_t k = 0; k < letters.size(); ++k) {
        if (int(player.next) == player.crashAtDraw && k == 2) {
          player.crashAtDraw = -1;
          throw Crash{};
        }
        jetons.CmdJeton_Click(letters[k] == '?' ? FrmJetons::kBlank : letters[k] - 'A' + 1);
      }
      ASSERT_TRUE(jetons.CmdValider.enabled) << letters;
      jetons.CmdValider_Click();
    }
    ++player.next;
  }
  // A new game, on the start bag of OptPioche `pioche`.
  JournalRun& Begin(int pioche = 0) {
    program.IntPioche = int16_t(pioche);
    Load().CmdNew_Click();
    return *this;
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
  // How the game ended: history, score, board, bag, and whether it ran out.
  std::string Outcome() const {
    std::string board;
    for (int i = 0; i < 225; ++i) board += std::max(form->ObjPlateau->Square(i % 15, i / 15), '.');
    return form->TxtHisto.text + "|" + form->LblPtsJoueur.text + "|" + board + "|" + program.StrSac + "|" +
           std::to_string(program.BlnSacVide);
  }
  Player& player;
};

class KeptGame : public ::testing::Test {
 protected:
  TempDir dir;
};

// Plays a whole game without a break, then the same game (same picks, same
// seed) with the program killed after `crash` plays, in the picker or after
// the draw, and taken up again.
void CrashAndCompare(const std::filesystem::path& dir, uint64_t seed, int pioche, int crash,
                     bool inThePicker) {
  SCOPED_TRACE(std::to_string(seed) + "/" + std::to_string(pioche) + "/" + std::to_string(crash) +
               (inThePicker ? " in the picker" : ""));
  Rng random(seed);
  Player player(&random);
  std::string whole;
  std::vector<std::string> proposals;
  {
    JournalRun run(dir / "whole", player);
    // Each picker opens right after a validation's save: the journal is the form's state.
    run.forms.onJetons = [&](FrmJetons& jetons) {
      EXPECT_EQ(run.journal->Exists() ? run.journal->Load() : run.form->Snapshot(), run.form->Snapshot());
      run.Pick(jetons);
    };
    run.Begin(pioche);
    run.PlayOut();
    whole = run.Outcome();
    proposals = run.forms.boiteD;
  }
  ASSERT_GT(int(proposals.size()), crash);

  player.next = 0;
  player.random = nullptr;
  player.crashAtDraw = inThePicker ? crash : -1;
  {
    JournalRun first(dir / "broken", player);
    try {
      first.Begin(pioche);
      first.PlayOut(crash);
      ASSERT_FALSE(inThePicker) << "the picker went through";
    } catch (const Crash&) {
      ASSERT_TRUE(inThePicker);
    }
    ASSERT_TRUE(first.journal->Exists());  // the program dies here: nothing is closed, nothing asked
  }
  EXPECT_EQ(player.next, size_t(crash + (inThePicker ? 0 : 1)));  // the draw cut short, or the next

  const std::optional<SavedGame> kept = GameJournal(dir / "broken" / "partie.ret").Load();
  ASSERT_TRUE(kept.has_value());
  EXPECT_EQ(kept->IntNbCoups, crash);
  EXPECT_EQ(kept->Chevalet.empty(), inThePicker);
  JournalRun second(dir / "broken", player);
  second.forms.onJetons = [&](FrmJetons& jetons) {
    EXPECT_TRUE(second.forms.jetonsShown > 1 || !inThePicker || second.form->Snapshot() == *kept);
    second.Pick(jetons);
  };
  // A rack that was drawn comes back without the picker, with the same best play.
  EXPECT_EQ(second.TakeUp().IntNbCoups, crash);
  EXPECT_EQ(second.forms.jetonsShown, inThePicker ? 1 : 0);
  EXPECT_EQ(second.forms.boiteD, std::vector<std::string>{proposals[size_t(crash)]});
  second.PlayOut();
  EXPECT_EQ(second.Outcome(), whole);
  // The natural end takes the journal away; a game stuck with no play keeps it.
  EXPECT_EQ(second.journal->Exists(), second.program.BlnSacVide != -1);
  if (second.program.BlnSacVide == -1) {
    second.fake.timers.Advance(FrmPlateau::kTimFrmFin + FrmPlateau::kTimScore);
    EXPECT_EQ(ReadFile(dir / "broken" / "bestsco.ret").substr(0, 7),
              (second.form->LblPtsJoueur.text + "      ").substr(0, 7));
  }
}

TEST_F(KeptGame, ACrashAfterTheDrawLosesNothing) {
  for (const auto& [seed, pioche, crash] : std::vector<std::tuple<uint64_t, int, int>>{
           {3, 0, 0}, {3, 0, 4}, {5, 0, 9}, {8, 0, 1}, {2, 3, 1}, {4, 1, 2}})
    CrashAndCompare(dir.path() / std::to_string(seed * 100 + crash), seed, pioche, crash, false);
}

TEST_F(KeptGame, ACrashInThePickerLosesNothing) {
  for (const auto& [seed, pioche, crash] :
       std::vector<std::tuple<uint64_t, int, int>>{{3, 0, 2}, {5, 0, 7}, {8, 0, 1}, {2, 3, 1}, {6, 2, 1}})
    CrashAndCompare(dir.path() / std::to_string(seed * 100 + crash), seed, pioche, crash, true);
}

TEST_F(KeptGame, TheTakenUpFormIsAGameUnderWay) {
  Rng random(11);
  Player player(&random);
  SavedGame kept;
  {
    JournalRun first(dir.path(), player);
    first.program.NomPartie = "Partie tabli 04";
    ASSERT_EQ(first.Begin().PlayOut(3), 3);
    FrmPlateau& f = *first.form;
    first.fake.timers.Advance(3 * FrmPlateau::kTimerEpie);  // three ticks of the clock, after the last save
    EXPECT_EQ(f.LblDuree.text, "0:00:03");
    kept = first.journal->Load().value_or(SavedGame{});
  }
  EXPECT_EQ(kept.Chevalet.size(), 7u);
  EXPECT_EQ(kept.LblDuree, "0:00:00");  // the clock as it stood at the draw

  JournalRun second(dir.path(), player);
  second.program.options.OptMessages = "Oui";  // the tour's first step is for a game to begin
  FrmPlateau& f = second.TakeUp();
  EXPECT_EQ(second.fake.boxes.Texts(), std::vector<std::string>{ResumeQuestion(kept)});
  EXPECT_EQ(second.program.NomPartie + f.LblNomP.text, "Partie tabli 04Partie tabli 04");
  EXPECT_TRUE(second.forms.tourSteps.empty());
  EXPECT_EQ(second.forms.jetonsShown, 0);
  EXPECT_EQ(second.forms.boiteD.size(), 1u);
  // Everything kept is back (the search since may have moved the engine's
  // memory), and the rack as the draw left it, tile k on place k.
  SavedGame now = f.Snapshot();
  std::tie(now.ownRowColumn, now.ownRowRow, now.ownRowSet, now.randomState) =
      std::tie(kept.ownRowColumn, kept.ownRowRow, kept.ownRowSet, kept.randomState);
  EXPECT_EQ(now, kept);
  EXPECT_EQ(f.LblTirage.text, "03");
  for (int i = 0; i < 225; ++i)
    EXPECT_EQ(f.Plateau.Square(i % 15, i / 15), f.ObjPlateau->SubCase(i % 15, i / 15));
  for (int k = 0; k < 7; ++k) {
    const Tile& tile = f.PicGamer[size_t(k)];
    EXPECT_TRUE(tile.visible && tile.enabled && tile.left == layout::RackLeft(k));
    EXPECT_EQ(f.TabChevalet[size_t(k)].IntJeton, k);
    EXPECT_EQ(tile.face.index, tile.Tag == "?" ? 26 : tile.Tag[0] - 'a');
  }
  // The game's controls as in any game under way, and the clock goes on.
  EXPECT_FALSE(f.CmdNew.enabled || f.CmdGame.visible || f.CmdValider.enabled || f.PicWait.visible);
  EXPECT_TRUE(f.CmdArret.visible && f.CmdSolution.enabled && f.enabled && f.LblLetReste.visible &&
              f.ImgXY.visible);
  second.fake.timers.Advance(FrmPlateau::kTimerEpie);
  EXPECT_EQ(f.LblDuree.text, "0:00:01");
}

TEST_F(KeptGame, ANewGameTakesTheJournalAwayAndAFatalEndLeavesIt) {
  Rng random(4);
  Player player(&random);
  {
    JournalRun run(dir.path() / "new", player);
    ASSERT_EQ(run.Begin().PlayOut(1), 1);
    EXPECT_EQ(run.form->CmdGame_Click(), FrmPlateau::Unload::ToPartie);
    EXPECT_FALSE(run.journal->Exists());
  }
  {
    JournalRun run(dir.path(), player);
    ASSERT_EQ(run.Begin().PlayOut(2), 2);
    // A tile dropped past the rack's last place ends the program.
    FatalCatcher catcher;
    Tile& tile = run.form->PicGamer[0];
    run.drag->PicGamer_MouseDown(0, 1, 17, 17, tile.left + 17, tile.top + 17);
    tile.left = layout::kRegletteLeft + 238;
    EXPECT_THROW(run.drag->PicGamer_MouseUp(0, 1), FatalCalled);
  }
  // The game is there at the next start; answered No, it is dropped.
  JournalRun next(dir.path(), player);
  EXPECT_TRUE(next.journal->Load().has_value());
  next.fake.boxes.answers = {Answer::No};
  EXPECT_FALSE(OfferResume(next.program, *next.journal).has_value());
  EXPECT_FALSE(next.journal->Exists());
}

TEST_F(KeptGame, AJournalThatCannotBeWrittenIsToldOnce) {
  // A folder stands where the journal goes: the game goes on, unprotected,
  // and the player is told so once, in French.
  Rng random(7);
  Player player(&random);
  std::filesystem::create_directories(dir.path() / "partie.ret" / "dedans");
  JournalRun run(dir.path(), player);
  ASSERT_EQ(run.Begin().PlayOut(3), 3);
  EXPECT_EQ(run.fake.boxes.Texts(), std::vector<std::string>{texts::kJournalImpossible});
  EXPECT_TRUE(std::filesystem::is_directory(dir.path() / "partie.ret" / "dedans"));
}

// Runs `steps` as a user who is not root (root writes in read-only folders),
// in a child process; true when it returned true.
bool AsAnOrdinaryUser(const std::filesystem::path& dir, const std::function<bool()>& steps) {
  constexpr uid_t kNobody = 65534;
  if (geteuid() == 0 && chown(dir.c_str(), kNobody, kNobody) != 0) return false;
  const pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(2);
    _exit(steps() ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST_F(KeptGame, AJournalThatCannotBeRemovedIsNotOfferedAgain) {
  // The start folder turns read-only during the game: at its end the journal
  // cannot be removed, and the next start must not offer it back.
  const std::filesystem::path folder = dir.path() / "lecture_seule";
  std::filesystem::create_directories(folder);
  const bool held = AsAnOrdinaryUser(folder, [&] {
    GameJournal journal(folder / "partie.ret");
    SavedGame game;
    game.NomPartie = "Partie du soir";
    game.StrSac = StartBag(0);
    for (std::string& row : game.lignes) row = std::string(15, '.');
    if (!journal.Save(game) || !journal.Load()) return false;
    chmod(folder.c_str(), 0555);
    journal.Remove();
    const bool offered = journal.Load().has_value();
    chmod(folder.c_str(), 0755);
    return !offered;
  });
  EXPECT_TRUE(held);
}

}  // namespace
}  // namespace ostrane::test
