// The bag: its start sets, its display, the picking of tiles with undo and
// early stop, the rack coming back into the bag and its sort, the rack
// return of CmdRanger, and the letter of a blank.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/game/game_fixture.h"

namespace ostrane::test {
namespace {

class Bag : public GameTest {};

TEST_F(Bag, StartBagsFollowTheChosenSet) {
  const char* expected[] = {nullptr, "AACEEEEEEIMNRSSSTU", "AACEEEFIKNNNNNNRTWWZ", "AAAABEEEGIILLNNOST?"};
  for (int pioche = 0; pioche <= 3; ++pioche) {
    program.IntPioche = int16_t(pioche);
    Load();
    EXPECT_TRUE(form->OptPioche[size_t(pioche)].value);
    if (pioche == 0) {
      EXPECT_EQ(program.StrSac.size(), 102u);
      EXPECT_EQ(program.StrSac.substr(0, 11), "AAAAAAAAABB");
      EXPECT_EQ(program.StrSac.substr(96), "WXYZ??");  // table order, blanks last
    } else {
      EXPECT_EQ(program.StrSac, expected[pioche]);
    }
  }
  // A change after the load is for the next game only.
  program.IntPioche = 0;
  Load();
  form->OptPioche_Click(2);
  EXPECT_EQ(program.IntPioche, 2);
  EXPECT_EQ(program.StrSac.size(), 102u);
  form->OptJok_Click(3);
  EXPECT_EQ(program.IntJok, 3);
  EXPECT_TRUE(form->OptJok[3].value);
  EXPECT_FALSE(form->OptJok[1].value);
}

TEST_F(Bag, DisplayHasOneLineUnder34TilesAndThreeFrom34) {
  Load();
  program.StrSac = std::string(33, 'A');
  form->SubAfficheSac();
  EXPECT_EQ(form->LblLetReste.text, "\r\n" + std::string(33, 'A'));
  program.StrSac = "ABCDEFGHIJKLMNOPQRSTUVWXYZABCDEFGH";  // 34: 11.33 a line
  form->SubAfficheSac();
  EXPECT_EQ(form->LblLetReste.text, "ABCDEFGHIJK\r\nLMNOPQRSTUV\r\nWXYZABCDEFGH");
  program.StrSac = std::string(37, 'B') + "C";  // 38 / 3 = 12.67: 13
  form->SubAfficheSac();
  EXPECT_EQ(form->LblLetReste.text,
            std::string(13, 'B') + "\r\n" + std::string(13, 'B') + "\r\n" + std::string(11, 'B') + "C");
  program.StrSac = std::string(100, 'E') + "??";  // 102 / 3 = 34
  form->SubAfficheSac();
  EXPECT_EQ(form->LblLetReste.text,
            std::string(34, 'E') + "\r\n" + std::string(34, 'E') + "\r\n" + std::string(32, 'E') + "??");
}

TEST_F(Bag, HalvesOfTheDisplayGoToTheEvenNeighbour) {
  // No length gives a half when divided by 3; the rounding is that of the
  // program's own numbers all the same: 35 / 3 = 11.67 gives 12, 37 / 3 = 12.33 gives 12.
  Load();
  program.StrSac = std::string(35, 'A');
  form->SubAfficheSac();
  EXPECT_EQ(form->LblLetReste.text.find("\r\n"), 12u);
  program.StrSac = std::string(37, 'A');
  form->SubAfficheSac();
  EXPECT_EQ(form->LblLetReste.text.find("\r\n"), 12u);
}

// ------------------------------------------------------------ the picker

class Picker : public GameTest {
 protected:
  std::unique_ptr<FrmJetons> Open(const std::string& bag) {
    Load();
    program.StrSac = bag;
    program.IntNbSac = int16_t(bag.size());
    FrmJetons::MainForm main;
    main.SubAfficheSac = [this] { form->SubAfficheSac(); };
    main.ShowBoiteI = [this] { ++boiteI; };
    main.Hide = [this] { form->visible = false; };
    return std::make_unique<FrmJetons>(program, main);
  }
  static int Index(char letter) { return letter == '?' ? FrmJetons::kBlank : letter - 'A' + 1; }
  int boiteI = 0;
};

TEST_F(Picker, ButtonsOfLettersTheBagLacksAreGrey) {
  auto jetons = Open("AEEZ?");
  EXPECT_FALSE(jetons->enabled);  // until TimDeb
  fake.timers.Advance(249);
  EXPECT_FALSE(jetons->enabled);
  fake.timers.Advance(1);
  EXPECT_TRUE(jetons->enabled);
  for (int k = 1; k <= 27; ++k) {
    const std::string caption = JetonCaption(k);
    EXPECT_EQ(jetons->CmdJeton[size_t(k)].caption, caption);
    EXPECT_EQ(jetons->CmdJeton[size_t(k)].enabled, std::string("AEZ?").find(caption) != std::string::npos)
        << caption;
  }
  EXPECT_EQ(jetons->IntNbATirer, 5);
  EXPECT_EQ(jetons->BlnFinSac, 0);
  EXPECT_FALSE(jetons->CmdValider.enabled);
  EXPECT_FALSE(jetons->CmdAnnuler.enabled);
}

TEST_F(Picker, PicksLeaveTheBagAndUndoPutsThemBackInPlace) {
  const std::string bag = "ABCDEEEFGHIJKLMNOPQ?RSTUVWXYZ?";
  auto jetons = Open(bag);
  fake.timers.Advance(250);
  jetons->CmdJeton_Click(Index('E'));
  jetons->CmdJeton_Click(Index('?'));
  jetons->CmdJeton_Click(Index('Z'));
  jetons->CmdJeton_Click(Index('?'));
  EXPECT_FALSE(jetons->CmdJeton[27].enabled);  // both blanks picked
  EXPECT_EQ(program.StrSac, "ABCDEEFGHIJKLMNOPQRSTUVWXY");
  EXPECT_EQ(form->LblLetReste.text, "\r\nABCDEEFGHIJKLMNOPQRSTUVWXY");  // the main form follows each click
  EXPECT_EQ(program.IntNbTire, 4);
  EXPECT_EQ(program.TabTirage[1], "?");
  EXPECT_EQ(program.TabRangTirage[0], 5);
  EXPECT_EQ(program.TabRangTirage[1], 19);
  EXPECT_EQ(jetons->LblTirage.text, "E?Z?");
  EXPECT_EQ(jetons->ImgJ[2], (TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None}));
  EXPECT_EQ(jetons->ImgJ[3], (TileFace{TileFace::Picture::ImgLet, 25, TileFace::Tint::None}));
  EXPECT_FALSE(jetons->CmdJeton[Index('Z')].enabled);

