#include "measures/node_order.h"

#include <algorithm>
#include <functional>
#include <queue>

namespace quorbel {
namespace {

/// Which links leave each node, as indices into the lattice's links, without a list a node.
class LeavingLinks {
 public:
  explicit LeavingLinks(const WordLattice& lattice)
      : m_First(lattice.nodes.size() + 1, 0), m_Links(lattice.links.size()) {
    for (const WordLink& link : lattice.links) ++m_First[slot(link.start) + 1];
    for (std::size_t i = 1; i < m_First.size(); ++i) m_First[i] += m_First[i - 1];
    std::vector<std::size_t> next = m_First;
    for (std::size_t i = 0; i < lattice.links.size(); ++i)
      m_Links[next[slot(lattice.links[i].start)]++] = i;
  }
  const std::size_t* begin(int node) const { return m_Links.data() + m_First[slot(node)]; }
  const std::size_t* end(int node) const { return m_Links.data() + m_First[slot(node) + 1]; }

 private:
  std::vector<std::size_t> m_First;
  std::vector<std::size_t> m_Links;
};

/// The nodes in topological order, of those that could come next always the first in the file. What
/// lies on a cycle or behind one is missing.
std::vector<int> topologicalOrder(const WordLattice& lattice, int start, int end) {
  const LeavingLinks leaving(lattice);
  std::vector<int> entering(lattice.nodes.size(), 0);
  for (const WordLink& link : lattice.links) ++entering[slot(link.end)];
  std::priority_queue<int, std::vector<int>, std::greater<>> ready;
  for (std::size_t node = 0; node < entering.size(); ++node)
    if (entering[node] == 0 && static_cast<int>(node) != start) ready.push(static_cast<int>(node));

  std::vector<int> order;
  bool isEndReached = false;
  const auto append = [&](int node) {
    if (node == end)
      isEndReached = true;  // comes last
    else
      order.push_back(node);
    for (const std::size_t* i = leaving.begin(node); i != leaving.end(node); ++i) {
      const int next = lattice.links[*i].end;
      if (--entering[slot(next)] == 0) ready.push(next);
    }
  };
  append(start);
  while (!ready.empty()) {
    const int node = ready.top();
    ready.pop();
    append(node);
  }
  if (isEndReached) order.push_back(end);
  return order;
}

/// How many links lead to each node at most; in a cyclic lattice, at least.
std::vector<int> depths(const WordLattice& lattice) {
  std::vector<int> depth(lattice.nodes.size(), 0);
  if (!lattice.isCyclic) {
    for (const WordLink& link : lattice.links)  // sorted by start nodes
      depth[slot(link.end)] = std::max(depth[slot(link.end)], depth[slot(link.start)] + 1);
  } else {
    const LeavingLinks leaving(lattice);
    std::vector<char> isReached(lattice.nodes.size(), false);
    std::queue<int> reached;
    reached.push(0);
    isReached[0] = true;
    for (; !reached.empty(); reached.pop()) {
      const int node = reached.front();
      for (const std::size_t* i = leaving.begin(node); i != leaving.end(node); ++i) {
        const int next = lattice.links[*i].end;
        if (isReached[slot(next)]) continue;
        isReached[slot(next)] = true;
        depth[slot(next)] = depth[slot(node)] + 1;
        reached.push(next);
      }
    }
  }
  depth.back() = std::max(1, *std::max_element(depth.begin(), depth.end()));
  return depth;
}

/// The time of nodes that have none: that of the latest neighbour before it, else of the earliest
/// behind it.
void fillTimes(const WordLattice& lattice, std::vector<std::optional<double>>& times) {
  const std::vector<std::optional<double>> given = times;
  for (const WordLink& link : lattice.links) {
    const std::optional<double>& before = times[slot(link.start)];
    std::optional<double>& time = times[slot(link.end)];
    if (!given[slot(link.end)] && before && (!time || *time < *before)) time = before;
  }
  const std::vector<std::optional<double>> known = times;
  for (auto link = lattice.links.rbegin(); link != lattice.links.rend(); ++link) {
    const std::optional<double>& behind = times[slot(link->end)];
    std::optional<double>& time = times[slot(link->start)];
    if (!known[slot(link->start)] && behind && (!time || *behind < *time)) time = behind;
  }
}

}  // namespace

void orderNodes(WordLattice& lattice, int start, int end,
                std::vector<std::optional<double>>& times) {
  std::vector<int> order = topologicalOrder(lattice, start, end);
  lattice.isCyclic = order.size() != lattice.nodes.size();
  if (lattice.isCyclic) {
    order.assign(1, start);
    for (int node = 0; node < static_cast<int>(lattice.nodes.size()); ++node)
      if (node != start && node != end) order.push_back(node);
    order.push_back(end);
  }
  std::vector<int> placeOf(order.size());
  std::vector<WordNode> nodes(order.size());
  std::vector<std::optional<double>> orderedTimes(order.size());
  for (std::size_t place = 0; place < order.size(); ++place) {
    placeOf[slot(order[place])] = static_cast<int>(place);
    nodes[place] = lattice.nodes[slot(order[place])];
    orderedTimes[place] = times[slot(order[place])];
  }
  lattice.nodes = std::move(nodes);
  times = std::move(orderedTimes);
  for (WordLink& link : lattice.links) {
    link.start = placeOf[slot(link.start)];
    link.end = placeOf[slot(link.end)];
  }
  sortLinks(lattice);
}

void setTimes(WordLattice& lattice, const std::vector<std::optional<double>>& times) {
  double latest = 0.0;
  for (const std::optional<double>& time : times)
    if (time) latest = std::max(latest, *time);
  lattice.hasTimes = latest > 0.0;
  if (!lattice.hasTimes) {
    const std::vector<int> depth = depths(lattice);
    for (std::size_t i = 0; i < depth.size(); ++i) lattice.nodes[i].time = depth[i];
    return;
  }
  std::vector<std::optional<double>> filled = times;
  fillTimes(lattice, filled);
  for (std::size_t i = 0; i < filled.size(); ++i) lattice.nodes[i].time = filled[i].value_or(0.0);
  double& last = lattice.nodes.back().time;
  if (last <= 0.0) last = latest;
}

}  // namespace quorbel
