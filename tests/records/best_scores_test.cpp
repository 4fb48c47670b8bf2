// The table of best scores: the step at the end of a game (read, qualify,
// ask, append) and the table's form (rank, trim to thirty, walk, praise,
// clear), with their file failures by number.
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <unistd.h>

#include "records/best_scores.h"
#include "tests/records/record_fakes.h"

namespace ostrane {
namespace {

using test::FailingFiles;

constexpr const char* kFile = "bestsco.ret";

// A line of the table as the file holds it, for test data.
std::string Line(int score, const std::string& name = "Partie", const std::string& date = "01/02/24",
                 const std::string& time = "10:00") {
  char text[128];
  std::snprintf(text, sizeof text, "%-7d%-18s   %s   %s", score, name.c_str(), date.c_str(), time.c_str());
  return text;
}

std::string Table(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const auto& line : lines) bytes += line + "\r\n";
  return bytes;
}

// Lines of scores from `first` going down by one, `count` of them.
std::vector<std::string> Descending(int first, int count) {
  std::vector<std::string> lines;
  for (int i = 0; i < count; ++i) lines.push_back(Line(first - i, "Jeu " + std::to_string(i + 1)));
  return lines;
}

std::string Question(int score) {
  return "Vous avez réalisé un score de " + std::to_string(score) +
         " points.\r\n\r\nVoulez-vous inscrire ce résultat dans le tableau      \r\n"
         "récapitulant les trente meilleurs scores ?";
}

const std::string kRefusal =
    "Désolé, mais votre score, bien que respectable, n'est       \r\n"
    "pas suffisant pour figurer dans les trente meilleurs.";

const std::string kNoGame = "Aucune partie n'est actuellement enregistrée.      ";

std::vector<std::string> SplitCrLf(const std::string& bytes) {
  std::vector<std::string> lines;
  size_t pos = 0;
  while (pos < bytes.size()) {
    const size_t end = bytes.find("\r\n", pos);
    if (end == std::string::npos) {
      lines.push_back(bytes.substr(pos));
      break;
    }
    lines.push_back(bytes.substr(pos, end - pos));
    pos = end + 2;
  }
  return lines;
}

class BestScores : public test::ProgramFixture {
 protected:
  void SetUp() override {
    ProgramFixture::SetUp();
    program_.NomPartie = "Partie tabli 01";
  }
  ScoreStepResult Step(const std::string& label, TextFiles& files = DiskFiles()) {
    return TimScoreStep(program_, label, files);
  }
  // Opens the table as the main form does and lets its load run.
  std::unique_ptr<FrmBest> OpenBest(TextFiles& files = DiskFiles()) {
    auto form = std::make_unique<FrmBest>(program_, [this](bool on) { mainEnabled_.push_back(on); }, files);
    form->Form_Load();
    timers_.Advance(100);
    return form;
  }
  std::vector<bool> mainEnabled_;
};

// ---------------------------------------------------------------- the line

TEST(BestScoreLine, FortyFourCharactersInTheirColumns) {
  const DateTime when{2024, 3, 7, 9, 5, 42};
  const std::string line = BestScoreLine(250, "Partie tabli 01", when);
  EXPECT_EQ(line, "250    Partie tabli 01      07/03/24   09:05");
  EXPECT_EQ(line.size(), 44u);
  EXPECT_EQ(BestScoreLine(0, "ab", DateTime{1999, 12, 31, 23, 59, 0}),
            "0      ab                   31/12/99   23:59");
  // Filling always adds a blank, even to a full field.
  EXPECT_EQ(BestScoreLine(1234567, "x", when).substr(0, 8), "1234567 ");
  // An accented name is one byte a character in the file.
  const std::string accented = BestScoreLine(9, "Équipe à deux", when);
  EXPECT_EQ(accented.size(), 44u);
  EXPECT_EQ(accented.substr(7, 3), "\xC9qu");
}

TEST(ScoreItems, SplitAtLineEndsAndCommasUpToFifty) {
  // A blank line is an empty item; the file's last line end closes the last
  // item and starts none.
  EXPECT_EQ(ReadScoreItems("12 a\r\n13 b,c\r\n\r\n  14 d\r\n"),
            (std::vector<std::string>{"12 a", "13 b", "c", "", "14 d"}));
  EXPECT_TRUE(ReadScoreItems("").empty());
  EXPECT_EQ(ReadScoreItems("\r\n\r\n"), (std::vector<std::string>{"", ""}));
  EXPECT_EQ(ReadScoreItems("  \r\n7"), (std::vector<std::string>{"", "7"}));
  EXPECT_EQ(ReadScoreItems("5,\r\n6\n\n"), (std::vector<std::string>{"5", "", "6", ""}));
  EXPECT_EQ(ReadScoreItems("5,"), (std::vector<std::string>{"5", ""}));
  EXPECT_EQ(ReadScoreItems("5"), (std::vector<std::string>{"5"}));
  EXPECT_EQ(ReadScoreItems(std::string(60, '\n')).size(), 50u);
  std::string many;
  for (int i = 0; i < 60; ++i) many += Line(100 + i) + "\r\n";
  const auto items = ReadScoreItems(many);
  ASSERT_EQ(items.size(), 50u);
  EXPECT_EQ(items.back(), Line(149));
}

// ------------------------------------------------------- the best-score step

TEST_F(BestScores, MissingFileQualifiesAndAppendsOneLine) {
  ASSERT_FALSE(Exists(kFile));
  const ScoreStepResult result = Step("250");
  EXPECT_TRUE(result.openBest);
  EXPECT_TRUE(result.appended);
  ASSERT_EQ(boxes_.shown.size(), 1u);
  EXPECT_EQ(boxes_.shown[0].text, Question(250));
  EXPECT_EQ(boxes_.shown[0].style.buttons, Buttons::YesNo);
  EXPECT_EQ(ReadFile(kFile), "250    Partie tabli 01      07/03/24   09:05\r\n");
  EXPECT_EQ(program_.ScoreCourant, 250);
  EXPECT_EQ(program_.BestNouveau, 1);
}

TEST_F(BestScores, EmptyFileQualifiesToo) {
  WriteFile(kFile, "");
  EXPECT_TRUE(Step("3").appended);
  EXPECT_EQ(SplitCrLf(ReadFile(kFile)).size(), 1u);
}

TEST_F(BestScores, AnswerNoLeavesEverythingAsItWas) {
  boxes_.answers = {Answer::No};
  program_.BestNouveau = -1;
  const ScoreStepResult result = Step("250");
  EXPECT_FALSE(result.openBest);
  EXPECT_FALSE(result.appended);
  EXPECT_FALSE(Exists(kFile));
  EXPECT_EQ(program_.BestNouveau, -1);
  EXPECT_EQ(program_.ScoreCourant, 250);
}

TEST_F(BestScores, ScoreLabelIsReadAsItsAbsoluteValue) {
  Step("-75");
  EXPECT_EQ(program_.ScoreCourant, 75);
  EXPECT_EQ(boxes_.shown.back().text, Question(75));
}

TEST_F(BestScores, TableOfOneLineTakesAnyScore) {
  WriteFile(kFile, Table({Line(900)}));
  EXPECT_TRUE(Step("10").appended);
  EXPECT_EQ(SplitCrLf(ReadFile(kFile)).size(), 2u);
}

TEST_F(BestScores, TwentyNineLinesTakeEvenTheLowestScore) {
  WriteFile(kFile, Table(Descending(500, 29)));
  EXPECT_TRUE(Step("1").appended);
  const auto lines = SplitCrLf(ReadFile(kFile));
  ASSERT_EQ(lines.size(), 30u);
  EXPECT_EQ(lines.back().substr(0, 7), "1      ");
}

TEST_F(BestScores, FullTableRefusesATieWithItsLowest) {
  const std::string table = Table(Descending(500, 30));  // 500 down to 471
  WriteFile(kFile, table);
  const ScoreStepResult result = Step("471");
  EXPECT_FALSE(result.openBest);
  ASSERT_EQ(boxes_.shown.size(), 1u);
  EXPECT_EQ(boxes_.shown[0].text, kRefusal);
  EXPECT_EQ(boxes_.shown[0].style.buttons, Buttons::Ok);
  EXPECT_EQ(boxes_.shown[0].style.icon, Icon::Information);
  EXPECT_EQ(ReadFile(kFile), table);
}

TEST_F(BestScores, FullTableTakesOneMoreAndHoldsThirtyOneLinesUntilShown) {
  WriteFile(kFile, Table(Descending(500, 30)));
  EXPECT_TRUE(Step("472").appended);
  EXPECT_EQ(SplitCrLf(ReadFile(kFile)).size(), 31u);
}

TEST_F(BestScores, OnlyFiftyItemsAreRead) {
  // 60 lines: the first 50 beat the score, line 55 does not; it is never seen.
  auto lines = Descending(500, 60);
  lines[54] = Line(5);
  WriteFile(kFile, Table(lines));
  Step("100");
  EXPECT_EQ(boxes_.shown.back().text, kRefusal);
}

TEST_F(BestScores, CommaInANameShiftsTheItems) {
  // 29 lines: with a plain name, fewer than 30 items and the score enters.
  auto lines = Descending(127, 28);  // 127 down to 100
  lines.push_back(Line(150, "Partie tabli 99"));
  WriteFile(kFile, Table(lines));
  Step("60");
  EXPECT_EQ(boxes_.shown.back().text, Question(60));

  // The same table where the name holds a comma reads as 30 items; the
  // extra one begins with "99" and every item beats 60.
  boxes_.shown.clear();
  boxes_.answers = {Answer::No};
  lines.back() = Line(150, "Partie tabli,99");
  WriteFile(kFile, Table(lines));
  Step("60");
  EXPECT_EQ(boxes_.shown.back().text, kRefusal);
  boxes_.shown.clear();
  Step("99");
  EXPECT_EQ(boxes_.shown.back().text, kRefusal);
  boxes_.shown.clear();
  boxes_.answers = {Answer::No};
  Step("100");
  EXPECT_EQ(boxes_.shown.back().text, Question(100));
}

TEST_F(BestScores, BlankLinesOfATrimAreItemsWorthZero) {
  // The table's rewrite leaves a blank line for each rank without an entry:
  // here two games of 0 among 31 lines leave 29 entries and a blank line.
  auto lines = Descending(500, 29);
  lines.push_back(Line(0, "Nulle 1"));
  lines.push_back(Line(0, "Nulle 2"));
  WriteFile(kFile, Table(lines));
  program_.BestNouveau = 1;
  OpenBest();
  auto trimmed = SplitCrLf(ReadFile(kFile));
  ASSERT_EQ(trimmed.size(), 30u);
  EXPECT_EQ(trimmed.back(), "");

  // The blank line is the 30th item, of value 0: a score of 0 does not beat
  // it, and the table counts as full.
  boxes_.shown.clear();
  EXPECT_FALSE(Step("0").appended);
  ASSERT_EQ(boxes_.shown.size(), 1u);
  EXPECT_EQ(boxes_.shown[0].text, kRefusal);
  // Any score above 0 beats the blank line.
  boxes_.shown.clear();
  boxes_.answers = {Answer::No};
  Step("1");
  EXPECT_EQ(boxes_.shown.back().text, Question(1));

  // Items after a blank line shift by one: 29 entries, a blank line and one
  // more entry make 31 items, and the 30 counted first hold the blank one.
  lines = Descending(500, 29);
  lines.push_back("");
  lines.push_back(Line(480, "Derniere"));
  WriteFile(kFile, Table(lines));
  EXPECT_EQ(ReadScoreItems(ReadFile(kFile)).size(), 31u);
  boxes_.shown.clear();
  EXPECT_FALSE(Step("0").appended);
  EXPECT_EQ(boxes_.shown.back().text, kRefusal);
}

TEST_F(BestScores, ReadOnlyFileLosesTheResultButOpensTheTable) {
  const std::string table = Table(Descending(500, 3));
  WriteFile(kFile, table);
  FailingFiles files;
  files.failAppend = kErrPathFileAccess;
  const ScoreStepResult result = Step("250", files);
  EXPECT_TRUE(result.openBest);
  EXPECT_FALSE(result.appended);
  EXPECT_EQ(program_.BestNouveau, 1);
  ASSERT_EQ(boxes_.shown.size(), 2u);
  EXPECT_EQ(boxes_.shown[0].text, Question(250));
  EXPECT_EQ(boxes_.shown[1].text, "Erreur interne 104 - 75      \r\nFichier uniquement en lecture.      ");
  EXPECT_EQ(ReadFile(kFile), table);
}

TEST_F(BestScores, ReadOnlyFileOnDisk) {
  const std::string table = Table(Descending(500, 3));
  WriteFile(kFile, table);
  std::filesystem::permissions(dir_ / kFile, std::filesystem::perms::owner_read);
  if (std::FILE* probe = std::fopen((dir_ / kFile).c_str(), "ab")) {
    std::fclose(probe);
    GTEST_SKIP() << "this user may write a read-only file (running as root?); the injected failure of "
                    "ReadOnlyFileLosesTheResultButOpensTheTable covers the path";
  }
  const ScoreStepResult result = Step("250");
  EXPECT_TRUE(result.openBest);
  EXPECT_FALSE(result.appended);
  EXPECT_EQ(boxes_.shown.back().text, "Erreur interne 104 - 75      \r\nFichier uniquement en lecture.      ");
  EXPECT_EQ(ReadFile(kFile), table);
}

TEST_F(BestScores, OtherFailuresGiveTheirNumberAndText) {
  FailingFiles files;
  files.failRead = kErrDeviceIo;
  const ScoreStepResult result = Step("250", files);
  EXPECT_TRUE(result.openBest);
  EXPECT_FALSE(result.appended);
  EXPECT_EQ(files.appends, 0);
  ASSERT_EQ(boxes_.shown.size(), 1u);  // no question: the failure came first
  EXPECT_EQ(boxes_.shown[0].text, "Erreur interne 105 - 57      \r\nErreur d'entrée/sortie de périphérique      ");
  EXPECT_EQ(program_.BestNouveau, 1);
}

TEST_F(BestScores, TableFileThatIsAFolderFailsWithNoAccess) {
  // Real disk failure that holds even for root: "bestsco.ret" is a folder.
  std::filesystem::create_directory(dir_ / kFile);
  const ScoreStepResult result = Step("250");
  EXPECT_TRUE(result.openBest);
  EXPECT_FALSE(result.appended);
  EXPECT_EQ(boxes_.shown.back().text, "Erreur interne 104 - 75      \r\nFichier uniquement en lecture.      ");
}

TEST(FileErrors, CLibraryCodesMapToTheFormsNumbers) {
  EXPECT_EQ(FileErrorNumber(ENOENT), 53);
  EXPECT_EQ(FileErrorNumber(EACCES), 75);
  EXPECT_EQ(FileErrorNumber(EPERM), 75);
  EXPECT_EQ(FileErrorNumber(EROFS), 75);
  EXPECT_EQ(FileErrorNumber(EISDIR), 75);
  EXPECT_EQ(FileErrorNumber(ENOSPC), 61);
  EXPECT_EQ(FileErrorNumber(EIO), 57);
  EXPECT_EQ(RunTimeErrorText(53), "Fichier introuvable");

  const auto dir = std::filesystem::temp_directory_path() / "ostrane-records-file-errors";
  std::filesystem::remove_all(dir);
  std::filesystem::create_directories(dir);
  std::string bytes;
  EXPECT_EQ(DiskFiles().Read(dir / "none", bytes).number, 53);
  EXPECT_EQ(DiskFiles().Append(dir / "no-folder" / "x", "a").number, 76);
  EXPECT_EQ(DiskFiles().Remove(dir / "none").number, 53);
  EXPECT_EQ(DiskFiles().Append(dir, "a").number, 75);
  EXPECT_FALSE(DiskFiles().Append(dir / "x", "ab"));
  EXPECT_FALSE(DiskFiles().Append(dir / "x", "c"));
  EXPECT_FALSE(DiskFiles().Read(dir / "x", bytes));
  EXPECT_EQ(bytes, "abc");
  EXPECT_FALSE(DiskFiles().Replace(dir / "x", "z"));
  EXPECT_FALSE(DiskFiles().Read(dir / "x", bytes));
  EXPECT_EQ(bytes, "z");
  std::filesystem::remove_all(dir);
}

// --------------------------------------------------------------- ranking

TEST(RankBestLines, BestFirstEqualScoresInFileOrderZeroNeverRanked) {
  const std::vector<std::string> lines = {Line(300, "a"), Line(500, "b"), Line(0, "c"), Line(300, "d"),
                                          Line(-100, "e")};
  const auto ranked = RankBestLines(lines);
  ASSERT_EQ(ranked.size(), 4u);
  EXPECT_EQ(ranked[0], "001  " + lines[1]);
  EXPECT_EQ(ranked[1], "002  " + lines[0]);
  EXPECT_EQ(ranked[2], "003  " + lines[3]);
  EXPECT_EQ(ranked[3], "004  " + lines[4]);  // the absolute value counts
}

TEST(RankBestLines, HeadIsFourCharactersAndMustBeANumber) {
  const std::vector<std::string> lines = {"abc    x", Line(20), "12ab   y", "", Line(12345), "  7 z"};
  const auto ranked = RankBestLines(lines);
  ASSERT_EQ(ranked.size(), 3u);
  EXPECT_EQ(ranked[0], "001  " + Line(12345));  // read as 1234
  EXPECT_EQ(ranked[1], "002  " + Line(20));
  EXPECT_EQ(ranked[2], "003    7 z");
}

TEST(RankBestLines, AgreesWithAStableSortOnGeneratedTables) {
  uint32_t seed = 12345;
  auto next = [&seed] { return seed = seed * 1103515245u + 12345u, (seed >> 16) % 60; };
  for (int round = 0; round < 200; ++round) {
    std::vector<std::string> lines;
    const int n = int(next() % 33);
    for (int i = 0; i < n; ++i) lines.push_back(Line(int(next()) % 20, "g" + std::to_string(i)));
    std::vector<size_t> order;
    for (size_t i = 0; i < lines.size(); ++i)
      if (std::stoi(lines[i].substr(0, 4)) != 0) order.push_back(i);
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
      return std::stoi(lines[a].substr(0, 4)) > std::stoi(lines[b].substr(0, 4));
    });
    const auto ranked = RankBestLines(lines);
    ASSERT_EQ(ranked.size(), order.size());
    for (size_t r = 0; r < order.size(); ++r) {
      char rank[24];
      std::snprintf(rank, sizeof rank, "%03zu", r + 1);
      ASSERT_EQ(ranked[r], std::string(rank) + "  " + lines[order[r]]);
    }
  }
}

