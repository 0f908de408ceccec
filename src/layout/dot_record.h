#pragma once

// One statement of a file that `dot -Tdot` wrote, taken apart.

#include <map>
#include <string>
#include <string_view>

namespace quorbel {

/// The values of a statement's attributes by their names. A value comes without the quotes around
/// it and put together where `dot` wrapped it; its escapes, double quotes included, stay as `dot`
/// wrote them. Numbers of `bb`, `pos` and `lp` that have an exponent (such as those beyond 99,999
/// points) come in full.
using DotAttributes = std::map<std::string, std::string, std::less<>>;

/// The value of an attribute; null, and no longer valid than `attributes`, without it.
const std::string* valueOf(const DotAttributes& attributes, std::string_view name);

struct DotRecord {
  enum class Kind {
    Drawing,   ///< "graph": about the whole drawing
    Defaults,  ///< "node" or "edge": for all that come behind it
    Node,
    Edge
  };
  Kind kind = Kind::Node;
  std::string name;  ///< node: its name; edge: that of the node it leaves; defaults: "node", "edge"
  std::string head;  ///< edge: the name of the node it enters
  DotAttributes attributes;
};

/// Takes apart the statement of `text` that begins at `pos` and has an opening bracket. `pos` moves
/// to the closing bracket, or to the end of `text` or behind it where that cuts the statement off;
/// the record then has the attributes up to there.
DotRecord takeDotRecord(std::string_view text, std::size_t& pos);

}  // namespace quorbel
