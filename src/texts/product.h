#pragma once

#include <string>

namespace quorbel {

inline const std::string PRODUCT_NAME = "Quorbel";
inline const std::string VERSION_TEXT = "Quorbel v1.2 (10/2008)";

/// Folder of the pictures, found from the working directory.
inline const std::string IMAGE_DIR = "images/";

}  // namespace quorbel
