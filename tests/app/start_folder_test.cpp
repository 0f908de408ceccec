#include "dialogs/start_folder.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

std::string fromWork(const std::string& latticeFolder) {
  return startFolder(latticeFolder, "/run/here", "/home/me");
}

TEST(StartFolder, IsThatOfTheLattice) { EXPECT_EQ(fromWork("/data/talks"), "/data/talks"); }

TEST(StartFolder, IsHomeBeforeAnyLattice) { EXPECT_EQ(fromWork(""), "/home/me"); }

TEST(StartFolder, OfARelativePathBeginsAtTheWorkingFolder) {
  EXPECT_EQ(fromWork("talks"), "/run/here/talks");
  EXPECT_EQ(fromWork("talks/may"), "/run/here/talks/may");
  EXPECT_EQ(fromWork("."), "/run/here");
  EXPECT_EQ(fromWork(".."), "/run");
  EXPECT_EQ(fromWork("./talks/../other/"), "/run/here/other");
}

TEST(StartFolder, IsHomeForALatticeAmongTheWorkFiles) {
  EXPECT_EQ(fromWork("/run/here"), "/home/me");
  EXPECT_EQ(fromWork("/run/here/"), "/home/me");
  EXPECT_EQ(fromWork("/run/./other/../here"), "/home/me");
  EXPECT_EQ(startFolder("/run/here", "/run/here/", "/home/me"), "/home/me");
}

TEST(StartFolder, MayLieAroundOrInTheWorkingFolder) {
  EXPECT_EQ(fromWork("/run"), "/run");
  EXPECT_EQ(fromWork("/run/here/talks"), "/run/here/talks");
  EXPECT_EQ(fromWork("/run/hereafter"), "/run/hereafter");
}

TEST(StartFolder, MayBeTheRoot) {
  EXPECT_EQ(fromWork("/"), "/");
  EXPECT_EQ(fromWork("../.."), "/");
  EXPECT_EQ(startFolder("/", "/", "/home/me"), "/home/me");
}

TEST(StartFolder, KeepsEveryByteOfAName) {
  EXPECT_EQ(fromWork("/data/gr\xf6\xdf"
                     "e \n"),
            "/data/gr\xf6\xdf"
            "e \n");
}

}  // namespace
}  // namespace quorbel
