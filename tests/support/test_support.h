#pragma once
// What many tests share: the program's own lexicon, loaded once, and a fatal
// path that throws instead of ending the process.

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "lexicon/lexicon.h"

namespace ostrane::test {

// The lexicon built from the embedded word lists, shared by all tests of a run.
const Lexicon& RealLexicon();

// A lexicon built from a short list of words (any lengths from 2 to 15).
Lexicon SmallLexicon(const std::vector<std::string>& words);

// Thrown by the fatal path while a FatalCatcher lives.
struct FatalCalled : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Makes ostrane::Fatal throw FatalCalled (with the text) for its lifetime.
class FatalCatcher {
 public:
  FatalCatcher();
  ~FatalCatcher();
  FatalCatcher(const FatalCatcher&) = delete;
  FatalCatcher& operator=(const FatalCatcher&) = delete;
};

// The bytes of a word list in the program's format: CR LF after each word,
// NUL padding to a multiple of 4.
std::string ListBytes(const std::vector<std::string>& words);

// A fresh folder named after the running test, removed at the end.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// A whole file's bytes ("" when it cannot be read), and a file written whole.
std::string ReadFile(const std::filesystem::path& file);
void WriteFile(const std::filesystem::path& file, const std::string& bytes);

}  // namespace ostrane::test
