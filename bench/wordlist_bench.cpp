// The player's own word list: how long a list of 400,000 words takes to be
// ready, the first time (read, folded, sorted, the tree, the long lists and
// the word graph made, the compiled copy written) and when the same file is
// opened again (read back from its compiled copy), against the embedded list
// loaded the way the program loads it. Each way runs five times; the fastest
// counts (the machine is shared). Wall-clock times, files included.
//
//   build/bench/wordlist_bench [FILE]   (a list of its own when no file is given)
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "data/resources.h"
#include "lexicon/lexicon.h"
#include "lexicon/user_list.h"
#include "lexicon/word_file.h"

namespace {

using namespace ostrane;

double Best(int runs, const std::function<void()>& run) {
  double best = 1e30;
  for (int i = 0; i < runs; ++i) {
    const auto start = std::chrono::steady_clock::now();
    run();
    best = std::min(best, std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  return best;
}

// The embedded words in lower case, some with their accents, and made-up
// words to reach 400,000 lines, in UTF-8.
void WriteList(const std::filesystem::path& file) {
  std::string text = "# Une liste de 400 000 mots\n";
  int64_t lines = 0;
  for (const char* name : {"DICO", "DIC10", "DIC11", "DIC12", "DIC13", "DIC14", "DIC15"}) {
    const std::string words = ReadResource(name);
    for (size_t at = 0; at < words.size();) {
      const size_t end = words.find("\r\n", at);
      if (end == std::string::npos) break;
      std::string word = words.substr(at, end - at);
      at = end + 2;
      for (char& c : word) c = char(c + 32);
      if (word.size() > 4 && word[word.size() - 1] == 'e' && lines % 3 == 0) {
        word.pop_back();
        word += "\xC3\xA9";  // é
      }
      text += word + '\n';
      ++lines;
    }
  }
  for (int64_t n = 0; lines < 400000; ++n, ++lines) {
    std::string word = "zq";
    for (int64_t k = n; k > 0 || word.size() == 2; k /= 26) word += char('a' + k % 26);
    text += word + '\n';
  }
  std::ofstream(file, std::ios::binary) << text;
}

}  // namespace

int main(int argc, char** argv) {
  const std::filesystem::path work = std::filesystem::temp_directory_path() / "ostrane-wordlist-bench";
  std::filesystem::remove_all(work);
  std::filesystem::create_directories(work);
  const std::filesystem::path file = argc > 1 ? std::filesystem::path(argv[1]) : work / "liste.txt";
  if (argc <= 1) WriteList(file);
  const std::filesystem::path cache = work / "cache";
  std::string error;

  uint64_t key = 0;
  int64_t words = 0, skipped = 0;
  const double first = Best(5, [&] {
    std::filesystem::remove_all(cache);
    const auto list = CompiledWordList::Open(file, cache, error);
    if (!list) return;
    Lexicon lexicon;
    list->LoadInto(lexicon, ReadResource);
    key = list->Info().key;
    words = list->Info().words;
    skipped = list->Info().skipped;
  });
  if (!words) {
    std::fprintf(stderr, "%s\n", error.c_str());
    return 1;
  }
  bool cached = true;
  const double again = Best(5, [&] {
    const auto list = CompiledWordList::Open(file, cache, error);
    Lexicon lexicon;
    list->LoadInto(lexicon, ReadResource);
    cached = cached && list->Info().fromCache;
  });
  const double embedded = Best(5, [&] {
    Lexicon lexicon;
    lexicon.LoadAll(ReadResource);
    lexicon.Graph();
  });
  std::printf("list: %s (%s words, %s lines skipped), compiled copy %s bytes\n", file.filename().c_str(),
              FrenchCount(words).c_str(), FrenchCount(skipped).c_str(),
              FrenchCount(int64_t(std::filesystem::file_size(CompiledWordList::CopyFile(cache, key)))).c_str());
  std::printf("first opening (read, compiled, copy written): %8.1f ms\n", first);
  std::printf("opened again (from the compiled copy):       %8.1f ms%s\n", again, cached ? "" : " (NOT from the copy)");
  std::printf("embedded list, loaded with its word graph:   %8.1f ms\n", embedded);
  std::printf("ratios: first / embedded %.2f, again / embedded %.2f, first / again %.1f\n", first / embedded,
              again / embedded, first / again);
  std::filesystem::remove_all(work);
  return cached ? 0 : 1;
}
