#include "sound/matching_sound.h"

#include <gtest/gtest.h>

namespace quorbel {
namespace {

TEST(MatchingSoundPath, ReplacesTheExtension) {
  EXPECT_EQ(matchingSoundPath("/data/talk.lat"), "/data/talk.wav");
}

TEST(MatchingSoundPath, CutsAtTheFirstDotOfTheFileName) {
  EXPECT_EQ(matchingSoundPath("/data/talk.best.lat"), "/data/talk.wav");
}

TEST(MatchingSoundPath, CutsAtADotInAFoldersName) {
  EXPECT_EQ(matchingSoundPath("/data/run.1/a.lat"), "/data/run.wav");
}

TEST(MatchingSoundPath, CutsAtALeadingDot) {
  EXPECT_EQ(matchingSoundPath("./talk.lat"), ".wav");
  EXPECT_EQ(matchingSoundPath("/data/.lat"), "/data/.wav");
}

TEST(MatchingSoundPath, KeepsTheCutPathWhenTheDotIsLast) {
  EXPECT_EQ(matchingSoundPath("/data/talk."), "/data/talk.wav");
}

TEST(MatchingSoundPath, IsNoneWithoutADot) {
  EXPECT_EQ(matchingSoundPath("/data/talk"), std::nullopt);
  EXPECT_EQ(matchingSoundPath(""), std::nullopt);
}

}  // namespace
}  // namespace quorbel
