#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "formats/lattice_text.h"
#include "formats/random_lattice.h"
#include "measures/best_paths.h"
#include "measures/few_words.h"
#include "words/spoken_words.h"

namespace quorbel {
namespace {

constexpr int kSentenceRounds = 2000;

using Sentence = std::vector<std::string>;

std::vector<double> totalsOf(const WordLattice& lattice) {
  return *scoresNamed(lattice, kTotalName);
}

Sentence sentenceOn(const WordLattice& lattice, const std::vector<std::size_t>& links) {
  Sentence sentence;
  for (const std::size_t link : links)
    if (isSpoken(lattice.links[link].word.text)) sentence.push_back(lattice.links[link].word.text);
  return sentence;
}

std::vector<LatticePath> bestSentences(const WordLattice& lattice, int count) {
  std::vector<LatticePath> paths;
  EXPECT_EQ(forBestSentences(lattice, totalsOf(lattice), count,
                             [&](const LatticePath& path) {
                               paths.push_back(path);
                               return true;
                             }),
            "");
  return paths;
}

/// The sentences of all paths, with the best score of each.
std::map<Sentence, double> enumerated(const RandomLattice& plain, const WordLattice& lattice) {
  std::map<Sentence, double> best;
  for (const std::vector<std::size_t>& links : allPathsIn(lattice, plain)) {
    double score = 0.0;
    for (const std::size_t link : links) score += lattice.links[link].total;
    const auto [known, isNew] = best.emplace(sentenceOn(lattice, links), score);
    if (!isNew) known->second = std::max(known->second, score);
  }
  return best;
}

/// That each path leads from start to end, has the score that it says and the words that no other
/// has, and that none is better than the one before it.
void expectSentences(const WordLattice& lattice, const std::vector<LatticePath>& paths) {
  std::set<Sentence> different;
  double last = std::numeric_limits<double>::infinity();
  for (const LatticePath& path : paths) {
    int node = 0;
    double score = 0.0;
    for (const std::size_t link : path.links) {
      ASSERT_EQ(lattice.links[link].start, node);
      node = lattice.links[link].end;
      score += lattice.links[link].total;
    }
    ASSERT_EQ(slot(node) + 1, lattice.nodes.size());
    ASSERT_EQ(path.score, score);
    ASSERT_LE(score, last + kExact);
    last = score;
    ASSERT_TRUE(different.insert(sentenceOn(lattice, path.links)).second);
  }
}

TEST(BestSentences, AreThoseOfAnEnumeration) {
  constexpr unsigned kSeed = 8301;
  SCOPED_TRACE("seed 8301");
  std::mt19937 random(kSeed);
  std::size_t repeats = 0;
  for (int round = 0; round < kSentenceRounds; ++round) {
    WordLattice lattice;
    const RandomLattice plain = latticeOfFewWords(random, round, lattice);
    const std::map<Sentence, double> expected = enumerated(plain, lattice);
    std::vector<double> scores;
    for (const auto& [sentence, score] : expected) scores.push_back(score);
    std::sort(scores.rbegin(), scores.rend());
    repeats += allPaths(plain).size() - scores.size();
    const int count = round % 2 == 0 ? 1000 : 1 + round % 5;
    const std::vector<LatticePath> paths = bestSentences(lattice, count);
    ASSERT_EQ(paths.size(), std::min(scores.size(), slot(count))) << plain.text();
    expectSentences(lattice, paths);
    for (std::size_t rank = 0; rank < paths.size(); ++rank) {
      ASSERT_NEAR(paths[rank].score, scores[rank], kExact) << plain.text();
      ASSERT_NEAR(paths[rank].score, expected.at(sentenceOn(lattice, paths[rank].links)), kExact)
          << plain.text();
    }
    std::vector<LatticePath> best;
    ASSERT_EQ(findBestPaths(lattice, totalsOf(lattice), 1, best), "");
    ASSERT_EQ(paths.at(0).links, best.at(0).links);
    if (HasFatalFailure()) FAIL() << plain.text();
  }
  EXPECT_GT(repeats, 5000U);
}

/// The sentences of walks of at most so many links, with the best score of each.
std::map<Sentence, double> sentencesOfWalks(const WordLattice& lattice, std::size_t mostLinks) {
  struct Saying {
    double score = 0.0;
    int node = 0;
    Sentence sentence = {};
  };
  std::vector<Saying> walks(1);
  std::map<Sentence, double> best;
  for (std::size_t length = 0; length <= mostLinks; ++length) {
    std::vector<Saying> next;
    for (const Saying& walk : walks) {
      if (slot(walk.node) + 1 == lattice.nodes.size()) {
        const auto [known, isNew] = best.emplace(walk.sentence, walk.score);
        if (!isNew) known->second = std::max(known->second, walk.score);
      }
      for (const WordLink& link : lattice.links) {
        if (link.start != walk.node) continue;
        next.push_back({walk.score + link.total, link.end, walk.sentence});
        if (isSpoken(link.word.text)) next.back().sentence.push_back(link.word.text);
      }
    }
    walks = std::move(next);
  }
  return best;
}

TEST(BestSentences, OfCyclicNetworksAreThoseOfAllWalks) {
  constexpr unsigned kSeed = 8302;
  constexpr std::size_t kMostLinks = 8;
  SCOPED_TRACE("seed 8302");
  std::mt19937 random(kSeed);
  RandomOptions options;
  options.isCyclic = true;
  int compared = 0;
  for (int round = 0; round < kSentenceRounds; ++round) {
    options.hasTies = round % 2 == 0;
    const std::string text = randomLattice(random, options).text();
    WordLattice lattice;
    readText(text, lattice);
    if (lattice.links.size() > 9) continue;  // there would be too many walks
    sayLittle(lattice, random);
    const int count = 1 + round % 20;
    const std::vector<LatticePath> paths = bestSentences(lattice, count);
    const std::map<Sentence, double> walks = sentencesOfWalks(lattice, kMostLinks);
    std::vector<double> scores;
    for (const auto& [sentence, score] : walks) scores.push_back(score);
    std::sort(scores.rbegin(), scores.rend());
    ASSERT_GE(paths.size(), std::min(scores.size(), slot(count))) << text;
    expectSentences(lattice, paths);
    for (std::size_t rank = 0; rank < paths.size(); ++rank) {
      if (rank < scores.size()) {
        ASSERT_GE(paths[rank].score, scores[rank] - kExact) << text;
      }
      if (paths[rank].links.size() > kMostLinks) continue;
      ASSERT_GE(paths[rank].score, walks.at(sentenceOn(lattice, paths[rank].links)) - kExact)
          << text;
      ++compared;
    }
    if (HasFatalFailure()) FAIL() << text;
  }
  EXPECT_GT(compared, 1000);
}

/// A lattice whose words can each be said in several ways, with pauses or without.
std::string wideLattice(std::mt19937& random, int words) {
  const auto cost = [&] { return "-" + std::to_string(random() % 1000) + ".5"; };
  std::string links;
  int count = 0;
  const auto add = [&](int start, int end, const std::string& word) {
    links += "J=" + std::to_string(count++) + " S=" + std::to_string(start) +
             " E=" + std::to_string(end) + " W=" + word + " a=" + cost() + "\n";
  };
  for (int i = 0; i < words; ++i) {
    for (const int middle : {3 * i + 1, 3 * i + 2}) {
      for (const char* word : {"a", "b"}) add(3 * i, middle, word);
      for (const char* word : {"!NULL", "<sil>"}) add(middle, 3 * i + 3, word);
    }
  }
  std::string nodes;
  for (int i = 0; i <= 3 * words; ++i) nodes += "I=" + std::to_string(i) + "\n";
  return "N=" + std::to_string(3 * words + 1) + " L=" + std::to_string(count) + "\n" + nodes +
         links;
}

/// The scores of all sentences of a wide lattice, the best first: each word can be chosen for
/// itself.
std::vector<double> scoresOfWide(const WordLattice& lattice, std::size_t words) {
  std::vector<double> total(lattice.links.size());
  for (const WordLink& link : lattice.links) total[slot(link.id)] = link.total;
  std::vector<double> scores = {0.0};
  for (std::size_t word = 0; word < words; ++word) {
    const double* const at = &total[8 * word];
    const double first = std::max(at[2], at[3]);
    const double second = std::max(at[6], at[7]);
    std::vector<double> longer;
    for (const double score : scores)
      for (const double best :
           {std::max(at[0] + first, at[4] + second), std::max(at[1] + first, at[5] + second)})
        longer.push_back(score + best);
    scores = std::move(longer);
  }
  std::sort(scores.rbegin(), scores.rend());
  return scores;
}

TEST(BestSentences, AreTheBestAlsoWhereTheSearchLetsCandidatesGo) {
  constexpr unsigned kSeed = 8303;
  constexpr int kWords = 13;  // 2^13 sentences, of 8^13 paths
  SCOPED_TRACE("seed 8303");
  std::mt19937 random(kSeed);
  for (int round = 0; round < 20; ++round) {
    const std::string text = wideLattice(random, kWords);
    WordLattice lattice;
    readText(text, lattice);
    const std::vector<double> expected = scoresOfWide(lattice, kWords);
    const int count = round % 2 == 0 ? 60 : 900;
    const std::vector<LatticePath> paths = bestSentences(lattice, count);
    ASSERT_EQ(paths.size(), slot(count));
    expectSentences(lattice, paths);
    for (std::size_t rank = 0; rank < paths.size(); ++rank)
      ASSERT_NEAR(paths[rank].score, expected.at(rank), kExact) << text;
  }
}

TEST(BestSentences, AreFoundAmongAnyNumberOfPathsThatSayTheSame) {
  constexpr unsigned kSeed = 8304;
  constexpr int kWords = 60;
  SCOPED_TRACE("seed 8304");
  std::mt19937 random(kSeed);
  WordLattice lattice;
  readText(wideLattice(random, kWords), lattice);
  const std::vector<LatticePath> paths = bestSentences(lattice, 3000);
  EXPECT_EQ(paths.size(), 3000U);
  expectSentences(lattice, paths);
}

TEST(BestSentences, OfASingleNodeAreTheEmptyOne) {
  WordLattice lattice;
  readText("N=1 L=0\nI=0\n", lattice);
  for (const int count : {1, 3}) {
    const std::vector<LatticePath> paths = bestSentences(lattice, count);
    ASSERT_EQ(paths.size(), 1U);
    EXPECT_TRUE(paths[0].links.empty());
  }
}

TEST(BestSentences, GoAroundACycleWithinALimit) {
  WordLattice lattice;
  readText(
      "start=0 end=2\nN=3 L=4\nI=0\nI=1\nI=2\nJ=0 S=0 E=1 W=a a=-1\nJ=1 S=1 E=1 W=b a=-1\n"
      "J=2 S=1 E=2 W=c a=-1\nJ=3 S=0 E=2 W=d a=-50000\n",
      lattice);
  std::size_t count = 0;
  std::size_t longest = 0;
  const auto take = [&](const LatticePath& path) {
    ++count;
    longest = std::max(longest, path.links.size());
    return true;
  };
  ASSERT_EQ(forBestSentences(lattice, totalsOf(lattice), 100000, take), "");
  // The last turn is taken behind at most 3 + 10000 words less one; "c" follows it.
  EXPECT_EQ(longest, 10000U + 4U);
  EXPECT_EQ(count, 10002U + 2U);
}

}  // namespace
}  // namespace quorbel
