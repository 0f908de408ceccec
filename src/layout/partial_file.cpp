#include "layout/partial_file.h"

#include <filesystem>

namespace quorbel {

void removePartialFile(const std::string& name) {
  std::error_code ignored;  // there is nothing more to be done
  const std::filesystem::path target = std::filesystem::canonical(name, ignored);
  if (std::filesystem::is_regular_file(target, ignored)) std::filesystem::remove(target, ignored);
}

}  // namespace quorbel
