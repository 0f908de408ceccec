// How a line falls into fields, and that its XML words are those that the viewer's reader takes.

#include "formats/slf_line.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "formats/dialect_word.h"
#include "formats/lattice_text.h"
#include "lattice/htk_reader.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

/// The fields of a line, each as "key=value", fragments in braces; then the error.
std::string fieldsOf(const std::string& text) {
  SlfLine line(text);
  SlfToken token;
  std::string error;
  std::string fields;
  while (line.next(token, error)) {
    const bool isFragment = token.form == SlfToken::Form::Fragment;
    const std::string value(token.value);
    fields += fields.empty() ? "" : "|";
    if (token.form != SlfToken::Form::Stray) fields += std::string(token.key) + "=";
    fields += isFragment ? "{" + value + "}" : value;
  }
  return error.empty() ? fields : fields + " error: " + error;
}

TEST(SlfLine, TakesTheWordsThatTheViewerTakes) {
  for (const auto& [line, fields] : {
           std::pair<const char*, const char*>{"W=<w in='a'/> a=1", "W={<w in='a'/>}|a=1"},
           {"W=<w>a</w> x <b/> a=1", "W={<w>a</w> x <b/>}|a=1"},
           {"W=<w in='a'/>>> x <b/> c=1", "W={<w in='a'/>>> x <b/> c=1}"},
           // No XML, and no fields of the standard format behind the first word.
           {"W=<a>>> x <b> c=1", "W={<a>>> x <b> c=1}"},
           {"W=<a>> x <b=2", "W={<a>> x <}|b=2"},
       })
    EXPECT_EQ(fieldsOf(line), fields) << line;
}

TEST(SlfLine, TakesMarkupAsAPlainWordWhereFieldsFollow) {
  for (const auto& [line, fields] : {
           std::pair<const char*, const char*>{"W=<s> a=1", "W=<s>|a=1"},
           {"W=<s", "W=<s"},
           {"W=<s>> note=<x", "W=<s>>|note=<x"},
           {"W=<s>> # <x", "W=<s>>"},
           {"W=<s> v=<1> a=2", "W=<s>|v=<1>|a=2"},
           {"W=<s> W=<w in='a'/>", "W=<s>|W=<w|in='a'/>"},  // one chance for each line
       })
    EXPECT_EQ(fieldsOf(line), fields) << line;
}

TEST(SlfLine, AgreesWithTheViewerOnEveryFragment) {
  constexpr unsigned kSeed = 12015;
  SCOPED_TRACE("seed 12015");
  const std::vector<std::string> pieces = {"<",    ">",   "<a>", "</a>", "<b in='w'/>", " ", "=",
                                           "c=1 ", "d= ", "x",   "#",    "/",           "&"};
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
  const TemporaryFolder folder;
  int fragments = 0;
  for (int round = 0; round < 2000; ++round) {
    std::string text = "<";
    for (std::size_t i = 1 + piece(random); i > 0; --i) text += pieces[piece(random)];
    text += round % 2 == 0 ? "</a>" : "";
    folder.write("one.lat", "N=2\nJ=0 W=" + text + "\n");
    Graph graph;
    const bool isRead = readHtkLattice(graph, "one.lat").empty();
    SlfLine line(text = "W=" + text);
    SlfToken token;
    std::string error;
    ASSERT_TRUE(line.next(token, error)) << text;
    const bool isFragment = token.form == SlfToken::Form::Fragment;
    fragments += isFragment;
    if (isFragment && isRead) {
      ASSERT_EQ(token.value, graph.adjacency->outgoing[1].at(0).word) << text;
    }
    if (isRead && wordOfFragment(graph.adjacency->outgoing[1].at(0).word)) {
      ASSERT_TRUE(isFragment) << text;
    }
  }
  EXPECT_GT(fragments, 100);
}

TEST(SlfLine, WordThatWouldSwallowTheFieldsBehindItIsWrittenAnew) {
  const std::string start = "N=2 L=1\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 a=-2 W=";
  for (const auto& [word, written] :
       {std::pair<const char*, const char*>{"<w in='a'/>>> x <b/> c=1", "<w in='a'/>"},
        {"<a>>> x <b> c=1", "<w in='&lt;a&gt;&gt;&gt; x &lt;b&gt; c=1'/>"}}) {
    const std::string text = start + word + "\n";
    const std::string dialect = importOf(text);
    EXPECT_NE(dialect.find("J=0 S=0 E=1 W=" + std::string(written) + " TOTAL=-2 a=-2 post=0\n"),
              std::string::npos)
        << dialect;
    EXPECT_EQ(importOf(dialect), dialect);
  }
}

}  // namespace
}  // namespace quorbel
