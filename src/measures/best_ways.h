#pragma once

// From every node of a lattice the best way on to the end.

#include <limits>
#include <tuple>
#include <vector>

#include "words/word_lattice.h"

namespace quorbel {

/// What a way costs, the sum of its links' scores with its sign flipped, and how many links it has.
/// Of ways that cost the same the one with fewer links is shorter.
struct Distance {
  double cost = std::numeric_limits<double>::infinity();
  int links = 0;

  bool operator<(const Distance& other) const {
    return std::tie(cost, links) < std::tie(other.cost, other.links);
  }
};

inline Distance operator+(const Distance& a, const Distance& b) {
  return {a.cost + b.cost, a.links + b.links};
}

inline Distance operator-(const Distance& a, const Distance& b) {
  return {a.cost - b.cost, a.links - b.links};
}

/// The shortest ways; both have an entry for each node.
struct BestWays {
  std::vector<Distance> toEnd;  ///< costs are infinite where no way leads to the end
  std::vector<int> nextLink;    ///< the link that the way takes; -1 where there is none
};

/// Finds the ways by `scores`, one for each link, of which none may be positive in a cyclic
/// lattice. Of equally short ones that with the lower index of its next link is taken.
BestWays bestWaysToEnd(const WordLattice& lattice, const std::vector<double>& scores);

/// The links that enter each node, as indices into the lattice's links.
std::vector<std::vector<std::size_t>> enteringLinks(const WordLattice& lattice);

/// How far it is to the end through a link of this score that leads to a node at `rest`. Never
/// shorter, to the last bit, than the way from the node that the link leaves.
inline Distance through(double score, const Distance& rest) {
  return {rest.cost - score, rest.links + 1};
}

}  // namespace quorbel