// --------------------------------------------------------------- FrmBest

TEST_F(BestScores, FormListsRankedTextsAndFindsTheBestRankOfTheScore) {
  WriteFile(kFile, Table({Line(300, "a"), Line(500, "b"), Line(300, "c"), Line(100, "d")}));
  program_.ScoreCourant = 300;
  program_.BestNouveau = 0;
  auto form = std::make_unique<FrmBest>(program_, nullptr);
  form->Form_Load();
  EXPECT_EQ(form->view().pointer, Pointer::Hourglass);
  EXPECT_TRUE(form->view().LstSco.empty());
  timers_.Advance(99);
  EXPECT_FALSE(form->ListeChargee());
  timers_.Advance(1);
  EXPECT_TRUE(form->ListeChargee());
  EXPECT_EQ(form->view().pointer, Pointer::Default);
  EXPECT_EQ(form->view().LstSco, (std::vector<std::string>{"001  " + Line(500, "b"), "002  " + Line(300, "a"),
                                                           "003  " + Line(300, "c"), "004  " + Line(100, "d")}));
  EXPECT_EQ(form->RangScore(), 2);
  EXPECT_EQ(form->NbLignes(), 4);
  EXPECT_TRUE(form->view().CmdEffEnabled);
  // Opened by the button: no walk, no praise.
  timers_.Advance(1000);
  EXPECT_EQ(form->view().ListIndex, -1);
  EXPECT_TRUE(boxes_.shown.empty());
  EXPECT_EQ(timers_.Running(), 0);
}

