// The exact analysis beside the designed game: the tops of the turns added
// up and kept with the journal, the exact top proposed when asked, a search
// too rich for the designed tables that proposes the exact top instead of
// ending the program, and the analysis list with its filter, pages and the
// designed proposal's standing.
#include <gtest/gtest.h>

#include "game/analysis.h"
#include "game/texts.h"
#include "lexicon/tables.h"
#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

constexpr const char* kShortBag = "AAAABEEEGIILLNNOST?";

std::string Upper(std::string text) {
  for (char& c : text) c = UpperAscii(c);
  return text;
}

class ExactAnalysis : public GameTest {
 protected:
  // The main form with the exact analysis offered, loaded on `bag`.
  FrmPlateau& LoadWithAnalysis(const std::string& bag = kShortBag) {
    FrmPlateau& f = run.Make();
    OfferExactAnalysis(f, RealLexicon().Graph());
    f.Form_Load();
    fake.timers.Advance(FrmPlateau::kTimDeb);
    if (!bag.empty()) {
      program.StrSac = bag;
      f.SubAfficheSac();
    }
    return f;
  }
  // The exact top of the rack on the stand, worked out apart.
  int TopNow() {
    BoardSquares squares{};
    for (int y = 0; y < 15; ++y)
      for (int x = 0; x < 15; ++x) squares[size_t(y * 15 + x)] = form->ObjPlateau->Square(x, y);
    std::string rack;
    for (const Tile& t : form->PicGamer)
      if (!t.Tag.empty()) rack += t.Tag[0] >= 'a' ? t.Tag[0] : '?';
    const auto best = ExactMoves(RealLexicon().Graph()).Best(squares.data(), form->ObjPlateau->SubWordFirst(), rack);
    return best ? best->points : 0;
  }
};

TEST_F(ExactAnalysis, TheTopsOfTheTurnsPlayedAddUpAndStayWithTheJournal) {
  FrmPlateau& f = LoadWithAnalysis();
  EXPECT_EQ(f.TurnTop, -1);
  f.CmdNew_Click();
  int tops = 0;
  for (int turn = 0; turn < 3 && f.CmdSolution.enabled; ++turn) {
    const int top = TopNow();
    EXPECT_EQ(f.TurnTop, top);
    ASSERT_TRUE(LayProposition());
    f.CmdValider_Click();
    tops += top;
    EXPECT_EQ(f.TopsTotal, tops);
  }
  Analysis analysis(f, RealLexicon().Graph());
  EXPECT_EQ(analysis.Tops(), tops);
  EXPECT_EQ(analysis.Percent(), (analysis.Score() * 100 + tops / 2) / tops);
  EXPECT_LE(analysis.Score(), tops);  // the designed proposals never beat the tops
  // The journal keeps the sum; a game taken up from it goes on from there.
  const std::optional<SavedGame> kept = run.journal->Load();
  ASSERT_TRUE(kept.has_value());
  EXPECT_EQ(kept->TopsTotal, tops);
  GameRun again(dir.path());
  FrmPlateau& taken = again.Make();
  OfferExactAnalysis(taken, RealLexicon().Graph());
  taken.TakeUp(*kept);
  taken.Form_Load();
  again.fake.timers.Advance(FrmPlateau::kTimDeb);
  EXPECT_EQ(taken.TopsTotal, tops);
}

TEST_F(ExactAnalysis, TheExactTopIsProposedWhenTheSettingsAskForIt) {
  program.settings.proposeExact = true;
  FrmPlateau& f = LoadWithAnalysis();
  f.CmdNew_Click();
  for (int turn = 0; turn < 4 && f.CmdSolution.enabled; ++turn) {
    ASSERT_TRUE(f.Proposition.has_value());
    EXPECT_EQ(f.Proposition->CountP, TopNow());
    EXPECT_EQ(forms.boiteD.back().substr(0, forms.boiteD.back().find('|')), Upper(f.Proposition->Express));
    ASSERT_TRUE(LayProposition());
    EXPECT_EQ(f.LblPts.text, std::to_string(f.Proposition->CountP));  // the validation agrees
    f.CmdValider_Click();
  }
}

TEST_F(ExactAnalysis, ASearchTooRichForTheDesignedTablesProposesTheExactTop) {
  FrmPlateau& f = LoadWithAnalysis();
  f.CmdNew_Click();
  ASSERT_TRUE(LayProposition());
  f.CmdValider_Click();
  // The directions of this turn's searches fill up: the next search passes
  // the limit of its table, which would end the designed program.
  program.engine.LngSens = EngineContext::kTabSensBound - 3;
  f.CmdSolution_Click();
  ASSERT_TRUE(f.ObjPlateau->LimitReached());
  ASSERT_TRUE(f.Proposition.has_value());
  EXPECT_EQ(f.Proposition->CountP, TopNow());
  EXPECT_EQ(f.LblIndic.text.substr(0, f.LblIndic.text.find('\r')), texts::kTropDeSolutions);
  EXPECT_EQ(fake.boxes.shown.size(), 0u);  // no fatal error
  ASSERT_TRUE(LayProposition());
  f.CmdValider_Click();  // and the game goes on
  EXPECT_EQ(f.IntNbCoups, 2);
}

