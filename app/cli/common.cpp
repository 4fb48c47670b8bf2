#include <cctype>
#include <chrono>
#include <cstdio>

#include "app/cli/cli.h"
#include "data/embedded_lexicon.h"
#include "data/resources.h"
#include "lexicon/lexicon.h"
#include "lexicon/user_list.h"

namespace ostrane::cli {

namespace {
const Lexicon* g_ownList = nullptr;  // the player's list, when one was given
}  // namespace

const Lexicon& SharedLexicon() { return g_ownList ? *g_ownList : EmbeddedLexicon(); }

bool UseWordList(const std::string& file) {
  std::string error;
  const std::optional<CompiledWordList> list = CompiledWordList::Open(file, UserCacheFolder(), error);
  if (!list) {
    std::fprintf(stderr, "ostrane-cli: %s\n", error.c_str());
    return false;
  }
  auto* lexicon = new Lexicon;  // for the whole run
  list->LoadInto(*lexicon, ReadResource);
  g_ownList = lexicon;
  const WordListInUse& info = list->Info();
  std::fprintf(stderr, "ostrane-cli: liste « %s » : %s mots, %s ligne%s ignorée%s%s\n",
               info.file.filename().string().c_str(), FrenchCount(info.words).c_str(),
               FrenchCount(info.skipped).c_str(), info.skipped > 1 ? "s" : "", info.skipped > 1 ? "s" : "",
               info.fromCache ? " (copie compilée)" : "");
  return true;
}

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
