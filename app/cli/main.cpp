// ostrane-cli: the program's rules and lexicon from the command line.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "app/cli/cli.h"
#include "lexicon/fatal.h"

namespace {

struct Verb {
  const char* name;
  const char* usage;
  int (*run)(const ostrane::cli::Args&);
};

constexpr Verb kVerbs[] = {
    {"check", "check WORD...", ostrane::cli::RunCheck},
    {"words", "words RACK", ostrane::cli::RunWords},
    {"pattern", "pattern MASK RACK [MINLEN]", ostrane::cli::RunPattern},
    {"lexicon", "lexicon", ostrane::cli::RunLexicon},
    {"solve", "solve RACK [--board FILE] [--all] [--exact] [--seed N]", ostrane::cli::RunSolve},
    {"analyse", "analyse RACK [--board FILE] [--top N]", ostrane::cli::RunAnalyse},
    {"score", "score --board FILE EXPRESSION POSITION", ostrane::cli::RunScore},
    {"bench", "bench [--games N] [--seed S]", ostrane::cli::RunBench},
    {"autoplay", "autoplay [--bag normal|LETTERS] [--seed N] [--dir DIR]", ostrane::cli::RunAutoplay},
};

int Usage() {
  std::fprintf(stderr, "usage: ostrane-cli VERB [ARGS]\n");
  for (const Verb& verb : kVerbs) std::fprintf(stderr, "  ostrane-cli %s\n", verb.usage);
  std::fprintf(stderr, "every verb takes --lexicon FILE: the player's own word list in place of the embedded one\n");
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  // "--lexicon FILE" (or "--lexicon=FILE"), before or after the verb.
  std::vector<std::string> words;
  std::string list;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--lexicon" || arg.rfind("--lexicon=", 0) == 0) {
      if (arg == "--lexicon" && i + 1 == argc) {
        std::fprintf(stderr, "ostrane-cli: --lexicon demande un fichier\n");
        return 2;
      }
      list = arg == "--lexicon" ? argv[++i] : arg.substr(10);
      continue;
    }
    words.push_back(arg);
  }
  if (words.empty()) return Usage();
  if (!list.empty() && !ostrane::cli::UseWordList(list)) return 2;
  const ostrane::cli::Args args(words.begin() + 1, words.end());
  for (const Verb& verb : kVerbs) {
    if (words[0] != verb.name) continue;
    try {
      return verb.run(args);
    } catch (const ostrane::cli::UsageError& error) {
      std::fprintf(stderr, "ostrane-cli %s: %s\n", verb.name, error.what());
      return 2;
    }
  }
  std::fprintf(stderr, "ostrane-cli: unknown verb '%s'\n", words[0].c_str());
  return Usage();
}
