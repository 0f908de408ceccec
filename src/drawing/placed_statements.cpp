#include "drawing/placed_statements.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "lattice/number_text.h"

namespace quorbel {
namespace {

constexpr double kPointsPerInch = 72.0;
constexpr double kHalfLabelHeight = 9.0;  ///< of one line in `dot`'s own size of letters

/// A value between double quotes, in lines short enough for `dot`, none of which cuts an escape.
std::string quoted(const std::string& value) {
  constexpr std::size_t kLineBytes = 8192;
  std::string text = "\"";
  std::size_t inLine = 0;
  bool isEscaped = false;
  for (const char c : value) {
    if (inLine >= kLineBytes && !isEscaped) {
      text += "\\\n";
      inLine = 0;
    }
    text += c;
    ++inLine;
    isEscaped = c == '\\' && !isEscaped;
  }
  return text + '"';
}

/// Calls `place` with each point of a position such as "e,9,2 0,0 1,2 3,4 5,6;7,8" and puts what it
/// makes of it in its place.
template <typename Place>
std::string withPlaces(const std::string& position, Place place) {
  std::string text;
  for (std::size_t pos = 0; pos < position.size();) {
    const std::size_t end = std::min(position.find_first_of(" ;", pos), position.size());
    std::string point = position.substr(pos, end - pos);
    if (point.size() > 1 && point[1] == ',' && (point[0] == 'e' || point[0] == 's')) {
      text += point.substr(0, 2);
      point.erase(0, 2);
    }
    const std::size_t comma = point.find(',');
    text += comma == std::string::npos
                ? point
                : place(parseDouble(point), parseDouble(point.substr(comma + 1)));
    if (end < position.size()) text += position[end];
    pos = end + 1;
  }
  return text;
}

double numberOf(const DotRecord& record, const char* attribute) {
  const std::string* value = valueOf(record.attributes, attribute);
  return value ? parseDouble(*value) : 0.0;
}

}  // namespace

std::optional<std::vector<DotRecord>> readStatements(std::string_view layout) {
  std::vector<DotRecord> records;
  std::size_t pos = layout.find('{');
  while (pos != std::string_view::npos) {
    const std::size_t begin = pos + 1;
    pos = layout.find_first_of("[;}", begin);
    if (pos == std::string_view::npos || layout[pos] == '}') break;
    if (layout[pos] == ';') continue;
    pos = begin;
    records.push_back(takeDotRecord(layout, pos));
    if (pos >= layout.size()) return std::nullopt;
  }
  if (pos == std::string_view::npos) return std::nullopt;
  return records;
}

std::string statementText(const DotRecord& record) {
  std::string text = '"' + record.name + '"';
  if (record.kind == DotRecord::Kind::Defaults) text = record.name;
  if (record.kind == DotRecord::Kind::Edge) text += " -> \"" + record.head + '"';
  text += " [";
  const char* separator = "";
  for (const auto& [name, value] : record.attributes) {
    text += separator + name + '=' + quoted(value);
    separator = ", ";
  }
  return text + "];\n";
}

Extent extentOf(const DotRecord& record) {
  Extent extent = noExtent();
  const double halfWidth = numberOf(record, "width") * kPointsPerInch / 2.0;
  const double halfHeight = numberOf(record, "height") * kPointsPerInch / 2.0;
  const auto add = [&](double x, double y) {
    extent.add(x - halfWidth, y - halfHeight);
    extent.add(x + halfWidth, y + halfHeight);
    return std::string();
  };
  const auto addLabel = [&](double x, double y) {
    extent.add(x, y - kHalfLabelHeight);
    extent.add(x, y + kHalfLabelHeight);
    return std::string();
  };
  if (const std::string* position = valueOf(record.attributes, "pos")) withPlaces(*position, add);
  if (const std::string* position = valueOf(record.attributes, "lp"))
    withPlaces(*position, addLabel);
  return extent;
}

void move(DotRecord& record, double right, double up) {
  for (const char* name : {"pos", "lp"}) {
    const auto position = record.attributes.find(std::string_view(name));
    if (position == record.attributes.end()) continue;
    position->second = withPlaces(position->second, [&](double x, double y) {
      return placeText(x + right) + ',' + placeText(y + up);
    });
  }
}

std::string placeText(double number) {
  constexpr int kDecimals = 3;
  std::array<char, 400> digits = {};  // for every double without an exponent
  char* end =
      std::to_chars(digits.begin(), digits.end(), number, std::chars_format::fixed, kDecimals).ptr;
  while (end[-1] == '0') --end;
  if (end[-1] == '.') --end;
  const std::string text(digits.begin(), end);
  return text == "-0" ? "0" : text;
}

}  // namespace quorbel
