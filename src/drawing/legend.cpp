#include "drawing/legend.h"

#include <algorithm>

#include "drawing/description.h"
#include "drawing/placed_statements.h"

namespace quorbel {
namespace {

// Layout points.
constexpr double kRowHeight = 24.0;
constexpr double kLineAboveBottom = 4.0;
constexpr double kTextAboveLine = 10.0;  ///< its middle
constexpr double kGapBetweenEntries = 14.0;
constexpr double kLetterWidth = 7.0;    ///< hardly less than that of most letters
constexpr double kShortestLine = 40.0;  ///< that shows whether it is dashed
constexpr double kArrowLength = 8.0;

std::string pointText(double x, double y) { return placeText(x) + ',' + placeText(y); }

/// The line from (`left`, `y`) to (`right`, `y`) with its text. Its ends are nodes nobody sees, as
/// high as the arrow head, for which Graphviz leaves no room.
std::string lineStatements(const LegendEntry& entry, const std::string& name, double left,
                           double right, double y) {
  const std::string from = "\"legend " + name + '"';
  const std::string to = "\"legend " + name + " end\"";
  const auto endNode = [&](const std::string& node, double x) {
    return node + R"( [label="", style=invis, width=0.06, height=0.12, margin=0, pos=")" +
           pointText(x, y) + "\"];\n";
  };
  const double foot = right - kArrowLength;  // of the arrow head
  const double third = (foot - left) / 3.0;
  return endNode(from, left) + endNode(to, right) + from + " -> " + to + " [" + entry.look +
         ", label=\"" + escapedLabel(entry.text) + "\", lp=\"" +
         pointText((left + right) / 2.0, y + kTextAboveLine) + "\", pos=\"e," +
         pointText(right, y) + ' ' + pointText(left, y) + ' ' + pointText(left + third, y) + ' ' +
         pointText(foot - third, y) + ' ' + pointText(foot, y) + "\"];\n";
}

}  // namespace

Legend legendOf(const std::vector<LegendEntry>& entries, double top, double width) {
  std::vector<Extent> extents;
  double left = 0.0;
  for (const LegendEntry& entry : entries) {
    const double letters = kLetterWidth * static_cast<double>(entry.text.size());
    extents.push_back({left, left + std::max(letters, kShortestLine), 0.0, kRowHeight});
    left = extents.back().right + kGapBetweenEntries;
  }
  const std::vector<std::size_t> rows = rowsOf(extents, width);
  Legend legend;
  double rowLeft = 0.0;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (std::binary_search(rows.begin(), rows.end(), i)) {
      rowLeft = extents[i].left;
      legend.height += kRowHeight;
    }
    const double right = extents[i].right - rowLeft;
    legend.statements += lineStatements(entries[i], std::to_string(i), extents[i].left - rowLeft,
                                        right, top - legend.height + kLineAboveBottom);
    legend.width = std::max(legend.width, right);
  }
  return legend;
}

}  // namespace quorbel
