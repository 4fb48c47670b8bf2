#include "game/game_record.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "game/frm_plateau.h"
#include "lexicon/tables.h"
#include "records/program.h"

namespace ostrane {
namespace {


std::string DateText(const DateTime& d) {
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d", d.year, d.month, d.day, d.hour, d.minute);
  return text;
}

bool ReadDate(std::string_view text, DateTime& d) {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0;
  char tail = 0;
  const std::string copy(text);
  if (std::sscanf(copy.c_str(), "%4d-%2d-%2d %2d:%2d%c", &year, &month, &day, &hour, &minute, &tail) != 5)
    return false;
  if (month < 1 || month > 12 || day < 1 || day > 31 || hour < 0 || hour > 23 || minute < 0 || minute > 59)
    return false;
  d = DateTime{year, month, day, hour, minute, 0};
  return true;
}

template <typename Int>
bool ReadNumber(std::string_view text, Int low, Int high, Int& value) {
  Int read{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), read);
  if (text.empty() || error != std::errc() || end != text.data() + text.size() || read < low || read > high)
    return false;
  value = read;
  return true;
}

bool IsDrawn(std::string_view letters) {
  return !letters.empty() && letters.size() <= 7 &&
         std::all_of(letters.begin(), letters.end(), [](char c) { return (c >= 'A' && c <= 'Z') || c == '?'; });
}

bool IsBag(std::string_view letters) {
  return letters.size() <= 102 &&
         std::all_of(letters.begin(), letters.end(), [](char c) { return (c >= 'A' && c <= 'Z') || c == '?'; });
}

// A play as the board takes it: letters (upper case for a blank), a position
// "H8" or "8H", points.
bool ReadPlay(std::string_view text, ClsWord& play) {
  const size_t a = text.find(' '), b = a == std::string_view::npos ? a : text.find(' ', a + 1);
  if (b == std::string_view::npos) return false;
  const std::string_view express = text.substr(0, a), place = text.substr(a + 1, b - a - 1);
  int points = 0;
  if (express.empty() || express.size() > 15 ||
      !std::all_of(express.begin(), express.end(), [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }))
    return false;
  const bool across = !place.empty() && place[0] >= 'A' && place[0] <= 'O';
  const std::string_view number = across ? place.substr(1) : place.substr(0, place.size() - 1);
  const char row = across ? place[0] : (place.empty() ? 0 : place.back());
  int column = 0;
  if (row < 'A' || row > 'O' || !ReadNumber(number, 1, 15, column)) return false;
  if (!ReadNumber(text.substr(b + 1), 0, 9999, points)) return false;
  play = ClsWord{std::string(express), std::string(place), int16_t(points)};
  return true;
}

// The lines of a text cut at CR LF, each with its number from 1.
class Lines {
 public:
  explicit Lines(std::string_view text) : text_(text) {}
  bool Next(std::string_view& line) {
    if (at_ >= text_.size()) return false;
    const size_t end = text_.find(kCrLf, at_);
    if (end == std::string_view::npos) {
      line = text_.substr(at_);
      at_ = text_.size();
      ++number_;
      return !line.empty() && line.find('\n') == std::string_view::npos;
    }
    line = text_.substr(at_, end - at_);
    at_ = end + kCrLf.size();
    ++number_;
    return line.find('\n') == std::string_view::npos;
  }
  int Number() const { return number_; }

 private:
  std::string_view text_;
  size_t at_ = 0;
  int number_ = 0;
};

bool Field(std::string_view line, std::string_view key, std::string_view& value) {
  if (line.size() <= key.size() || line.substr(0, key.size()) != key || line[key.size()] != '=') return false;
  value = line.substr(key.size() + 1);
  return true;
}

}  // namespace

