// Verbs on the lexicon: check, words, pattern, lexicon.
#include <cctype>
#include <cstdio>
#include <string>

#include "app/cli/cli.h"
#include "lexicon/expressions.h"
#include "lexicon/lexicon.h"
#include "lexicon/word_file.h"

namespace ostrane::cli {
namespace {

ClsExpressions& Searcher() {
  static StderrBoxes boxes;
  static ClsExpressions searcher = [] {
    ClsExpressions made;
    made.SubDico(SharedLexicon());
    made.SetMessageBoxes(&boxes);
    return made;
  }();
  return searcher;
}

void PrintResults(const ClsExpressions& searcher, int32_t count) {
  for (int32_t i = 1; i <= count; ++i) {
    const std::string_view word = searcher.GetMot(i);
    std::fwrite(word.data(), 1, word.size(), stdout);
    std::fputc('\n', stdout);
  }
}

}  // namespace

int RunCheck(const Args& args) {
  if (args.empty()) throw UsageError("give at least one word");
  // Each word answered on its line, folded as a player means it (é is E);
  // an argument that is no word gets its own line on standard error, and
  // the status says that one was bad.
  int status = 0;
  for (const std::string& arg : args) {
    std::string word;
    const Fold fold = FoldWord(arg, word);
    // Letters alone are answered (no word has one letter, or more than 15).
    if (fold == Fold::Blank || fold == Fold::NotALetter) {
      const char* why = fold == Fold::Blank ? "aucune lettre"
                                            : "seulement des lettres, sans tiret, apostrophe, chiffre ni espace";
      std::fprintf(stderr, "ostrane-cli check: « %s » : %s\n", arg.c_str(), why);
      status = 1;
      continue;
    }
    const bool exists = Searcher().SubWordIsTrue(std::string_view(word));
    std::string line = word + (exists ? "\toui" : "\tnon");
    if (exists && word.size() < 4) {
      if (auto definition = SharedLexicon().DefM23.FindForCheck(word)) line += "\t" + *definition;
    }
    line += '\n';
    std::fputs(line.c_str(), stdout);
  }
  return status;
}

int RunWords(const Args& args) {
  if (args.size() != 1) throw UsageError("give one rack");
  std::string rack = CheckedRack(args[0]);
  ClsExpressions& searcher = Searcher();
  PrintResults(searcher, searcher.SubCombinaisons(rack));
  return 0;
}

int RunPattern(const Args& args) {
  if (args.size() < 2 || args.size() > 3) throw UsageError("give a mask, a rack and maybe a least length");
  const std::string& mask = args[0];
  if (mask.empty()) throw UsageError("the mask is empty");
  if (mask.size() > 15) throw UsageError("mask '" + mask + "': at most 15 cells");
  std::string upperMask;
  for (const char c : mask) {
    const char u = char(std::toupper(static_cast<unsigned char>(c)));
    if (!((u >= 'A' && u <= 'Z') || u == '*'))
      throw UsageError("mask '" + mask + "': only letters A-Z and '*' for a free cell");
    upperMask += u;
  }
  std::string rack = CheckedRack(args[1]);
  const int minLength = args.size() == 3 ? int(CheckedNumber(args[2], "least length")) : 2;
  ClsExpressions& searcher = Searcher();
  PrintResults(searcher, searcher.SubSuivant(upperMask, rack, minLength));
  return 0;
}

int RunLexicon(const Args& args) {
  if (!args.empty()) throw UsageError("takes no argument");
  const Lexicon& lexicon = SharedLexicon();
  const ClsDico& dico = lexicon.Dico;
  long total = 0;
  for (int length = 2; length <= 9; ++length) {
    const long count = dico.CountsByLength()[size_t(length)];
    std::printf("%d\t%ld\n", length, count);
    total += count;
  }
  for (int length = 10; length <= 15; ++length) {
    const long count = lexicon.LongWords(size_t(length)).UBound();
    std::printf("%d\t%ld\n", length, count);
    total += count;
  }
  std::printf("total\t%ld\n", total);
  std::printf("nodes\t%d\n", dico.LngLibre());
  std::printf("edges\t%lld\n", static_cast<long long>(dico.EdgeCount()));
  std::printf("word-ends\t%lld\n", static_cast<long long>(dico.WordEndCount()));
  std::printf("definitions\t%d\n", lexicon.DefM23.UBound() + 1);
  return 0;
}

}  // namespace ostrane::cli
