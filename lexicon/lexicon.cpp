#include "lexicon/lexicon.h"

namespace ostrane {

void Lexicon::LoadAll(const Reader& read, const ClsDico::Progress& progress) {
  Dico.DictionaryOrg(read(kDico), progress);
  for (int length = 10; length <= 15; ++length) LongWords(size_t(length)).Load(read(LongListName(length)));
  DefM23.Load(read(kDefinitions));
}

}  // namespace ostrane
