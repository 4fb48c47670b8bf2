#pragma once
// The lexicon built from the word lists the program carries, once per process,
// for the tools, tests and benchmarks that need the real one. The windowed
// program loads it step by step through its start-up form instead.

#include "lexicon/lexicon.h"

namespace ostrane {

const Lexicon& EmbeddedLexicon();

}  // namespace ostrane
