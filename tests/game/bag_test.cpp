// The bag: its start sets, its display, the picking of tiles with undo and
// early stop, the rack coming back into the bag and its sort, the rack
// return of CmdRanger, and the letter of a blank.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

int Index(char letter) { return letter == '?' ? FrmJetons::kBlank : letter - 'A' + 1; }

class Bag : public GameTest {
 protected:
  // The picker over `bag`, as the main form opens it.
  std::unique_ptr<FrmJetons> OpenPicker(const std::string& bag) {
    Load();
    program.StrSac = bag;
    program.IntNbSac = int16_t(bag.size());
    FrmJetons::MainForm main{[this] { form->SubAfficheSac(); }, [] {}, [this] { form->visible = false; }};
    return std::make_unique<FrmJetons>(program, main);
  }
};

TEST_F(Bag, StartBagsFollowTheChosenSetAndTheDisplayWrapsFrom34Tiles) {
  const char* expected[] = {"", "AACEEEEEEIMNRSSSTU", "AACEEEFIKNNNNNNRTWWZ", "AAAABEEEGIILLNNOST?"};
  for (int pioche = 0; pioche <= 3; ++pioche) {
    program.IntPioche = int16_t(pioche);
    Load();
    EXPECT_TRUE(form->OptPioche[size_t(pioche)].value);
    EXPECT_EQ(program.StrSac, pioche ? expected[pioche] : StartBag(0));
  }
  EXPECT_EQ(StartBag(0).size(), 102u);
  EXPECT_EQ(StartBag(0).substr(0, 11) + StartBag(0).substr(96), "AAAAAAAAABBWXYZ??");  // blanks last
  form->OptPioche_Click(0);  // for the next game only
  EXPECT_EQ(program.IntPioche, 0);
  EXPECT_EQ(program.StrSac, expected[3]);
  // Up to 33 tiles on one line; from 34, three lines of a third each, rounded.
  const std::string e = "\r\n";
  for (const auto& [bag, shown] : std::vector<std::pair<std::string, std::string>>{
           {std::string(33, 'A'), e + std::string(33, 'A')},
           {"ABCDEFGHIJKLMNOPQRSTUVWXYZABCDEFGH", "ABCDEFGHIJK" + e + "LMNOPQRSTUV" + e + "WXYZABCDEFGH"},
           {std::string(35, 'A'),
            std::string(12, 'A') + e + std::string(12, 'A') + e + std::string(11, 'A')}}) {
    program.StrSac = bag;
    form->SubAfficheSac();
    EXPECT_EQ(form->LblLetReste.text, shown);
  }
}

TEST_F(Bag, PicksLeaveTheBagAndUndoPutsThemBackInPlace) {
  const std::string bag = "ABCDEEEFGHIJKLMNOPQ?RSTUVWXY?";
  auto jetons = OpenPicker(bag);
  fake.timers.Advance(249);
  EXPECT_FALSE(jetons->enabled);  // until TimDeb
  fake.timers.Advance(1);
  for (int k = 1; k <= 27; ++k) EXPECT_EQ(jetons->CmdJeton[size_t(k)].enabled, k != Index('Z')) << k;
  for (char c : std::string("E?Y?")) jetons->CmdJeton_Click(Index(c));
  EXPECT_FALSE(jetons->CmdJeton[27].enabled || jetons->CmdJeton[25].enabled || jetons->CmdValider.enabled);
  EXPECT_EQ(form->LblLetReste.text, "\r\nABCDEEFGHIJKLMNOPQRSTUVWX");  // the main form follows each click
  EXPECT_EQ(program.TabTirage[1] + jetons->LblTirage.text, "?E?Y?");
  EXPECT_EQ(jetons->ImgJ[3], (TileFace{TileFace::Picture::ImgLet, 24, TileFace::Tint::None}));
  for (int i = 0; i < 4; ++i) jetons->CmdAnnuler_Click();
  EXPECT_EQ(program.StrSac, bag);  // character for character
  EXPECT_TRUE(program.IntNbTire == 0 && !jetons->CmdAnnuler.enabled && jetons->CmdJeton[27].enabled);
  EXPECT_EQ(jetons->ImgJ[1], TileFace{});
  // Seven picks close the buttons; validation keeps the place of the picker.
  for (char c : std::string("EEEABCD")) jetons->CmdJeton_Click(Index(c));
  for (int k = 1; k <= 27; ++k) EXPECT_FALSE(jetons->CmdJeton[size_t(k)].enabled);
  jetons->left = 120;
  jetons->top = 80;
  jetons->CmdValider_Click();
  EXPECT_TRUE(jetons->closed);
  EXPECT_EQ(program.IntJetonsGauche + program.IntJetonsHaut, 200);
}

