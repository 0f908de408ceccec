#include "tool/reading_arguments.h"

#include <memory>
#include <string>

#include "words/decimal.h"

namespace quorbel {
namespace {

constexpr double kSmallest = 1e-6;
constexpr double kLargest = 1e6;

}  // namespace

std::string whyNoNumber(const std::string& text) {
  return wholeNumber(text) ? "" : text + " is no number";
}

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
  group->add_option("--utterance", options.utterance, "Of an archive only the lattice of this name")
      ->type_name("NAME");
  group
      ->add_option("--frame-shift", options.frameShift,
                   "Seconds that each transition id of Kaldi's takes (0.01)")
      ->type_name("SECONDS")
      ->check(whyNoNumber)
      ->check(CLI::Range(kSmallest, kLargest));
  const auto addNumber = [&](const char* name, std::optional<double>& number, const char* text,
                             double lowest) {
    group->add_option(name, number, text)
        ->type_name("NUMBER")
        ->check(whyNoNumber)
        ->check(CLI::Range(lowest, kLargest));
  };
  ScaleChoice& scales = options.scales;
  addNumber("--acoustic-scale", scales.acoustic,
            "Scale of acoustic scores (that of the file, 0.1 in Kaldi's)", 0.0);
  addNumber("--lmscale", scales.language, "Scale of language model scores (that of the file)", 0.0);
  addNumber("--wdpenalty", scales.wordPenalty,
            "What each word adds to TOTAL, a natural logarithm (that of the file)", -kLargest);
  addNumber("--posterior-scale", scales.posterior,
            "What TOTAL is divided by for posteriors (lmscale where that is above 1)", kSmallest);
}

std::vector<CLI::Option*> addMatchingOptions(CLI::App& command, WordMatching& matching) {
  const auto ignore = [&matching](const std::vector<std::string>& words) {
    matching.ignored.insert(words.begin(), words.end());
  };
  CLI::Option* ignored = command.add_option_function<std::vector<std::string>>(
      "--ignore", ignore, "Words that do not count");
  ignored->type_name("WORD,...")->delimiter(',')->expected(1)->take_all();
  return {ignored,
          command.add_flag("--ignore-case", matching.ignoresCase, "Capitals are as small letters")};
}

}  // namespace quorbel
