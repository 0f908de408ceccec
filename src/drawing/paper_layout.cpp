#include "drawing/paper_layout.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "drawing/placed_statements.h"
#include "lattice/number_text.h"

namespace quorbel {
namespace {

// Layout points.
constexpr double kPad = 1.44;  ///< around the drawing, for what lines are wide: 0.02 inches
constexpr double kGapBetweenRows = 10.0;

constexpr double kPaperPointsPerInch = 72.0;

bool isEdge(const DotRecord& record) { return record.kind == DotRecord::Kind::Edge; }
bool isNode(const DotRecord& record) { return record.kind == DotRecord::Kind::Node; }

/// Tells the sections and the rows to which what `dot` drew belongs.
class PaperRows {
 public:
  explicit PaperRows(const LatticeSections& sections)
      : m_Sections(sections), m_IsCut(sections.ofNode.size(), false) {
    for (const int cut : sections.cuts) m_IsCut[slot(cut)] = true;
  }

  /// Whether all that is drawn is of the lattice.
  bool know(const std::vector<DotRecord>& records) const {
    return std::all_of(records.begin(), records.end(), [&](const DotRecord& record) {
      return (!isNode(record) && !isEdge(record)) ||
             (isKnown(record.name) && (isNode(record) || isKnown(record.head)));
    });
  }

  /// The box of each section, with the nodes at its ends.
  std::vector<Extent> sectionExtents(const std::vector<DotRecord>& records) const {
    std::vector<Extent> extents(m_Sections.count(), noExtent());
    for (const DotRecord& record : records) {
      if (!isNode(record) && !isEdge(record)) continue;
      const Extent extent = extentOf(record);
      extents[sectionOf(record)].add(extent);
      const std::size_t begun = m_Sections.ofNode[slot(parseInt(record.name))];
      if (isNode(record) && begun < extents.size()) extents[begun].add(extent);
    }
    return extents;
  }

  /// Rows that each begin with one of these sections.
  void set(std::vector<std::size_t> firstSections) { m_Rows = std::move(firstSections); }

  std::size_t count() const { return m_Rows.size(); }

  /// The row of a section; of a node, at its first place, or a link.
  std::size_t rowOf(std::size_t section) const {
    const auto behind = std::upper_bound(m_Rows.begin(), m_Rows.end(), section);
    return static_cast<std::size_t>(behind - m_Rows.begin()) - 1;
  }
  std::size_t rowOf(const DotRecord& record) const { return rowOf(sectionOf(record)); }

  /// Whether a node that ended the row before begins this one.
  bool isAgain(const std::string& node, std::size_t row) const {
    return row > 0 && row < m_Rows.size() && m_Sections.cuts[m_Rows[row]] == parseInt(node);
  }

 private:
  bool isKnown(const std::string& name) const {
    const int node = parseInt(name);
    return node >= 0 && slot(node) < m_IsCut.size() && std::to_string(node) == name;
  }

  std::size_t sectionOf(const DotRecord& record) const {
    const int node = parseInt(record.name);
    if (isEdge(record)) return m_Sections.ofLink(node, parseInt(record.head));
    const std::size_t section = m_Sections.ofNode[slot(node)];
    return m_IsCut[slot(node)] && section > 0 ? section - 1 : section;
  }

  const LatticeSections& m_Sections;
  std::vector<bool> m_IsCut;  ///< of each node
  std::vector<std::size_t> m_Rows;
};

/// The statement as it stands in a row, whose left end was at `left` and that is moved up by `up`.
std::string statementIn(std::size_t row, DotRecord record, const PaperRows& rows, double left,
                        double up) {
  for (std::string* name : {&record.name, &record.head}) {
    if (!rows.isAgain(*name, row)) continue;
    if (isNode(record)) record.attributes["label"] = *name;
    *name += " again";
  }
  move(record, -left, up);
  return statementText(record);
}

/// All rows as statements; lengths in layout points, the top left corner being at (0, 0).
struct PlacedRows {
  std::string statements;
  double width = 0.0;
  double bottom = 0.0;
};

PlacedRows placeRows(const std::vector<DotRecord>& records, const PaperRows& rows,
                     const std::vector<Extent>& sections) {
  std::vector<Extent> before(rows.count(), noExtent());  // where `dot` has put each row
  for (std::size_t i = 0; i < sections.size(); ++i) before[rows.rowOf(i)].add(sections[i]);
  PlacedRows placed;
  std::vector<double> up;
  for (const Extent& row : before) {
    const double top = up.empty() ? 0.0 : placed.bottom - kGapBetweenRows;
    up.push_back(top - row.top);
    placed.bottom = row.bottom + up.back();
    placed.width = std::max(placed.width, row.width());
  }
  const auto put = [&](const DotRecord& record, std::size_t row) {
    placed.statements += statementIn(row, record, rows, before[row].left, up[row]);
  };
  for (const DotRecord& record : records) {
    if (record.kind == DotRecord::Kind::Defaults) placed.statements += statementText(record);
    if (!isNode(record) && !isEdge(record)) continue;
    const std::size_t row = rows.rowOf(record);
    put(record, row);
    if (isNode(record) && rows.isAgain(record.name, row + 1)) put(record, row + 1);
  }
  return placed;
}

/// `scale`, or a smaller one at which the widest section fits into the width, in points.
double fittingScale(double scale, const std::vector<Extent>& sections, double width) {
  for (const Extent& section : sections)
    scale = std::min(scale, width / (section.width() + 2.0 * kPad));
  return scale;
}

/// The beginning of a description of that size in layout points.
std::string header(double width, double height, double scale, const PaperOptions& options) {
  const auto inches = [&](double length) {
    return placeText((length + 2.0 * kPad) * scale / kPaperPointsPerInch);
  };
  // The width alone is to tell the scale.
  return "digraph G {\ngraph [layout=nop2, margin=0, pad=0.02, size=\"" + inches(width) + ',' +
         inches(2.0 * height) + "!\"" +
         (options.pixelsPerInch ? ", dpi=" + std::to_string(*options.pixelsPerInch) : "") + "];\n";
}

}  // namespace

std::optional<PaperLayout> putOnPaper(const std::string& layout, const LatticeSections& sections,
                                      const std::vector<LegendEntry>& legend,
                                      const PaperOptions& options) {
  const std::optional<std::vector<DotRecord>> records = readStatements(layout);
  PaperRows rows(sections);
  if (!records || !rows.know(*records)) return std::nullopt;
  const std::vector<Extent> extents = rows.sectionExtents(*records);
  PaperLayout result;
  result.scale = options.fontSize / kLayoutFontSize;
  double limit = std::numeric_limits<double>::infinity();
  if (options.width) {
    result.scale = fittingScale(result.scale, extents, *options.width);
    constexpr double kRounding = 1e-6;
    limit = *options.width / result.scale - 2.0 * kPad + kRounding;
  }
  rows.set(rowsOf(extents, limit));

  PlacedRows placed = placeRows(*records, rows, extents);
  double width = placed.width;
  if (!legend.empty()) {
    const double top = placed.bottom - kGapBetweenRows;
    const Legend below = legendOf(legend, top, std::isinf(limit) ? width : limit);
    placed.statements += below.statements;
    placed.bottom = top - below.height;
    width = std::max(width, below.width);
  }
  result.description =
      header(width, -placed.bottom, result.scale, options) + placed.statements + "}\n";
  return result;
}

}  // namespace quorbel
