// Verbs on the board engine: solve, score, bench.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "app/cli/cli.h"
#include "engine/board.h"
#include "engine/board_text.h"
#include "engine/context.h"
#include "engine/exact_moves.h"
#include "lexicon/lexicon.h"
#include "lexicon/messages.h"
#include "lexicon/tables.h"

namespace ostrane::cli {
namespace {

bool IsAsciiLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// A word of letters, optionally followed by " (" one or two letters ")" for the
// letters blanks stand for: anything else would reach the engine's tables.
bool WellFormedExpression(const std::string& expression) {
  const size_t blank = expression.find(' ');
  const std::string word = expression.substr(0, blank);
  if (word.empty() || word.size() > 15) return false;
  for (const char c : word)
    if (!IsAsciiLetter(c)) return false;
  if (blank == std::string::npos) return true;
  const std::string rest = expression.substr(blank);
  if (rest.size() < 3 || rest.size() > 5 || rest.compare(0, 2, " (") != 0 || rest.back() != ')') return false;
  for (size_t k = 2; k + 1 < rest.size(); ++k)
    if (!IsAsciiLetter(rest[k])) return false;
  return true;
}

BoardSquares ReadBoardFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw UsageError("board '" + path + "': cannot be read");
  std::stringstream text;
  text << in.rdbuf();
  BoardSquares squares{};
  std::string error;
  if (!ParseBoardText(text.str(), squares, error)) throw UsageError("board '" + path + "': " + error);
  return squares;
}

// The rack as the search takes it: lower-case letters, "?" for a blank.
std::string SearchRack(const std::string& arg) {
  std::string rack = CheckedRack(arg);
  if (rack.size() > 7) throw UsageError("rack '" + arg + "': at most 7 tiles");
  if (std::count(rack.begin(), rack.end(), '?') > 2)
    throw UsageError("rack '" + arg + "': at most 2 blanks (the bag holds two)");
  for (char& c : rack) c = LowerAscii(c);
  return rack;
}

const char* Direction(uint8_t bytSens) { return bytSens == 0 ? "Horizontal" : "Vertical"; }

struct Options {
  Args positional;
  std::string board;
  bool all = false;
  bool exact = false;
  long top = -1;
  bool seeded = false;
  long seed = 1;
  long games = 20;
};

Options ParseOptions(const Args& args, bool allowAll, bool allowGames, bool allowTop = false) {
  Options options;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    const auto value = [&](const char* name) -> const std::string& {
      if (i + 1 >= args.size()) throw UsageError(std::string(name) + " needs a value");
      return args[++i];
    };
    if (arg == "--board" && !allowGames) {
      options.board = value("--board");
    } else if (arg == "--all" && allowAll) {
      options.all = true;
    } else if (arg == "--exact" && allowAll) {
      options.exact = true;
    } else if (arg == "--top" && allowTop) {
      options.top = CheckedNumber(value("--top"), "top");
    } else if (arg == "--seed") {
      options.seed = CheckedNumber(value("--seed"), "seed");
      options.seeded = true;
    } else if (arg == "--games" && allowGames) {
      options.games = CheckedNumber(value("--games"), "games");
    } else if (arg.size() > 2 && arg.compare(0, 2, "--") == 0) {
      throw UsageError("unknown option '" + arg + "'");
    } else {
      options.positional.push_back(arg);
    }
  }
  return options;
}

}  // namespace

