// Which word list the program plays with: the list of the settings from the
// start, a list that cannot serve leaving the one in use (and the player
// told why), a choice kept in the settings and put in service at the next
// game, the way back to the embedded list, and a game taken up with the list
// it was played with, or told that list is gone or has changed.
#include <gtest/gtest.h>

#include "data/resources.h"
#include "lexicon/expressions.h"
#include "records/game_journal.h"
#include "records/settings.h"
#include "records/word_lists.h"
#include "tests/records/record_fakes.h"

namespace ostrane::test {
namespace {

class Lists : public ProgramFixture {
 protected:
  Lists() { lists_.emplace(program_, lexicon_, ReadResource, dir_.path() / "cache"); }

  // The list file `name` in the test's folder.
  std::filesystem::path List(const std::string& name, const std::string& words) {
    WriteFile(dir_.path() / name, words);
    return dir_.path() / name;
  }
  // The start-up's load, through the reader the lists give.
  void Start() {
    lexicon_.LoadAll(lists_->StartReader());
    lists_->Started();
  }
  bool Knows(const std::string& word) {
    ClsExpressions check;
    check.SubDico(lexicon_);
    return check.SubWordIsTrue(std::string_view(word));
  }
  std::optional<WordLists> lists_;
};

TEST_F(Lists, TheListOfTheSettingsServesFromTheStart) {
  program_.settings.wordList = List("ma liste.txt", "maître\nmaîtresse\nl'école\nzygomatique\n").string();
  Start();
  EXPECT_EQ(lists_->Told(), "");
  EXPECT_TRUE(Knows("MAITRESSE"));
  EXPECT_FALSE(Knows("MAISON"));
  EXPECT_TRUE(lexicon_.DefM23.FindForCheck("AA").has_value());  // the definitions stay the embedded ones
  EXPECT_EQ(lists_->InUse(), "la liste « ma liste.txt » (3 mots, 1 ligne ignorée)");
  EXPECT_EQ(lexicon_.Graph().WordCount(), 3u);
  EXPECT_FALSE(lists_->ChoiceWaits());

  // A list that cannot serve at the start: the embedded one, and why.
  program_.settings.wordList = (dir_.path() / "partie.txt").string();
  Start();
  EXPECT_EQ(lists_->Told(), "Le fichier « " + (dir_.path() / "partie.txt").string() +
                                " » n'existe pas.\nLa liste intégrée reste en service.");
  EXPECT_TRUE(Knows("MAISON"));
  EXPECT_EQ(lists_->InUse(), "la liste intégrée (" + FrenchCount(RealLexicon().WordCount()) + " mots)");
  EXPECT_EQ(program_.settings.wordList, (dir_.path() / "partie.txt").string());  // kept for when it comes back
}

TEST_F(Lists, AChoiceIsKeptAndServesFromTheNextGame) {
  Start();
  EXPECT_EQ(lists_->Chosen(), "la liste intégrée");
  // Refused: the reason, the settings as they were.
  const std::filesystem::path empty = List("vide.txt", "# rien\n123\n");
  EXPECT_FALSE(lists_->Choose(empty.string()));
  EXPECT_EQ(lists_->Told(), "Le fichier « vide.txt » ne contient aucun mot de 2 à 15 lettres (1 ligne ignorée).\n"
                            "La liste en service ne change pas.");
  EXPECT_EQ(program_.settings.wordList, "");
  EXPECT_FALSE(Exists("ostrane.ini"));

  const std::filesystem::path mine = List("mots.txt", "chat\nchats\nchatte\n");
  ASSERT_TRUE(lists_->Choose(mine.string()));
  EXPECT_EQ(program_.settings.wordList, mine.string());
  EXPECT_EQ(Read("ostrane.ini"), FormatSettings(program_.settings));
  EXPECT_TRUE(lists_->ChoiceWaits());
  EXPECT_EQ(lists_->Chosen(), "la liste « mots.txt » (3 mots)");
  EXPECT_TRUE(Knows("MAISON"));  // the game in progress keeps its list
  lists_->BeforeNewGame();
  EXPECT_EQ(lists_->Told(), "");
  EXPECT_FALSE(lists_->ChoiceWaits());
  EXPECT_TRUE(Knows("CHATTE"));
  EXPECT_FALSE(Knows("MAISON"));

  // The file changes between two games: the next one has its new words.
  List("mots.txt", "chat\nchats\nchatte\nchattes\n");
  lists_->BeforeNewGame();
  EXPECT_TRUE(Knows("CHATTES"));
  EXPECT_EQ(lists_->InUse(), "la liste « mots.txt » (4 mots)");
  // Gone before a game: the one in use stays, and the player is told.
  std::filesystem::remove(mine);
  lists_->BeforeNewGame();
  EXPECT_EQ(lists_->Told(), "Le fichier « " + mine.string() + " » n'existe pas.\n"
                            "La liste en service reste la liste « mots.txt » (4 mots).");
  EXPECT_TRUE(Knows("CHATTES"));

  // Back to the embedded list.
  ASSERT_TRUE(lists_->Choose(""));
  EXPECT_EQ(program_.settings.wordList, "");
  EXPECT_TRUE(lists_->ChoiceWaits());
  lists_->BeforeNewGame();
  EXPECT_TRUE(Knows("MAISON"));
  EXPECT_EQ(lexicon_.WordCount(), RealLexicon().WordCount());
  EXPECT_EQ(lexicon_.Graph().WordCount(), RealLexicon().Graph().WordCount());
}

TEST_F(Lists, AGameTakenUpGoesOnWithItsOwnList) {
  Start();
  const std::filesystem::path mine = List("mots.txt", "chat\nchats\n");
  ASSERT_TRUE(lists_->Choose(mine.string()));
  lists_->BeforeNewGame();
  SavedGame game;
  game.NomPartie = "Partie du soir";
  game.wordListFile = program_.wordList.file.string();
  game.wordListKey = program_.wordList.key;

  // Another list in use meanwhile: the game takes its own back, silently.
  ASSERT_TRUE(lists_->Choose(""));
  lists_->BeforeNewGame();
  lists_->ForTakenUpGame(game);
  EXPECT_EQ(lists_->Told(), "");
  EXPECT_TRUE(Knows("CHATS"));
  // A game of the embedded list, while the player's is in use.
  lists_->ForTakenUpGame(SavedGame{});
  EXPECT_EQ(lists_->Told(), "");
  EXPECT_TRUE(Knows("MAISON"));

  // The file has changed since: its words as they are now, and the player told.
  List("mots.txt", "chat\nchats\nchaton\n");
  lists_->ForTakenUpGame(game);
  EXPECT_EQ(lists_->Told(), "La partie « Partie du soir » a été jouée avec la liste de mots « mots.txt », qui a "
                            "changé depuis : elle continue avec la liste telle qu'elle est maintenant, la liste "
                            "« mots.txt » (3 mots).");
  EXPECT_TRUE(Knows("CHATON"));
  // Gone: the list in use, and why.
  std::filesystem::remove(mine);
  lists_->ForTakenUpGame(game);
  EXPECT_EQ(lists_->Told(), "La partie « Partie du soir » a été jouée avec la liste de mots « mots.txt », qui ne "
                            "peut plus servir :\nLe fichier « " + mine.string() + " » n'existe pas.\n"
                            "Elle continue avec la liste « mots.txt » (3 mots).");
}

}  // namespace
}  // namespace ostrane::test
