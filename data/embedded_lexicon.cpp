#include "data/embedded_lexicon.h"

#include "data/resources.h"

namespace ostrane {

const Lexicon& EmbeddedLexicon() {
  static const Lexicon* lexicon = [] {
    auto* loaded = new Lexicon;
    loaded->LoadAll(ReadResource);
    return loaded;
  }();
  return *lexicon;
}

}  // namespace ostrane
