#pragma once

// Which words of a lattice somebody said.

#include <string_view>

namespace quorbel {

/// Whether a word says something: no null word ("!NULL", "<eps>"), no mark of a sentence's
/// beginning or end as HTK, SRILM, Kaldi and others write them ("<s>", "</s>", "!SENT_START",
/// "SENT-END", "!ENTER", "!EXIT"), no pause ("<sil>", "sil", "sp", "!SIL", "-pau-"). Capitals make
/// no difference, but for "SP", which may be two letters that are spelt.
bool isSpoken(std::string_view word);

}  // namespace quorbel