  for (int i = 0; i < 4; ++i) jetons->CmdAnnuler_Click();
  EXPECT_EQ(program.StrSac, bag);  // character for character
  EXPECT_EQ(program.IntNbTire, 0);
  EXPECT_FALSE(jetons->CmdAnnuler.enabled);
  EXPECT_TRUE(jetons->CmdJeton[27].enabled);
  EXPECT_TRUE(jetons->CmdJeton[Index('Z')].enabled);
  EXPECT_EQ(jetons->ImgJ[1], TileFace{});
  EXPECT_EQ(jetons->LblTirage.text, "E?Z?");  // the label keeps what was picked
}

TEST_F(Picker, SevenPicksCloseTheButtonsAndValidationKeepsTheIndexOfTheLast) {
  auto jetons = Open("AAAAAAAAAAAAAAAAAAAAAAAAAAAAAA");
  fake.timers.Advance(250);
  for (int i = 0; i < 6; ++i) {
    jetons->CmdJeton_Click(1);
    EXPECT_FALSE(jetons->CmdValider.enabled);
  }
  jetons->CmdJeton_Click(1);
  EXPECT_TRUE(jetons->CmdValider.enabled);
  for (int k = 1; k <= 27; ++k) EXPECT_FALSE(jetons->CmdJeton[size_t(k)].enabled);
  jetons->CmdAnnuler_Click();
  EXPECT_FALSE(jetons->CmdValider.enabled);
  EXPECT_TRUE(jetons->CmdJeton[1].enabled);
  jetons->CmdJeton_Click(1);
  jetons->left = 120;
  jetons->top = 80;
  jetons->CmdValider_Click();
  EXPECT_TRUE(jetons->closed);
  EXPECT_EQ(program.IntNbTire, 6);
  EXPECT_EQ(program.IntJetonsGauche, 120);
  EXPECT_EQ(program.IntJetonsHaut, 80);
}

TEST_F(Picker, NearTheEndOfTheBagThePlayerMayStopEarly) {
  for (const int size : {8, 13}) {
    auto jetons = Open(std::string(size_t(size), 'E'));
    EXPECT_EQ(jetons->IntNbATirer, 7);
    EXPECT_EQ(jetons->BlnFinSac, 1);
    jetons->CmdJeton_Click(Index('E'));
    EXPECT_TRUE(jetons->CmdValider.enabled) << size;
    jetons->CmdJeton_Click(Index('E'));
    jetons->CmdAnnuler_Click();
    EXPECT_FALSE(jetons->CmdValider.enabled);  // one more pick is needed to validate again
    jetons->CmdJeton_Click(Index('E'));
    EXPECT_TRUE(jetons->CmdValider.enabled);
  }
  auto fourteen = Open(std::string(14, 'E'));
  EXPECT_EQ(fourteen->BlnFinSac, 0);
  fourteen->CmdJeton_Click(Index('E'));
  EXPECT_FALSE(fourteen->CmdValider.enabled);
  for (const int size : {7, 3}) {
    auto jetons = Open(std::string(size_t(size), 'E'));
    EXPECT_EQ(jetons->IntNbATirer, size);
    EXPECT_EQ(jetons->BlnFinSac, 0);
    for (int i = 0; i < size - 1; ++i) jetons->CmdJeton_Click(Index('E'));
    EXPECT_FALSE(jetons->CmdValider.enabled);
    jetons->CmdJeton_Click(Index('E'));
    EXPECT_TRUE(jetons->CmdValider.enabled);
    EXPECT_EQ(program.StrSac, "");
  }
}

TEST_F(Picker, TheTourStepOfThePickerComesOnce) {
  program.options.OptMessages = "Oui";
  program.BytVisite = 1;
  auto jetons = Open("ABC");
  fake.timers.Advance(250);
  EXPECT_EQ(boiteI, 1);
  EXPECT_EQ(program.BytVisite, 2);
  EXPECT_EQ(program.IntEtapeVisite, 2);
  auto again = Open("ABC");
  fake.timers.Advance(250);
  EXPECT_EQ(boiteI, 1);
  again->CmdInfo_Click();  // help is never silenced
  EXPECT_EQ(boiteI, 2);
  EXPECT_EQ(program.IntEtapeVisite, 10);
}

TEST_F(Picker, DrawnTilesFillTheRackInPickOrder) {
  Load();
  program.StrSac = "ABCDEFGHIJ?";
  forms.onJetons = [&](FrmJetons& jetons) {
    jetons.CmdJeton_Click(Index('?'));
    jetons.CmdJeton_Click(Index('J'));
    jetons.CmdJeton_Click(Index('A'));
    jetons.CmdValider_Click();
  };
  form->SubTirage();
  const char* tags[] = {"?", "j", "a"};
  for (int k = 0; k < 3; ++k) {
    const Tile& tile = form->PicGamer[size_t(k)];
    EXPECT_EQ(tile.Tag, tags[k]);
    EXPECT_TRUE(tile.visible);
    EXPECT_EQ(tile.left, layout::RackLeft(k));
    EXPECT_EQ(tile.top, layout::RackTop());
    EXPECT_EQ(form->TabChevalet[size_t(k)].StrLettre, tags[k]);
    EXPECT_EQ(form->TabChevalet[size_t(k)].IntJeton, k);
  }
  EXPECT_EQ(form->PicGamer[0].face, (TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None}));
  EXPECT_EQ(form->PicGamer[1].face, (TileFace{TileFace::Picture::ImgLet, 9, TileFace::Tint::None}));
  EXPECT_EQ(form->PicGamer[3].Tag, "");
  EXPECT_FALSE(form->PicGamer[3].visible);
  EXPECT_TRUE(form->PicWait.visible);
  EXPECT_EQ(program.BlnSacVide, 0);

