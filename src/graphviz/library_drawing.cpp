#include "graphviz/library_drawing.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <thread>
#include <utility>

#include "graphviz/heard_errors.h"
#include "graphviz/png_device.h"

namespace quorbel {
namespace {

/// A file for the library to write into, which only this process sees: however much is written, no
/// device gets full and no limit on files is met.
class Sink {
 public:
  Sink() {
    if (pipe2(m_Ends.data(), O_CLOEXEC) != 0) return;
    m_Reader = std::thread([this] { readAll(); });
  }
  ~Sink() { close(); }
  Sink(const Sink&) = delete;
  Sink& operator=(const Sink&) = delete;

  bool isOpen() const { return m_Ends[1] >= 0; }

  /// The name by which the library opens it.
  std::string name() const { return "/proc/self/fd/" + std::to_string(m_Ends[1]); }

  /// What was written, when it is written.
  std::string take() {
    close();
    return std::move(m_Bytes);
  }

 private:
  void readAll() {
    std::array<char, 65536> part = {};
    while (true) {
      const ssize_t count = read(m_Ends[0], part.data(), part.size());
      if (count > 0) m_Bytes.append(part.data(), static_cast<std::size_t>(count));
      if (count == 0 || (count < 0 && errno != EINTR)) return;
    }
  }

  void close() {
    if (!isOpen()) return;
    ::close(m_Ends[1]);
    m_Reader.join();
    ::close(m_Ends[0]);
    m_Ends = {-1, -1};
  }

  std::array<int, 2> m_Ends = {-1, -1};
  std::thread m_Reader;
  std::string m_Bytes;
};

/// Graphviz's own writer of PostScript knows only Latin-1.
std::string libraryFormat(const std::string& format) {
  return format == "ps" || format == "ps2" ? "ps:cairo" : format;
}

bool isPng(const std::string& format) { return format == "png"; }

/// The arguments that `dot` would have. Each format has its file, also "png" that needs none.
std::vector<std::string> argumentsFor(const std::vector<std::string>& formats,
                                      const std::vector<Sink>& sinks) {
  std::vector<std::string> arguments = {"dot"};
  for (std::size_t i = 0; i < formats.size(); ++i) {
    arguments.push_back("-T" + libraryFormat(formats[i]));
    arguments.push_back("-o" + (isPng(formats[i]) ? "/dev/null" : sinks[i].name()));
  }
  return arguments;
}

bool takesArguments(GVC_t* context, std::vector<std::string>& arguments) {
  // The library keeps them, and writes a null pointer behind them as a program's arguments have it.
  static std::vector<char*> pointers;
  pointers.assign(arguments.size() + 1, nullptr);
  std::transform(arguments.begin(), arguments.end(), pointers.begin(),
                 [](std::string& argument) { return argument.data(); });
  return gvParseArgs(context, static_cast<int>(arguments.size()), pointers.data()) == 0;
}

}  // namespace

std::optional<LibraryDrawings> drawByLibrary(const std::string& description,
                                             const std::vector<std::string>& formats) {
  static HeardErrors errors;
  errors.holdBack();
  std::vector<Sink> sinks(formats.size());
  const bool hasSinks =
      std::all_of(sinks.begin(), sinks.end(), [](const Sink& sink) { return sink.isOpen(); });
  GVC_t* const context = hasSinks ? gvContextPlugins(nullptr, 1) : nullptr;
  LibraryDrawings result;
  result.drawings.resize(formats.size());
  std::size_t heard = 0;  // whose drawing what is said belongs to
  const auto hear = [&] { result.drawings[heard].said += errors.take(); };
  const auto takePicture = [&](std::optional<std::string> picture) {
    hear();
    errors.holdBack();
    result.drawings[0].bytes = std::move(picture).value_or("");
    heard = formats.size() > 1 ? 1 : 0;
  };
  if (context) usePngDevice(context, takePicture);
  static std::vector<std::string> arguments;  // the library keeps them
  arguments = argumentsFor(formats, sinks);
  const bool isReady = context && takesArguments(context, arguments);
  Agraph_t* const graph = isReady ? agmemread(description.c_str()) : nullptr;
  if (!graph) {
    errors.take();
    return std::nullopt;
  }

  gvLayoutJobs(context, graph);
  result.said = errors.take();
  errors.holdBack();
  gvRenderJobs(context, graph);
  gvFinalize(context);
  hear();
  result.status = agreseterrors();
  for (std::size_t i = 0; i < formats.size(); ++i) {
    Drawing& drawing = result.drawings[i];
    if (!isPng(formats[i])) drawing.bytes = sinks[i].take();
    if (drawing.bytes.empty()) return std::nullopt;
  }
  return result;
}

}  // namespace quorbel
