// The table of best scores: the step at the end of a game (read, qualify,
// ask, append) with tables of 0, 29, 30 and 31 lines, the table's form
// (rank, trim to thirty, walk, praise, clear), and file failures by number.
#include "records/best_scores.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "tests/records/record_fakes.h"

namespace ostrane::test {
namespace {

constexpr const char* kFile = "bestsco.ret";

// A line of the table as the file holds it.
std::string Line(int score, const std::string& name = "Partie") {
  char text[128];
  std::snprintf(text, sizeof text, "%-7d%-18s   01/02/24   10:00", score, name.c_str());
  return text;
}
std::string Table(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const auto& line : lines) bytes += line + "\r\n";
  return bytes;
}
// `count` lines from `first` going down by one, named "Jeu 1", "Jeu 2"...
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
const std::string kReadOnly = "Fichier uniquement en lecture.      ";

class BestScores : public ProgramFixture {
 protected:
  BestScores() { program_.NomPartie = "Partie tabli 01"; }
  ScoreStepResult Step(int score, TextFiles& files = DiskFiles()) {
    return TimScoreStep(program_, std::to_string(score), files);
  }
  // Opens the table as the main form does and lets its load run.
  std::unique_ptr<FrmBest> OpenBest(TextFiles& files = DiskFiles()) {
    auto form = std::make_unique<FrmBest>(
        program_, [this](bool on) { mainEnabled_.push_back(on); }, files);
    form->Form_Load();
    fake_.timers.Advance(100);
    return form;
  }
  std::vector<bool> mainEnabled_;
};

TEST(BestScoreFile, LinesOfFortyFourCharactersAndItemsSplitAtLineEndsAndCommas) {
  const DateTime when{2024, 3, 7, 9, 5, 42};
  EXPECT_EQ(BestScoreLine(250, "Partie tabli 01", when), "250    Partie tabli 01      07/03/24   09:05");
  EXPECT_EQ(BestScoreLine(1234567, "x", when).substr(0, 8), "1234567 ");      // filling always adds a blank
  EXPECT_EQ(BestScoreLine(9, "Équipe à deux", when).substr(7, 3), "\xC9qu");  // one byte a character
  EXPECT_EQ(ReadScoreItems("12 a\r\n13 b,c\r\n\r\n  14 d\n"),
            (std::vector<std::string>{"12 a", "13 b", "c", "", "14 d"}));
  EXPECT_EQ(ReadScoreItems(Table(Descending(160, 60))).size(), 50u);  // fifty at most
}

TEST_F(BestScores, TheStepAsksOrRefusesByTheTableItFinds) {
  std::vector<std::string> comma = Descending(127, 28);  // 29 lines, the last with a comma: 30 items
  comma.push_back(Line(150, "Partie tabli,99"));
  std::vector<std::string> sixty = Descending(500, 60);  // only fifty items are read
  sixty[54] = Line(5);
  std::vector<std::string> blank = Descending(500, 29);  // a trim's blank line is an item worth 0
  blank.push_back("");
  const struct {
    const char* what;
    std::optional<std::vector<std::string>> lines;
    int score;
    bool asked;
  } cases[] = {
      {"no file", std::nullopt, 250, true},
      {"an empty file", std::vector<std::string>{}, 3, true},
      {"29 lines, the lowest score", Descending(500, 29), 1, true},
      {"30 lines, a tie with the lowest", Descending(500, 30), 471, false},
      {"30 lines, one more", Descending(500, 30), 472, true},
      {"31 lines, not yet trimmed", Descending(500, 31), 470, false},
      {"60 lines", sixty, 100, false},
      {"29 lines without the comma", Descending(127, 29), 60, true},
      {"a comma in a name", comma, 99, false},
      {"a comma in a name, a better score", comma, 100, true},
      {"a blank line, 0", blank, 0, false},
      {"a blank line, 1", blank, 1, true},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    std::filesystem::remove(dir_.path() / kFile);
    if (c.lines) Write(kFile, Table(*c.lines));
    const std::string before = Read(kFile);
    fake_.boxes.shown.clear();
    program_.BestNouveau = 0;
    const ScoreStepResult result = Step(c.score);
    EXPECT_EQ(program_.ScoreCourant, c.score);
    ASSERT_EQ(fake_.boxes.shown.size(), 1u);
    EXPECT_EQ(fake_.boxes.shown[0].text, c.asked
                                             ? Question(c.score)
                                             : "Désolé, mais votre score, bien que respectable, n'est       "
                                               "\r\npas suffisant pour figurer dans les trente meilleurs.");
    EXPECT_EQ(fake_.boxes.shown[0].style.buttons, c.asked ? Buttons::YesNo : Buttons::Ok);
    EXPECT_EQ(result.appended && result.openBest && program_.BestNouveau == 1, c.asked);
    EXPECT_EQ(Read(kFile),
              before + (c.asked ? BestScoreLine(c.score, "Partie tabli 01", fake_.clock.now) + "\r\n" : ""));
  }
  // No keeps everything as it was; a label is read as its absolute value.
  std::filesystem::remove(dir_.path() / kFile);
  fake_.boxes.answers = {Answer::No};
  program_.BestNouveau = -1;
  EXPECT_FALSE(TimScoreStep(program_, "-75").openBest);
  EXPECT_EQ(fake_.boxes.shown.back().text, Question(75));
  EXPECT_FALSE(Exists(kFile));
  EXPECT_EQ(program_.BestNouveau, -1);
}

TEST_F(BestScores, FileFailuresGiveTheirNumberAndLoseOnlyTheResult) {
  Write(kFile, Table(Descending(500, 3)));
  FailingFiles readOnly;
  readOnly.failAppend = kErrPathFileAccess;
  EXPECT_FALSE(Step(250, readOnly).appended);
  EXPECT_EQ(fake_.boxes.Texts(),
            (std::vector<std::string>{Question(250), "Erreur interne 104 - 75      \r\n" + kReadOnly}));
  EXPECT_EQ(Read(kFile), Table(Descending(500, 3)));
  // The table still opens; the lost game has rank 0 and the praise of rank 0.
  fake_.boxes.shown.clear();
  auto form = OpenBest(readOnly);
  fake_.timers.Advance(20);
  EXPECT_EQ(form->RangScore(), 0);
  EXPECT_EQ(fake_.boxes.Texts(), std::vector<std::string>{PraiseText(0)});

  fake_.boxes.shown.clear();
  FailingFiles io;
  io.failRead = kErrDeviceIo;
  EXPECT_TRUE(Step(250, io).openBest);
  EXPECT_EQ(io.appends, 0);  // no question: the failure came first
  EXPECT_EQ(fake_.boxes.Texts(),
            std::vector<std::string>{
                "Erreur interne 105 - 57      \r\nErreur d'entrée/sortie de périphérique      "});
  // A real failure that holds even for root: the file is a folder.
  std::filesystem::remove(dir_.path() / kFile);
  std::filesystem::create_directory(dir_.path() / kFile);
  EXPECT_FALSE(Step(250).appended);
  EXPECT_EQ(fake_.boxes.shown.back().text, "Erreur interne 104 - 75      \r\n" + kReadOnly);
  for (int code : {EACCES, EPERM, EROFS, EISDIR}) EXPECT_EQ(FileErrorNumber(code), 75);
}

TEST(RankBestLines, BestFirstTiesInFileOrderZeroAndBadHeadsLeftOut) {
  const std::vector<std::string> lines = {Line(300, "a"), Line(500, "b"),  Line(0, "c"), "abc    x",
                                          Line(300, "d"), Line(-100, "e"), Line(12345)};
  EXPECT_EQ(RankBestLines(lines), (std::vector<std::string>{"001  " + lines[6],  // read as 1234
                                                            "002  " + lines[1], "003  " + lines[0],
                                                            "004  " + lines[4], "005  " + lines[5]}));
  // Against a stable sort on generated tables.
  uint32_t seed = 12345;
  auto next = [&seed] { return seed = seed * 1103515245u + 12345u, (seed >> 16) % 60; };
  for (int round = 0; round < 200; ++round) {
    std::vector<std::string> table, sorted;
    for (int i = int(next() % 33); i > 0; --i)
      table.push_back(Line(int(next()) % 20, "g" + std::to_string(i)));
    std::copy_if(table.begin(), table.end(), std::back_inserter(sorted),
                 [](const std::string& line) { return std::stoi(line.substr(0, 4)) != 0; });
    std::stable_sort(sorted.begin(), sorted.end(), [](const std::string& a, const std::string& b) {
      return std::stoi(a.substr(0, 4)) > std::stoi(b.substr(0, 4));
    });
    for (size_t r = 0; r < sorted.size(); ++r)
      sorted[r] = (r < 9 ? "00" : "0") + std::to_string(r + 1) + "  " + sorted[r];
    ASSERT_EQ(RankBestLines(table), sorted);
  }
}

TEST_F(BestScores, TheFormListsRankedLinesAfterItsTimerAndTrimsToThirtyOnlyFromThirtyOne) {
  Write(kFile,
        Table({Line(300, "a"), Line(500, "b"), Line(300, "c"), Line(0, "z"), "xyz garbage", Line(100, "d")}));
  program_.ScoreCourant = 300;
  auto form = std::make_unique<FrmBest>(program_, nullptr);
  form->Form_Load();
  EXPECT_EQ(form->view().pointer, Pointer::Hourglass);
  fake_.timers.Advance(99);
  EXPECT_TRUE(form->view().LstSco.empty());
  fake_.timers.Advance(1);
  EXPECT_EQ(form->view().pointer, Pointer::Default);
  EXPECT_EQ(form->view().LstSco,
            (std::vector<std::string>{"001  " + Line(500, "b"), "002  " + Line(300, "a"),
                                      "003  " + Line(300, "c"), "004  " + Line(100, "d")}));
  EXPECT_EQ(form->RangScore(), 2);  // the better of the two ranks of 300
  EXPECT_EQ(form->NbLignes(), 6);
  EXPECT_TRUE(form->view().CmdEffEnabled);
  fake_.timers.Advance(1000);  // opened by the button: no walk, no praise
  EXPECT_TRUE(form->view().ListIndex == -1 && fake_.boxes.shown.empty() && fake_.timers.Running() == 0);

  auto unsorted = Descending(500, 30);
  std::swap(unsorted[3], unsorted[20]);
  auto withNew = unsorted, expected = Descending(500, 29);
  withNew.push_back(Line(490, "Nouvelle"));
  expected.insert(expected.begin() + 11, Line(490, "Nouvelle"));  // 490 ranks 11th, after the older "Jeu 11"
  auto tooMany = Descending(100, 32);
  tooMany.push_back(Line(999, "Trop tard"));  // only 32 lines are read
  auto zeros = Descending(500, 29), blankLast = zeros;
  zeros.push_back(Line(0, "Nulle 1"));
  zeros.push_back(Line(0, "Nulle 2"));
  blankLast.push_back("");  // no entry for the 30th rank: a blank line
  const struct {
    std::vector<std::string> lines, kept;
    int rank;
  } cases[] = {{unsorted, unsorted, 11},
               {withNew, expected, 11},
               {tooMany, Descending(100, 30), 0},
               {zeros, blankLast, 11}};
  for (const auto& c : cases) {
    Write(kFile, Table(c.lines));
    program_.ScoreCourant = 490;
    FailingFiles files;
    form = OpenBest(files);
    EXPECT_EQ(Read(kFile), Table(c.kept));
    EXPECT_EQ(files.replaces, c.lines.size() > 30 ? 1 : 0);
    EXPECT_EQ(form->RangScore(), c.rank);
  }
}

TEST_F(BestScores, ANewGameWalksTheSelectionDownAndIsPraisedByItsRank) {
  EXPECT_EQ(PraiseText(1), "SUPER SCORE !\r\nVous venez de réaliser le meilleur score du classement.      ");
  for (int rank : {2, 5})
    EXPECT_EQ(PraiseText(rank),
              "BRAVO !\r\nVotre score figure parmi les cinq meilleurs parties du classement.      ");
  EXPECT_EQ(
      PraiseText(30),
      "Bravo !\r\nVotre score figure à la 30 ème place dans la      \r\nliste des trente meilleurs parties.");
  const struct { int tableSize, score, rank; } cases[] = {{0, 120, 1}, {1, 600, 1}, {6, 497, 4}, {11, 5, 12}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.rank);
    Write(kFile, Table(Descending(500, c.tableSize)));
    ASSERT_TRUE(Step(c.score).appended);
    fake_.boxes.shown.clear();
    mainEnabled_.clear();
    auto form = OpenBest();
    EXPECT_EQ(form->RangScore(), c.rank);
    EXPECT_EQ(form->view().focus, FrmBest::Focus::LstSco);
    for (int line = 0; line < c.rank; ++line) {
      fake_.timers.Advance(10);  // TimLigne: one line a tick
      EXPECT_EQ(form->view().ListIndex, line);
      EXPECT_TRUE(fake_.boxes.shown.empty());
    }
    fake_.timers.Advance(10);  // the walk ends; the very first game gets no praise
    EXPECT_EQ(fake_.boxes.Texts(),
              c.tableSize ? std::vector<std::string>{PraiseText(c.rank)} : std::vector<std::string>{});
    EXPECT_EQ(form->view().focus, FrmBest::Focus::Foc);
    EXPECT_EQ(program_.BestNouveau, 0);
    EXPECT_EQ(fake_.timers.Running(), 0);
    form->CmdFerme_Click();
    EXPECT_EQ(program_.BestNouveau, -1);
    EXPECT_EQ(mainEnabled_, std::vector<bool>{true});
    EXPECT_TRUE(form->view().unloaded);
  }
}

