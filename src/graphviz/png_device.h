#pragma once

// Graphviz's output in PNG, which is written here.

#include <gvc.h>

#include <functional>
#include <optional>
#include <string>

namespace quorbel {

/// Gets a picture when it is drawn; nothing when it could not be made.
using PictureTaker = std::function<void(std::optional<std::string> picture)>;

/// Makes `context` hand over pictures in PNG, made by pngPicture, to `take`. Of the file that
/// Graphviz is told to write nothing is seen.
void usePngDevice(GVC_t* context, PictureTaker take);

}  // namespace quorbel
