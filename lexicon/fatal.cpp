#include "lexicon/fatal.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "lexicon/tables.h"

namespace ostrane {
namespace {

FatalHandler& Handler() {
  static FatalHandler handler;
  return handler;
}

}  // namespace

FatalHandler SetFatalHandler(FatalHandler handler) {
  return std::exchange(Handler(), std::move(handler));
}

void Fatal(const std::string& text) {
  if (Handler()) {
    Handler()(text);
  } else {
    std::fprintf(stderr, "%s\n", text.c_str());
  }
  std::exit(3);
}

void FatalIndex(std::string_view where, long index) {
  std::string text = "Erreur d'exécution 9";
  text += kCrLf;
  text += "L'indice n'appartient pas à la sélection (";
  text += where;
  text += ", ";
  text += std::to_string(index);
  text += ").      ";
  Fatal(text);
}

std::string InternalError101Text() {
  return std::string("Erreur interne 101.") + std::string(kCrLf) + "Impossible de continuer      ";
}

std::string InternalError102Text(int errorNumber, std::string_view systemText) {
  std::string text = "Erreur interne 102 - " + std::to_string(errorNumber);
  text += kCrLf;
  text += systemText;
  text += ".      ";
  return text;
}

}  // namespace ostrane
