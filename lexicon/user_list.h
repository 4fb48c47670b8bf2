#pragma once
// The player's own word list in the lexicon, in place of the embedded one:
// read from its file, or from the compiled copy kept in the user's cache
// folder for these very bytes (its texts as the lexicon reads them and its
// word graph), so that a list opened again is ready at once. A copy is
// rebuilt when the file's bytes change.

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "lexicon/lexicon.h"
#include "lexicon/word_file.h"

namespace ostrane {

// The list in use and what its reading said.
struct WordListInUse {
  std::filesystem::path file;  // empty: the embedded list
  uint64_t key = 0;            // the digest of the file's bytes
  int64_t words = 0;
  int64_t skipped = 0;
  int64_t duplicates = 0;
  std::string encoding;
  bool fromCache = false;  // read back from the compiled copy

  bool Embedded() const { return file.empty(); }
};

class CompiledWordList {
 public:
  // Reads `file`, through its compiled copy in `cacheFolder` when there is
  // one for these bytes; otherwise compiles it and leaves the copy there (when
  // the folder can be written). Nothing, and a French sentence in `error`,
  // when the file cannot serve as a list.
  static std::optional<CompiledWordList> Open(const std::filesystem::path& file,
                                              const std::filesystem::path& cacheFolder, std::string& error);

  const WordListInUse& Info() const { return info_; }
  // The texts the lexicon reads by name: "DICO", "DIC10" to "DIC15"; empty
  // for any other name.
  std::string_view Text(std::string_view name) const;
  const std::shared_ptr<const WordGraph>& Graph() const { return graph_; }

  // Fills `lexicon` (a new one) with the list's words, and the definitions
  // through `embedded` (the program's own resources).
  void LoadInto(Lexicon& lexicon, const Lexicon::Reader& embedded) const;

  // The compiled copy's file for a list of these bytes.
  static std::filesystem::path CopyFile(const std::filesystem::path& cacheFolder, uint64_t key);

 private:
  bool ReadCopy(const std::filesystem::path& copy, uint64_t key, uint64_t sourceSize);
  void WriteCopy(const std::filesystem::path& copy, uint64_t sourceSize) const;

  WordListInUse info_;
  std::string dico_;
  std::array<std::string, 6> longs_;
  std::shared_ptr<const WordGraph> graph_;
};

// Where the compiled copies go: $XDG_CACHE_HOME/ostrane, else
// ~/.cache/ostrane.
std::filesystem::path UserCacheFolder();

}  // namespace ostrane