TEST_F(BestScores, ThirtyOneLinesAreRewrittenToThirty) {
  auto lines = Descending(500, 30);
  std::swap(lines[3], lines[20]);  // the file is unsorted on disk
  lines.push_back(Line(490, "Nouvelle"));
  WriteFile(kFile, Table(lines));
  program_.ScoreCourant = 490;
  program_.BestNouveau = 1;
  auto form = OpenBest();
  const auto kept = SplitCrLf(ReadFile(kFile));
  ASSERT_EQ(kept.size(), 30u);
  // Ranked order, the lowest game (471) dropped, the new one in its place.
  std::vector<std::string> expected = Descending(500, 30);
  expected.pop_back();
  expected.insert(expected.begin() + 11, Line(490, "Nouvelle"));
  EXPECT_EQ(kept, expected);
  EXPECT_EQ(ReadFile(kFile).substr(ReadFile(kFile).size() - 2), "\r\n");
  EXPECT_EQ(form->view().LstSco.size(), 30u);
  // 490 stands at rank 11 ("Jeu 11" has 490 too and is older).
  EXPECT_EQ(form->RangScore(), 11);
  EXPECT_EQ(form->view().LstSco[10], "011  " + Line(490, "Jeu 11"));
}

TEST_F(BestScores, ThirtyLinesAreNotRewritten) {
  auto lines = Descending(500, 30);
  std::swap(lines[0], lines[29]);
  const std::string table = Table(lines);
  WriteFile(kFile, table);
  FailingFiles files;
  auto form = OpenBest(files);
  EXPECT_EQ(files.replaces, 0);
  EXPECT_EQ(ReadFile(kFile), table);
  EXPECT_EQ(form->view().LstSco.front(), "001  " + Line(500, "Jeu 1"));
}

