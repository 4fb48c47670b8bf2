#include "records/options.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <vector>

#include "records/program.h"
#include "records/text_files.h"

namespace ostrane {
namespace {

// Reads a whole line as the old numeric input does into a whole-number
// field: blanks around it, an optional sign, digits with an optional
// fraction and exponent ("3.5", "-2", "1E3"); an empty line is 0. The value
// is rounded to the nearest whole number, halves to the even one ("2.5" is
// 2, "3.5" is 4), and must lie within [lowest, highest]. Text that is no
// number, and a value out of range, do not read.
bool ReadNumber(const std::string& line, long lowest, long highest, long& value) {
  const auto blank = [](char c) { return c == ' ' || c == '\t'; };
  const auto digit = [](char c) { return c >= '0' && c <= '9'; };
  size_t begin = 0, end = line.size();
  while (begin < end && blank(line[begin])) ++begin;
  while (end > begin && blank(line[end - 1])) --end;
  if (begin == end) {
    value = 0;
    return lowest <= 0 && 0 <= highest;
  }
  std::string number;
  size_t pos = begin;
  if (line[pos] == '+' || line[pos] == '-') number += line[pos++];
  size_t digits = 0;
  while (pos < end && digit(line[pos])) number += line[pos++], ++digits;
  if (pos < end && line[pos] == '.') {
    number += line[pos++];
    while (pos < end && digit(line[pos])) number += line[pos++], ++digits;
  }
  if (digits == 0) return false;
  if (pos < end && (line[pos] == 'E' || line[pos] == 'e' || line[pos] == 'D' || line[pos] == 'd')) {
    number += 'E';
    ++pos;
    if (pos < end && (line[pos] == '+' || line[pos] == '-')) number += line[pos++];
    size_t exponent = 0;
    while (pos < end && digit(line[pos])) number += line[pos++], ++exponent;
    if (exponent == 0) return false;
  }
  if (pos != end) return false;
  const double read = std::strtod(number.c_str(), nullptr);
  if (!std::isfinite(read)) return false;
  const double whole = std::nearbyint(read);
  if (whole < double(lowest) || whole > double(highest)) return false;
  value = long(whole);
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
  if (!ReadNumber(lines[1], INT16_MIN, INT16_MAX, number)) return false;
  read.OptLigne2 = int16_t(number);
  if (!ReadNumber(lines[2], INT32_MIN, INT32_MAX, number)) return false;
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
  // The nine lines whole, or the file as it was: never an empty file.
  return WriteWholeFile(file, FormatOptions(options)) == 0;
}

bool SaveOptions(const Program& program) { return WriteOptions(program.OptionsFile(), program.options); }

}  // namespace ostrane
