#include "measures/edits.h"

#include <algorithm>
#include <limits>
#include <queue>
#include <tuple>

namespace quorbel {
namespace {

constexpr int kUnreached = std::numeric_limits<int>::max();

std::size_t at(int index) { return static_cast<std::size_t>(index); }

/// What it takes to reach a node with so many words of the reference behind it.
struct Cell {
  int edits = kUnreached;
  int substitutions = 0;
  int deletions = 0;
  int crossed = 0;  ///< the node at which the way left the middle of the reference; not compared
  double cost = 0.0;

  bool operator<(const Cell& other) const {
    return std::tie(edits, substitutions, deletions, cost) <
           std::tie(other.edits, other.substitutions, other.deletions, other.cost);
  }
};

/// How the best way enters a cell.
struct Entry {
  int link = -1;            ///< -1 for a deletion, and where the way begins
  bool isNextWord = false;  ///< a word of the reference was passed
};

/// The cells of the nodes of a stretch, with one number of words of the reference behind them.
struct Column {
  std::vector<Cell> cells;
  std::vector<Entry> entries;  ///< empty where they are not asked for
};

/// A part of the alignment: between two nodes and two places of the reference.
struct Stretch {
  int fromNode;
  int fromWord;
  int toNode;
  int toWord;
};

/// Searches with two columns at a time: a first pass finds the node at which the best way passes
/// the middle of the reference, and each half is searched in the same manner.
class EditSearch {
 public:
  EditSearch(const EditGraph& graph, const std::vector<int>& reference);

  bool run(Alignment& alignment);

 private:
  int nodeAtMiddle(const Stretch& stretch, int middle);
  bool align(const Stretch& stretch);
  bool trace(const Stretch& stretch);
  void chooseNodes(const Stretch& stretch);
  void begin(Column& column, int node, bool isTraced) const;
  void advance(const Column& before, int word, Column& column) const;
  void spread(Column& column) const;
  void spreadAround(Column& column) const;
  void relax(Column& column, int node, const Cell& cell, const Entry& entry) const;
  Cell inserted(const Cell& from, const EditLink& link) const;

  template <typename Take>
  void eachLinkFrom(int node, Take take) const {
    for (std::size_t i = m_FirstLink[at(node)]; i < m_FirstLink[at(node) + 1]; ++i)
      if (m_Graph.links[i].end <= m_LastNode) take(static_cast<int>(i), m_Graph.links[i]);
  }