TEST_F(BestScores, ClearingAndTheFailuresOfTheForm) {
  auto form = OpenBest();  // no table: made empty for the reading
  EXPECT_EQ(fake_.boxes.Texts(),
            std::vector<std::string>{"Aucune partie n'est actuellement enregistrée.      "});
  EXPECT_EQ(Read(kFile), "");
  EXPECT_FALSE(form->view().CmdEffEnabled);
  Write(kFile, Table(Descending(500, 3)));
  form = OpenBest();
  fake_.boxes.answers = {Answer::No};
  form->CmdEff_Click();
  EXPECT_EQ(fake_.boxes.shown.back().text, "Voulez-vous vraiment effacer la liste des meilleurs scores ?");
  EXPECT_TRUE(Exists(kFile));
  form->CmdEff_Click();  // Yes
  EXPECT_FALSE(Exists(kFile) || form->view().CmdEffEnabled);
  EXPECT_TRUE(form->view().LstSco.empty());

  const struct {
    std::optional<int> read, replace, remove;
    std::string text;
  } failures[] = {
      {kErrPathFileAccess, {}, {}, "Erreur interne 111 - 75      \r\n" + kReadOnly},
      {kErrDiskFull, {}, {}, "Erreur interne 112 - 61      \r\nDisque plein      "},
      {{}, kErrPathFileAccess, {}, "Erreur interne 111 - 75      \r\n" + kReadOnly},
      {{}, {}, kErrPathFileAccess, "Erreur interne 113 - 75      \r\n" + kReadOnly},
      {{}, {}, kErrDeviceIo, "Erreur interne 114 - 57      \r\nErreur d'entrée/sortie de périphérique      "},
      {{}, {}, kErrFileNotFound, ""},  // a table already gone when it is cleared
  };
  for (const auto& f : failures) {
    Write(kFile, Table(Descending(500, 31)));
    fake_.boxes.shown.clear();
    FailingFiles files;
    files.failRead = f.read;
    files.failReplace = f.replace;
    files.failRemove = f.remove;
    form = OpenBest(files);
    if (f.remove) form->CmdEff_Click();
    const std::vector<std::string> texts = fake_.boxes.Texts();
    EXPECT_EQ(f.remove ? texts.back() : texts.front(), f.text.empty() ? texts[0] : f.text);
    EXPECT_EQ(texts.size(), f.remove && f.text.empty() ? 1u : texts.size());  // the question only
    EXPECT_TRUE(form->ListeChargee());
    EXPECT_EQ(form->view().pointer, Pointer::Default);
  }
}

}  // namespace
}  // namespace ostrane::test