TEST_F(ExactAnalysis, TheListItsFilterItsPagesAndWhereTheProposalStands) {
  FrmPlateau& f = LoadWithAnalysis();
  f.CmdNew_Click();
  ASSERT_TRUE(LayProposition());
  f.CmdValider_Click();  // the second turn: a board to play on
  Analysis analysis(f, RealLexicon().Graph());
  ASSERT_TRUE(analysis.Update());
  EXPECT_FALSE(analysis.Update());  // nothing changed
  const std::vector<ExactPlay>& plays = analysis.Plays();
  ASSERT_GT(plays.size(), size_t(Analysis::kPageSize));
  EXPECT_EQ(plays.front().points, f.TurnTop);
  // Pages over the whole list, then a filter by letters and length.
  EXPECT_EQ(analysis.PageCount(), int((plays.size() + Analysis::kPageSize - 1) / Analysis::kPageSize));
  analysis.SetPage(1);
  EXPECT_EQ(analysis.PageRows().front(), Analysis::kPageSize);
  analysis.SetFilter("ge", 4);
  EXPECT_EQ(analysis.Page(), 0);
  ASSERT_FALSE(analysis.Kept().empty());
  for (const int i : analysis.Kept()) {
    EXPECT_EQ(plays[size_t(i)].length, 4);
    EXPECT_NE(plays[size_t(i)].Word().find("GE"), std::string::npos);
  }
  // The designed proposal, with its true points and its rank.
  const std::optional<Analysis::Standing> standing = analysis.Proposal();
  ASSERT_TRUE(standing.has_value());
  EXPECT_EQ(standing->place, f.Proposition->Place);
  EXPECT_EQ(standing->points, TruePoints(analysis.Board().data(), *f.Proposition));
  ASSERT_GE(standing->index, 0);
  EXPECT_EQ(plays[size_t(standing->index)].points, standing->points);
  EXPECT_GT(plays[size_t(standing->rank - 1)].points, standing->rank > 1 ? standing->points - 1 : -1);
  // A tile moved onto the board is still the rack's: nothing to work again.
  ASSERT_TRUE(LayProposition());
  EXPECT_FALSE(analysis.Update());
  f.CmdValider_Click();
  EXPECT_TRUE(analysis.Update());
}

TEST_F(ExactAnalysis, EveryListedPlayLaidOnTheBoardIsScoredTheSameByTheValidation) {
  // A game on the whole bag, its tiles drawn at random; on each of its first
  // turns, plays spread over the whole list (blanks among them) are laid
  // with the drag rules and judged by the validation, then taken back.
  Rng picks(11);
  forms.randomPicks = &picks;
  FrmPlateau& f = LoadWithAnalysis("");
  f.CmdNew_Click();
  Analysis analysis(f, RealLexicon().Graph());
  int judged = 0, withBlanks = 0;
  for (int turn = 0; turn < 6 && f.CmdSolution.enabled; ++turn) {
    analysis.Update();
    const std::vector<ExactPlay> plays = analysis.Plays();
    for (size_t i = 0; i < plays.size(); i += std::max<size_t>(1, plays.size() / 25)) {
      const ClsWord word = plays[i].ToWord(analysis.Board().data());
      ASSERT_TRUE(LayWord(f, *run.drag, word, [this](char letter) {
        forms.jokerLetters.push_back(std::string(1, letter));
      })) << word.Express << " " << word.Place;
      const ClsWord judgedPlay = f.SubEvalueProposition();
      EXPECT_EQ(judgedPlay.CountP, plays[i].points) << word.Express << " " << word.Place;
      EXPECT_EQ(judgedPlay.Place, word.Place);
      ++judged;
      withBlanks += plays[i].blanks > 0;
      // Back to the rack, each to a free place.
      for (int k = 0; k < 7; ++k) {
        if (!f.TileAcrossPlateau(k)) continue;
        int place = 0;
        while (place < 6 && !f.TabChevalet[size_t(place)].StrLettre.empty()) ++place;
        DragTile(*run.drag, k, layout::RackLeft(place) + 17, layout::RackTop() + 17);
      }
      ASSERT_FALSE(f.CmdValider.enabled);
    }
    ASSERT_TRUE(LayProposition());
    f.CmdValider_Click();
  }
  EXPECT_GT(judged, 100);
  EXPECT_GT(withBlanks, 0);
}

}  // namespace
}  // namespace ostrane::test