TEST_F(BestScores, OnlyThirtyTwoLinesAreReadAndTheRestIsLostAtTheRewrite) {
  auto lines = Descending(100, 32);
  lines.push_back(Line(999, "Trop tard"));
  WriteFile(kFile, Table(lines));
  auto form = OpenBest();
  EXPECT_EQ(form->NbLignes(), 32);
  const auto kept = SplitCrLf(ReadFile(kFile));
  ASSERT_EQ(kept.size(), 30u);
  EXPECT_EQ(kept.front(), Line(100, "Jeu 1"));
  EXPECT_EQ(kept.back(), Line(71, "Jeu 30"));
}

TEST_F(BestScores, ScoreZeroEntersButNeverShows) {
  WriteFile(kFile, Table({Line(40)}));
  EXPECT_TRUE(Step("0").appended);
  auto form = OpenBest();
  EXPECT_EQ(form->NbLignes(), 2);
  EXPECT_EQ(form->view().LstSco, (std::vector<std::string>{"001  " + Line(40)}));
  EXPECT_EQ(form->RangScore(), 0);
}

TEST_F(BestScores, LineWhoseHeadIsNoNumberIsSkipped) {
  WriteFile(kFile, Table({Line(40, "a"), "xyz garbage", Line(60, "b")}));
  auto form = OpenBest();
  EXPECT_EQ(form->NbLignes(), 3);
  EXPECT_EQ(form->view().LstSco, (std::vector<std::string>{"001  " + Line(60, "b"), "002  " + Line(40, "a")}));
  EXPECT_TRUE(boxes_.shown.empty());
}

