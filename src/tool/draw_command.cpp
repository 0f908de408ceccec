// quorbel-lattice draw: the viewer's drawing in a file.

#include <memory>

#include "drawing/drawing.h"
#include "tool/commands.h"
#include "tool/lattice_set.h"
#include "tool/reading_arguments.h"

namespace quorbel {
namespace {

struct DrawArguments {
  SetArguments set;
  std::string format = "png";
  DrawingOptions options;
};

CommandResult drawInto(const WordLattice& lattice, const DrawingOptions& options,
                       const std::string& path) {
  std::string note;
  CommandResult error = drawLattice(lattice, options, path, note);
  if (error.empty() && !note.empty()) say(path + ": " + note);
  return error;
}

CommandResult runDraw(const DrawArguments& arguments, Progress& progress) {
  const bool hasOneOutput = !arguments.set.to && arguments.set.more.size() == 1;
  if (hasOneOutput && drawingFormat(arguments.set.more[0]).empty())
    return arguments.set.more[0] +
           ": the name must end in .png, .svg, .pdf, .eps, .ps or .dia, the format";
  SetManner manner;
  manner.isOfProcesses = true;  // a drawing needs the signals of a program, and all of libxml2
  return workOnLattices(
      arguments.set, progress,
      [&](WordLattice& lattice, LatticeJob& job) {
        job.begin("drawing " + std::to_string(lattice.links.size()) + " links");
        job.writeApart(
            [&](const std::string& path) { return drawInto(lattice, arguments.options, path); },
            "." + arguments.format);
        return CommandResult();
      },
      manner);
}

void addPaperOptions(CLI::App& command, DrawingOptions& options) {
  constexpr double kSmallest = 1.0;  // points
  constexpr double kLargest = 200.0;
  constexpr double kNarrowest = 1.0;  // centimetres
  constexpr double kWidest = 500.0;
  CLI::Option* reference =
      command.add_option("--reference", options.reference,
                         "Mark the best path and the one nearest to these words, with a legend");
  reference->type_name("TEXT");
  for (CLI::Option* option : addMatchingOptions(command, options.matching))
    option->needs(reference);
  command.add_flag("--monochrome", options.isMonochrome,
                   "Black and grey, marks as thick, dashed and dotted lines");
  command.add_option("--font", options.font, "Family of all letters (Times)")->type_name("NAME");
  command
      .add_option("--font-size", options.fontSize,
                  "Draw all so large that letters have this size (14; with --width 8)")
      ->type_name("POINTS")
      ->check(whyNoNumber)
      ->check(CLI::Range(kSmallest, kLargest));
  command
      .add_option("--width", options.width,
                  "Close together, in as many rows as keep to this width, or smaller")
      ->type_name("CENTIMETRES")
      ->check(whyNoNumber)
      ->check(CLI::Range(kNarrowest, kWidest));
}

}  // namespace

Command addDraw(CLI::App& app) {
  auto arguments = std::make_shared<DrawArguments>();
  CLI::App* command = app.add_subcommand("draw", "Draw a lattice as the viewer does, into a file");
  addInputsAndOutput(*command, arguments->set, "Drawing: NAME.png, .svg, .pdf, .eps, .ps or .dia");
  command->add_option("--format", arguments->format, "Of drawings that go to a folder (png)")
      ->type_name("FORMAT")
      ->check(CLI::IsMember({"png", "svg", "pdf", "eps", "ps", "dia"}));
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
  addPaperOptions(*command, options);
  return [arguments](Progress& progress) { return runDraw(*arguments, progress); };
}

}  // namespace quorbel
