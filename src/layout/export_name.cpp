#include "layout/export_name.h"

namespace quorbel {

std::string exportFileName(const std::string& chosen, const std::string& format) {
  const std::string extension = format == "ps2" ? "ps" : format;
  const std::size_t end = chosen.size() - extension.size();  // too short: beyond any text
  return chosen.substr(end) == extension ? chosen : chosen + "." + extension;
}

}  // namespace quorbel
