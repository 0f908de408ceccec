#include "dot/dot_request.h"

#include <algorithm>
#include <array>

namespace quorbel {
namespace {

/// Graphviz takes what begins with "-" for an option.
bool isName(const std::string& argument) { return !argument.empty() && argument[0] != '-'; }

}  // namespace

std::optional<DotRequest> dotRequest(const std::vector<std::string>& arguments) {
  constexpr std::array<const char*, 6> kFormats = {"png", "dot", "svg", "ps", "ps2", "pdf"};
  if (arguments.size() != 4 || arguments[0].compare(0, 2, "-T") != 0 || arguments[1] != "-o" ||
      !isName(arguments[2]) || !isName(arguments[3]))
    return std::nullopt;
  const std::string format = arguments[0].substr(2);
  if (std::find(kFormats.begin(), kFormats.end(), format) == kFormats.end()) return std::nullopt;
  return DotRequest{format, arguments[2], arguments[3]};
}

}  // namespace quorbel
