// Lattices of real toolkits: each is imported, or refused for a reason that is true, and the viewer
// finds the recogniser's best path in it. Needs QUORBEL_SAMPLES, the folder with them.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "formats/dialect_writer.h"
#include "formats/lattice_input.h"
#include "formats/lattice_text.h"
#include "measures/best_paths.h"
#include "measures/level_shift.h"
#include "temporary_folder.h"
#include "words/word_text.h"

namespace quorbel {
namespace {

std::vector<std::filesystem::path> samples() {
  std::vector<std::filesystem::path> paths;
  const char* folder = std::getenv("QUORBEL_SAMPLES");
  if (!folder) return paths;
  for (const auto& entry : std::filesystem::directory_iterator(folder))
    if (entry.path().filename() != "sources.txt") paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  return paths;
}

/// What a refusal must have to do with the file.
bool isTrueOf(const std::string& error, const std::string& bytes) {
  if (error.find("SUBLAT") != std::string::npos) return bytes.find("SUBLAT=") != std::string::npos;
  if (error.find("binary") != std::string::npos) return bytes.find('~') != std::string::npos;
  // No lattice at all, such as a table of words.
  if (error.find(": line 1: ") != std::string::npos &&
      error.find(" is no field KEY=VALUE") != std::string::npos)
    return bytes.substr(0, bytes.find('\n')).find('=') == std::string::npos;
  return false;
}

TEST(Samples, ImportAndAgreeWithTheViewer) {
  ASSERT_FALSE(samples().empty());
  const TemporaryFolder folder;
  for (const std::filesystem::path& path : samples()) {
    SCOPED_TRACE(path.filename());
    WordLattice lattice;
    const std::string error = readWordLattice(path, lattice);
    if (!error.empty()) {
      EXPECT_TRUE(isTrueOf(error, textOf(path))) << error;
      continue;
    }
    std::string dialect;
    ASSERT_EQ(dialectText(lattice, dialect), "");
    const ViewerView view = openInViewer(dialect);
    ASSERT_EQ(view.error, "");
    EXPECT_EQ(view.scoreName, "TOTAL");
    std::vector<std::string> words;
    for (const WordLink& link : lattice.links) words.push_back(drawableText(link.word.text));
    EXPECT_EQ(view.labels, words);

    std::vector<LatticePath> paths;
    const std::string noPath = findBestPaths(lattice, *scoresNamed(lattice, "TOTAL"), 1, paths);
    ASSERT_EQ(noPath, "");
    EXPECT_NEAR(view.cost, levelShiftOf(lattice).ofPath - paths[0].score, 1e-6);
    EXPECT_EQ(view.words, drawableText(wordsOf(lattice, paths[0])));
    std::cout << path.filename() << ": " << paths[0].score << " " << view.words << "\n";
  }
}

/// Kaldi's lattice of an utterance is HTK's of it, with the costs of a lattice tool's usual scale,
/// which rank the paths as HTK's scales do.
TEST(Samples, OfOneUtteranceAreTheSameInBothFormats) {
  const std::filesystem::path folder = std::getenv("QUORBEL_SAMPLES");
  ReadingOptions options;
  options.words = std::make_shared<WordTable>(folder / "theanolm_words.txt");
  WordLattice kaldi;
  ASSERT_EQ(readWordLattice(folder / "theanolm_kaldi_24n_39l.lat", kaldi, options), "");
  WordLattice htk;
  ASSERT_EQ(readWordLattice(folder / "theanolm_24n_39l.slf", htk), "");
  EXPECT_EQ(kaldi.utterance, htk.utterance);
  EXPECT_EQ(kaldi.notes, std::vector<std::string>());
  ASSERT_EQ(kaldi.nodes.size(), htk.nodes.size());
  const auto linksOf = [](const WordLattice& lattice) {
    std::vector<std::string> links;
    for (const WordLink& link : lattice.links) {
      const bool isWord = link.word.text[0] != '!';  // !ENTER and !EXIT are none to Kaldi
      std::string text = std::to_string(link.start) + " " + std::to_string(link.end) + " " +
                         (isWord ? link.word.text : kNullWord);
      for (const NamedScore& score : link.scores)
        text += " " + lattice.scoreNames[slot(score.name)] + "=" + std::to_string(score.value);
      links.push_back(text);
    }
    std::sort(links.begin(), links.end());
    return links;
  };
  EXPECT_EQ(linksOf(kaldi), linksOf(htk));
  const auto bestOf = [](const WordLattice& lattice) {
    std::vector<LatticePath> paths;
    EXPECT_EQ(findBestPaths(lattice, *scoresNamed(lattice, "TOTAL"), 1, paths), "");
    return wordsOf(lattice, paths.at(0));
  };
  EXPECT_EQ(bestOf(kaldi), "it didn't elaborate");
  EXPECT_EQ(bestOf(htk), "!ENTER it didn't elaborate !EXIT");
}

}  // namespace
}  // namespace quorbel
