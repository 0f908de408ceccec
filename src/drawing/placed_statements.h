#pragma once

// Statements that `dot` has laid out, put elsewhere.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/row_plan.h"
#include "layout/dot_record.h"

namespace quorbel {

/// All statements of a drawing that `dot -Tdot` wrote; nothing when the text is not all of one.
std::optional<std::vector<DotRecord>> readStatements(std::string_view layout);

/// The statement as `dot` reads it back, a line. All its attributes stay as they are.
std::string statementText(const DotRecord& record);

/// The box of a node or a link: of a node its own size, of a link its curve and the height of its
/// label (not its width, for which `dot` leaves room between the nodes).
Extent extentOf(const DotRecord& record);

/// Moves a node or a link with its label by that many layout points to the right and upwards.
void move(DotRecord& record, double right, double up);

/// A number in a description, in layout points, the same under every locale: "12.5", "-3".
std::string placeText(double number);

}  // namespace quorbel
