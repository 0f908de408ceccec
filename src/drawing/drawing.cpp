#include "drawing/drawing.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "drawing/dot_run.h"
#include "drawing/drawing_content.h"
#include "drawing/paper_layout.h"
#include "drawing/work_folder.h"
#include "lattice/number_text.h"
#include "layout/dia_writer.h"
#include "layout/whole_file.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

constexpr double kCentimetresPerPoint = 2.54 / 72.0;

/// Whether the name may stand in an attribute of `dot`, where it has no escapes.
bool isFontName(const std::string& name) {
  const auto isOdd = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; };
  return name.find_first_of("\"\\&<>") == std::string::npos &&
         std::none_of(name.begin(), name.end(), isOdd) && inUtf8(name) == name;
}

bool isForPaper(const DrawingOptions& options) { return options.width || options.fontSize; }

DrawingStyle styleOf(const DrawingOptions& options) {
  DrawingStyle style;
  style.isMonochrome = options.isMonochrome;
  style.isCompact = options.width.has_value();
  style.isTight = true;
  style.font = options.font;
  style.boldFont = boldFontOf(options.font);
  return style;
}

std::string textOf(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void passOn(const std::string& logFile) {
  std::ifstream log(logFile);
  if (log.peek() != std::ifstream::traits_type::eof()) std::cerr << log.rdbuf();
}

/// What `dot` calls the format. PostScript of its own making has neither fonts in it nor letters
/// beyond Latin-1; cairo's has.
std::string dotFormat(const std::string& format) {
  if (format == "dia") return "dot";  // which today's dot does not write itself
  return format == "ps" || format == "eps" ? format + ":cairo" : format;
}

/// Runs `dot` in a folder for work files.
class DotInFolder {
 public:
  explicit DotInFolder(const SignalsEndDot& signals) : m_Signals(signals) {}

  /// Has `dot` draw `description` into `bytes`. Returns "", or why there is no drawing.
  std::string draw(const std::string& description, const std::string& format, std::string& bytes) {
    if (!m_Folder.error().empty()) return m_Folder.error();
    if (std::string error = writeWholeFile(m_Description, description); !error.empty())
      return error;
    const std::string error = runDot(m_Signals, format, m_Drawing, m_Description, m_Log);
    const std::string reason = whyFull(m_Drawing);
    if (!error.empty()) return reason.empty() ? error : error + " (" + reason + ")";
    if (!reason.empty()) return "dot made no whole drawing in the folder for work files: " + reason;
    passOn(m_Log);
    bytes = textOf(m_Drawing);
    return bytes.empty() ? kNoDrawing : "";
  }

  static constexpr const char* kNoDrawing = "dot made no drawing";

 private:
  const SignalsEndDot& m_Signals;
  WorkFolder m_Folder;
  const std::string m_Description = m_Folder.file("lattice.dot");
  const std::string m_Drawing = m_Folder.file("drawing");
  const std::string m_Log = m_Folder.file("dot.log");
};

/// How the drawing is put on paper, from what the user asks for.
PaperOptions paperOptions(const DrawingOptions& options, const std::string& format) {
  constexpr double kColumnFontSize = 8.0;
  constexpr int kPrintedPixelsPerInch = 300;
  PaperOptions paper;
  paper.fontSize = options.fontSize.value_or(options.width ? kColumnFontSize : kLayoutFontSize);
  if (options.width) paper.width = *options.width / kCentimetresPerPoint;
  if (format == "png" && isForPaper(options)) paper.pixelsPerInch = kPrintedPixelsPerInch;
  return paper;
}

std::string noteOn(double fontSize, double asked) {
  constexpr double kSeen = 0.05;
  if (fontSize > asked - kSeen) return "";
  return "letters have " + formatNumber(std::round(fontSize * 10.0) / 10.0) + " points, not " +
         formatNumber(asked) +
         ": a stretch between two nodes that all paths pass is too wide for them";
}

/// Has `dot` draw the lattice into `bytes`; all that lies in a folder meanwhile is gone then.
std::string drawInWorkFolder(const WordLattice& lattice, const DrawingOptions& options,
                             const std::string& format, const SignalsEndDot& signals,
                             std::string& bytes, std::string& note) {
  const DrawingStyle style = styleOf(options);
  DrawingContent content;
  std::string error = findContent(lattice, options, style, content);
  if (!error.empty()) return error;
  std::string text = descriptionOf(lattice, content.labels, content.marks, style);

  DotInFolder dot(signals);
  PaperLayout paper;
  if (isForPaper(options) || !content.legend.empty()) {
    std::string layout;
    error = dot.draw(text, "dot", layout);
    if (!error.empty()) return error;
    const PaperOptions asked = paperOptions(options, format);
    auto placed = putOnPaper(layout, sectionsOf(lattice), content.legend, asked);
    if (!placed) return DotInFolder::kNoDrawing;
    paper = std::move(*placed);
    text = paper.description;
    note = noteOn(paper.scale * kLayoutFontSize, asked.fontSize);
  }
  error = dot.draw(text, dotFormat(format), bytes);
  if (format == "svg") bytes = svgWithFamilies(std::move(bytes), options.font);
  if (error.empty() && format == "dia") {
    const std::optional<DotDrawing> layout = readDotDrawing(bytes);
    bytes = layout ? diaDiagram(*layout, {paper.scale, options.font}) : "";
    if (bytes.empty()) error = DotInFolder::kNoDrawing;
  }
  return error;
}

}  // namespace

std::string drawingFormat(const std::string& path) {
  constexpr std::array<const char*, 6> kFormats = {"png", "svg", "pdf", "eps", "ps", "dia"};
  const std::string extension = fs::path(path).extension();
  const auto isFormat = [&](const char* format) { return extension == std::string(".") + format; };
  const auto* const found = std::find_if(kFormats.begin(), kFormats.end(), isFormat);
  return found == kFormats.end() ? "" : *found;
}

std::string drawLattice(const WordLattice& lattice, const DrawingOptions& options,
                        const std::string& path, std::string& note) {
  const std::string format = drawingFormat(path);
  if (format.empty())
    return path +
           ": the name must end in .png, .svg, .pdf, .eps, .ps or .dia, which says the format";
  if (!isFontName(options.font)) return excerpt(options.font) + ": this is no name of a font";
  const SignalsEndDot signals;  // for as long as there is something to tidy up
  std::string drawing;
  std::string error = drawInWorkFolder(lattice, options, format, signals, drawing, note);
  if (error.empty() && signals.haveCome()) error = path + ": " + std::strerror(EINTR);
  return error.empty() ? writeWholeFile(path, drawing) : error;
}

}  // namespace quorbel