  // An empty bag opens no picker and marks the bag as found empty.
  program.StrSac = "";
  form->SubTirage();
  EXPECT_EQ(forms.jetonsShown, 1);
  EXPECT_EQ(program.BlnSacVide, -1);
}

// ------------------------------------------------- rack into bag, and sort

class RackReturn : public GameTest {
 protected:
  void SetUp() override { Load(); }
};

TEST_F(RackReturn, TheRackGoesBackIntoTheBagSorted) {
  program.StrSac = "ZEBRE";
  PutOnRack(0, "s", 0);
  PutOnRack(3, "?", 3);
  Put(5, "a", 7, 7);  // a proposal left on the board goes back too
  form->CmdRAZ_Click();
  EXPECT_EQ(program.StrSac, "?ABEERSZ");
  EXPECT_EQ(form->LblLetReste.text, "\r\n?ABEERSZ");
  for (int i = 0; i < 7; ++i) {
    EXPECT_EQ(form->PicGamer[size_t(i)].Tag, "");
    EXPECT_FALSE(form->PicGamer[size_t(i)].visible);
    EXPECT_EQ(form->TabChevalet[size_t(i)].StrLettre, "");
    EXPECT_EQ(form->TabChevalet[size_t(i)].IntJeton, 0);
  }
  // An empty rack leaves the content and sorts it; both blanks lead.
  program.StrSac = "ZA??E";
  form->CmdRAZ_Click();
  EXPECT_EQ(program.StrSac, "??AEZ");
}

