#include "records/settings.h"

#include "records/text_files.h"

namespace ostrane {
namespace {

constexpr std::string_view kHeading = "[Ostrane]";
constexpr std::string_view kProposeExact = "proposer_coup_exact";
constexpr std::string_view kWordList = "liste_de_mots";

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t' || text.back() == '\r')) text.remove_suffix(1);
  return text;
}

}  // namespace

std::string FormatSettings(const Settings& settings) {
  std::string text(kHeading);
  text += '\n';
  text += std::string(kProposeExact) + "=" + (settings.proposeExact ? "oui" : "non") + "\n";
  text += std::string(kWordList) + "=" + settings.wordList + "\n";
  return text;
}

void ParseSettings(std::string_view text, Settings& settings) {
  while (!text.empty()) {
    const size_t end = text.find('\n');
    const std::string_view line = Trimmed(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    const size_t equals = line.find('=');
    if (line.empty() || line.front() == '#' || line.front() == ';' || equals == std::string_view::npos) continue;
    const std::string_view key = Trimmed(line.substr(0, equals)), value = Trimmed(line.substr(equals + 1));
    if (key == kProposeExact) settings.proposeExact = value == "oui" || value == "1";
    if (key == kWordList) settings.wordList = std::string(value);
  }
}

bool ReadSettings(const std::filesystem::path& file, Settings& settings) {
  settings = Settings{};
  std::string bytes;
  if (DiskFiles().Read(file, bytes)) return false;
  ParseSettings(bytes, settings);
  return true;
}

bool WriteSettings(const std::filesystem::path& file, const Settings& settings) {
  return WriteWholeFile(file, FormatSettings(settings)) == 0;
}

}  // namespace ostrane
