#include "lexicon/word_list.h"

#include <algorithm>

#include "lexicon/fatal.h"

namespace ostrane {

void SplitList::Load(std::string_view bytes) {
  text_.assign(bytes);
  starts_.clear();
  starts_.push_back(0);
  for (size_t pos = 0;;) {
    const size_t crlf = text_.find("\r\n", pos);
    if (crlf == std::string::npos) break;
    pos = crlf + 2;
    starts_.push_back(uint32_t(pos));
  }
  // A sentinel as if a CR LF closed the text, so that every element ends two
  // characters before the start of the next.
  starts_.push_back(uint32_t(text_.size() + 2));
}

std::string_view SplitList::Element(int32_t i) const {
  if (i < 0 || i > UBound()) FatalIndex("liste de mots", i);
  const uint32_t begin = starts_[size_t(i)];
  return std::string_view(text_).substr(begin, starts_[size_t(i) + 1] - 2 - begin);
}

void LongWordList::Load(std::string_view bytes) {
  list_.Load(bytes);
  sorted_.clear();
  sorted_.reserve(size_t(std::max(0, UBound())));
  for (int32_t i = 0; i < UBound(); ++i) sorted_.push_back(i);
  const auto byText = [this](int32_t a, int32_t b) { return Element(a) < Element(b); };
  if (!std::is_sorted(sorted_.begin(), sorted_.end(), byText))
    std::sort(sorted_.begin(), sorted_.end(), byText);
}

bool LongWordList::Contains(std::string_view word) const {
  const auto it = std::lower_bound(sorted_.begin(), sorted_.end(), word,
                                   [this](int32_t a, std::string_view w) { return Element(a) < w; });
  return it != sorted_.end() && Element(*it) == word;
}

namespace {

// Code points of bytes 0x80..0x9F in code page 1252 (0 where undefined).
constexpr char16_t kHigh1252[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += char(cp);
  } else if (cp < 0x800) {
    out += char(0xC0 | (cp >> 6));
    out += char(0x80 | (cp & 0x3F));
  } else {
    out += char(0xE0 | (cp >> 12));
    out += char(0x80 | ((cp >> 6) & 0x3F));
    out += char(0x80 | (cp & 0x3F));
  }
}

}  // namespace

std::string Cp1252ToUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 8);
  for (const char ch : bytes) {
    const auto b = static_cast<unsigned char>(ch);
    char32_t cp = b;
    if (b >= 0x80 && b < 0xA0) cp = kHigh1252[b - 0x80] ? kHigh1252[b - 0x80] : char32_t(b);
    AppendUtf8(out, cp);
  }
  return out;
}

std::string Utf8ToCp1252(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    const auto b = static_cast<unsigned char>(text[i]);
    char32_t cp;
    size_t len;
    if (b < 0x80) {
      cp = b, len = 1;
    } else if ((b & 0xE0) == 0xC0 && i + 1 < text.size()) {
      cp = ((b & 0x1F) << 6) | (text[i + 1] & 0x3F), len = 2;
    } else if ((b & 0xF0) == 0xE0 && i + 2 < text.size()) {
      cp = ((b & 0x0F) << 12) | ((text[i + 1] & 0x3F) << 6) | (text[i + 2] & 0x3F), len = 3;
    } else {
      cp = U'?', len = 1;
      while (i + len < text.size() && (static_cast<unsigned char>(text[i + len]) & 0xC0) == 0x80)
        ++len;
    }
    i += len;
    if (cp < 0x80 || (cp >= 0xA0 && cp < 0x100)) {
      out += char(cp);
      continue;
    }
    char mapped = '?';
    for (int k = 0; k < 32; ++k)
      if (kHigh1252[k] == cp) mapped = char(0x80 + k);
    out += mapped;
  }
  return out;
}

void Definitions::Load(std::string_view cp1252Bytes) {
  lines_.clear();
  const SplitList list(cp1252Bytes);
  for (int32_t i = 0; i <= list.UBound(); ++i) lines_.push_back(Cp1252ToUtf8(list.Element(i)));
}

std::optional<std::string> Definitions::Find(std::string_view upperWord, int32_t last) const {
  static constexpr std::string_view kSection = "\xC2\xA7";  // "§"
  for (int32_t i = 0; i <= last && i < int32_t(lines_.size()); ++i) {
    const std::string& line = lines_[size_t(i)];
    const size_t section = line.find(kSection);
    const std::string_view key =
        std::string_view(line).substr(0, section == std::string::npos ? line.size() : section);
    // Keys are compared upper-cased; they are stored in capitals already.
    if (key.size() != upperWord.size()) continue;
    bool same = true;
    for (size_t k = 0; k < key.size() && same; ++k)
      same = (key[k] >= 'a' && key[k] <= 'z' ? char(key[k] - 32) : key[k]) == upperWord[k];
    if (!same) continue;
    std::string rest = section == std::string::npos ? std::string() : line.substr(section + 2);
    const size_t dollar = rest.find('$');
    std::string definition = dollar == std::string::npos ? std::string() : rest.substr(dollar + 1);
    // The last line of the data closes on NUL padding instead of a line end.
    while (!definition.empty() && definition.back() == '\0') definition.pop_back();
    return definition;
  }
  return std::nullopt;
}

}  // namespace ostrane
