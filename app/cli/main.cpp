// ostrane-cli: the program's rules and lexicon from the command line.
#include <cstdio>
#include <cstring>
#include <string>

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
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return Usage();
  ostrane::cli::Args args(argv + 2, argv + argc);
  for (const Verb& verb : kVerbs) {
    if (std::strcmp(argv[1], verb.name) != 0) continue;
    try {
      return verb.run(args);
    } catch (const ostrane::cli::UsageError& error) {
      std::fprintf(stderr, "ostrane-cli %s: %s\n", verb.name, error.what());
      return 2;
    }
  }
  std::fprintf(stderr, "ostrane-cli: unknown verb '%s'\n", argv[1]);
  return Usage();
}
