#pragma once

// Which format a file is in, by what it holds.

#include <string_view>

namespace quorbel {

enum class InputFormat {
  Slf,           ///< HTK's Standard Lattice Format or the viewer's dialect of it; all else, too
  KaldiText,     ///< Kaldi's text archive
  KaldiBinary,   ///< Kaldi's binary archive
  OpenFstText,   ///< as fstprint writes it
  OpenFstBinary  ///< OpenFst's own file
};

/// The format of a file that begins with `bytes`.
InputFormat formatOf(std::string_view bytes);

}  // namespace quorbel
