#include "lattice/growing_scores.h"

#include <algorithm>

namespace quorbel {
namespace {

/// Up to so many names a map takes each on its own, which is quickest.
constexpr std::size_t kFewNames = 16;

/// Goes once through the map and `further`, which is in byte order of its names: `join` gets the
/// map's score of each name of it, made at 0 if it was not there, and the further one.
template <typename Scores, typename Join>
void mergeScores(ScoreMap& scores, const Scores& further, Join join) {
  ScoreMap::sequence_type known = scores.extract_sequence();
  ScoreMap::sequence_type all;
  all.reserve(known.size() + further.size());
  auto next = known.begin();
  for (const auto& [name, score] : further) {
    for (; next != known.end() && next->first < name; ++next) all.push_back(std::move(*next));
    if (next != known.end() && next->first == name) all.push_back(std::move(*next++));
    if (all.empty() || all.back().first != name) all.emplace_back(name, 0.0);
    join(all.back().second, score);
  }
  for (; next != known.end(); ++next) all.push_back(std::move(*next));
  scores.adopt_sequence(boost::container::ordered_unique_range, std::move(all));
}

}  // namespace

void GrowingScores::set(ScoreMap& scores, std::string_view name, double score) {
  if (m_Late.empty() && scores.size() < kFewNames) {
    scores[std::string(name)] = score;
    return;
  }
  m_Late.emplace_back(name, score);
  // At the latest when there are as many, so that one name on many lines takes no memory.
  if (m_Late.size() > scores.size()) finish(scores);
}

void GrowingScores::finish(ScoreMap& scores) {
  if (m_Late.empty()) return;
  std::stable_sort(m_Late.begin(), m_Late.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  mergeScores(scores, m_Late, [](double& score, double given) { score = given; });
  m_Late.clear();
}

void addScores(ScoreMap& scores, const ScoreMap& further) {
  if (further.size() <= kFewNames) {
    for (const auto& [name, score] : further) scores[name] += score;
    return;
  }
  mergeScores(scores, further, [](double& score, double added) { score += added; });
}

}  // namespace quorbel
