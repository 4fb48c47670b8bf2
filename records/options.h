#pragma once
// The program's options and their file "Option.ret": nine lines, each closed
// by CR LF, read once at start and written by the two save commands.

#include <cstdint>
#include <filesystem>
#include <string>

namespace ostrane {

struct Options {
  std::string OptMessages = "Oui";  // "Oui" or "Non": the guided tour and congratulations
  int16_t OptLigne2 = 3;            // carried for the line numbers; closing the game form sets 5
  int32_t OptLigne3 = 120;          // carried for the line numbers
  bool OptSons = true;              // play sounds
  bool OptDuree = true;             // show the duration of the game
  int16_t OptImage = 2;             // board picture: 2 Classique, 3 Chocolat, 4 Relief
  int16_t OptDef23 = 1;             // 1: definitions of 2- and 3-letter words
  int16_t OptCadre = 1;             // 1: frame the first letter of the suggested word
  uint8_t OptResol = 0;             // 1: skip the screen check

  bool operator==(const Options&) const = default;
};

inline constexpr const char* kOptionsFileName = "Option.ret";

// The file's text for these options.
std::string FormatOptions(const Options& options);

// Reads the nine lines. Any failure (no file, a line too few, a line that does
// not read) gives every option its default: a partly read file is not used.
// Returns whether the file was read.
bool ReadOptions(const std::filesystem::path& file, Options& options);

// Replaces the whole file in one piece. Returns false when it cannot be written.
bool WriteOptions(const std::filesystem::path& file, const Options& options);

struct Program;

// The one save of the options, for both writers (the main form's
// CmdEnregistre and leaving the game from the picker): the program's options
// into "Option.ret" of its start directory. No message on failure.
bool SaveOptions(const Program& program);

}  // namespace ostrane
