#pragma once
// The program's own settings, beside "Option.ret" (whose nine lines stay as
// they are): what the additions to the game remember from one run to the
// next. The file "ostrane.ini" is plain text in UTF-8, one "key=value" a line
// under a "[Ostrane]" heading; unknown keys and lines are kept out of the
// way (ignored), a missing file gives the defaults. It is written whole.
//
//   [Ostrane]
//   proposer_coup_exact=non        "oui": the solution proposes the exact top
//   liste_de_mots=                 the player's own word list (a file), empty for the embedded one

#include <filesystem>
#include <string>
#include <string_view>

namespace ostrane {

inline constexpr const char* kSettingsFileName = "ostrane.ini";

struct Settings {
  bool proposeExact = false;  // "Proposer le meilleur coup exact"
  std::string wordList;       // the player's own word list, empty for the embedded one

  bool operator==(const Settings&) const = default;
};

std::string FormatSettings(const Settings& settings);
// Reads what it knows of `text` into `settings`, leaving the rest as it was.
void ParseSettings(std::string_view text, Settings& settings);

// Reads the file; false (and the defaults) when there is none or it cannot
// be read.
bool ReadSettings(const std::filesystem::path& file, Settings& settings);
// Writes the whole file; false when it cannot be written.
bool WriteSettings(const std::filesystem::path& file, const Settings& settings);

}  // namespace ostrane
