#pragma once

#include "app/rounded_box.h"

namespace quorbel {

// What the boxes around selected and hovered items are filled and outlined with.
inline constexpr Rgba kSelectedLabelFill{1, 0, 0, 0.15}, kSelectedLabelOutline{1, 0, 0, 0.5};
inline constexpr Rgba kSelectedNodeFill{0, 1, 0, 0.4}, kSelectedNodeOutline{0, 0, 1, 0.7};
inline constexpr Rgba kHoveredLabelFill{0, 0, 1, 0.15}, kHoveredLabelOutline{0, 0, 1, 0.5};
inline constexpr Rgba kHoveredNodeFill{1, 1, 0, 0.4}, kHoveredNodeOutline{1, 0, 0, 0.7};

}  // namespace quorbel