std::string FormatGameFile(const GameFile& game) {
  std::string text = std::string(kGameFileFirstLine) + std::string(kCrLf);
  const auto line = [&text](std::string_view key, const std::string& value) {
    text.append(key);
    text += '=';
    text += value;
    text.append(kCrLf);
  };
  line("Nom", game.name);
  line("Date", DateText(game.date));
  line("Pioche", std::to_string(game.pioche));
  line("Jokers", std::to_string(game.jokers));
  line("Exact", game.exact ? "oui" : "non");
  line("Sac", game.bag);
  for (const GameFile::Turn& turn : game.turns) {
    line("Tirage", turn.drawn + " " + std::to_string(turn.random));
    if (turn.play)
      line("Coup", turn.play->Express + " " + turn.play->Place + " " + std::to_string(turn.play->CountP));
    if (turn.play && turn.top >= 0) line("Top", std::to_string(turn.top));
  }
  text += "Fin";
  text.append(kCrLf);
  return text;
}

std::optional<GameFile> ParseGameFile(std::string_view text, std::string& error) {
  // A byte-order mark is allowed at the start.
  if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
  Lines lines(text);
  std::string_view line, value;
  const auto bad = [&](const std::string& why) {
    error = "Ligne " + std::to_string(lines.Number()) + " : " + why;
    return std::nullopt;
  };
  const auto truncated = [&]() {
    error = "Le fichier s'arrête avant sa fin (après la ligne " + std::to_string(lines.Number()) + ").";
    return std::nullopt;
  };
  if (!lines.Next(line) || line != kGameFileFirstLine) {
    error = std::string(kNotAGame) + " (ligne 1)";
    return std::nullopt;
  }
  GameFile game;
  const auto expect = [&](std::string_view key) -> bool {
    if (!lines.Next(line)) return false;
    return Field(line, key, value);
  };
  if (!expect("Nom")) return lines.Number() < 2 ? truncated() : bad("le nom de la partie manque.");
  if (value.size() > 60) return bad("le nom de la partie est trop long.");
  game.name = std::string(value);
  if (!expect("Date") || !ReadDate(value, game.date)) return bad("la date de la partie manque ou ne se lit pas.");
  if (!expect("Pioche") || !ReadNumber<int16_t>(value, 0, 3, game.pioche))
    return bad("la pioche de départ manque ou ne se lit pas (0 à 3).");
  if (!expect("Jokers") || !ReadNumber<int16_t>(value, 1, 3, game.jokers))
    return bad("les jokers du premier tirage manquent ou ne se lisent pas (1 à 3).");
  if (!expect("Exact") || (value != "oui" && value != "non")) return bad("l'option du coup exact manque (oui ou non).");
  game.exact = value == "oui";
  if (!expect("Sac") || !IsBag(value)) return bad("le sac de départ manque ou contient autre chose que des lettres et des jokers.");
  game.bag = std::string(value);
  for (;;) {
    if (!lines.Next(line)) return truncated();
    if (line == "Fin") break;
    if (Field(line, "Tirage", value)) {
      const size_t space = value.find(' ');
      GameFile::Turn turn;
      turn.drawnLine = lines.Number();
      if (space == std::string_view::npos || !IsDrawn(value.substr(0, space)) ||
          !ReadNumber<uint64_t>(value.substr(space + 1), 0, UINT64_MAX, turn.random))
        return bad("le tirage ne se lit pas (jusqu'à sept lettres ou « ? », puis un nombre).");
      if (!game.turns.empty() && !game.turns.back().play) return bad("un tirage suit un tirage sans coup joué.");
      turn.drawn = std::string(value.substr(0, space));
      game.turns.push_back(turn);
    } else if (Field(line, "Coup", value)) {
      if (game.turns.empty() || game.turns.back().play) return bad("un coup sans tirage avant lui.");
      ClsWord play;
      if (!ReadPlay(value, play)) return bad("le coup ne se lit pas (le mot, sa position comme H8 ou 8H, ses points).");
      game.turns.back().play = play;
      game.turns.back().playLine = lines.Number();
    } else if (Field(line, "Top", value)) {
      if (game.turns.empty() || !game.turns.back().play || game.turns.back().top >= 0)
        return bad("un top sans coup joué avant lui.");
      if (!ReadNumber(value, 0, 9999, game.turns.back().top)) return bad("le top ne se lit pas.");
    } else {
      return bad("« " + std::string(line.substr(0, 40)) + " » n'est pas une ligne d'une partie.");
    }
  }
  if (lines.Next(line) && !line.empty()) return bad("quelque chose suit la fin de la partie.");
  return game;
}

