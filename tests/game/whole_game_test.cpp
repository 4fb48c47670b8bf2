// Whole games played through the models as a player plays them through the
// windows: picks clicked in, the proposed play laid with drag gestures,
// validation clicked, boxes closed.
#include <gtest/gtest.h>

#include <fstream>

#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

using WholeGame = GameTest;

TEST_F(WholeGame, ShortBagRunsOutAndEntersTheTable) {
  FrmPlateau& f = Load("AAAABEEEGIILLNNOST?");
  f.CmdNew_Click();
  const int plays = PlayOut();
  std::printf("%s\nscore %s plays %d\n", f.TxtHisto.text.c_str(), f.LblPtsJoueur.text.c_str(), plays);
  fake.timers.Advance(FrmPlateau::kTimFrmFin);
  fake.timers.Advance(FrmPlateau::kTimScore);
}

}  // namespace
}  // namespace ostrane::test
