#include "dot_runs.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "decoded_picture.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

DotRun run(const std::string& program, const std::string& format, const std::string& description,
           const std::string& settings) {
  std::ofstream("quorbel_graph.dot", std::ios::binary) << description;
  std::filesystem::remove("out");
  const int status = std::system(
      (settings + " " + program + " -T" + format + " -o out quorbel_graph.dot >said 2>&1").c_str());
  return {textOf("out"), textOf("said"), WIFEXITED(status) ? WEXITSTATUS(status) : -1};
}

}  // namespace

DotRun graphvizRun(const std::string& format, const std::string& description,
                   const std::string& settings) {
  return run("dot", format, description, settings);
}

DotRun ownRun(const std::string& format, const std::string& description,
              const std::string& settings) {
  return run(OWN_DOT, format, description, settings);
}

void expectSame(const DotRun& own, const DotRun& graphviz, const std::string& format) {
  EXPECT_EQ(own.status, graphviz.status);
  EXPECT_EQ(own.said, graphviz.said);
  const bool isOther = own.bytes != graphviz.bytes;
  if (!isOther || format != "png" || graphviz.bytes.empty() || own.bytes.empty()) {
    EXPECT_FALSE(isOther) << own.bytes << "is not\n" << graphviz.bytes;
    return;
  }
  const DecodedPicture ownPicture = decodedPicture(own.bytes);
  const DecodedPicture picture = decodedPicture(graphviz.bytes);
  EXPECT_EQ(ownPicture.width, picture.width);
  EXPECT_EQ(ownPicture.height, picture.height);
  EXPECT_TRUE(ownPicture.pixels == picture.pixels) << "other pixels";
}

}  // namespace quorbel