TEST_F(Bag, NearTheEndOfTheBagThePlayerMayStopEarly) {
  const struct {
    int size, toPick;
    bool early;
  } cases[] = {{3, 3, false}, {7, 7, false}, {8, 7, true}, {13, 7, true}, {14, 7, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.size);
    auto jetons = OpenPicker(std::string(size_t(c.size), 'E'));
    EXPECT_EQ(jetons->IntNbATirer, c.toPick);
    EXPECT_EQ(jetons->BlnFinSac, c.early ? 1 : 0);
    for (int i = 1; i <= c.toPick; ++i) {
      jetons->CmdJeton_Click(Index('E'));
      EXPECT_EQ(jetons->CmdValider.enabled, c.early || i == c.toPick) << i;
    }
    jetons->CmdAnnuler_Click();
    EXPECT_FALSE(jetons->CmdValider.enabled);  // one more pick is needed to validate again
  }
}

TEST_F(Bag, DrawnTilesFillTheRackInPickOrderAndGoBackSorted) {
  Load();
  program.StrSac = "ABCDEFGHIJ?";
  forms.onJetons = [&](FrmJetons& jetons) {
    for (char c : std::string("?JA")) jetons.CmdJeton_Click(Index(c));
    jetons.CmdValider_Click();
  };
  form->SubTirage();
  const char* tags[] = {"?|?", "j|j", "a|a", "|"};  // the tile's and the rack entry's
  for (size_t k = 0; k < 4; ++k)
    EXPECT_EQ(form->PicGamer[k].Tag + "|" + form->TabChevalet[k].StrLettre, tags[k]);
  EXPECT_EQ(form->PicGamer[0].face, (TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None}));
  EXPECT_EQ(form->PicGamer[1].left, layout::RackLeft(1));
  EXPECT_EQ(form->TabChevalet[2].IntJeton, 2);
  EXPECT_FALSE(form->PicGamer[3].visible);
  // The rack, and a proposal left on the board, go back into the bag, sorted.
  Put(5, "s", 7, 7);
  form->CmdRAZ_Click();
  EXPECT_EQ(form->LblLetReste.text, "\r\n?ABCDEFGHIJS");
  for (size_t i = 0; i < 7; ++i)
    EXPECT_TRUE(!form->PicGamer[i].visible && form->TabChevalet[i].StrLettre.empty());
  // Any bag comes out sorted, blanks first.
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    std::string bag;
    for (int i = int(random() % 102); i > 0; --i) bag += "ABCDEFGHIJKLMNOPQRSTUVWXYZ?"[random() % 27];
    program.StrSac = bag;
    form->CmdRAZ_Click();
    std::sort(bag.begin(), bag.end());
    ASSERT_EQ(program.StrSac, bag);
  }
  // An empty bag opens no picker and marks the bag as found empty.
  program.StrSac = "";
  form->SubTirage();
  EXPECT_EQ(forms.jetonsShown, 1);
  EXPECT_EQ(program.BlnSacVide, -1);
}

TEST_F(Bag, RangerBringsTheBoardTilesHome) {
  Load();
  PutOnRack(0, "e", 0);
  Put(1, "s", 7, 7);
  Put(2, "T", 8, 7);    // a blank with its letter
  Put(3, "Nul", 9, 7);  // a blank left without one
  form->CmdValider.enabled = form->CmdRanger.enabled = true;
  form->CmdRanger_Click();
  EXPECT_EQ(form->PicGamer[1].left, layout::RackLeft(1));
  EXPECT_EQ(form->PicGamer[1].face, (TileFace{TileFace::Picture::ImgLet, 's' - 'a', TileFace::Tint::Black}));
  EXPECT_EQ(form->PicGamer[2].face, (TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None}));
  EXPECT_EQ(form->PicGamer[2].Tag + form->PicGamer[3].Tag, "??");
  EXPECT_EQ(form->TabChevalet[2].StrLettre, "T");  // the entry takes the tag before it goes back to "?"
  EXPECT_FALSE(form->CmdValider.enabled || form->CmdRanger.enabled);
  // A full rack leaves a tile on the board.
  for (int i = 0; i < 6; ++i) PutOnRack(i, "e", i);
  form->TabChevalet[6] = FrmPlateau::Chevalet{"x", 9};
  Put(6, "s", 7, 7);
  form->CmdRanger_Click();
  EXPECT_EQ(form->PicGamer[6].left, layout::SquareLeft(7));
}

TEST_F(Bag, TheBlanksBoxTakesOneCapitalAfterAQuarterSecond) {
  Load();
  FrmJoc joc(program);
  EXPECT_EQ(joc.LblJoc.text, "Quelle lettre voulez-vous\r\nattribuer au joker ?");
  joc.TxtJok_Change("é");
  EXPECT_EQ(joc.TxtJok.text, "");
  joc.TxtJok_Change("k");
  EXPECT_EQ(joc.TxtJok.text + program.StrJoker, "KK");
  fake.timers.Advance(249);
  EXPECT_FALSE(joc.closed);
  fake.timers.Advance(1);
  EXPECT_TRUE(joc.closed);
  FrmJoc second(program);
  second.TxtJok_Change("b");
  second.TxtJok_Change("");  // taken back before the quarter second
  fake.timers.Advance(250);
  EXPECT_TRUE(second.closed);
  EXPECT_EQ(program.StrJoker, "Nul");
}

}  // namespace
}  // namespace ostrane::test
