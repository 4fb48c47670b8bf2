#include "lexicon/etager.h"

#include "lexicon/fatal.h"

namespace ostrane {

int ClsEtager::RazEtager(int depth) {
  values_.assign(size_t(depth < 0 ? 0 : depth) + 1, 0);
  count_ = 0;
  return 0;
}

void ClsEtager::Overflow() const { FatalIndex("pile de noeuds", count_ + 1); }

void ClsEtager::Underflow() { Fatal(InternalError101Text()); }

}  // namespace ostrane
