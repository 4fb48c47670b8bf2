#include "records/game_journal.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <system_error>

#include "lexicon/tables.h"
#include "records/program.h"
#include "records/text_files.h"

namespace ostrane {
namespace {

constexpr std::string_view kShortBags[] = {"", "AACEEEEEEIMNRSSSTU", "AACEEEFIKNNNNNNRTWWZ",
                                           "AAAABEEEGIILLNNOST?"};
constexpr size_t kLargestFile = 64 * 1024;  // a journal is about 1 KB: anything this big is not one
constexpr int kMostPlays = 101;             // 102 tiles, the first play takes two
constexpr size_t kNameCharacters = 15;

std::string TwoDigits(int value) { return (value < 10 ? "0" : "") + std::to_string(value); }

// The history line of play `n`, as the main form writes it.
std::string HistoryLine(int n, const std::string& word, int points) {
  std::string line = TwoDigits(n) + " " + word;
  if (word.size() < 15) line.append(15 - word.size(), ' ');
  const std::string text = std::to_string(points);
  if (text.size() < 3) line.append(3 - text.size(), ' ');
  return line + text;
}

// A whole number written as to_string writes it, and within bounds.
template <typename Int>
bool ReadInt(std::string_view text, long long low, long long high, Int& value) {
  long long read = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
  if (error != std::errc() || end != text.data() + text.size() || text.empty()) return false;
  if (std::to_string(read) != text || read < low || read > high) return false;
  value = Int(read);
  return true;
}

bool ReadUnsigned64(std::string_view text, uint64_t& value) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size() && !text.empty() &&
         std::to_string(value) == text;
}

// Numbers separated by one blank.
std::vector<std::string_view> Words(std::string_view text) {
  std::vector<std::string_view> words;
  size_t start = 0;
  for (;;) {
    const size_t blank = text.find(' ', start);
    words.push_back(
        text.substr(start, blank == std::string_view::npos ? std::string_view::npos : blank - start));
    if (blank == std::string_view::npos) return words;
    start = blank + 1;
  }
}

// A game's name: UTF-8 without control characters, 15 characters at most.
bool GoodName(std::string_view name) {
  size_t characters = 0;
  for (size_t i = 0; i < name.size();) {
    const unsigned char c = static_cast<unsigned char>(name[i]);
    size_t length = 0;
    uint32_t code = 0;
    if (c < 0x80) {
      length = 1;
      code = c;
    } else if ((c & 0xE0) == 0xC0) {
      length = 2;
      code = c & 0x1F;
    } else if ((c & 0xF0) == 0xE0) {
      length = 3;
      code = c & 0x0F;
    } else if ((c & 0xF8) == 0xF0) {
      length = 4;
      code = c & 0x07;
    } else {
      return false;
    }
    if (i + length > name.size()) return false;
    for (size_t k = 1; k < length; ++k) {
      const unsigned char next = static_cast<unsigned char>(name[i + k]);
      if ((next & 0xC0) != 0x80) return false;
      code = (code << 6) | (next & 0x3F);
    }
    static constexpr uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    if (code < kLeast[length] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return false;
    if (code < 0x20 || code == 0x7F || (code >= 0x80 && code < 0xA0)) return false;
    i += length;
    ++characters;
  }
  return characters <= kNameCharacters;
}

bool IsTimeText(std::string_view text) {
  if (text.empty() || text.size() > 16) return false;
  return std::all_of(text.begin(), text.end(), [](char c) { return (c >= '0' && c <= '9') || c == ':'; });
}

// Reads the lines of the file in order, each "Key=value".
class Fields {
 public:
  explicit Fields(std::string_view text) : text_(text) {}

  // The next line, which must be exactly `line`.
  bool Line(std::string_view line) {
    std::string_view got;
    return Next(got) && got == line;
  }
  // The value of the next line, which must begin with `key` and "=".
  bool Value(std::string_view key, std::string_view& value) {
    std::string_view got;
    if (!Next(got) || got.size() <= key.size() || got.substr(0, key.size()) != key || got[key.size()] != '=')
      return false;
    value = got.substr(key.size() + 1);
    return true;
  }
  // The value of the next line when it begins with `key` and "="; otherwise
  // the line stays to be read.
  bool Optional(std::string_view key, std::string_view& value) {
    const size_t at = at_;
    if (Value(key, value)) return true;
    at_ = at;
    return false;
  }
  bool AtEnd() const { return at_ == text_.size(); }

 private:
  bool Next(std::string_view& line) {
    const size_t end = text_.find("\r\n", at_);
    if (end == std::string_view::npos) return false;
    line = text_.substr(at_, end - at_);
    at_ = end + 2;
    return line.find_first_of("\r\n") == std::string_view::npos;
  }
  std::string_view text_;
  size_t at_ = 0;
};

// The game's values that the file's own syntax does not already vouch for.
bool Consistent(const SavedGame& game) {
  int onBoard = 0;
  for (const std::string& row : game.lignes)
    for (const char c : row) onBoard += c != '.';
  if (game.SubWordFirst != (onBoard == 0)) return false;
  if ((game.IntNbCoups == 0) != (onBoard == 0)) return false;
  if (game.IntNbCoups > 0 && onBoard < game.IntNbCoups + 1) return false;
  if (game.VarTirage != game.IntNbCoups + 1) return false;
  if (game.LblTirage != TwoDigits(std::max<int>(game.IntNbCoups, 1))) return false;
  if (int(game.TxtHisto.size()) != game.IntNbCoups) return false;

  // Each history line as the main form writes it; together they make the score.
  long sum = 0;
  for (size_t i = 0; i < game.TxtHisto.size(); ++i) {
    const std::string& line = game.TxtHisto[i];
    const std::string number = TwoDigits(int(i + 1)) + " ";
    if (line.compare(0, number.size(), number) != 0) return false;
    size_t at = number.size();
    std::string word;
    while (at < line.size() && line[at] >= 'A' && line[at] <= 'Z') word += line[at++];
    while (at < line.size() && line[at] == ' ') ++at;
    int points = 0;
    if (word.size() < 2 || word.size() > 15 || !ReadInt(std::string_view(line).substr(at), 0, 9999, points))
      return false;
    if (HistoryLine(int(i + 1), word, points) != line) return false;
    sum += points;
  }
  if (std::to_string(sum) != game.LblPtsJoueur) return false;

  if (game.BlnSacVide == -1 && !game.StrSac.empty()) return false;

  // Every tile is on the board, in the bag or on the rack, and they make up
  // one of the start bags exactly.
  const std::string tiles = GameTiles(game);
  for (int pioche = 0; pioche <= 3; ++pioche) {
    std::string start = StartBag(pioche);
    std::sort(start.begin(), start.end());
    if (tiles == start) return true;
  }
  return false;
}

}  // namespace

std::string StartBag(int pioche) {
  if (pioche >= 1 && pioche <= 3) return std::string(kShortBags[pioche]);
  std::string bag;
  for (size_t i = 0; i + 2 < StrPioche.size(); i += 3)
    bag.append(size_t((StrPioche[i] - '0') * 10 + (StrPioche[i + 1] - '0')), StrPioche[i + 2]);
  return bag;
}

std::string GameTiles(const SavedGame& game) {
  std::string tiles;
  for (const std::string& row : game.lignes)
    for (const char c : row) {
      if (c >= 'a' && c <= 'z') tiles += UpperAscii(c);
      if (c >= 'A' && c <= 'Z') tiles += '?';
    }
  tiles += game.StrSac;
  for (const char c : game.Chevalet) tiles += UpperAscii(c);
  std::sort(tiles.begin(), tiles.end());
  return tiles;
}

std::string FormatSavedGame(const SavedGame& game) {
  std::string text;
  auto line = [&text](std::string_view key, const std::string& value) {
    text.append(key);
    text += '=';
    text += value;
    text += "\r\n";
  };
  text = std::string(kJournalFirstLine) + "\r\n";
  line("Nom", game.NomPartie);
  for (const std::string& row : game.lignes) line("Ligne", row);
  line("Premier", game.SubWordFirst ? "Oui" : "Non");
  line("Sac", game.StrSac);
  line("Points", game.LblPtsJoueur);
  line("Coups", std::to_string(game.IntNbCoups));
  line("Tirage", std::to_string(game.VarTirage));
  line("LblTirage", game.LblTirage);
  for (const std::string& history : game.TxtHisto) line("Histo", history);
  line("SacVide", std::to_string(game.BlnSacVide));
  line("Chrono", std::to_string(game.BytChronoDemande) + " " + std::to_string(game.BytChronoActif) + " " +
                     std::to_string(game.VarSecondes) + " " + std::to_string(game.VarMinutes) + " " +
                     std::to_string(game.VarHeures));
  line("Minuteur", game.LblTimer);
  line("Duree", game.LblDuree);
  line("Chevalet", game.Chevalet);
  line("Moteur", std::to_string(game.ownRowColumn) + " " + std::to_string(game.ownRowRow) + " " +
                     std::to_string(game.ownRowSet) + " " + std::to_string(game.randomState));
  if (game.TopsTotal != 0) line("Tops", std::to_string(game.TopsTotal));
  if (!game.wordListFile.empty() && game.wordListFile.find_first_of("\r\n") == std::string::npos) {
    char key[17];
    std::snprintf(key, sizeof key, "%016llx", static_cast<unsigned long long>(game.wordListKey));
    line("Liste", key + (" " + game.wordListFile));
  }
  text += "Fin\r\n";
  return text;
}

std::optional<SavedGame> ParseSavedGame(std::string_view text) {
  if (text.size() > kLargestFile) return std::nullopt;
  Fields fields(text);
  SavedGame game;
  std::string_view value;
  auto isSquare = [](char c) { return c == '.' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  auto isBagTile = [](char c) { return (c >= 'A' && c <= 'Z') || c == '?'; };
  auto isRackTile = [](char c) { return (c >= 'a' && c <= 'z') || c == '?'; };

  if (!fields.Line(kJournalFirstLine)) return std::nullopt;
  if (!fields.Value("Nom", value) || !GoodName(value)) return std::nullopt;
  game.NomPartie = value;
  for (std::string& row : game.lignes) {
    if (!fields.Value("Ligne", value) || value.size() != 15 ||
        !std::all_of(value.begin(), value.end(), isSquare))
      return std::nullopt;
    row = value;
  }
  if (!fields.Value("Premier", value) || (value != "Oui" && value != "Non")) return std::nullopt;
  game.SubWordFirst = value == "Oui";
  if (!fields.Value("Sac", value) || value.size() > 102 ||
      !std::all_of(value.begin(), value.end(), isBagTile))
    return std::nullopt;
  game.StrSac = value;
  long points = 0;
  if (!fields.Value("Points", value) || !ReadInt(value, 0, 999999, points)) return std::nullopt;
  game.LblPtsJoueur = value;
  if (!fields.Value("Coups", value) || !ReadInt(value, 0, kMostPlays, game.IntNbCoups)) return std::nullopt;
  if (!fields.Value("Tirage", value) || !ReadInt(value, 0, kMostPlays + 1, game.VarTirage))
    return std::nullopt;
  if (!fields.Value("LblTirage", value) || value.size() > 3) return std::nullopt;
  game.LblTirage = value;
  for (int i = 0; i < game.IntNbCoups; ++i) {
    if (!fields.Value("Histo", value)) return std::nullopt;
    game.TxtHisto.emplace_back(value);
  }
  if (!fields.Value("SacVide", value) || !ReadInt(value, -1, 0, game.BlnSacVide)) return std::nullopt;
  if (!fields.Value("Chrono", value)) return std::nullopt;
  {
    const std::vector<std::string_view> clock = Words(value);
    if (clock.size() != 5 || !ReadInt(clock[0], 0, 1, game.BytChronoDemande) ||
        !ReadInt(clock[1], 0, 1, game.BytChronoActif) || !ReadInt(clock[2], -1, 59, game.VarSecondes) ||
        !ReadInt(clock[3], 0, 60, game.VarMinutes) || !ReadInt(clock[4], 0, 99999, game.VarHeures))
      return std::nullopt;
  }
  if (!fields.Value("Minuteur", value) || !IsTimeText(value)) return std::nullopt;
  game.LblTimer = value;
  if (!fields.Value("Duree", value) || !IsTimeText(value)) return std::nullopt;
  game.LblDuree = value;
  if (!fields.Value("Chevalet", value) || value.size() > 7 ||
      !std::all_of(value.begin(), value.end(), isRackTile))
    return std::nullopt;
  game.Chevalet = value;
  if (!fields.Value("Moteur", value)) return std::nullopt;
  {
    const std::vector<std::string_view> engine = Words(value);
    if (engine.size() != 4 || !ReadInt(engine[0], 0, 14, game.ownRowColumn) ||
        !ReadInt(engine[1], 0, 14, game.ownRowRow) || !ReadInt(engine[2], -1, 0, game.ownRowSet) ||
        !ReadUnsigned64(engine[3], game.randomState))
      return std::nullopt;
  }
  if (fields.Optional("Tops", value) && !ReadInt(value, 1, 1000000, game.TopsTotal)) return std::nullopt;
  if (fields.Optional("Liste", value)) {
    const size_t space = value.find(' ');
    if (space != 16 || value.size() < 18 || value.find_first_not_of("0123456789abcdef") != 16) return std::nullopt;
    game.wordListKey = std::stoull(std::string(value.substr(0, 16)), nullptr, 16);
    game.wordListFile = value.substr(17);
  }
  if (!fields.Line("Fin") || !fields.AtEnd()) return std::nullopt;
  if (!Consistent(game)) return std::nullopt;
  return game;
}

// ------------------------------------------------------------------ the file

std::filesystem::path GameJournal::TemporaryFile() const { return TemporaryFileOf(file_); }

bool GameJournal::Save(const SavedGame& game) { return WriteWholeFile(file_, FormatSavedGame(game)) == 0; }

std::optional<SavedGame> GameJournal::Load() {
  std::error_code error;
  if (!std::filesystem::exists(std::filesystem::symlink_status(file_, error))) return std::nullopt;
  std::optional<SavedGame> game;
  if (std::filesystem::is_regular_file(file_, error) &&
      std::filesystem::file_size(file_, error) <= kLargestFile && !error) {
    std::ifstream in(file_, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (in || in.eof()) game = ParseSavedGame(text);
  }
  if (!game) Remove();
  return game;
}

void GameJournal::Remove() {
  std::error_code error;
  if (!std::filesystem::remove(file_, error) && error && std::filesystem::exists(file_)) {
    // Not removed: made unreadable as a game, so that no start offers it back.
    std::ofstream out(file_, std::ios::binary | std::ios::trunc);
    out << "Ostrane partie terminée\r\n";
  }
  std::filesystem::remove(TemporaryFile(), error);
  std::filesystem::remove(RecordFile(), error);
  std::filesystem::remove(TemporaryFileOf(RecordFile()), error);
}

std::filesystem::path GameJournal::RecordFile() const {
  std::filesystem::path record = file_;
  record.replace_extension(".enr");
  return record;
}

bool GameJournal::SaveRecord(const std::string& text) { return WriteWholeFile(RecordFile(), text) == 0; }

std::optional<std::string> GameJournal::LoadRecord() const {
  std::error_code error;
  if (!std::filesystem::is_regular_file(RecordFile(), error) ||
      std::filesystem::file_size(RecordFile(), error) > 4 * kLargestFile || error)
    return std::nullopt;
  std::ifstream in(RecordFile(), std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  if (!in && !in.eof()) return std::nullopt;
  return text;
}

bool SameGame(const SavedGame& a, const SavedGame& b) {
  SavedGame x = a, y = b;
  for (SavedGame* g : {&x, &y}) {
    g->BytChronoDemande = g->BytChronoActif = 0;
    g->VarSecondes = g->VarMinutes = g->VarHeures = 0;
    g->LblTimer.clear();
    g->LblDuree.clear();
    g->wordListKey = 0;
    g->wordListFile.clear();
  }
  return x == y;
}

bool GameJournal::Exists() const {
  std::error_code error;
  return std::filesystem::exists(file_, error);
}

// ---------------------------------------------------------------- the start

namespace {

// A count and its noun, in the French way: singular for 0 and 1, plural from 2.
std::string Counted(const std::string& count, long value, const char* singular, const char* plural) {
  return count + " " + (value >= -1 && value <= 1 ? singular : plural);
}

}  // namespace

std::string ResumeQuestion(const SavedGame& game) {
  const long points = std::strtol(game.LblPtsJoueur.c_str(), nullptr, 10);
  return "Une partie n'a pas été terminée : « " + game.NomPartie + " » (" +
         Counted(std::to_string(game.IntNbCoups), game.IntNbCoups, "coup", "coups") + ", " +
         Counted(game.LblPtsJoueur, points, "point", "points") + ")." + std::string(kCrLf) +
         "Voulez-vous la reprendre ?";
}

std::optional<SavedGame> OfferResume(Program& program, GameJournal& journal) {
  std::optional<SavedGame> game = journal.Load();
  if (!game) return std::nullopt;
  program.StrMsg = ResumeQuestion(*game);
  if (program.ShowMessage(kYesNo) == Answer::No) {
    journal.Remove();
    return std::nullopt;
  }
  return game;
}

}  // namespace ostrane
