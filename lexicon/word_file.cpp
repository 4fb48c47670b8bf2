#include "lexicon/word_file.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <system_error>

namespace ostrane {
namespace {

// Code page 1252's characters from 0x80 to 0x9F (0 where it has none); the
// rest of the page is Latin-1.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// What a character stands for in a word: one or two letters A-Z, or nothing
// (0) when it cannot be in a word.
struct Folded {
  char first = 0, second = 0;
};

// The letters of Latin-1's accented characters from 0xC0 to 0xFF, upper
// and lower case alike ("" for the characters that are not letters of a
// French word: ×, ÷, Ð, Þ, ß).
constexpr const char* kLatin1Letters[64] = {
    "A", "A", "A", "A", "A", "A", "AE", "C", "E", "E", "E", "E", "I", "I", "I", "I",
    "",  "N", "O", "O", "O", "O", "O",  "",  "O", "U", "U", "U", "U", "Y", "",  "",
    "A", "A", "A", "A", "A", "A", "AE", "C", "E", "E", "E", "E", "I", "I", "I", "I",
    "",  "N", "O", "O", "O", "O", "O",  "",  "O", "U", "U", "U", "U", "Y", "",  "Y"};

Folded FoldChar(char32_t c) {
  if (c >= 'a' && c <= 'z') return {char(c - 32), 0};
  if (c >= 'A' && c <= 'Z') return {char(c), 0};
  if (c >= 0xC0 && c <= 0xFF) {
    const char* letters = kLatin1Letters[c - 0xC0];
    return {letters[0], letters[0] ? letters[1] : char(0)};
  }
  switch (c) {
    case 0x0152:  // Œ
    case 0x0153:  // œ
      return {'O', 'E'};
    case 0x0178:  // Ÿ
      return {'Y', 0};
    default:
      return {};
  }
}

bool Blank(char32_t c) { return c == ' ' || c == '\t' || c == '\r' || c == 0xA0 || c == 0xFEFF || c == '\f' || c == '\v'; }

// Folds one line of code points into `out`: Fold::Word when it is a word.
template <class Chars>
Fold FoldLine(const Chars& chars, size_t begin, size_t end, char* out, size_t& length) {
  while (begin < end && Blank(chars[begin])) ++begin;
  while (end > begin && Blank(chars[end - 1])) --end;
  length = 0;
  if (begin == end || chars[begin] == '#') return Fold::Blank;
  bool tooLong = false;
  for (size_t i = begin; i < end; ++i) {
    const Folded f = FoldChar(chars[i]);
    if (!f.first) return Fold::NotALetter;
    for (const char c : {f.first, f.second}) {
      if (!c) continue;
      if (length < 15) {
        out[length++] = c;
      } else {
        tooLong = true;
      }
    }
  }
  if (tooLong) return Fold::TooLong;
  return length >= 2 ? Fold::Word : Fold::TooShort;
}

// The bytes as code points, by their encoding.
struct Decoded {
  std::u32string chars;
  std::string encoding;
};

bool ValidUtf8(std::string_view s) {
  size_t i = 0;
  const size_t n = s.size();
  while (i < n) {
    // Plain ASCII eight bytes at a time.
    while (i + 8 <= n) {
      uint64_t block;
      std::memcpy(&block, s.data() + i, 8);
      if (block & 0x8080808080808080ull) break;
      i += 8;
    }
    if (i >= n) break;
    const auto b = uint8_t(s[i]);
    if (b < 0x80) {
      ++i;
      continue;
    }
    int more = 0;
    char32_t c = 0;
    if ((b & 0xE0) == 0xC0) {
      more = 1;
      c = b & 0x1F;
    } else if ((b & 0xF0) == 0xE0) {
      more = 2;
      c = b & 0x0F;
    } else if ((b & 0xF8) == 0xF0) {
      more = 3;
      c = b & 0x07;
    } else {
      return false;
    }
    if (i + size_t(more) >= n) return false;
    for (int k = 1; k <= more; ++k) {
      const auto t = uint8_t(s[i + size_t(k)]);
      if ((t & 0xC0) != 0x80) return false;
      c = (c << 6) | (t & 0x3F);
    }
    if ((more == 1 && c < 0x80) || (more == 2 && c < 0x800) || (more == 3 && (c < 0x10000 || c > 0x10FFFF)) ||
        (c >= 0xD800 && c <= 0xDFFF))
      return false;
    i += size_t(more) + 1;
  }
  return true;
}

void DecodeUtf8(std::string_view s, std::u32string& out) {
  out.reserve(s.size());
  size_t i = 0;
  while (i < s.size()) {
    const auto b = uint8_t(s[i]);
    if (b < 0x80) {
      out.push_back(b);
      ++i;
      continue;
    }
    const int more = (b & 0xE0) == 0xC0 ? 1 : (b & 0xF0) == 0xE0 ? 2 : 3;
    char32_t c = b & (more == 1 ? 0x1F : more == 2 ? 0x0F : 0x07);
    for (int k = 1; k <= more; ++k) c = (c << 6) | (uint8_t(s[i + size_t(k)]) & 0x3F);
    out.push_back(c);
    i += size_t(more) + 1;
  }
}

void DecodeUtf16(std::string_view s, bool bigEndian, std::u32string& out) {
  out.reserve(s.size() / 2);
  const auto unit = [&](size_t i) -> char32_t {
    const auto a = uint8_t(s[i]), b = uint8_t(s[i + 1]);
    return bigEndian ? char32_t(a << 8 | b) : char32_t(b << 8 | a);
  };
  for (size_t i = 0; i + 1 < s.size(); i += 2) {
    char32_t c = unit(i);
    if (c >= 0xD800 && c <= 0xDBFF && i + 3 < s.size()) {
      const char32_t low = unit(i + 2);
      if (low >= 0xDC00 && low <= 0xDFFF) {
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        i += 2;
      }
    }
    out.push_back(c);
  }
}

// Control characters other than those of text lines: a few in a list are
// stray, many say the file is not text.
bool LooksBinary(const std::u32string& chars) {
  size_t control = 0;
  for (const char32_t c : chars) {
    if (c == 0) return true;
    if (c < 0x20 && c != '\n' && c != '\r' && c != '\t' && c != '\f' && c != '\v') ++control;
  }
  return control > 16 && control * 100 > chars.size();
}

std::string Quoted(const std::string& name) { return "« " + name + " »"; }

// Words of one length, side by side in one text (no separators), sorted and
// made unique in place.
struct Bucket {
  std::string text;
  size_t count = 0;
};

}  // namespace

Fold FoldWord(std::string_view line, std::string& word) {
  word.clear();
  if (!ValidUtf8(line)) return Fold::NotALetter;
  std::u32string chars;
  DecodeUtf8(line, chars);
  size_t begin = 0, end = chars.size();
  while (begin < end && Blank(chars[begin])) ++begin;
  while (end > begin && Blank(chars[end - 1])) --end;
  if (begin == end || chars[begin] == '#') return Fold::Blank;
  for (size_t i = begin; i < end; ++i) {
    const Folded f = FoldChar(chars[i]);
    if (!f.first) {
      word.clear();
      return Fold::NotALetter;
    }
    word += f.first;
    if (f.second) word += f.second;
  }
  return word.size() < 2 ? Fold::TooShort : word.size() > 15 ? Fold::TooLong : Fold::Word;
}

std::string FoldWord(std::string_view line) {
  std::string word;
  return FoldWord(line, word) == Fold::Word ? word : std::string();
}

std::vector<std::string_view> WordFile::Alphabetical() const {
  // Merges the sorted runs of each length.
  struct Run {
    std::string_view text;
    size_t length;
    size_t at;
  };
  std::vector<Run> runs;
  std::vector<std::string_view> out;
  out.reserve(size_t(words));
  // The short words: one run a length, found in order in the short text.
  size_t at = 0;
  for (size_t length = 2; length <= 9; ++length) {
    const size_t bytes = size_t(byLength[length]) * (length + 2);
    runs.push_back({std::string_view(shortWords).substr(at, bytes), length, 0});
    at += bytes;
  }
  for (int length = 10; length <= 15; ++length) runs.push_back({Long(length), size_t(length), 0});
  for (;;) {
    Run* least = nullptr;
    std::string_view leastWord;
    for (Run& run : runs) {
      if (run.at >= run.text.size()) continue;
      const std::string_view word = run.text.substr(run.at, run.length);
      if (!least || word < leastWord) {
        least = &run;
        leastWord = word;
      }
    }
    if (!least) break;
    out.push_back(leastWord);
    least->at += least->length + 2;
  }
  return out;
}

std::optional<WordFile> ParseWordFile(std::string_view bytes, const std::string& name, std::string& error) {
  // The encoding: a byte-order mark, else UTF-8 when the bytes are, else
  // code page 1252.
  Decoded decoded;
  const auto starts = [&](std::string_view mark) { return bytes.substr(0, mark.size()) == mark; };
  if (starts("\xEF\xBB\xBF")) {
    bytes.remove_prefix(3);
    if (!ValidUtf8(bytes)) {
      error = "Le fichier " + Quoted(name) + " annonce de l'UTF-8 mais n'en contient pas : ce n'est pas une liste "
              "de mots lisible.";
      return std::nullopt;
    }
    DecodeUtf8(bytes, decoded.chars);
    decoded.encoding = "UTF-8";
  } else if (starts("\xFF\xFE") || starts("\xFE\xFF")) {
    const bool big = starts("\xFE\xFF");
    bytes.remove_prefix(2);
    DecodeUtf16(bytes, big, decoded.chars);
    decoded.encoding = "UTF-16";
  } else if (ValidUtf8(bytes)) {
    DecodeUtf8(bytes, decoded.chars);
    decoded.encoding = "UTF-8";
  } else {
    decoded.chars.reserve(bytes.size());
    for (const char b : bytes) {
      const auto u = uint8_t(b);
      // The five bytes the page leaves undefined stay control characters of
      // their own value: no letters, and not the zeros of binary files.
      const char32_t high = u >= 0x80 && u < 0xA0 ? char32_t(kCp1252High[u - 0x80]) : 0;
      decoded.chars.push_back(high ? high : char32_t(u));
    }
    decoded.encoding = "Windows-1252";
  }
  if (LooksBinary(decoded.chars)) {
    // UTF-16 without its mark: every other byte is zero.
    size_t zeros = 0;
    for (size_t i = 0; i < bytes.size(); ++i) zeros += bytes[i] == 0;
    if (decoded.encoding != "UTF-16" && zeros * 3 > bytes.size())
      error = "Le fichier " + Quoted(name) + " semble écrit en UTF-16 sans marque d'ordre des octets : "
              "enregistrez-le en UTF-8 pour qu'il puisse être lu.";
    else
      error = "Le fichier " + Quoted(name) + " n'est pas un fichier texte : ce n'est pas une liste de mots.";
    return std::nullopt;
  }

  // Each line folded into the bucket of its length.
  WordFile file;
  file.encoding = decoded.encoding;
  std::array<Bucket, 16> buckets;
  const std::u32string& chars = decoded.chars;
  char word[16];
  size_t begin = 0;
  int64_t found = 0;
  while (begin <= chars.size()) {
    size_t end = begin;
    while (end < chars.size() && chars[end] != '\n' && chars[end] != 0x2028 && chars[end] != 0x85) ++end;
    size_t length = 0;
    const Fold fold = FoldLine(chars, begin, end, word, length);
    if (fold == Fold::Word) {
      buckets[length].text.append(word, length);
      ++buckets[length].count;
      ++found;
    } else if (fold != Fold::Blank) {
      ++file.skipped;
    }
    begin = end + 1;
  }

  // Sorted and made unique, length by length.
  for (size_t length = 2; length <= 15; ++length) {
    Bucket& bucket = buckets[length];
    std::vector<std::string_view> words;
    words.reserve(bucket.count);
    for (size_t i = 0; i < bucket.count; ++i) words.push_back(std::string_view(bucket.text).substr(i * length, length));
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    std::string& out = length <= 9 ? file.shortWords : file.longWords[length - 10];
    out.reserve(out.size() + words.size() * (length + 2));
    for (const std::string_view w : words) {
      out.append(w);
      out.append("\r\n");
    }
    file.byLength[length] = int64_t(words.size());
    file.words += int64_t(words.size());
  }
  file.duplicates = found - file.words;
  if (file.words == 0) {
    error = "Le fichier " + Quoted(name) + " ne contient aucun mot de 2 à 15 lettres";
    error += file.skipped > 0 ? " (" + FrenchCount(file.skipped) + (file.skipped > 1 ? " lignes ignorées)." : " ligne ignorée).")
                              : ".";
    return std::nullopt;
  }
  return file;
}

std::optional<WordFile> ReadWordFile(const std::filesystem::path& file, std::string& error) {
  const std::string name = file.filename().string();
  std::error_code code;
  const auto status = std::filesystem::status(file, code);
  if (!std::filesystem::exists(status)) {
    error = "Le fichier " + Quoted(file.string()) + " n'existe pas.";
    return std::nullopt;
  }
  if (std::filesystem::is_directory(status)) {
    error = Quoted(file.string()) + " est un dossier, pas une liste de mots.";
    return std::nullopt;
  }
  const uintmax_t size = std::filesystem::file_size(file, code);
  if (!code && size > kLargestWordFile) {
    error = "Le fichier " + Quoted(name) + " est trop grand (plus de 50 Mo) pour être une liste de mots.";
    return std::nullopt;
  }
  std::ifstream in(file, std::ios::binary);
  std::string bytes;
  if (in) {
    bytes.resize(size_t(code ? 0 : size));
    in.read(bytes.data(), std::streamsize(bytes.size()));
    bytes.resize(size_t(in.gcount()));
  }
  if (!in || code) {
    error = "Le fichier " + Quoted(name) + " ne peut pas être lu.";
    return std::nullopt;
  }
  return ParseWordFile(bytes, name, error);
}

uint64_t ContentKey(std::string_view bytes) {
  // Eight bytes at a time through a multiply-and-rotate mix, then the tail.
  uint64_t hash = 0x9E3779B97F4A7C15ull ^ uint64_t(bytes.size());
  size_t i = 0;
  for (; i + 8 <= bytes.size(); i += 8) {
    uint64_t block;
    std::memcpy(&block, bytes.data() + i, 8);
    block *= 0x87C37B91114253D5ull;
    block = (block << 31) | (block >> 33);
    hash = ((hash ^ block) << 27 | (hash ^ block) >> 37) * 5 + 0x52DCE729;
  }
  for (; i < bytes.size(); ++i) hash = (hash ^ uint8_t(bytes[i])) * 0x100000001B3ull;
  hash ^= hash >> 33;
  hash *= 0xFF51AFD7ED558CCDull;
  hash ^= hash >> 33;
  return hash;
}

std::string FrenchCount(int64_t count) {
  std::string digits = std::to_string(count < 0 ? -count : count);
  std::string out;
  for (size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) out += "\u202F";
    out += digits[i];
  }
  return count < 0 ? "-" + out : out;
}

}  // namespace ostrane