int RunSolve(const Args& args) {
  const Options options = ParseOptions(args, true, false);
  if (options.positional.size() != 1) throw UsageError("give one rack");
  std::string rack = SearchRack(options.positional[0]);
  BoardSquares squares{};
  if (!options.board.empty()) squares = ReadBoardFile(options.board);

  EngineContext context;
  context.Random.Seed(uint64_t(options.seed));
  StderrBoxes boxes;
  ClsPlateau board(SharedLexicon(), context);
  board.SetMessageBoxes(&boxes);
  LoadBoard(board, squares);

  if (options.exact) {
    // The exact top in place of the designed proposal.
    const auto best = ExactMoves(SharedLexicon().Graph()).Best(squares.data(), board.SubWordFirst(), rack);
    std::string out = "best ";
    if (best) {
      out += best->Express(squares.data()) + ' ' + best->Place() + ' ' + std::to_string(best->points) + ' ' +
             (best->down ? "Vertical" : "Horizontal") + '\n';
    } else {
      out += "none\n";
    }
    std::fputs(out.c_str(), stdout);
    return 0;
  }
  const int32_t count = board.TrouveSolution(rack);
  std::string out;
  if (options.all) {
    for (int32_t i = 1; i <= count; ++i) {
      const ClsWord& play = board.TabSolutions(i);
      out += std::to_string(i) + ' ' + play.Express + ' ' + play.Place + ' ' +
             std::to_string(play.CountP) + '\n';
    }
  }
  out += "count " + std::to_string(count) + '\n';
  if (const auto best = board.SubSortie(5)) {
    out += "best " + best->Express + ' ' + best->Place + ' ' + std::to_string(best->CountP) + ' ' +
           Direction(context.BytSens) + '\n';
  } else {
    out += "best none\n";
  }
  std::fputs(out.c_str(), stdout);
  return 0;
}

int RunAnalyse(const Args& args) {
  const Options options = ParseOptions(args, false, false, true);
  if (options.positional.size() != 1) throw UsageError("give one rack");
  const std::string rack = SearchRack(options.positional[0]);
  BoardSquares squares{};
  if (!options.board.empty()) squares = ReadBoardFile(options.board);
  bool empty = true;
  for (const char c : squares) empty = empty && c == 0;

  ExactMoves moves(SharedLexicon().Graph());
  const std::vector<ExactPlay>& plays = moves.All(squares.data(), empty, rack);
  const size_t shown = options.top < 0 ? plays.size() : std::min(plays.size(), size_t(options.top));
  std::string out;
  for (size_t i = 0; i < shown; ++i) {
    const ExactPlay& p = plays[i];
    out += std::to_string(i + 1) + ' ' + p.Shown() + ' ' + p.Place() + ' ' + std::to_string(p.points) + ' ' +
           std::to_string(p.tiles) + '\n';
  }
  out += "count " + std::to_string(plays.size()) + '\n';
  std::fputs(out.c_str(), stdout);
  return 0;
}

int RunScore(const Args& args) {
  const Options options = ParseOptions(args, false, false);
  if (options.board.empty()) throw UsageError("give the board with --board FILE");
  if (options.positional.size() != 2) throw UsageError("give an expression and a position");
  const std::string& expression = options.positional[0];
  const std::string& position = options.positional[1];
  if (!WellFormedExpression(expression))
    throw UsageError("expression '" + expression + "': letters A-Z, then maybe \" (xy)\" for blanks");
  const BoardSquares squares = ReadBoardFile(options.board);

  EngineContext context;
  ClsPlateau board(SharedLexicon(), context);
  LoadBoard(board, squares);

  // Check the position and the length here: the engine would end the
  // program on a square outside the board.
  const bool across = !position.empty() && position[0] >= 'A' && position[0] <= 'O';
  const bool down = !across && !position.empty() && position.back() >= 'A' && position.back() <= 'O';
  const int column = board.SubColumn(position);
  if ((!across && !down) || column < 0 || position.size() > 3)
    throw UsageError("position '" + position + "': a row A-O and a column 1-15, as H8 or 8H");
  const int row = board.SubTrouverLigne(position);
  size_t wordLength = expression.find(' ');
  if (wordLength == std::string::npos) wordLength = expression.size();
  if ((across ? column : row) + int(wordLength) > 15)
    throw UsageError("expression '" + expression + "' runs past the board from " + position);

  ClsWord scored;
  if (across) {
    scored = board.SubScoreH(expression, position, 0);
  } else {
    board.SubPlat();
    scored = board.SubScoreH(expression, board.SubTurnPlace(position), 1);
    board.SubPlat();
  }
  std::printf("%s %s %d\n", scored.Express.c_str(), scored.Place.c_str(), int(scored.CountP));
  return 0;
}

