// `dot` for the viewer, which runs it in place of Graphviz's program: it draws by Graphviz's
// library, once for picture and layout, and knows what it drew before.
//
// What is not one of the viewer's requests is left to the next `dot` of the search path.

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "dot/dot_request.h"
#include "dot/drawing_memory.h"
#include "graphviz/file_drawing.h"
#include "graphviz/graphviz_program.h"
#include "graphviz/heard_errors.h"
#include "graphviz/label_mending.h"
#include "graphviz/library_drawing.h"

namespace quorbel {
namespace {

/// The folder of the memory, which the launcher makes.
constexpr const char* kMemoryVariable = "QUORBEL_DRAWINGS";

constexpr const char* kThisProgram = "/proc/self/exe";

/// Becomes the next `dot` of the search path.
[[noreturn]] void leaveToGraphviz(char** arguments) {
  constexpr int kNotFound = 127;  // as shells say it
  const std::string program = findDot(kThisProgram);
  if (!program.empty()) execv(program.c_str(), arguments);
  sayToUser("dot: Graphviz's own program dot is missing\n");
  _exit(kNotFound);
}

/// Whether the file is written, if need be in the room that the memory has taken.
bool isWrittenSomehow(const std::string& path, const std::string& bytes,
                      const DrawingMemory& memory) {
  return writeOver(path, bytes) || (memory.forgetAll() && writeOver(path, bytes));
}

/// Draws what is not remembered. Returns the exit status; nothing when that is left to Graphviz.
std::optional<int> drawAnew(const DotRequest& request, const std::string& description,
                            const std::string& mended, const DrawingMemory& memory) {
  const std::vector<std::string> formats = formatsToDraw(request.format, description, memory);
  const auto drawn = drawByLibrary(mended, formats);
  if (!drawn) return std::nullopt;
  for (std::size_t i = 0; i < formats.size(); ++i) {
    const Drawing& drawing = drawn->drawings[i];
    if (formats[i] != request.format) continue;
    if (!isWrittenSomehow(request.output, drawing.bytes, memory)) return std::nullopt;
    sayToUser(drawn->said + drawing.said);
  }
  if (drawn->status != 0) return drawn->status;
  for (std::size_t i = 0; i < formats.size(); ++i) {
    const Drawing& drawing = drawn->drawings[i];
    memory.remember(formats[i], description, {drawing.bytes, drawn->said + drawing.said});
  }
  return 0;
}

std::optional<int> fulfil(const DotRequest& request) {
  std::ifstream stream(request.description, std::ios::binary);
  const std::string description{std::istreambuf_iterator<char>(stream), {}};
  const std::optional<std::string> mended = mendedDescription(description);
  if (!mended) return std::nullopt;
  const char* const folder = std::getenv(kMemoryVariable);
  const DrawingMemory memory(folder ? folder : "");
  const auto remembered = memory.recall(request.format, description);
  if (!remembered || !isWrittenSomehow(request.output, remembered->bytes, memory))
    return drawAnew(request, description, *mended, memory);
  sayToUser(remembered->said);
  return 0;
}

}  // namespace
}  // namespace quorbel

int main(int argc, char** argv) {
  using namespace quorbel;  // NOLINT(google-build-using-namespace)
  const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
  // The launcher asks whether this program may stand in for that `dot`.
  if (arguments.size() == 2 && arguments[0] == "--stands-for")
    _exit(isDotOfLibrary(arguments[1]) ? 0 : 1);
  const std::optional<DotRequest> request = dotRequest(arguments);
  const std::optional<int> status = request ? fulfil(*request) : std::nullopt;
  if (!status) leaveToGraphviz(argv);
  _exit(*status);
}
