#include "engine/board.h"

#include <algorithm>

#include "engine/line_scan.h"
#include "engine/move_search.h"
#include "lexicon/fatal.h"
#include "lexicon/lexicon.h"

namespace ostrane {
ClsPlateau::ClsPlateau(const Lexicon& lexicon, EngineContext& context)
    : lexicon_(lexicon), context_(context) {
  objExpressions_.SubDico(lexicon);
  plays_.emplace_back();
  found_.push_back(0);
}

ClsPlateau::~ClsPlateau() = default;

void ClsPlateau::CheckSquare(int x, int y) {
  if (x < 0 || x >= kSize) FatalIndex("TabPlateau, colonne", x);
  if (y < 0 || y >= kSize) FatalIndex("TabPlateau, ligne", y);
}

std::string ClsPlateau::SubCase(int x, int y) const {
  const char c = Square(x, y);
  return c ? std::string(1, c) : std::string();
}

void ClsPlateau::SubCase(int x, int y, std::string_view value) {
  SetSquare(x, y, value.empty() ? '\0' : value.front());
}

char ClsPlateau::Square(int x, int y) const {
  CheckSquare(x, y);
  return At(x, y);
}

void ClsPlateau::SetSquare(int x, int y, char value) {
  CheckSquare(x, y);
  At(x, y) = value;
}

bool ClsPlateau::IsEmpty() const {
  return std::all_of(squares_.begin(), squares_.end(), [](char c) { return c == '\0'; });
}

char ClsPlateau::TabPrime(int x, int y) {
  CheckSquare(x, y);
  return PrimeAt(x, y);
}

void ClsPlateau::SubPlat() {
  Yield();
  std::array<char, kSize * kSize> turned;
  for (int y = 0; y < kSize; ++y)
    for (int x = 0; x < kSize; ++x) turned[size_t(y) * kSize + size_t(x)] = At(y, x);
  Yield();
  squares_ = turned;
  Yield();
}

int16_t ClsPlateau::SubCaserWord(const ClsWord& word) {
  const std::string& letters = word.Express;
  const std::string place = UpperTrimmed(word.Place);
  if (place.size() >= 4 || place.empty()) return 0;

  const char first = place.front();
  const bool across = first >= 'A' && first <= 'O';
  int row, number;
  if (across) {
    row = first - 65;
    number = PositionNumber(std::string_view(place).substr(1));
  } else {
    // Any last character is taken as the row letter: a wrong one fails on
    // the square index below, not here.
    row = static_cast<unsigned char>(place.back()) - 65;
    number = PositionNumber(std::string_view(place).substr(0, place.size() - 1));
  }
  if (number > 15 || number < 1) return 0;
  const int column = number - 1;
  const int length = int(letters.size());

  if (across) {
    if (length + column >= 16) return 0;
    for (int i = 0; i < length; ++i) SetSquare(column + i, row, letters[size_t(i)] == '-' ? '\0' : letters[size_t(i)]);
  } else {
    if (length + row > 15) return 0;
    for (int i = 0; i < length; ++i) SetSquare(column, row + i, letters[size_t(i)] == '-' ? '\0' : letters[size_t(i)]);
  }
  return 0;
}

void ClsPlateau::SetYield(YieldHook hook) { yield_ = hook; }

bool TakeTiles(const ClsPlateau& board, const ClsWord& play, std::string& rack, int& laid) {
  const int row = board.SubTrouverLigne(play.Place);
  const int column = board.SubColumn(play.Place);
  const bool across = !play.Place.empty() && play.Place[0] >= 'A' && play.Place[0] <= 'O';
  laid = 0;
  for (size_t i = 0; i < play.Express.size(); ++i) {
    const int x = across ? column + int(i) : column;
    const int y = across ? row : row + int(i);
    if (x < 0 || x > 14 || y < 0 || y > 14) return false;
    if (board.Square(x, y) != '\0') continue;
    const char c = play.Express[i];
    const char tile = (c >= 'A' && c <= 'Z') ? '?' : c;
    const size_t at = rack.find(tile);
    if (at == std::string::npos) return false;
    rack.erase(at, 1);
    ++laid;
  }
  return true;
}

}  // namespace ostrane