int RunBench(const Args& args) {
  using Clock = std::chrono::steady_clock;
  const auto started = Clock::now();
  const Options options = ParseOptions(args, false, true);
  if (!options.positional.empty()) throw UsageError("bench takes only --games and --seed");
  if (options.games < 1) throw UsageError("--games: at least 1");
  const Lexicon& lexicon = SharedLexicon();
  const double loadSeconds = std::chrono::duration<double>(Clock::now() - started).count();

  // The bag: every tile of the tile table.
  std::string fullBag;
  for (size_t k = 0; k + 2 < StrPioche.size(); k += 3) {
    const int count = (StrPioche[k] - '0') * 10 + (StrPioche[k + 1] - '0');
    const char letter = StrPioche[k + 2];
    fullBag.append(size_t(count), letter == '?' ? '?' : LowerAscii(letter));
  }

  EngineContext context;
  context.Random.Seed(uint64_t(options.seed));
  StderrBoxes boxes;
  int64_t searches = 0, findings = 0, signature = 0, plays = 0;
  double searchSeconds = 0, slowest = 0;
  std::string slowestWhat;

  for (long game = 1; game <= options.games; ++game) {
    std::string bag = fullBag;
    for (size_t k = bag.size(); k > 1; --k) std::swap(bag[k - 1], bag[context.Random.Below(uint32_t(k))]);
    ClsPlateau board(lexicon, context);
    board.SetMessageBoxes(&boxes);
    std::string rack;
    for (int turn = 1;; ++turn) {
      while (rack.size() < 7 && !bag.empty()) {
        rack += bag.back();
        bag.pop_back();
      }
      if (rack.empty()) break;
      std::string letters = rack;
      const auto before = Clock::now();
      const int32_t count = board.TrouveSolution(letters);
      const double seconds = std::chrono::duration<double>(Clock::now() - before).count();
      ++searches;
      findings += count;
      searchSeconds += seconds;
      if (seconds > slowest) {
        slowest = seconds;
        slowestWhat = "game " + std::to_string(game) + " turn " + std::to_string(turn) + " rack " + rack;
      }
      const auto best = board.SubSortie(5);
      if (!best) break;
      int laid = 0;
      if (!TakeTiles(board, *best, rack, laid) || laid == 0) {
        std::fprintf(stderr, "bench: game %ld turn %d: play %s %s does not fit rack %s\n", game, turn,
                     best->Express.c_str(), best->Place.c_str(), rack.c_str());
        return 1;
      }
      board.SubCaserWord(*best);
      board.SubWordFirst(false);
      context.LngSens = 0;
      signature += best->CountP;
      ++plays;
    }
  }

  const double total = std::chrono::duration<double>(Clock::now() - started).count();
  std::printf("games %ld\n", options.games);
  std::printf("seed %ld\n", options.seed);
  std::printf("plays %lld\n", static_cast<long long>(plays));
  std::printf("searches %lld\n", static_cast<long long>(searches));
  std::printf("findings %lld\n", static_cast<long long>(findings));
  std::printf("lexicon load %.3f s\n", loadSeconds);
  std::printf("search time %.3f s\n", searchSeconds);
  std::printf("total time %.3f s\n", total);
  std::printf("per search %.3f ms\n", searches ? searchSeconds * 1000.0 / double(searches) : 0.0);
  std::printf("searches per second %.1f\n", searchSeconds > 0 ? double(searches) / searchSeconds : 0.0);
  std::printf("slowest search %.3f ms (%s)\n", slowest * 1000.0, slowestWhat.c_str());
  std::printf("signature %lld\n", static_cast<long long>(signature));
  return 0;
}

}  // namespace ostrane::cli