TEST_F(BestScores, EmptyOrMissingTableSaysSoAndDisablesClearing) {
  auto form = OpenBest();
  EXPECT_TRUE(Exists(kFile));  // made empty for the reading
  EXPECT_EQ(ReadFile(kFile), "");
  EXPECT_EQ(boxes_.Texts(), std::vector<std::string>{kNoGame});
  EXPECT_FALSE(form->view().CmdEffEnabled);
  EXPECT_TRUE(form->view().LstSco.empty());
  boxes_.shown.clear();
  form->CmdEff_Click();
  EXPECT_TRUE(boxes_.shown.empty());
}

TEST_F(BestScores, ReadFailuresOfTheTable) {
  {
    FailingFiles files;
    files.failRead = kErrPathFileAccess;
    auto form = OpenBest(files);
    ASSERT_GE(boxes_.shown.size(), 1u);
    EXPECT_EQ(boxes_.shown[0].text, "Erreur interne 111 - 75      \r\nFichier uniquement en lecture.      ");
    EXPECT_TRUE(form->ListeChargee());
    EXPECT_EQ(form->view().pointer, Pointer::Default);
  }
  boxes_.shown.clear();
  {
    FailingFiles files;
    files.failRead = kErrDiskFull;
    auto form = OpenBest(files);
    ASSERT_GE(boxes_.shown.size(), 1u);
    EXPECT_EQ(boxes_.shown[0].text, "Erreur interne 112 - 61      \r\nDisque plein      ");
  }
  boxes_.shown.clear();
  {
    // No file, and no right to make one in the folder.
    FailingFiles files;
    files.failAppend = kErrPathFileAccess;
    auto form = OpenBest(files);
    ASSERT_GE(boxes_.shown.size(), 1u);
    EXPECT_EQ(boxes_.shown[0].text, "Erreur interne 111 - 75      \r\nFichier uniquement en lecture.      ");
  }
}

