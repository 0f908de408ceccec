#pragma once

#include <map>
#include <string>
#include <vector>

namespace quorbel {

struct ProbeResult {
  int status = -1;     ///< exit status; -1 when a signal ended the process or it took too long
  std::string output;  ///< its standard output
};

/// Runs the program sound_probe with `words` as arguments and the environment changed by
/// `environment`, and waits for its end, which it forces after a minute.
ProbeResult runProbe(const std::vector<std::string>& words,
                     const std::map<std::string, std::string>& environment);

}  // namespace quorbel
