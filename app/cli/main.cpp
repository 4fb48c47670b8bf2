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
  const char* what;
  int (*run)(const ostrane::cli::Args&);
};

constexpr Verb kVerbs[] = {
    {"check", "check WORD...", "dit si chaque mot existe (et définit les mots de 2 et 3 lettres)",
     ostrane::cli::RunCheck},
    {"words", "words RACK", "tous les mots que forme un tirage (? pour un joker)", ostrane::cli::RunWords},
    {"pattern", "pattern MASK RACK [MINLEN]", "les mots le long d'un masque (* une case libre)",
     ostrane::cli::RunPattern},
    {"lexicon", "lexicon", "les mots par longueur et l'arbre des mots", ostrane::cli::RunLexicon},
    {"solve", "solve RACK [--board FILE] [--all] [--exact] [--seed N]",
     "la recherche du programme et son meilleur coup sur un plateau", ostrane::cli::RunSolve},
    {"analyse", "analyse RACK [--board FILE] [--top N]", "tous les coups permis avec leurs points exacts",
     ostrane::cli::RunAnalyse},
    {"score", "score --board FILE EXPRESSION POSITION", "les points d'un coup, comptés comme à la validation",
     ostrane::cli::RunScore},
    {"bench", "bench [--games N] [--seed S]", "le temps de parties jouées seules", ostrane::cli::RunBench},
    {"autoplay", "autoplay [--bag normal|LETTERS] [--seed N] [--dir DIR]", "une partie entière jouée seule",
     ostrane::cli::RunAutoplay},
};

constexpr const char* kVersion = "ostrane-cli 1.23";

void PrintVerbs(std::FILE* out) {
  std::fprintf(out, "usage: ostrane-cli VERB [ARGS]\n");
  for (const Verb& verb : kVerbs) std::fprintf(out, "  ostrane-cli %s\n", verb.usage);
  std::fprintf(out, "every verb takes --lexicon FILE: the player's own word list in place of the embedded one\n");
}

int Usage() {
  PrintVerbs(stderr);
  return 2;
}

// --help: the verbs, each with what it does, on the standard output.
int Help() {
  std::printf("ostrane-cli : les règles et le dictionnaire d'Ostrane en ligne de commande.\n\n");
  PrintVerbs(stdout);
  std::printf("\n");
  for (const Verb& verb : kVerbs) std::printf("  %-9s %s\n", verb.name, verb.what);
  std::printf("\n  --help     cette aide\n  --version  la version\n");
  return 0;
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
  if (words[0] == "--help" || words[0] == "-h" || words[0] == "help") return Help();
  if (words[0] == "--version") {
    std::printf("%s\n", kVersion);
    return 0;
  }
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
