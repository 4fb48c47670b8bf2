#pragma once
// Shared pieces of the command-line tool: argument errors, the lexicon, and
// the verbs each part of the program brings.

#include <stdexcept>
#include <string>
#include <vector>

#include "lexicon/messages.h"

namespace ostrane {
struct Lexicon;
}

namespace ostrane::cli {

using Args = std::vector<std::string>;

// A bad argument: the tool prints its text on one line and exits with 2.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Messages of a search that grows too large go to standard error; questions
// are answered Yes, so that the tool always gives the whole answer.
class StderrBoxes : public MessageBoxes {
 public:
  Answer MsgBox(const std::string& text, BoxStyle style) override;
};

// The lexicon: the player's own list when one was given, else the one
// loaded from the program's own resources, once.
const Lexicon& SharedLexicon();
// Takes the player's list (`--lexicon FILE`) for the whole run; false, the
// reason told on standard error, when the file cannot serve.
bool UseWordList(const std::string& file);

// Checks that a rack holds only letters and "?"; returns it upper-cased.
std::string CheckedRack(const std::string& rack);
// Parses a non-negative integer argument.
long CheckedNumber(const std::string& text, const char* what);

// Verbs: each returns the exit status.
int RunCheck(const Args& args);
int RunWords(const Args& args);
int RunPattern(const Args& args);
int RunLexicon(const Args& args);
int RunSolve(const Args& args);
int RunAnalyse(const Args& args);
int RunScore(const Args& args);
int RunBench(const Args& args);
int RunAutoplay(const Args& args);

}  // namespace ostrane::cli
