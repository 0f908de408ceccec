#pragma once

// Small random lattices, and the plain ways to answer what the program answers quickly: every path
// is walked.

#include <random>
#include <string>
#include <vector>

namespace quorbel {

struct RandomLink {
  int id;
  int start;
  int end;
  bool isNull;
  double acoustic;
  double language;
};

/// A lattice from node 0 to the last. Links of an acyclic one lead to nodes with higher numbers.
struct RandomLattice {
  int nodeCount = 0;
  double languageScale = 1.0;
  double wordPenalty = 0.0;
  std::vector<RandomLink> links;

  /// The total of a link, from its scores.
  double total(const RandomLink& link) const;

  /// The file, in the standard format.
  std::string text() const;
};

struct RandomOptions {
  bool isCyclic = false;
  bool hasPositive = false;  ///< some totals may be above 0
  bool hasTies = false;      ///< scores are few small integers
};

/// A lattice of 2 to 7 nodes and up to 14 links with ids in random order. At least one path leads
/// through an acyclic one.
RandomLattice randomLattice(std::mt19937& random, const RandomOptions& options);

/// A path as the indices of its links, and the sum of their totals.
struct PlainPath {
  std::vector<std::size_t> links;
  double total = 0.0;
};

/// Every path from node 0 to the last; of a cyclic lattice those that pass no node twice.
std::vector<PlainPath> allPaths(const RandomLattice& lattice);

}  // namespace quorbel
