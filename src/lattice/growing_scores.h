#pragma once

// Maps of scores that grow name by name, in good time however many names there are.

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lattice/graph.h"

namespace quorbel {

/// Scores on their way into a map. The names of a map lie side by side, so that each further one
/// moves those behind it: a map that has many gets its next ones together.
class GrowingScores {
 public:
  /// Sets a score of the map that this object is for, now or, in a map with many names, later.
  void set(ScoreMap& scores, std::string_view name, double score);

  /// Sets those that are still to be set.
  void finish(ScoreMap& scores);

 private:
  std::vector<std::pair<std::string, double>> m_Late;  ///< of one name the last counts
};

/// Adds each of `further` to the score of the same name; one that is not there yet counts as 0.
void addScores(ScoreMap& scores, const ScoreMap& further);

}  // namespace quorbel
