#include "dot/drawing_memory.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <thread>

#include "temporary_folder.h"

namespace quorbel {
namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t kLimit = 10000;

/// What the memory has for it: bytes and what was said.
std::string recalled(const DrawingMemory& memory, const std::string& format,
                     const std::string& description) {
  const auto drawing = memory.recall(format, description);
  return drawing ? drawing->bytes + "|" + drawing->said : "nothing";
}

std::uintmax_t sizeOf(const fs::path& folder) {
  std::uintmax_t size = 0;
  for (const auto& entry : fs::directory_iterator(folder)) size += entry.file_size();
  return size;
}

std::size_t countIn(const fs::path& folder) {
  return static_cast<std::size_t>(
      std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

/// Makes every file as old as it looks, so that the next use is later whatever the clock's steps.
void age(const fs::path& folder) {
  for (const auto& entry : fs::directory_iterator(folder))
    fs::last_write_time(entry, entry.last_write_time() - std::chrono::seconds(10));
}

TEST(DrawingMemory, KnowsDrawingsByFormatAndWholeDescription) {
  const TemporaryFolder folder;
  const DrawingMemory memory(folder.path(), kLimit);
  const std::string bytes("\0\n \xff", 4);
  memory.remember("png", "a description\n", {bytes, "Warning: w\n"});
  memory.remember("dot", "a description\n", {"layout", ""});
  EXPECT_EQ(recalled(memory, "png", "a description\n"), bytes + "|Warning: w\n");
  EXPECT_EQ(recalled(memory, "dot", "a description\n"), "layout|");
  EXPECT_EQ(recalled(memory, "svg", "a description\n"), "nothing");
  EXPECT_EQ(recalled(memory, "png", "a description"), "nothing");
  EXPECT_TRUE(memory.knows("dot", "a description\n"));
  EXPECT_FALSE(memory.knows("dot", "b description\n"));
  EXPECT_EQ(recalled(DrawingMemory(folder.path(), kLimit), "dot", "a description\n"), "layout|");
}

TEST(DrawingMemory, TakesNoOtherDescriptionForOneThatSharesItsFile) {
  const TemporaryFolder folder;
  const DrawingMemory memory(folder.path(), kLimit);
  memory.remember("dot", "one", {"1", ""});
  const fs::path file = fs::directory_iterator(folder.path())->path();
  memory.remember("dot", "two", {"2", ""});
  for (const auto& entry : fs::directory_iterator(folder.path()))
    if (entry.path() != file) fs::rename(entry.path(), file);
  EXPECT_EQ(recalled(memory, "dot", "one"), "nothing");
  EXPECT_FALSE(memory.knows("dot", "one"));
}

TEST(DrawingMemory, ForgetsThoseThatWereNotUsedForLongest) {
  const TemporaryFolder folder;
  const DrawingMemory memory(folder.path(), kLimit);
  for (const char* name : {"first", "second", "third"}) {
    memory.remember("png", name, {std::string(3000, 'x'), ""});
    age(folder.path());
  }
  EXPECT_NE(recalled(memory, "png", "first"), "nothing");
  EXPECT_TRUE(memory.knows("png", "second")) << "which is no use";
  memory.remember("png", "fourth", {std::string(3000, 'y'), ""});
  EXPECT_TRUE(memory.knows("png", "first"));
  EXPECT_FALSE(memory.knows("png", "second"));
  EXPECT_TRUE(memory.knows("png", "third"));
  EXPECT_TRUE(memory.knows("png", "fourth"));
}

TEST(DrawingMemory, StaysWithinItsLimitToTheByte) {
  const TemporaryFolder folder;
  const DrawingMemory memory(folder.path(), kLimit);
  memory.remember("png", "d", {std::string(1000, 'x'), ""});
  const std::uintmax_t head = sizeOf(folder.path()) - 1000;  // whose count may take a byte more
  memory.remember("png", "d", {std::string(kLimit - head, 'x'), ""});
  EXPECT_EQ(sizeOf(folder.path()), kLimit);
  memory.remember("png", "e", {std::string(kLimit - head + 1, 'x'), ""});
  EXPECT_FALSE(memory.knows("png", "e")) << "larger than all there may be";
  EXPECT_TRUE(memory.knows("png", "d")) << "for which nothing was forgotten";
  memory.remember("png", "f", {"x", ""});
  EXPECT_FALSE(memory.knows("png", "d"));
  EXPECT_TRUE(memory.knows("png", "f"));
}

TEST(DrawingMemory, DoesNotSeeWhatIsNotComplete) {
  const TemporaryFolder folder;
  const DrawingMemory memory(folder.path(), kLimit);
  memory.remember("png", "description", {std::string(500, 'x'), "said"});
  const fs::path file = fs::directory_iterator(folder.path())->path();
  const std::string whole = textOf(file);
  for (std::size_t length = 0; length < whole.size(); length += 7) {
    fs::resize_file(file, length);
    EXPECT_EQ(recalled(memory, "png", "description"), "nothing") << length;
    folder.write(file.filename(), whole);
  }
  folder.write(file.filename(), whole + "x");
  EXPECT_EQ(recalled(memory, "png", "description"), "nothing");
  folder.write(file.filename(), whole);
  EXPECT_NE(recalled(memory, "png", "description"), "nothing");
}

TEST(DrawingMemory, ClearsAwayWhatAnEndedProcessLeft) {
  const TemporaryFolder folder;
  const DrawingMemory memory(folder.path(), kLimit);
  folder.write("unfinished", std::string(9000, 'x'));
  age(folder.path());
  memory.remember("png", "description", {std::string(3000, 'x'), ""});
  EXPECT_TRUE(memory.knows("png", "description"));
  EXPECT_EQ(countIn(folder.path()), 1U);
}

TEST(DrawingMemory, LeavesRoomOnTheDevice) {
  const TemporaryFolder folder;
  const std::uintmax_t available = fs::space(folder.path()).available;
  const DrawingMemory memory(folder.path(), available + (std::uintmax_t{1} << 40U));
  memory.remember("png", "description", {"picture", ""});
  EXPECT_EQ(countIn(folder.path()), 0U);
}

TEST(DrawingMemory, WhatFollowsIsDrawnAtTheSameTimeAsFarAsItIsNotRemembered) {
  const TemporaryFolder folder;
  const DrawingMemory memory(folder.path(), kLimit);
  using Formats = std::vector<std::string>;
  EXPECT_EQ(formatsToDraw("png", "one", memory), Formats({"png", "dot"}));
  EXPECT_EQ(formatsToDraw("dot", "one", memory), Formats({"png", "dot"}));
  EXPECT_EQ(formatsToDraw("svg", "one", memory), Formats({"svg", "dot"}));
  memory.remember("dot", "one", {"1", ""});
  EXPECT_EQ(formatsToDraw("png", "one", memory), Formats({"png"}));
  EXPECT_EQ(formatsToDraw("png", "two", memory), Formats({"png", "dot"}));
}

TEST(DrawingMemory, NothingIsDrawnThatWouldBeForgottenAtOnce) {
  const TemporaryFolder folder;
  const std::uintmax_t free = fs::space(folder.path()).available;
  for (const DrawingMemory& memory :
       {DrawingMemory(folder.path(), 2 * free + 1), DrawingMemory(folder.path() / "none", kLimit),
        DrawingMemory("", kLimit)})
    for (const std::string format : {"png", "dot", "svg"})
      EXPECT_EQ(formatsToDraw(format, "one", memory), std::vector<std::string>({format}));
}

TEST(DrawingMemory, IsNoneWithoutAFolder) {
  const TemporaryFolder folder;
  for (const fs::path& path : {fs::path(), folder.path() / "none", fs::path("/dev/null")}) {
    const DrawingMemory memory(path, kLimit);
    memory.remember("png", "description", {"picture", ""});
    EXPECT_EQ(recalled(memory, "png", "description"), "nothing");
    EXPECT_FALSE(memory.forgetAll());
  }
  EXPECT_FALSE(DrawingMemory("").isThere());
}

TEST(DrawingMemory, KeepsNothingOfWhatCannotBeWritten) {
  const TemporaryFolder folder;
  const DrawingMemory memory(folder.path(), kLimit);
  const auto before = std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit = {};
  getrlimit(RLIMIT_FSIZE, &limit);
  const rlimit small = {2000, limit.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  memory.remember("png", "large", {std::string(3000, 'x'), ""});
  memory.remember("png", "small", {std::string(300, 'x'), ""});
  setrlimit(RLIMIT_FSIZE, &limit);
  std::signal(SIGXFSZ, before);
  EXPECT_FALSE(memory.knows("png", "large"));
  EXPECT_TRUE(memory.knows("png", "small"));
  EXPECT_EQ(countIn(folder.path()), 1U);
}

TEST(DrawingMemory, ForgetsAll) {
  const TemporaryFolder folder;
  const DrawingMemory memory(folder.path(), kLimit);
  EXPECT_FALSE(memory.forgetAll());
  memory.remember("png", "a", {"x", ""});
  memory.remember("png", "b", {"x", ""});
  EXPECT_TRUE(memory.forgetAll());
  EXPECT_EQ(countIn(folder.path()), 0U);
}

TEST(DrawingMemory, MayBeUsedByManyAtOnce) {
  const TemporaryFolder folder;
  const auto use = [&](int seed) {
    const DrawingMemory memory(folder.path(), kLimit);
    for (int i = 0; i < 200; ++i) {
      const std::string name = std::to_string((seed + i) % 7);
      const std::string bytes = std::string(2500, name[0]);
      const std::string found = recalled(memory, "png", name);
      EXPECT_TRUE(found == bytes + "|" || found == "nothing") << found.substr(0, 20);
      memory.remember("png", name, {bytes, ""});
    }
  };
  std::thread other(use, 3);
  use(0);
  other.join();
  EXPECT_LE(sizeOf(folder.path()), kLimit);
}

}  // namespace
}  // namespace quorbel
