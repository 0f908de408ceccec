#pragma once

// What the user may say about lattices that are to be read.

#include <memory>
#include <optional>
#include <string>

#include "formats/word_table.h"
#include "measures/scales.h"

namespace quorbel {

/// What holds for every file of one command.
struct ReadingOptions {
  std::shared_ptr<WordTable> words;      ///< of the numbers in Kaldi's and OpenFst's files; or null
  std::optional<std::string> utterance;  ///< only the lattice of this name
  double frameShift = 0.01;              ///< seconds that a transition id of Kaldi's stands for
  ScaleChoice scales;                    ///< instead of those of the file
};

/// What Kaldi's own tools scale acoustic costs with unless they are told otherwise.
inline constexpr double kKaldiAcousticScale = 0.1;

}  // namespace quorbel
