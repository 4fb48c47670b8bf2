#include <cctype>
#include <chrono>
#include <cstdio>

#include "app/cli/cli.h"
#include "data/embedded_lexicon.h"
#include "lexicon/lexicon.h"

namespace ostrane::cli {

const Lexicon& SharedLexicon() { return EmbeddedLexicon(); }

Answer StderrBoxes::MsgBox(const std::string& text, BoxStyle style) {
  std::string line;
  for (const char c : text) line += (c == '\r' || c == '\n') ? ' ' : c;
  std::fprintf(stderr, "%s%s\n", line.c_str(), style.buttons == Buttons::YesNo ? " -> Oui" : "");
  return style.buttons == Buttons::YesNo ? Answer::Yes : Answer::Ok;
}

std::string CheckedRack(const std::string& rack) {
  std::string upper;
  for (const char c : rack) {
    const char u = char(std::toupper(static_cast<unsigned char>(c)));
    if (!((u >= 'A' && u <= 'Z') || u == '?'))
      throw UsageError("rack '" + rack + "': only letters A-Z and '?' for a blank");
    upper += u;
  }
  if (upper.size() > 15) throw UsageError("rack '" + rack + "': at most 15 tiles");
  return upper;
}

long CheckedNumber(const std::string& text, const char* what) {
  if (text.empty() || text.size() > 9) throw UsageError(std::string(what) + " '" + text + "': not a number");
  for (const char c : text)
    if (c < '0' || c > '9') throw UsageError(std::string(what) + " '" + text + "': not a number");
  return std::stol(text);
}

}  // namespace ostrane::cli