TEST_F(RackReturn, TheExchangeSortOrdersAnyBag) {
  std::mt19937 random(5);
  for (int round = 0; round < 200; ++round) {
    std::string bag;
    const int n = int(random() % 102);
    for (int i = 0; i < n; ++i) {
      const int k = int(random() % 27);
      bag += k == 26 ? '?' : char('A' + k);
    }
    program.StrSac = bag;
    form->CmdRAZ_Click();
    std::string sorted = bag;
    std::sort(sorted.begin(), sorted.end());
    ASSERT_EQ(program.StrSac, sorted) << bag;
  }
}

TEST_F(RackReturn, TheSortPutsAShorterStringBeforeItsExtensionsAndEmptyLast) {
  const std::vector<std::string> entries = {"AB", "", "A", "B", "ABC", "", "AA"};
  form->SngNbLettres = float(entries.size());
  for (size_t i = 0; i < entries.size(); ++i) form->TabLettres[i + 1] = entries[i];
  form->TriAlpha();
  const std::vector<std::string> expected = {"A", "AA", "AB", "ABC", "B", "", ""};
  for (size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(form->TabTriees[i + 1], expected[i]) << i;
}

TEST_F(RackReturn, RangerBringsTheBoardTilesHome) {
  PutOnRack(0, "e", 0);
  Put(1, "s", 7, 7);
  Put(2, "T", 8, 7);    // a blank with its letter
  Put(3, "Nul", 9, 7);  // a blank left without one
  form->CmdValider.enabled = true;
  form->CmdRanger.enabled = true;
  form->LblPts.text = "12";
  form->LblPtsBis.text = "pts";
  form->PicDef.visible = true;
  form->CmdRanger_Click();
  EXPECT_EQ(form->PicGamer[1].left, layout::RackLeft(1));
  EXPECT_EQ(form->PicGamer[1].face, (TileFace{TileFace::Picture::ImgLet, 's' - 'a', TileFace::Tint::Black}));
  EXPECT_EQ(form->TabChevalet[1].StrLettre, "s");
  EXPECT_EQ(form->TabChevalet[1].IntJeton, 1);
  EXPECT_EQ(form->PicGamer[2].left, layout::RackLeft(2));
  EXPECT_EQ(form->PicGamer[2].Tag, "?");
  EXPECT_EQ(form->PicGamer[2].face, (TileFace{TileFace::Picture::ImgLet, 26, TileFace::Tint::None}));
  EXPECT_EQ(form->TabChevalet[2].StrLettre, "T");  // the entry takes the tag before it goes back to "?"
  EXPECT_EQ(form->PicGamer[3].Tag, "?");
  EXPECT_EQ(form->PicGamer[3].left, layout::RackLeft(3));
  EXPECT_FALSE(form->CmdValider.enabled);
  EXPECT_FALSE(form->CmdRanger.enabled);
  EXPECT_EQ(form->LblPts.text, "");
  EXPECT_EQ(form->LblPtsBis.text, "");
  EXPECT_FALSE(form->PicDef.visible);

  // Nothing on the board: nothing moves, the points go.
  form->LblPts.text = "0";
  form->CmdRanger_Click();
  EXPECT_EQ(form->PicGamer[0].left, layout::RackLeft(0));
  EXPECT_EQ(form->LblPts.text, "");
}

TEST_F(RackReturn, RangerLeavesATileOnTheBoardWhenTheRackIsFull) {
  for (int i = 0; i < 6; ++i) PutOnRack(i, "e", i);
  form->TabChevalet[6] = FrmPlateau::Chevalet{"x", 9};
  Put(6, "s", 7, 7);
  form->CmdRanger_Click();
  EXPECT_EQ(form->PicGamer[6].left, layout::SquareLeft(7));
}

// ------------------------------------------------------ the blank's letter

TEST_F(Bag, TheBlanksBoxTakesOneCapitalAfterAQuarterSecond) {
  Load();
  FrmJoc joc(program);
  EXPECT_EQ(joc.LblJoc.text, "Quelle lettre voulez-vous\r\nattribuer au joker ?");
  EXPECT_EQ(joc.leftFromMain, 141);
  EXPECT_EQ(joc.topFromMain, 133);
  joc.TxtJok_Change("é");
  EXPECT_EQ(joc.TxtJok.text, "");
  joc.TxtJok_Change("k");
  EXPECT_EQ(joc.TxtJok.text, "K");
  EXPECT_EQ(program.StrJoker, "K");
  fake.timers.Advance(249);
  EXPECT_FALSE(joc.closed);
  fake.timers.Advance(1);
  EXPECT_TRUE(joc.closed);
  EXPECT_EQ(program.StrJoker, "K");

  FrmJoc second(program);
  second.TxtJok_Change("b");
  second.TxtJok_Change("");  // taken back before the quarter second
  fake.timers.Advance(250);
  EXPECT_TRUE(second.closed);
  EXPECT_EQ(program.StrJoker, "Nul");
}

}  // namespace
}  // namespace ostrane::test