TEST_F(BestScores, NewGameWalksTheSelectionDownOneLineEachTick) {
  WriteFile(kFile, Table(Descending(500, 6)));  // 500 .. 495
  ASSERT_TRUE(Step("497").appended);            // ranks 4th, after the older 497
  boxes_.shown.clear();
  auto form = std::make_unique<FrmBest>(program_, [this](bool on) { mainEnabled_.push_back(on); });
  form->Form_Load();
  timers_.Advance(100);
  EXPECT_EQ(form->RangScore(), 4);
  EXPECT_EQ(form->view().focus, FrmBest::Focus::LstSco);
  EXPECT_EQ(form->view().ListIndex, -1);
  timers_.Advance(10);  // TimLigne: the first line
  EXPECT_EQ(form->view().ListIndex, 0);
  std::vector<int> walk;
  for (int tick = 0; tick < 3; ++tick) {
    timers_.Advance(10);
    walk.push_back(form->view().ListIndex);
    EXPECT_TRUE(boxes_.shown.empty());
  }
  EXPECT_EQ(walk, (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(program_.BestNouveau, 1);
  timers_.Advance(10);  // the walk ends: praise
  EXPECT_EQ(form->view().ListIndex, 3);
  EXPECT_EQ(form->view().focus, FrmBest::Focus::Foc);
  EXPECT_EQ(boxes_.Texts(), std::vector<std::string>{
                                "BRAVO !\r\nVotre score figure parmi les cinq meilleurs parties du classement.      "});
  EXPECT_EQ(program_.BestNouveau, 0);
  EXPECT_EQ(timers_.Running(), 0);
  timers_.Advance(1000);
  EXPECT_EQ(form->view().ListIndex, 3);
  EXPECT_EQ(boxes_.shown.size(), 1u);

  form->CmdFerme_Click();
  EXPECT_EQ(program_.BestNouveau, -1);
  EXPECT_EQ(mainEnabled_, std::vector<bool>{true});
  EXPECT_TRUE(form->view().unloaded);
}

TEST_F(BestScores, FirstGameEverGetsNoPraise) {
  ASSERT_TRUE(Step("120").appended);
  boxes_.shown.clear();
  auto form = OpenBest();
  timers_.Advance(10);
  EXPECT_EQ(form->view().ListIndex, 0);
  timers_.Advance(10);  // rank 1: the walk ends at once
  EXPECT_EQ(program_.BestNouveau, 0);
  EXPECT_TRUE(boxes_.shown.empty());
  EXPECT_EQ(form->view().focus, FrmBest::Focus::Foc);
}

TEST_F(BestScores, PraiseByRank) {
  EXPECT_EQ(PraiseText(1), "SUPER SCORE !\r\nVous venez de réaliser le meilleur score du classement.      ");
  for (int rank : {2, 3, 5})
    EXPECT_EQ(PraiseText(rank),
              "BRAVO !\r\nVotre score figure parmi les cinq meilleurs parties du classement.      ");
  EXPECT_EQ(PraiseText(6),
            "Bravo !\r\nVotre score figure à la 6 ème place dans la      \r\nliste des trente meilleurs parties.");
  EXPECT_EQ(PraiseText(30),
            "Bravo !\r\nVotre score figure à la 30 ème place dans la      \r\nliste des trente meilleurs parties.");

  // Through the form: best of two games, and twelfth of twelve.
  WriteFile(kFile, Table({Line(100)}));
  ASSERT_TRUE(Step("200").appended);
  boxes_.shown.clear();
  auto form = OpenBest();
  timers_.Advance(20);
  EXPECT_EQ(boxes_.Texts(), std::vector<std::string>{PraiseText(1)});
  form.reset();

  WriteFile(kFile, Table(Descending(500, 11)));
  ASSERT_TRUE(Step("5").appended);
  boxes_.shown.clear();
  form = OpenBest();
  timers_.Advance(10 + 11 * 10);
  EXPECT_TRUE(boxes_.shown.empty());
  EXPECT_EQ(form->view().ListIndex, 11);
  timers_.Advance(10);
  EXPECT_EQ(boxes_.Texts(), std::vector<std::string>{PraiseText(12)});
}

TEST_F(BestScores, LostResultStillOpensTheTableAndPraisesRankZero) {
  WriteFile(kFile, Table(Descending(500, 3)));
  FailingFiles files;
  files.failAppend = kErrPathFileAccess;
  ASSERT_TRUE(Step("250", files).openBest);
  boxes_.shown.clear();
  auto form = OpenBest(files);
  EXPECT_EQ(form->RangScore(), 0);
  timers_.Advance(20);
  EXPECT_EQ(form->view().ListIndex, 0);
  EXPECT_EQ(boxes_.Texts(), std::vector<std::string>{PraiseText(0)});
}

TEST_F(BestScores, ClearingTheTable) {
  WriteFile(kFile, Table(Descending(500, 3)));
  program_.BestNouveau = 0;
  auto form = OpenBest();
  boxes_.answers = {Answer::No};
  form->CmdEff_Click();
  EXPECT_EQ(boxes_.shown.back().text, "Voulez-vous vraiment effacer la liste des meilleurs scores ?");
  EXPECT_EQ(boxes_.shown.back().style.buttons, Buttons::YesNo);
  EXPECT_TRUE(Exists(kFile));
  EXPECT_EQ(form->view().LstSco.size(), 3u);

  form->CmdEff_Click();  // Yes
  EXPECT_FALSE(Exists(kFile));
  EXPECT_TRUE(form->view().LstSco.empty());
  EXPECT_FALSE(form->view().CmdEffEnabled);
  EXPECT_EQ(form->NbLignes(), 0);
}

TEST_F(BestScores, ClearingFailuresByNumber) {
  struct Case {
    int number;
    std::string text;
  };
  for (const Case& c : {Case{kErrPathFileAccess, "Erreur interne 113 - 75      \r\nFichier uniquement en lecture.      "},
                        Case{kErrDeviceIo, "Erreur interne 114 - 57      \r\nErreur d'entrée/sortie de périphérique      "},
                        Case{kErrFileNotFound, ""}}) {
    WriteFile(kFile, Table(Descending(500, 3)));
    boxes_.shown.clear();
    FailingFiles files;
    files.failRemove = c.number;
    program_.BestNouveau = 0;
    auto form = OpenBest(files);
    form->CmdEff_Click();
    if (c.text.empty()) {  // already gone: goes on
      EXPECT_EQ(boxes_.shown.size(), 1u);
      EXPECT_FALSE(form->view().CmdEffEnabled);
      EXPECT_EQ(form->NbLignes(), 0);
    } else {
      EXPECT_EQ(boxes_.shown.back().text, c.text);
      EXPECT_TRUE(form->view().CmdEffEnabled);
    }
  }
}

TEST_F(BestScores, RewriteFailureIsReportedAndTheListStillShows) {
  WriteFile(kFile, Table(Descending(500, 31)));
  FailingFiles files;
  files.failReplace = kErrPathFileAccess;
  program_.BestNouveau = 0;
  auto form = OpenBest(files);
  EXPECT_EQ(boxes_.Texts(),
            std::vector<std::string>{"Erreur interne 111 - 75      \r\nFichier uniquement en lecture.      "});
  EXPECT_EQ(form->view().LstSco.size(), 30u);
  EXPECT_EQ(SplitCrLf(ReadFile(kFile)).size(), 31u);
}

TEST_F(BestScores, WholeRoadFromAnEmptyFolderToTheFourthGame) {
  const int scores[] = {300, 150, 450, 300};
  for (int i = 0; i < 4; ++i) {
    clock_.now.minute = 10 + i;
    program_.NomPartie = "Partie tabli 0" + std::to_string(i + 1);
    ASSERT_TRUE(Step(std::to_string(scores[i])).appended);
    auto form = OpenBest();
    timers_.Advance(1000);
    form->Foc_Click();
    EXPECT_EQ(program_.BestNouveau, -1);
  }
  EXPECT_EQ(ReadFile(kFile),
            "300    Partie tabli 01      07/03/24   09:10\r\n"
            "150    Partie tabli 02      07/03/24   09:11\r\n"
            "450    Partie tabli 03      07/03/24   09:12\r\n"
            "300    Partie tabli 04      07/03/24   09:13\r\n");
  // The last game shares 300 with the first and is told rank 2, the better.
  EXPECT_EQ(boxes_.shown.back().text, PraiseText(2));
}

}  // namespace
}  // namespace ostrane
