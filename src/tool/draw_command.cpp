// quorbel-lattice draw: the viewer's drawing in a file.

#include <memory>

#include "drawing/drawing.h"
#include "formats/lattice_input.h"
#include "tool/commands.h"
#include "tool/reading_arguments.h"

namespace quorbel {
namespace {

struct DrawArguments {
  std::string in;
  ReadingOptions reading;
  std::string out;
  DrawingOptions options;
};

CommandResult runDraw(const DrawArguments& arguments, Progress& progress) {
  if (std::string error = checkOutput(arguments.in, arguments.out); !error.empty()) return error;
  if (drawingFormat(arguments.out).empty())
    return arguments.out + ": the name must end in .png, .svg, .pdf, .eps, .ps or .dia, the format";
  progress.begin("reading " + arguments.in);
  WordLattice lattice;
  std::string error = readWordLattice(arguments.in, lattice, arguments.reading);
  if (!error.empty()) return error;
  progress.begin("drawing " + std::to_string(lattice.links.size()) + " links");
  std::string note;
  error = drawLattice(lattice, arguments.options, arguments.out, note);
  if (error.empty() && !note.empty()) say(arguments.out + ": " + note);
  return error;
}

void addPaperOptions(CLI::App& command, DrawingOptions& options) {
  constexpr double kSmallest = 1.0;  // points
  constexpr double kLargest = 200.0;
  constexpr double kNarrowest = 1.0;  // centimetres
  constexpr double kWidest = 500.0;
  command.add_flag("--monochrome", options.isMonochrome,
                   "Black and grey, marks as thick, dashed and dotted lines");
  command.add_option("--font", options.font, "Family of all letters (Times)")->type_name("NAME");
  command
      .add_option("--font-size", options.fontSize,
                  "Draw all so large that letters have this size (14; with --width 8)")
      ->type_name("POINTS")
      ->check(CLI::Range(kSmallest, kLargest));
  command
      .add_option("--width", options.width,
                  "Close together, in as many rows as keep to this width, or smaller")
      ->type_name("CENTIMETRES")
      ->check(CLI::Range(kNarrowest, kWidest));
}

}  // namespace

Command addDraw(CLI::App& app) {
  auto arguments = std::make_shared<DrawArguments>();
  CLI::App* command = app.add_subcommand("draw", "Draw a lattice as the viewer does, into a file");
  command
      ->add_option("IN", arguments->in,
                   "Lattice, plain or compressed by gzip; - is the standard input")
      ->required();
  command->add_option("OUT", arguments->out, "Drawing: NAME.png, .svg, .pdf, .eps, .ps or .dia")
      ->required();
  DrawingOptions& options = arguments->options;
  command->add_flag("--best", options.showBestPath, "Mark the best path");
  command
      ->add_option("--label", options.labelField,
                   "Label links with this attribute of their words, or with \"score\", their cost")
      ->type_name("FIELD");
  command->add_option("--score", options.scoreName, "Score that the paths follow (TOTAL)")
      ->type_name("NAME");
  command->add_option("--through", options.throughLink, "Mark the best path through link J=LINK")
      ->type_name("LINK");
  addReadingOptions(*command, arguments->reading);
  addPaperOptions(*command, options);
  return [arguments](Progress& progress) { return runDraw(*arguments, progress); };
}

}  // namespace quorbel
