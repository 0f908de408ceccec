#include "decoder_lattice.h"

#include <algorithm>
#include <fstream>
#include <random>
#include <utility>
#include <vector>

namespace quorbel {
namespace {

constexpr double kLanguageScale = 12.0;
constexpr double kWordPenalty = -4.0;

/// The links, sorted by their end nodes, as decoders write them.
std::vector<std::pair<int, int>> randomLinks(int nodeCount, int linkCount, int perWord,
                                             std::mt19937& random) {
  const int last = nodeCount - 1;
  const int layers = (nodeCount - 2 + perWord - 1) / perWord;
  const auto first = [&](int layer) { return std::min(1 + layer * perWord, last); };
  const auto pick = [&](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  const auto inLayer = [&](int layer) {
    return layer < 0 ? 0 : layer >= layers ? last : pick(first(layer), first(layer + 1) - 1);
  };
  std::vector<std::pair<int, int>> links;  // end, start
  for (int node = 1; node < last; ++node) {
    const int layer = (node - 1) / perWord;
    links.emplace_back(node, inLayer(layer - 1));
    links.emplace_back(inLayer(layer + 1), node);
  }
  while (static_cast<int>(links.size()) < linkCount) {
    const int layer = pick(0, layers);
    links.emplace_back(inLayer(layer), inLayer(layer - 1));
  }
  std::sort(links.begin(), links.end());
  return links;
}

}  // namespace

DecoderLattice writeDecoderLattice(int nodeCount, int linkCount, int perWord) {
  constexpr double kSecondsPerWord = 0.3;
  constexpr unsigned kSeed = 20268;
  const std::string stem = "decoder" + std::to_string(nodeCount);
  const DecoderLattice files{stem + ".slf", stem + ".fst.txt"};
  std::mt19937 random(kSeed);
  const std::vector<std::pair<int, int>> links = randomLinks(nodeCount, linkCount, perWord, random);
  std::uniform_int_distribution<int> word(1, 20000);
  std::uniform_real_distribution<double> acoustic(-2400.0, -2300.0);
  std::uniform_real_distribution<double> language(-9.0, -0.5);

  std::ofstream slf(files.slfFile);
  std::ofstream fst(files.fstFile);
  slf.setf(std::ios::fixed);
  slf.precision(2);
  slf << "VERSION=1.0\nUTTERANCE=" << stem << "\nlmscale=" << kLanguageScale
      << "  wdpenalty=" << kWordPenalty << "\nacscale=1.00\nN=" << nodeCount
      << "  L=" << links.size() << "\n";
  for (int node = 0; node < nodeCount; ++node) {
    const int layer = (node + perWord - 1) / perWord;
    slf << "I=" << node << "\tt=" << layer * kSecondsPerWord << "\tW=";
    if (node == 0 || node == nodeCount - 1)
      slf << "!NULL\n";
    else
      slf << "WORD" << word(random) << "\tv=1\n";
  }
  for (std::size_t i = 0; i < links.size(); ++i) {
    const auto [end, start] = links[i];
    const double a = acoustic(random);
    const double l = language(random);
    slf << "J=" << i << "\tS=" << start << "\tE=" << end << "\ta=" << a << "\tl=" << l << "\n";
    fst << start << " " << end << " " << i + 1 << " " << i + 1 << " "
        << -(a + kLanguageScale * l + (end == nodeCount - 1 ? 0.0 : kWordPenalty)) << "\n";
  }
  fst << nodeCount - 1 << "\n";
  return files;
}

std::string writeKaldiArchive(const std::string& path, std::size_t bytes) {
  constexpr int kWords = 40;
  constexpr int kAlternatives = 5;
  constexpr unsigned kSeed = 20269;
  std::mt19937 random(kSeed);
  const auto pick = [&](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  std::ofstream archive(path);
  std::string name;
  std::size_t written = 0;
  for (int utterance = 0; written < bytes; ++utterance) {
    name = "utterance-" + std::to_string(utterance);
    std::string text = name + " \n";
    for (int word = 0; word < kWords; ++word) {
      const int frames = pick(20, 40);
      for (int i = 0; i < kAlternatives; ++i) {
        text += std::to_string(word) + "\t" + std::to_string(word + 1) + "\t" +
                std::to_string(pick(1, 20000)) + "\t" + std::to_string(pick(0, 900) / 100.0) + "," +
                std::to_string(pick(200000, 240000) / 100.0) + ",";
        for (int frame = 0; frame < frames; ++frame)
          text += (frame == 0 ? "" : "_") + std::to_string(pick(1, 9999));
        text += "\n";
      }
    }
    text += std::to_string(kWords) + "\t1.5,0,\n\n";
    archive << text;
    written += text.size();
  }
  return name;
}

}  // namespace quorbel
