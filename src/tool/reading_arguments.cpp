#include "tool/reading_arguments.h"

#include <memory>
#include <string>

namespace quorbel {
namespace {

constexpr double kSmallest = 1e-6;
constexpr double kLargest = 1e6;

}  // namespace

void addReadingOptions(CLI::App& command, ReadingOptions& options) {
  CLI::Option_group* group = command.add_option_group("How IN is read");
  group
      ->add_option_function<std::string>(
          "--words",
          [&options](const std::string& path) {
            options.words = std::make_shared<WordTable>(path);
          },
          "Table of the words that numbers in Kaldi's or OpenFst's files stand for")
      ->type_name("FILE");
  group->add_option("--utterance", options.utterance, "The lattice of this name (the first)")
      ->type_name("NAME");
  group
      ->add_option("--frame-shift", options.frameShift,
                   "Seconds that each transition id of Kaldi's takes (0.01)")
      ->type_name("SECONDS")
      ->check(CLI::Range(kSmallest, kLargest));
  group
      ->add_option("--acoustic-scale", options.acousticScale,
                   "Scale of Kaldi's acoustic costs (0.1)")
      ->type_name("SCALE")
      ->check(CLI::Range(0.0, kLargest));
}

}  // namespace quorbel
