#include "records/options.h"

#include <fstream>
#include <sstream>
#include <vector>

#include "records/program.h"

namespace ostrane {
namespace {

// Reads a whole line as an integer, as a number field of the file is read.
bool ReadNumber(const std::string& line, long& value) {
  size_t pos = 0;
  while (pos < line.size() && line[pos] == ' ') ++pos;
  bool negative = false;
  if (pos < line.size() && (line[pos] == '-' || line[pos] == '+')) negative = line[pos++] == '-';
  const size_t digits = pos;
  long result = 0;
  while (pos < line.size() && line[pos] >= '0' && line[pos] <= '9' && result < 100000000)
    result = result * 10 + (line[pos++] - '0');
  while (pos < line.size() && line[pos] == ' ') ++pos;
  if (pos == digits || pos != line.size()) return false;
  value = negative ? -result : result;
  return true;
}

// The last character of a line, as a number.
bool LastDigit(const std::string& line, long& value) {
  if (line.empty() || line.back() < '0' || line.back() > '9') return false;
  value = line.back() - '0';
  return true;
}

}  // namespace

std::string FormatOptions(const Options& o) {
  std::ostringstream text;
  text << o.OptMessages << "\r\n"
       << o.OptLigne2 << "\r\n"
       << o.OptLigne3 << "\r\n"
       << (o.OptSons ? "SonYes" : "SonNo") << "\r\n"
       << (o.OptDuree ? "DureeYes" : "DureeNo") << "\r\n"
       << "Img plateau " << o.OptImage << "\r\n"
       << "Def mots 23 " << o.OptDef23 << "\r\n"
       << "Encadrement " << o.OptCadre << "\r\n"
       << "ResolutionE " << int(o.OptResol) << "\r\n";
  return text.str();
}

bool ReadOptions(const std::filesystem::path& file, Options& options) {
  options = Options{};
  std::ifstream in(file, std::ios::binary);
  if (!in) return false;
  std::vector<std::string> lines;
  std::string line;
  while (lines.size() < 9 && std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(line);
  }
  if (lines.size() < 9) return false;

  Options read;
  long number = 0;
  read.OptMessages = lines[0];
  if (!ReadNumber(lines[1], number)) return false;
  read.OptLigne2 = int16_t(number);
  if (!ReadNumber(lines[2], number)) return false;
  read.OptLigne3 = int32_t(number);
  read.OptSons = lines[3] != "SonNo";
  read.OptDuree = lines[4] != "DureeNo";
  if (!LastDigit(lines[5], number)) return false;
  read.OptImage = int16_t(number);
  if (!LastDigit(lines[6], number)) return false;
  read.OptDef23 = int16_t(number);
  if (!LastDigit(lines[7], number)) return false;
  read.OptCadre = int16_t(number);
  if (!LastDigit(lines[8], number)) return false;
  read.OptResol = uint8_t(number);
  options = read;
  return true;
}

bool WriteOptions(const std::filesystem::path& file, const Options& options) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  if (!out) return false;
  out << FormatOptions(options);
  return bool(out.flush());
}

bool SaveOptions(const Program& program) { return WriteOptions(program.OptionsFile(), program.options); }

}  // namespace ostrane
