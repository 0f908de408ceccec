#pragma once

// The lattice in memory, and the display switches that decide how it is drawn.
// Reading it from a file is in htk_reader.h, searching it in shortest_path.h.

#include <boost/container/flat_map.hpp>
#include <memory>
#include <string>
#include <vector>

#include "lattice/layout_item.h"

namespace quorbel {

/// Scores by the names that the lattice file uses, in byte order of the names. A link has few, and
/// a search looks at those of every link: they lie side by side.
using ScoreMap = boost::container::flat_map<std::string, double>;

/// A point in time of the utterance (a line with "I=" in an HTK lattice).
struct Node {
  double time = 0.0;  ///< fraction of the last node's time; seconds only while a file is being read
  ScoreMap scores;
};

/// A link of the lattice (a line with "J="): a word between two nodes, kept with its start node.
struct Edge {
  int endNode = 0;
  ScoreMap scores;   ///< the link's own scores plus those of its end node, sign-flipped if negated
  std::string word;  ///< plain text or an XML fragment, see xml_label.h
  int linkId = 0;    ///< the file's own number of the link; need not be unique
};

/// Which links leave which node.
struct LatticeAdjacency {
  /// A lattice of `count` nodes without links; `start` and `end` are node indices.
  LatticeAdjacency(int count, int start, int end);

  int nodeCount;
  int startNode;
  int endNode;

  /// The links that leave each node, in file order, parallel ones included. A link may name the
  /// index one past the last node: such links have a slot of their own at the end, so there are
  /// nodeCount + 1 lists.
  std::vector<std::vector<Edge>> outgoing;
};

/// What `Graph::selectedEdge` holds before a link was chosen.
inline LayoutItem noSelectedEdge() {
  LayoutItem item;
  item.linkId = item.x = item.y = -1;
  return item;
}

/// Where a field stands in a link's XML fragment; xml_label.h says how positions count.
using IndexPath = std::vector<int>;

/// A field of a link's XML fragment by the name of its attribute.
struct XmlField {
  IndexPath path;
  std::string attribute;
};

/// The one open lattice with everything that its description and drawing depend on.
struct Graph {
  int layoutWidth = 0;   ///< bounding box of the drawing, layout points
  int layoutHeight = 0;  ///< bounding box of the drawing, layout points

  bool showBestPath = false;     ///< highlight the best path
  bool hasSelectedEdge = false;  ///< `selectedEdge` was chosen; highlight the best path through it
  LayoutItem selectedEdge = noSelectedEdge();

  double duration = 0.0;  ///< time of the last node in seconds, as the file has it

  std::unique_ptr<LatticeAdjacency> adjacency;  ///< none until a file gave a node count
  std::vector<Node> nodes;                      ///< as many as `adjacency->outgoing`, or none

  /// Total of the best path as of the last description that was written, shown or not; -1.0 before
  /// the first and from when `setShowBestPath` switched it off to the next.
  double bestPathScore = -1.0;
  /// Total of the best path through `selectedEdge` as of the last description that was written with
  /// one; -1.0 while none was and since it was dropped.
  double selectedPathScore = -1.0;

  bool labelByValue = false;             ///< label links by their score instead of XML fields
  std::vector<XmlField> fieldsByName;    ///< label fields while `labelBySelectedXml` is off
  std::vector<IndexPath> fieldsByIndex;  ///< label fields while `labelBySelectedXml` is on
  bool labelBySelectedXml = false;

  /// Scores are kept with their sign flipped, which makes costs of log-likelihoods.
  /// Stays as it is from one file to the next.
  bool scoresNegated = true;

  std::string outputFormat;  ///< `dot` format of the next image run, empty for the default

  std::string bestPathText;      ///< words along the best path, each followed by a blank
  std::string selectedPathText;  ///< the same for the best path through `selectedEdge`

  std::vector<int> bestPathLinks;      ///< ids of the links of the best path
  std::vector<int> selectedPathLinks;  ///< the same for the best path through `selectedEdge`
};

/// Name of the score that every cost, path and value label uses. One for the whole process: it
/// outlives files. The reader sets it, the score chooser replaces it.
extern std::string currentScoreName;

/// Appends a link to those leaving `start`. Links that name a node beyond nodeCount, or a negative
/// one, are dropped; an index equal to nodeCount is kept.
void addEdge(LatticeAdjacency& adjacency, int start, int end, ScoreMap scores, std::string word,
             int linkId);

/// Chooses (`selected`) or drops the link that a path is to lead through, and keeps a copy of
/// `edge`. Dropping it sets `selectedPathScore` to -1.0.
void setSelectedEdge(Graph& graph, bool selected, const LayoutItem& edge);

/// Switches the highlighting of the best path; switching it off sets `bestPathScore` to -1.0.
void setShowBestPath(Graph& graph, bool on);

/// Brings the score kept in `selectedEdge` up to date with its link (the first one in node order
/// that has its id) after `currentScoreName` or the signs changed. A link without a score of that
/// name counts as 0.0; a link that the lattice no longer has leaves the score as it is.
void refreshSelectedEdgeScore(Graph& graph);

}  // namespace quorbel
