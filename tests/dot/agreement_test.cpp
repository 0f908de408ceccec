// Our own `dot` beside Graphviz's: the same layout byte for byte, the same picture pixel for pixel,
// the same words on standard error and the same exit status.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

#include "dot_runs.h"
#include "formats/dialect_writer.h"
#include "formats/lattice_input.h"
#include "measures/prune.h"
#include "temporary_folder.h"
#include "viewer_descriptions.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

void expectAgreement(const std::string& description, const std::string& settings = "",
                     const std::string& ownSettings = "") {
  for (const std::string format : {"png", "dot"}) {
    SCOPED_TRACE("-T" + format + " " + settings);
    expectSame(ownRun(format, description, settings + ownSettings),
               graphvizRun(format, description, settings), format);
  }
}

/// As the launcher starts it: one layout does for both.
void expectAgreementWithMemory(const std::string& description) {
  fs::create_directory("memory");
  expectAgreement(description, "", " QUORBEL_DRAWINGS=memory");
}

std::vector<fs::path> filesIn(const std::string& folder) {
  std::vector<fs::path> paths;
  for (const auto& entry : fs::directory_iterator(folder)) paths.push_back(entry.path());
  std::sort(paths.begin(), paths.end());
  return paths;
}

TEST(DotAgreement, OnEveryViewOfTheExamples) {
  const TemporaryFolder folder;
  int examples = 0;
  for (const fs::path& path : filesIn(EXAMPLES)) {
    if (path.extension() != ".lat" && path.extension() != ".htk") continue;
    ++examples;
    SCOPED_TRACE(path);
    const std::vector<std::string> views = viewerDescriptions(path);
    // One of them has ten times as much to compress as the others.
    const std::size_t count = fs::file_size(path) > 10000 ? 1 : views.size();
    for (std::size_t i = 0; i < count; ++i) expectAgreementWithMemory(views[i]);
  }
  EXPECT_GE(examples, 6);
}

TEST(DotAgreement, OnLatticesOfOthers) {
  const char* const samples = std::getenv("QUORBEL_SAMPLES");
  if (!samples) return;
  const TemporaryFolder folder;
  int drawn = 0;
  for (const fs::path& path : filesIn(samples)) {
    WordLattice lattice;
    if (!readWordLattice(path, lattice).empty()) continue;
    SCOPED_TRACE(path);
    constexpr std::size_t kDrawnQuickly = 30;
    if (lattice.links.size() > kDrawnQuickly && !pruneToLinks(lattice, kDrawnQuickly).empty())
      continue;
    std::string dialect;
    ASSERT_EQ(dialectText(lattice, dialect), "");
    expectAgreementWithMemory(viewerDescription(folder.write("imported.lat", dialect)));
    ++drawn;
  }
  EXPECT_GE(drawn, 1);
}

/// A word of letters of several scripts and what Graphviz gives a meaning; it refuses no such
/// label.
std::string randomWord(std::mt19937& random) {
  static const std::vector<std::string> pieces = {"a",
                                                  "word",
                                                  "\u00fc",
                                                  "\u00df",
                                                  "\u0259",
                                                  "\u03b1\u03b2",
                                                  "\u0434\u0430",
                                                  "\u4eac",
                                                  "\u05d0",
                                                  "\U0001f600",
                                                  "e\u0301",
                                                  "\\n",
                                                  "\\l",
                                                  "\\N",
                                                  "\\E",
                                                  "\\\\",
                                                  "\\&quot;",
                                                  "&amp;lt;",
                                                  "&amp;#65;",
                                                  "&lt;b&gt;",
                                                  "[",
                                                  "];",
                                                  "{",
                                                  "}",
                                                  "-&gt;",
                                                  "=",
                                                  " ",
                                                  "'",
                                                  "/*",
                                                  "//",
                                                  "#",
                                                  "&#10;"};
  std::string word;
  for (unsigned count = 1 + random() % 6; count > 0; --count)
    word += pieces[random() % pieces.size()];
  return word;
}

std::string randomLattice(std::mt19937& random) {
  const unsigned nodes = 2 + random() % 6;
  const unsigned links = 1 + random() % 8;
  std::string text = "N=" + std::to_string(nodes) + "\n";
  for (unsigned i = 0; i < nodes; ++i)
    text += "I=" + std::to_string(i) + " t=" + std::to_string(i) + "\n";
  for (unsigned i = 0; i < links; ++i) {
    const unsigned start = random() % nodes;
    // backward, in a circle, and one past the last
    const unsigned end = random() % 3 ? std::min(start + 1, nodes - 1) : random() % (nodes + 1);
    text += "J=" + std::to_string(i) + " S=" + std::to_string(start) + " E=" + std::to_string(end) +
            " W=<w in=\"" + randomWord(random) + "\" out=\"" + randomWord(random) + "\"/> a=-" +
            std::to_string(random() % 90) + "\n";
  }
  return text;
}

TEST(DotAgreement, OnRandomLattices) {
  constexpr unsigned kSeed = 1401;
  constexpr int kLattices = 100;
  const TemporaryFolder folder;
  std::mt19937 random(kSeed);
  for (int i = 0; i < kLattices; ++i) {
    const std::string lattice = randomLattice(random);
    SCOPED_TRACE("seed 1401, lattice " + std::to_string(i) + "\n" + lattice);
    const auto views = viewerDescriptions(folder.write("random.lat", lattice));
    expectAgreementWithMemory(views[random() % views.size()]);
    if (HasFailure()) return;
  }
}