GameRecord::GameRecord(FrmPlateau& form, const Clock& clock) : form_(form), clock_(clock) {
  form_.onDrawing = [this] { Drawing(); };
  form_.onTurnBoundary = [this] { Boundary(); };
  form_.onValidated = [this](const ClsWord& play, int top) { Validated(play, top); };
}

GameRecord::~GameRecord() {
  form_.onDrawing = nullptr;
  form_.onTurnBoundary = nullptr;
  form_.onValidated = nullptr;
}

int GameRecord::Plays() const {
  return int(std::count_if(turns_.begin(), turns_.end(), [](const RecordedTurn& t) { return t.play.has_value(); }));
}

void GameRecord::Drawing() {
  Program& program = form_.program();
  if (!correcting_ && form_.IntNbCoups == 0) {
    // A game starts: its name, its date, its options and its bag.
    turns_.clear();
    start_ = GameFile{};
    start_.name = program.NomPartie;
    start_.date = clock_.Now();
    start_.pioche = program.IntPioche;
    start_.jokers = program.IntJok;
    start_.exact = program.settings.proposeExact;
    start_.bag = program.StrSac;
  }
  RecordedTurn turn;
  turn.beforeDraw = form_.Snapshot();
  turns_.push_back(std::move(turn));
}

void GameRecord::Boundary() {
  struct Told {
    const GameRecord& record;
    ~Told() {
      if (record.onChanged) record.onChanged();
    }
  } told{*this};
  if (turns_.empty() || turns_.back().afterDraw || turns_.back().play) return;
  SavedGame now = form_.Snapshot();
  if (now.Chevalet.empty()) return;
  // The first boundary after the draw: the tiles on the stand, not yet
  // searched. (Later ones, once a play is taken back, leave it as it was.)
  std::string drawn;
  for (const Tile& tile : form_.PicGamer) {
    if (tile.Tag.empty()) continue;
    const char c = tile.Tag[0];
    drawn += c >= 'a' && c <= 'z' ? char(c - 32) : '?';
  }
  turns_.back().drawn = drawn;
  turns_.back().afterDraw = std::move(now);
}

void GameRecord::Validated(const ClsWord& play, int top) {
  if (turns_.empty()) return;
  turns_.back().play = play;
  turns_.back().top = top;
}

bool GameRecord::CanUndo() const {
  if (!form_.ObjPlateau || form_.BlnAbandon != 0 || form_.BestScoreStepDone || !form_.enabled) return false;
  for (auto it = turns_.rbegin(); it != turns_.rend(); ++it)
    if (it->play) return it->afterDraw.has_value();
  return false;
}

void GameRecord::Undo() {
  if (!CanUndo()) return;
  size_t k = turns_.size() - 1;
  if (!turns_[k].play) --k;  // the rack on the stand goes back with its draw
  turns_.resize(k + 1);
  turns_[k].play.reset();
  turns_[k].top = -1;
  const SavedGame state = *turns_[k].afterDraw;
  form_.Restore(state);
}

bool GameRecord::CanCorrectDraw() const {
  return form_.ObjPlateau && form_.BlnAbandon == 0 && form_.enabled && form_.CmdSolution.enabled &&
         !turns_.empty() && turns_.back().afterDraw && !turns_.back().play;
}

void GameRecord::CorrectDraw() {
  if (!CanCorrectDraw()) return;
  const SavedGame before = turns_.back().beforeDraw;
  turns_.pop_back();
  correcting_ = true;
  form_.Restore(before);  // the picker opens again for this draw
  correcting_ = false;
}

GameFile GameRecord::File() const {
  GameFile file = start_;
  file.turns.clear();
  for (const RecordedTurn& t : turns_) {
    if (!t.afterDraw) continue;
    file.turns.push_back(GameFile::Turn{t.drawn, t.afterDraw->randomState, 0, t.play, 0, t.top});
  }
  return file;
}

void GameRecord::Adopt(const GameFile& start, std::vector<RecordedTurn> turns) {
  start_ = start;
  start_.turns.clear();
  turns_ = std::move(turns);
}

}  // namespace ostrane
