// The journal of the game in progress: its exact text, round trips of many
// generated games, the replacement that never leaves half a file, damaged
// and foreign files refused and removed, and the question of the start.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "records/game_journal.h"
#include "tests/records/record_fakes.h"

namespace ostrane::test {
namespace {

std::string TwoDigits(int n) { return (n < 10 ? "0" : "") + std::to_string(n); }

std::string HistoryLine(int n, const std::string& word, int points) {
  const std::string text = std::to_string(points);
  return TwoDigits(n) + " " + word + std::string(word.size() < 15 ? 15 - word.size() : 0, ' ') +
         std::string(text.size() < 3 ? 3 - text.size() : 0, ' ') + text;
}

// A game after two plays: CHAT across H7, then a blank for S below the T.
SavedGame TwoPlays() {
  SavedGame game;
  game.NomPartie = "Fête à Lyon";
  game.lignes.fill(std::string(15, '.'));
  game.lignes[7] = "......chat.....";
  game.lignes[8] = ".........S.....";
  game.SubWordFirst = false;
  game.StrSac = StartBag(0);
  for (const char c : std::string("CHAT?EEISNR?")) game.StrSac.erase(game.StrSac.find(c), 1);
  game.LblPtsJoueur = "22";
  game.IntNbCoups = 2;
  game.VarTirage = 3;
  game.LblTirage = "02";
  game.TxtHisto = {HistoryLine(1, "CHAT", 20), HistoryLine(2, "TS", 2)};
  game.BytChronoDemande = game.BytChronoActif = 1;
  game.VarSecondes = 41;
  game.VarMinutes = 3;
  game.LblTimer = "00:03:41";
  game.LblDuree = "0:03:41";
  game.Chevalet = "eeisnr?";
  game.ownRowColumn = 9;
  game.ownRowRow = 8;
  game.ownRowSet = -1;
  game.randomState = 12345678901234567890ull;
  return game;
}

const std::string kSac =
    "AAAAAAAABBCDDDEEEEEEEEEEEEEFFGGHIIIIIIIJKLLLLLMMMNNNNNOOOOOOPPQRRRRRSSSSSTTTTTUUUUUUVVWXYZ";

std::string TwoPlaysText() {
  std::string rows;
  for (int r = 0; r < 15; ++r) rows += "Ligne=" + TwoPlays().lignes[size_t(r)] + "\r\n";
  return "Ostrane partie 1\r\nNom=Fête à Lyon\r\n" + rows + "Premier=Non\r\nSac=" + kSac +
         "\r\nPoints=22\r\nCoups=2\r\nTirage=3\r\nLblTirage=02\r\n"
         "Histo=01 CHAT            20\r\nHisto=02 TS               2\r\n"
         "SacVide=0\r\nChrono=1 1 41 3 0\r\nMinuteur=00:03:41\r\nDuree=0:03:41\r\n"
         "Chevalet=eeisnr?\r\nMoteur=9 8 -1 12345678901234567890\r\nFin\r\n";
}

// A game as it may stand at any turn boundary, drawn from `random`: any
// start bag, tiles spread over the board, the rack and the bag, a history
// whose points make the score, any clock.
SavedGame Generated(std::mt19937_64& random) {
  auto below = [&random](uint64_t n) { return int(random() % n); };
  SavedGame game;
  static const std::vector<std::string> kNamePieces = {"a", "Z", "é", "ç", "ü", " ", "-", "7", "Partie", "ï"};
  for (int i = below(6); i > 0; --i) {
    const std::string name = game.NomPartie + kNamePieces[size_t(below(kNamePieces.size()))];
    if (std::count_if(name.begin(), name.end(), [](char c) { return (c & 0xC0) != 0x80; }) <= 15)
      game.NomPartie = name;
  }
  std::string tiles = StartBag(below(4));
  std::shuffle(tiles.begin(), tiles.end(), random);
  game.lignes.fill(std::string(15, '.'));
  const int onBoard = tiles.size() > 2 && below(5) != 0 ? 2 + below(int(tiles.size()) - 1) : 0;
  std::vector<int> squares(225);
  for (int i = 0; i < 225; ++i) squares[size_t(i)] = i;
  std::shuffle(squares.begin(), squares.end(), random);
  for (int i = 0; i < onBoard; ++i, tiles.pop_back())
    game.lignes[size_t(squares[size_t(i)] / 15)][size_t(squares[size_t(i)] % 15)] =
        tiles.back() == '?' ? char('A' + below(26)) : char(tiles.back() + 32);
  game.SubWordFirst = onBoard == 0;
  // The rack: drawn (always, before the first play) or returned to the bag.
  const int rack = (onBoard == 0 || below(2) == 0) ? std::min<int>(int(tiles.size()), 1 + below(7)) : 0;
  for (int i = 0; i < rack; ++i, tiles.pop_back())
    game.Chevalet += tiles.back() == '?' ? '?' : char(tiles.back() + 32);
  game.StrSac = tiles;
  game.BlnSacVide = tiles.empty() && below(2) == 0 ? -1 : 0;
  game.IntNbCoups = int16_t(onBoard == 0 ? 0 : 1 + below(onBoard - 1));
  game.VarTirage = game.IntNbCoups + 1;
  game.LblTirage = TwoDigits(std::max<int>(game.IntNbCoups, 1));
  long score = 0;
  for (int i = 1; i <= game.IntNbCoups; ++i) {
    std::string word(size_t(2 + below(14)), 'A');
    for (char& c : word) c = char('A' + below(26));
    const int points = below(5) == 0 ? 1000 + below(300) : below(160);
    game.TxtHisto.push_back(HistoryLine(i, word, points));
    score += points;
  }
  game.LblPtsJoueur = std::to_string(score);
  game.BytChronoDemande = uint8_t(below(2));
  game.BytChronoActif = uint8_t(below(2));
  game.VarSecondes = below(61) - 1;
  game.VarMinutes = below(60);
  game.VarHeures = below(3);
  game.LblTimer = TwoDigits(game.VarHeures) + ":" + TwoDigits(game.VarMinutes) + ":" + TwoDigits(below(60));
  game.LblDuree = game.LblTimer.substr(1);
  game.ownRowColumn = int16_t(below(15));
  game.ownRowRow = int16_t(below(15));
  game.ownRowSet = int16_t(-below(2));
  game.randomState = random();
  game.TopsTotal = below(3) == 0 ? 0 : int32_t(below(3000)) + 1;  // the exact tops, when they were kept
  if (below(3) == 0) {  // the player's own word list
    game.wordListKey = random();
    game.wordListFile = below(2) ? "/home/joueur/Listes de mots/ODS 9.txt" : "/tmp/l\xC3\xA9xique";
  }
  return game;
}

class Journal : public ProgramFixture {
 protected:
  GameJournal file{dir_.path() / "partie.ret"};
};

TEST_F(Journal, AGameIsWrittenAsOneFieldALine) {
  EXPECT_EQ(FormatSavedGame(TwoPlays()), TwoPlaysText());
  ASSERT_TRUE(file.Save(TwoPlays()));
  EXPECT_EQ(GameJournal(program_.JournalFile()).File(), file.File());
  EXPECT_EQ(Read("partie.ret"), TwoPlaysText());
  EXPECT_FALSE(Exists("partie.ret.tmp"));
  EXPECT_EQ(file.Load(), TwoPlays());
  EXPECT_TRUE(Exists("partie.ret"));  // reading keeps it
  // Before the first play nothing is on the board and the history is empty.
  SavedGame game;
  game.lignes.fill(std::string(15, '.'));
  game.StrSac = "AACEEEEEEIMNRSS";
  game.Chevalet = "stu";
  ASSERT_EQ(ParseSavedGame(FormatSavedGame(game)), game);
  game.SubWordFirst = false;
  EXPECT_FALSE(ParseSavedGame(FormatSavedGame(game)).has_value());
  // The exact tops of the turns played, on a line of their own before the end.
  SavedGame tops = TwoPlays();
  tops.TopsTotal = 37;
  const std::string text = FormatSavedGame(tops);
  EXPECT_EQ(text.substr(text.size() - 14), "Tops=37\r\nFin\r\n");
  EXPECT_EQ(ParseSavedGame(text), tops);
  // The player's own word list, on a line of its own: the digest of its
  // bytes and its file.
  SavedGame own = tops;
  own.wordListKey = 0x0123456789abcdefull;
  own.wordListFile = "/home/joueur/ma liste.txt";
  const std::string listed = FormatSavedGame(own);
  EXPECT_EQ(listed.substr(listed.size() - 64),
            "Tops=37\r\nListe=0123456789abcdef /home/joueur/ma liste.txt\r\nFin\r\n");
  EXPECT_EQ(ParseSavedGame(listed), own);
  EXPECT_TRUE(SameGame(own, tops));  // the same game, whatever its list
}

TEST_F(Journal, GeneratedGamesComeBackAsTheyWent) {
  std::mt19937_64 random(20240518);
  for (int i = 0; i < 400; ++i) {
    const SavedGame game = Generated(random);
    const std::string text = FormatSavedGame(game);
    EXPECT_EQ(ParseSavedGame(text), game) << text;
    if (i % 20 == 0) {
      ASSERT_TRUE(file.Save(game));
      EXPECT_EQ(file.Load(), game);
    }
  }
}

TEST_F(Journal, AFailedWriteLeavesTheJournalThatWasThere) {
  ASSERT_TRUE(file.Save(TwoPlays()));
  SavedGame second = TwoPlays();
  second.VarSecondes = 42;
  second.LblTimer = "00:03:42";
  // The temporary file cannot be made; then the disk fills up while it is written.
  std::filesystem::create_directories(dir_.path() / "partie.ret.tmp" / "inside");
  EXPECT_FALSE(file.Save(second));
  EXPECT_EQ(Read("partie.ret"), TwoPlaysText());
  std::filesystem::remove_all(dir_.path() / "partie.ret.tmp");
  std::filesystem::create_symlink("/dev/full", dir_.path() / "partie.ret.tmp");
  EXPECT_FALSE(file.Save(second));
  EXPECT_EQ(Read("partie.ret"), TwoPlaysText());
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(dir_.path() / "partie.ret.tmp")));
  // The temporary file of a save cut short is simply written over.
  Write("partie.ret.tmp", "Ostrane partie 1\r\nNom=");
  ASSERT_TRUE(file.Save(second));
  EXPECT_EQ(file.Load(), second);
  EXPECT_FALSE(Exists("partie.ret.tmp"));
  // Removing takes the temporary file too, and may find nothing.
  Write("partie.ret.tmp", "Ostrane");
  file.Remove();
  EXPECT_FALSE(file.Exists() || Exists("partie.ret.tmp"));
  file.Remove();
  // No folder to write in.
  GameJournal nowhere(dir_.path() / "missing" / "partie.ret");
  EXPECT_FALSE(nowhere.Save(TwoPlays()));
  EXPECT_FALSE(nowhere.Load().has_value());
}

