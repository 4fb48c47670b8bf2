#include <cctype>
#include <chrono>
#include <cstdio>

#include "app/cli/cli.h"
#include "data/resources.h"
#include "lexicon/lexicon.h"

namespace ostrane::cli {

const Lexicon& SharedLexicon() {
  static const Lexicon* lexicon = [] {
    auto* loaded = new Lexicon;
    loaded->LoadAll([](std::string_view name) { return ReadResource(name); });
    return loaded;
  }();
  return *lexicon;
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
