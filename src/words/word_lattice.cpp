#include "words/word_lattice.h"

#include <algorithm>
#include <tuple>

namespace quorbel {

double posteriorScale(const ScoreScales& scales) {
  return scales.posterior.value_or(std::max(1.0, scales.language));
}

void sortLinks(WordLattice& lattice) {
  std::sort(lattice.links.begin(), lattice.links.end(), [](const WordLink& a, const WordLink& b) {
    return std::tie(a.start, a.end, b.total, a.id) < std::tie(b.start, b.end, a.total, b.id);
  });
}

std::vector<std::string> scoreNamesOf(const WordLattice& lattice) {
  std::vector<char> isUsed(lattice.scoreNames.size(), false);
  for (const WordLink& link : lattice.links)
    for (const NamedScore& score : link.scores) isUsed[static_cast<std::size_t>(score.name)] = true;
  std::vector<std::string> names;
  for (std::size_t i = 0; i < isUsed.size(); ++i)
    if (isUsed[i]) names.push_back(lattice.scoreNames[i]);
  std::sort(names.begin(), names.end());
  if (!lattice.isCyclic) names.insert(names.begin(), kPosteriorName);
  names.insert(names.begin(), kTotalName);
  return names;
}

std::optional<std::vector<double>> scoresNamed(const WordLattice& lattice,
                                               const std::string& name) {
  std::vector<double> values(lattice.links.size(), 0.0);
  if (name == kTotalName || (name == kPosteriorName && !lattice.isCyclic)) {
    std::transform(
        lattice.links.begin(), lattice.links.end(), values.begin(),
        [&](const WordLink& link) { return name == kTotalName ? link.total : link.logPosterior; });
    return values;
  }
  const auto found = std::find(lattice.scoreNames.begin(), lattice.scoreNames.end(), name);
  const int index = static_cast<int>(found - lattice.scoreNames.begin());
  bool isUsed = false;
  for (std::size_t i = 0; i < values.size(); ++i) {
    for (const NamedScore& score : lattice.links[i].scores) {
      if (score.name != index) continue;
      values[i] = score.value;
      isUsed = true;
    }
  }
  if (!isUsed) return std::nullopt;
  return values;
}

std::string noSuchScore(const WordLattice& lattice, const std::string& name) {
  std::string names;
  for (const std::string& known : scoreNamesOf(lattice))
    names += (names.empty() ? "" : ", ") + known;
  return "no link has the score \"" + name + "\"; there are: " + names;
}

std::optional<int> firstPositiveTotal(const WordLattice& lattice) {
  std::optional<int> first;
  for (const WordLink& link : lattice.links)
    if (link.total > 0.0 && (!first || link.id < *first)) first = link.id;
  return first;
}

}  // namespace quorbel
