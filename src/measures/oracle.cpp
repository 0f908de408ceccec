#include "measures/oracle.h"

#include <algorithm>
#include <map>

#include "measures/best_paths.h"
#include "words/spoken_words.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

/// Words as numbers: those of the reference from 0 on, all others as the one behind.
class WordNumbering {
 public:
  explicit WordNumbering(const WordMatching& matching) : m_IgnoresCase(matching.ignoresCase) {
    for (const std::string& word : matching.ignored) m_Ignored.insert(compared(word));
  }

  bool counts(const std::string& word) const {
    return isSpoken(word) && m_Ignored.count(compared(word)) == 0;
  }

  int add(const std::string& word) {
    return m_Numbers.emplace(compared(word), static_cast<int>(m_Numbers.size())).first->second;
  }

  /// -1 for a word that does not count.
  int find(const std::string& word) const {
    if (!counts(word)) return -1;
    const auto found = m_Numbers.find(compared(word));
    return found == m_Numbers.end() ? static_cast<int>(m_Numbers.size()) : found->second;
  }

 private:
  std::string compared(const std::string& word) const {
    return m_IgnoresCase ? inLowerCase(word) : word;
  }

  bool m_IgnoresCase;
  std::set<std::string> m_Ignored;
  std::map<std::string, int> m_Numbers;
};

}  // namespace

std::string compareWithReference(const WordLattice& lattice,
                                 const std::vector<std::string>& reference,
                                 const WordMatching& matching, OracleResult& result) {
  std::vector<LatticePath> paths;
  std::string error = findBestPaths(lattice, *scoresNamed(lattice, kTotalName), 1, paths);
  if (!error.empty()) return error;

  result.reference.clear();
  WordNumbering numbering(matching);
  std::vector<int> wanted;
  for (const std::string& word : reference) {
    if (!numbering.counts(word)) continue;
    result.reference.push_back(word);
    wanted.push_back(numbering.add(word));
  }
  EditGraph whole{lattice.nodes.size(), {}, lattice.isCyclic};
  for (const WordLink& link : lattice.links)
    whole.links.push_back({link.start, link.end, numbering.find(link.word.text), link.total});
  findFewestEdits(whole, wanted, result.oracle);  // which has a path as there is a best one

  EditGraph best{paths[0].links.size() + 1, {}, false};
  for (const std::size_t index : paths[0].links) {
    const int node = static_cast<int>(best.links.size());
    best.links.push_back({node, node + 1, whole.links[index].word, 0.0});
  }
  findFewestEdits(best, wanted, result.best);
  for (std::size_t& link : result.best.links) link = paths[0].links[link];
  for (AlignedPlace& place : result.best.places)
    if (place.link >= 0) place.link = static_cast<int>(paths[0].links[slot(place.link)]);
  return "";
}

}  // namespace quorbel
