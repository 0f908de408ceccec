#include "measures/few_words.h"

#include <map>
#include <string>

#include "formats/lattice_text.h"

namespace quorbel {

void sayLittle(WordLattice& lattice, std::mt19937& random) {
  static const std::vector<std::string> kTexts = {"a", "b", "c", "<s>", "<sil>"};
  for (WordLink& link : lattice.links)
    if (!link.word.isNull()) link.word.text = kTexts[random() % kTexts.size()];
}

RandomLattice latticeOfFewWords(std::mt19937& random, int round, WordLattice& lattice) {
  RandomOptions options;
  options.hasPositive = round % 3 == 0;
  options.hasTies = round % 3 == 1;
  RandomLattice plain = randomLattice(random, options);
  readText(plain.text(), lattice);
  sayLittle(lattice, random);
  return plain;
}

std::vector<std::vector<std::size_t>> allPathsIn(const WordLattice& lattice,
                                                 const RandomLattice& plain) {
  std::map<int, std::size_t> indexOf;
  for (std::size_t i = 0; i < lattice.links.size(); ++i) indexOf[lattice.links[i].id] = i;
  std::vector<std::vector<std::size_t>> paths;
  for (const PlainPath& path : allPaths(plain)) {
    std::vector<std::size_t>& links = paths.emplace_back();
    for (const std::size_t link : path.links) links.push_back(indexOf.at(plain.links[link].id));
  }
  return paths;
}

}  // namespace quorbel