/// A description with these links in a row.
std::string chainOf(const std::vector<std::string>& labels) {
  std::string text =
      "digraph G {\nrankdir=LR;\n"
      "0 [shape=doublecircle, color=darkorange, style=filled, fillcolor=lightgrey];\n";
  for (std::size_t i = 0; i < labels.size(); ++i)
    text += std::to_string(i) + " -> " + std::to_string(i + 1) + " [ color=black,label = \"" +
            labels[i] + "\", comment=\"ID = " + std::to_string(i) + "\"];\n";
  return text + "}\n";
}

TEST(DotAgreement, OnAPictureThatIsScaledDown) {
  const TemporaryFolder folder;
  const std::string description = chainOf(std::vector<std::string>(60, std::string(60, 'm')));
  expectAgreement(description);
  EXPECT_NE(ownRun("png", description).said.find("Scaling by"), std::string::npos);
}

TEST(DotAgreement, OnLettersThatAreNoUtf8) {
  const TemporaryFolder folder;
  expectAgreement(
      chainOf({"gr\xf6\xdf"
               "e",
               "end"}));
  EXPECT_NE(ownRun("dot", chainOf({"gr\xf6\xdf"
                                   "e",
                                   "end"}))
                .said,
            "");
}

TEST(DotAgreement, OnWhatIsSaidWhereNothingCanBeWritten) {
  const TemporaryFolder folder;
  std::ofstream("quorbel_graph.dot", std::ios::binary) << chainOf({"gr\xf6n", "end"});
  const std::string arguments = " -Tdot -o /dev/full quorbel_graph.dot 2>";
  std::system(("dot" + arguments + "graphviz").c_str());
  std::system((OWN_DOT + arguments + "own").c_str());
  EXPECT_NE(textOf("graphviz"), "");
  EXPECT_EQ(textOf("own"), textOf("graphviz"));
}

TEST(DotAgreement, OnDescriptionsOfOthersAndNone) {
  const TemporaryFolder folder;
  for (const char* description :
       {"", "digraph G {\nrankdir=LR;\n", "digraph {\na -> b [label=\"x\"];\n}\n",
        "graph { a -- b }\ngraph { c }\n", "rubbish"})
    expectAgreement(description);
}

TEST(DotAgreement, WhereSomethingIsMissing) {
  const TemporaryFolder folder;
  const std::string description = chainOf({"a", "b"});
  expectAgreement(description, "GVBINDIR=/none");
  expectAgreement(description, "FONTCONFIG_FILE=/none FONTCONFIG_PATH=/none");
  expectAgreement(description, "HOME=/none LC_ALL=de_DE.UTF-8");
  EXPECT_NE(ownRun("png", description, "GVBINDIR=/none").status, 0);
}

TEST(DotAgreement, WhereNothingCanBeWritten) {
  const TemporaryFolder folder;
  const std::string description = chainOf({"a", "b"});
  fs::create_directory("memory");
  for (const std::string memory : {"", " QUORBEL_DRAWINGS=memory"}) {
    expectAgreement(description, "ulimit -f 1; trap '' XFSZ;" + memory);
    EXPECT_LE(ownRun("dot", description, "ulimit -f 1; trap '' XFSZ;" + memory).bytes.size(),
              1024U);
  }
  for (const char* output : {"/dev/full", "/none/out", "."}) {
    for (const char* format : {"png", "svg"}) {
      const auto run = [&](const std::string& program, const std::string& log) {
        return std::system(
            (program + " -T" + format + " -o " + output + " quorbel_graph.dot 2>" + log).c_str());
      };
      EXPECT_EQ(run(OWN_DOT, "own"), run("dot", "graphviz"));
      EXPECT_EQ(textOf("own"), textOf("graphviz"));
    }
  }
}

TEST(DotAgreement, OnOtherOptions) {
  const TemporaryFolder folder;
  folder.write("x.dot", chainOf({"a", "b"}));
  for (const char* options : {"-V", "-Tplain x.dot", "-Tdia -o x.dia x.dot", "-Tdot -Gdpi=9 x.dot",
                              "-Tsvg x.dot x.dot", "-Kneato -Tdot x.dot", "-Tdot -o", "-Tnone"}) {
    const auto run = [&](const std::string& program, const std::string& log) {
      return std::system((program + " " + options + " >" + log + " 2>&1 </dev/null").c_str());
    };
    EXPECT_EQ(run(OWN_DOT, "own"), run("dot", "graphviz")) << options;
    EXPECT_EQ(textOf("own"), textOf("graphviz")) << options;
  }
}

TEST(DotAgreement, LeavesToTheNextOnTheSearchPathWhatIsNotItsOwn) {
  const TemporaryFolder folder;
  folder.write("x.dot", chainOf({"a"}));
  fs::create_directories("bin/dot.folder");
  fs::create_symlink(OWN_DOT, "bin/dot");
  const std::string path =
      "PATH=" + fs::path(OWN_DOT).parent_path().string() + ":" + (folder.path() / "bin").string();
  EXPECT_EQ(std::system((path + ":$PATH dot -Tplain -o out x.dot").c_str()), 0);
  EXPECT_EQ(textOf("out").substr(0, 6), "graph ");
  EXPECT_EQ(WEXITSTATUS(std::system((path + " dot -V 2>said").c_str())), 127);
  EXPECT_EQ(textOf("said"), "dot: Graphviz's own program dot is missing\n");
  EXPECT_EQ(std::system((path + " dot -Tdot -o out x.dot").c_str()), 0);
}

}  // namespace
}  // namespace quorbel
