#pragma once
// A word list of the player's own, as a plain text file: one word a line, in
// UTF-8 (with or without its byte-order mark), UTF-16 with its mark, or
// Windows-1252 / Latin-1 (taken when the bytes are not UTF-8). Each line is
// folded as a French player means it: accents dropped (É → E, Ç → C),
// ligatures opened (Œ → OE, Æ → AE), case ignored. Blank lines and lines
// opening with "#" are passed over; a line that is then not 2 to 15 letters
// A-Z (a hyphen, an apostrophe, a digit, a blank inside) is skipped and
// counted; a word met again is counted once.

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrane {

// The largest file taken as a word list.
inline constexpr uintmax_t kLargestWordFile = 50u << 20;

// The words of a list, ready for the lexicon.
struct WordFile {
  // Every word once, by length and then in alphabetical order, each followed
  // by CR LF: the words of 2 to 9 letters (the tree's list), and those of
  // 10 to 15 letters, one text a length.
  std::string shortWords;
  std::array<std::string, 6> longWords;
  int64_t words = 0;       // distinct words kept
  int64_t skipped = 0;     // lines that are not a word of 2 to 15 letters
  int64_t duplicates = 0;  // words met more than once (after folding)
  std::array<int64_t, 16> byLength{};
  std::string encoding;  // "UTF-8", "UTF-16" or "Windows-1252"

  // The long words of one length, 10 to 15.
  const std::string& Long(int length) const { return longWords[size_t(length - 10)]; }
  // Every word in alphabetical order, views into this object's texts.
  std::vector<std::string_view> Alphabetical() const;
};

// What a line is, folded.
enum class Fold {
  Word,        // 2 to 15 letters
  Blank,       // nothing but blanks, or a comment ("#" first)
  NotALetter,  // a character that is no letter of a word
  TooShort,    // one letter
  TooLong,     // more than 15 letters
};
// One line (UTF-8) folded: its letters in upper case A-Z in `word` when it
// has nothing but letters (a word, or one too short or too long), what it is.
Fold FoldWord(std::string_view line, std::string& word);
// The word, or "" when the line is none.
std::string FoldWord(std::string_view line);

// The words of a file's bytes; on failure nothing, and in `error` a French
// sentence naming `name` (the file's name as the player knows it).
std::optional<WordFile> ParseWordFile(std::string_view bytes, const std::string& name, std::string& error);

// Reads and parses a file: the same, with the sentences of a file missing,
// unreadable or too large.
std::optional<WordFile> ReadWordFile(const std::filesystem::path& file, std::string& error);

// A 64-bit digest of bytes (not a cryptographic one): the key of a list's
// compiled copy.
uint64_t ContentKey(std::string_view bytes);

// "402 325": a count as French text groups its digits (a narrow no-break
// space between groups of three).
std::string FrenchCount(int64_t count);

}  // namespace ostrane
