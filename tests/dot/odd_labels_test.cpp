// Labels that Graphviz's own `dot` refuses, or cannot write.

#include <gtest/gtest.h>

#include <cstdlib>

#include "dot_runs.h"
#include "layout/dot_record.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

std::string withLabel(const std::string& label) {
  return "digraph G {\nrankdir=LR;\n0 -> 1 [ color=black,label = \"" + label +
         "\", comment=\"ID = 7\"];\n1 -> 2 [ color=black,label = \"end\", comment=\"ID = "
         "8\"];\n}\n";
}

TEST(OddLabels, AreDrawnAsTheSameLabelsEscaped) {
  const TemporaryFolder folder;
  const std::pair<const char*, const char*> labels[] = {
      {"say \"hi\"", "say \\\"hi\\\""}, {"a\\", "a\\\\"}, {"\"", "\\\""}, {"\\\\\"", "\\\\\\\""}};
  for (const auto& [bare, escaped] : labels) {
    for (const std::string format : {"png", "dot", "svg"}) {
      SCOPED_TRACE(bare);
      const DotRun run = ownRun(format, withLabel(bare));
      EXPECT_EQ(run.status, 0);
      expectSame(run, graphvizRun(format, withLabel(escaped)), format);
    }
  }
}

TEST(OddLabels, AddNoAttributes) {
  const TemporaryFolder folder;
  const std::string svg = ownRun("svg", withLabel("x\", URL=\"http://host/\", tooltip=\"y")).bytes;
  EXPECT_EQ(svg.find("<a "), std::string::npos);
  EXPECT_NE(svg.find(">x&quot;, URL=&quot;http://host/&quot;, tooltip=&quot;y</text>"),
            std::string::npos)
      << svg;
}

TEST(OddLabels, MayBeLong) {
  const TemporaryFolder folder;
  const std::string label(40000, 'x');
  const DotRun run = ownRun("dot", withLabel(label));
  ASSERT_EQ(run.status, 0) << run.said;
  std::size_t pos = run.bytes.find("\n\t0 -> 1") + 1;
  EXPECT_TRUE(takeDotRecord(run.bytes, pos).attributes.at("label") == label);
}

TEST(OddLabels, HaveTheLettersOfEveryScriptInPostscript) {
  const TemporaryFolder folder;
  const std::string text = "M\u00fcnchner m\u028fn\u00e7n\u0250 \u03b1\u03b2 \u0434\u0430";
  for (const char* format : {"ps", "ps2"}) {
    const DotRun run = ownRun(format, withLabel(text));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.said, "");
    folder.write("out.ps", run.bytes);
    ASSERT_EQ(std::system("gs -q -dNOPAUSE -dBATCH -sDEVICE=txtwrite -sOutputFile=text out.ps"), 0);
    EXPECT_NE(textOf("text").find(text), std::string::npos) << textOf("text");
  }
}

}  // namespace
}  // namespace quorbel