// The text of TwoPlays with `from` replaced by `to` (once).
std::string Changed(const std::string& from, const std::string& to) {
  std::string text = TwoPlaysText();
  const size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

TEST_F(Journal, DamagedFilesAreRefusedAndRemoved) {
  const std::string text = TwoPlaysText();
  for (size_t length = 0; length < text.size(); ++length)
    EXPECT_FALSE(ParseSavedGame(text.substr(0, length)).has_value()) << length;  // every cut
  SavedGame tooMany = TwoPlays();  // five tiles on the board: five plays would take six
  for (int n = 3; n <= 5; ++n) tooMany.TxtHisto.push_back(HistoryLine(n, "AA", 0));
  tooMany.IntNbCoups = 5;
  tooMany.VarTirage = 6;
  tooMany.LblTirage = "05";
  const std::vector<std::pair<std::string, std::string>> damaged = {
      {"another version", Changed("Ostrane partie 1", "Ostrane partie 2")},
      {"something after the end", text + "Fin\r\n"},
      {"a field renamed", Changed("Sac=", "Pioche=")},
      {"fields out of order", Changed("Points=22\r\nCoups=2\r\n", "Coups=2\r\nPoints=22\r\n")},
      {"a figure on the board", Changed("Ligne=......chat.....", "Ligne=......ch4t.....")},
      {"a board line missing", Changed("Ligne=...............\r\n", "")},
      {"a lower-case letter in the bag", Changed("Sac=AAAA", "Sac=aAAA")},
      {"a tile too many", Changed("Sac=AAAA", "Sac=AAAAA")},
      {"a letter changed", Changed("Sac=" + kSac, "Sac=" + kSac.substr(0, kSac.size() - 1) + "Y")},
      {"a tile on the board out of nowhere", Changed("Ligne=.........S.....", "Ligne=.........Sx....")},
      {"an upper-case tile on the rack", Changed("Chevalet=eeisnr?", "Chevalet=eeisNr?")},
      {"the rack's tiles in the bag as well", Changed("Sac=AAAA", "Sac=EEISNR?AAAA")},
      {"a play more than the history", Changed("Coups=2", "Coups=3")},
      {"a history line missing", Changed("Histo=02 TS               2\r\n", "")},
      {"a score that is not the sum", Changed("Points=22", "Points=23")},
      {"a history line numbered wrong", Changed("Histo=02 TS  ", "Histo=03 TS  ")},
      {"a history line out of its columns",
       Changed("Histo=02 TS               2", "Histo=02 TS              2")},
      {"the draw number off", Changed("Tirage=3", "Tirage=4")},
      {"the first play still to come", Changed("Premier=Non", "Premier=Oui")},
      {"the bag found empty with tiles in it", Changed("SacVide=0", "SacVide=-1")},
      {"a clock past its minute", Changed("Chrono=1 1 41 3 0", "Chrono=1 1 60 3 0")},
      {"a clock text with letters", Changed("Minuteur=00:03:41", "Minuteur=00:O3:41")},
      {"a memory off the board", Changed("Moteur=9 8 -1", "Moteur=9 15 -1")},
      {"a random state too big", Changed("12345678901234567890", "18446744073709551616")},
      {"a name too long", Changed("Nom=Fête à Lyon", "Nom=Fête à Lyon le soir")},
      {"a name that is not UTF-8", Changed("Nom=Fête à Lyon", "Nom=F\xEAte \xE0 Lyon")},
      {"more plays than tiles allow", FormatSavedGame(tooMany)},
      {"far too big", text + std::string(70000, '.')},
  };
  for (const auto& [what, bytes] : damaged) {
    SCOPED_TRACE(what);
    EXPECT_FALSE(ParseSavedGame(bytes).has_value());
    Write("partie.ret", bytes);
    EXPECT_FALSE(file.Load().has_value());
    EXPECT_FALSE(Exists("partie.ret"));
  }
  std::filesystem::create_directories(dir_.path() / "partie.ret");  // a folder is not a journal
  EXPECT_FALSE(file.Load().has_value());
}

TEST_F(Journal, TheStartOffersTheGameLeftUnfinished) {
  // The counts in French: singular for 0 and 1, plural from 2.
  const struct {
    int coups;
    const char* points;
    const char* said;
  } counts[] = {{2, "22", "(2 coups, 22 points)"}, {0, "0", "(0 coup, 0 point)"},
                {1, "1", "(1 coup, 1 point)"},     {0, "7", "(0 coup, 7 points)"},
                {2, "1", "(2 coups, 1 point)"},    {11, "10", "(11 coups, 10 points)"}};
  for (const auto& c : counts) {
    SavedGame game = TwoPlays();
    game.IntNbCoups = int16_t(c.coups);
    game.LblPtsJoueur = c.points;
    EXPECT_EQ(ResumeQuestion(game), std::string("Une partie n'a pas été terminée : « Fête à Lyon » ") +
                                        c.said + ".\r\nVoulez-vous la reprendre ?");
  }
  // Yes: the game comes back and stays kept until the game goes on.
  ASSERT_TRUE(file.Save(TwoPlays()));
  fake_.boxes.answers = {Answer::Yes};
  EXPECT_EQ(OfferResume(program_, file), TwoPlays());
  ASSERT_EQ(fake_.boxes.shown.size(), 1u);
  EXPECT_EQ(fake_.boxes.shown[0].text, ResumeQuestion(TwoPlays()));
  EXPECT_EQ(program_.StrMsg, ResumeQuestion(TwoPlays()));
  EXPECT_EQ(fake_.boxes.shown[0].style.buttons, Buttons::YesNo);
  EXPECT_FALSE(fake_.boxes.shown[0].style.defaultNo);
  EXPECT_TRUE(Exists("partie.ret"));
  // No: the game is dropped.
  fake_.boxes.answers = {Answer::No};
  EXPECT_FALSE(OfferResume(program_, file).has_value());
  EXPECT_EQ(program_.IntReponse, Answer::No);
  EXPECT_FALSE(Exists("partie.ret"));
  // Nothing kept, or a damaged journal (removed without a word): nothing asked.
  EXPECT_FALSE(OfferResume(program_, file).has_value());
  Write("partie.ret", Changed("Coups=2", "Coups=9"));
  EXPECT_FALSE(OfferResume(program_, file).has_value());
  EXPECT_EQ(fake_.boxes.shown.size(), 2u);
  EXPECT_FALSE(Exists("partie.ret"));
}

}  // namespace
}  // namespace ostrane::test