  const EditGraph& m_Graph;
  const std::vector<int>& m_Reference;
  std::vector<std::size_t> m_FirstLink;  ///< of each node and, at last, behind all
  bool m_HasScores;
  int m_FirstNode = 0;  ///< of the stretch that is searched
  int m_LastNode = 0;
  std::vector<AlignedPlace> m_Steps;  ///< of the way, links without words too
};

EditSearch::EditSearch(const EditGraph& graph, const std::vector<int>& reference)
    : m_Graph(graph),
      m_Reference(reference),
      m_FirstLink(graph.nodeCount + 1, 0),
      m_HasScores(!graph.isCyclic ||
                  std::none_of(graph.links.begin(), graph.links.end(),
                               [](const EditLink& link) { return link.score > 0.0; })) {
  for (const EditLink& link : graph.links) ++m_FirstLink[at(link.start) + 1];
  for (std::size_t i = 1; i < m_FirstLink.size(); ++i) m_FirstLink[i] += m_FirstLink[i - 1];
}

bool EditSearch::run(Alignment& alignment) {
  const Stretch whole = {0, 0, static_cast<int>(m_Graph.nodeCount) - 1,
                         static_cast<int>(m_Reference.size())};
  if (!align(whole)) return false;
  alignment = {};
  for (const AlignedPlace& step : m_Steps) {
    const bool hasLink = step.link >= 0;
    if (hasLink) alignment.links.push_back(at(step.link));
    const int word = hasLink ? m_Graph.links[at(step.link)].word : -1;
    if (step.reference < 0 && word < 0) continue;
    alignment.places.push_back(step);
    if (!hasLink)
      ++alignment.counts.deletions;
    else if (step.reference < 0)
      ++alignment.counts.insertions;
    else if (m_Reference[at(step.reference)] != word)
      ++alignment.counts.substitutions;
  }
  return true;
}

/// Links of a graph without cycles lead to later nodes, so a stretch has no others than those
/// between its ends.
void EditSearch::chooseNodes(const Stretch& stretch) {
  m_FirstNode = m_Graph.isCyclic ? 0 : stretch.fromNode;
  m_LastNode = m_Graph.isCyclic ? static_cast<int>(m_Graph.nodeCount) - 1 : stretch.toNode;
}

/// The node at which the best way through a stretch has passed `middle` words; -1 without any way.
int EditSearch::nodeAtMiddle(const Stretch& stretch, int middle) {
  chooseNodes(stretch);
  Column before;
  Column column;
  begin(column, stretch.fromNode, false);
  for (int word = stretch.fromWord;; ++word) {
    if (word == middle)
      for (std::size_t i = 0; i < column.cells.size(); ++i)
        column.cells[i].crossed = m_FirstNode + static_cast<int>(i);
    if (word == stretch.toWord) break;
    std::swap(before, column);
    advance(before, word, column);
  }
  const Cell& last = column.cells[at(stretch.toNode - m_FirstNode)];
  return last.edits == kUnreached ? -1 : last.crossed;
}

/// Finds the steps through a stretch; false when no way leads through it.
bool EditSearch::align(const Stretch& stretch) {
  if (stretch.toWord - stretch.fromWord <= 1) return trace(stretch);
  const int middle = stretch.fromWord + (stretch.toWord - stretch.fromWord) / 2;
  const int node = nodeAtMiddle(stretch, middle);
  return node >= 0 && align({stretch.fromNode, stretch.fromWord, node, middle}) &&
         align({node, middle, stretch.toNode, stretch.toWord});
}

/// The same for a stretch of one word of the reference or none.
bool EditSearch::trace(const Stretch& stretch) {
  chooseNodes(stretch);
  std::vector<Column> columns(at(stretch.toWord - stretch.fromWord) + 1);
  begin(columns[0], stretch.fromNode, true);
  if (columns.size() > 1) advance(columns[0], stretch.fromWord, columns[1]);
  const std::size_t stepsBefore = m_Steps.size();
  std::size_t column = columns.size() - 1;
  int node = stretch.toNode;
  if (columns[column].cells[at(node - m_FirstNode)].edits == kUnreached) return false;
  while (column > 0 || node != stretch.fromNode) {
    const Entry& entry = columns[column].entries[at(node - m_FirstNode)];
    m_Steps.push_back({entry.isNextWord ? stretch.fromWord : -1, entry.link});
    if (entry.isNextWord) --column;
    if (entry.link >= 0) node = m_Graph.links[at(entry.link)].start;
  }
  std::reverse(m_Steps.begin() + static_cast<std::ptrdiff_t>(stepsBefore), m_Steps.end());
  return true;
}

void EditSearch::relax(Column& column, int node, const Cell& cell, const Entry& entry) const {
  const std::size_t place = at(node - m_FirstNode);
  if (!(cell < column.cells[place])) return;
  column.cells[place] = cell;
  if (!column.entries.empty()) column.entries[place] = entry;
}

/// The first column, where the way begins at `node`.
void EditSearch::begin(Column& column, int node, bool isTraced) const {
  const std::size_t size = at(m_LastNode - m_FirstNode) + 1;
  column.cells.assign(size, {});
  if (isTraced) column.entries.assign(size, {});
  column.cells[at(node - m_FirstNode)].edits = 0;
  spread(column);
}

/// The column behind one more word of the reference: it is deleted, or a link says it or another.
void EditSearch::advance(const Column& before, int word, Column& column) const {
  column.cells.assign(before.cells.size(), {});
  column.entries.assign(before.entries.size(), {});
  for (int node = m_FirstNode; node <= m_LastNode; ++node) {
    const Cell& from = before.cells[at(node - m_FirstNode)];
    if (from.edits == kUnreached) continue;
    Cell deleted = from;
    ++deleted.edits;
    ++deleted.deletions;
    relax(column, node, deleted, {-1, true});
    eachLinkFrom(node, [&](int index, const EditLink& link) {
      if (link.word < 0) return;
      Cell said = from;
      if (m_HasScores) said.cost -= link.score;
      if (link.word != m_Reference[at(word)]) {
        ++said.edits;
        ++said.substitutions;
      }
      relax(column, link.end, said, {index, true});
    });
  }
  spread(column);
}

Cell EditSearch::inserted(const Cell& from, const EditLink& link) const {
  Cell cell = from;
  if (link.word >= 0) ++cell.edits;
  if (m_HasScores) cell.cost -= link.score;
  return cell;
}

/// Goes on from the cells of a column by what is inserted, and by links without word.
void EditSearch::spread(Column& column) const {
  if (m_Graph.isCyclic) {
    spreadAround(column);
    return;
  }
  for (int node = m_FirstNode; node <= m_LastNode; ++node) {
    const Cell from = column.cells[at(node - m_FirstNode)];
    if (from.edits == kUnreached) continue;
    eachLinkFrom(node, [&](int index, const EditLink& link) {
      relax(column, link.end, inserted(from, link), {index, false});
    });
  }
}

/// The same by Dijkstra's algorithm.
void EditSearch::spreadAround(Column& column) const {
  struct Reached {
    Cell cell;
    int node;
    bool operator<(const Reached& other) const { return other.cell < cell; }
  };
  std::priority_queue<Reached> reached;
  for (std::size_t i = 0; i < column.cells.size(); ++i)
    if (column.cells[i].edits != kUnreached) reached.push({column.cells[i], static_cast<int>(i)});
  while (!reached.empty()) {
    const Reached nearest = reached.top();
    reached.pop();
    if (column.cells[at(nearest.node)] < nearest.cell) continue;  // found nearer since
    eachLinkFrom(nearest.node, [&](int index, const EditLink& link) {
      const Cell cell = inserted(nearest.cell, link);
      if (!(cell < column.cells[at(link.end)])) return;
      relax(column, link.end, cell, {index, false});
      reached.push({cell, link.end});
    });
  }
}

}  // namespace

bool findFewestEdits(const EditGraph& graph, const std::vector<int>& reference,
                     Alignment& alignment) {
  return EditSearch(graph, reference).run(alignment);
}

}  // namespace quorbel
