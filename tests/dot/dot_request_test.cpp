#include "dot/dot_request.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

/// The parts of a request in brackets.
std::string requestIn(const std::vector<std::string>& arguments) {
  const auto request = dotRequest(arguments);
  if (!request) return "none";
  return "[" + request->format + "][" + request->output + "][" + request->description + "]";
}

TEST(DotRequest, HasTheViewersForm) {
  EXPECT_EQ(requestIn({"-Tpng", "-o", "graph.png", "quorbel_graph.dot"}),
            "[png][graph.png][quorbel_graph.dot]");
  EXPECT_EQ(requestIn({"-Tdot", "-o", "graph.dot", "quorbel_graph.dot"}),
            "[dot][graph.dot][quorbel_graph.dot]");
  for (const std::string format : {"svg", "ps", "ps2", "pdf"})
    EXPECT_EQ(requestIn({"-T" + format, "-o", "two words", "x"}), "[" + format + "][two words][x]");
}

TEST(DotRequest, HasNoOther) {
  EXPECT_EQ(requestIn({}), "none");
  EXPECT_EQ(requestIn({"-V"}), "none");
  EXPECT_EQ(requestIn({"-Tdia", "-o", "a.dia", "x.dot"}), "none");
  EXPECT_EQ(requestIn({"-T", "-o", "a", "x.dot"}), "none");
  EXPECT_EQ(requestIn({"-Tpng:cairo", "-o", "a", "x.dot"}), "none");
  EXPECT_EQ(requestIn({"-Tpng", "-oa", "x.dot"}), "none");
  EXPECT_EQ(requestIn({"-Tpng", "-o", "a"}), "none");
  EXPECT_EQ(requestIn({"-Tpng", "-o", "a", "x.dot", "y.dot"}), "none");
  EXPECT_EQ(requestIn({"-Tpng", "-o", "-a", "x.dot"}), "none");
  EXPECT_EQ(requestIn({"-Tpng", "-o", "", "x.dot"}), "none");
  EXPECT_EQ(requestIn({"-Tpng", "-o", "a", "-Gdpi=9"}), "none");
  EXPECT_EQ(requestIn({"-Tpng", "-o", "a", ""}), "none");
  EXPECT_EQ(requestIn({"-o", "a", "-Tpng", "x.dot"}), "none");
}

}  // namespace
}  // namespace quorbel
