#include "layout/file_stamp.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "temporary_folder.h"

namespace quorbel {
namespace {

void setModified(const std::string& path, std::int64_t seconds, long nanoseconds) {
  const timespec times[2] = {{seconds, nanoseconds}, {seconds, nanoseconds}};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

TEST(FileStamp, TellsWhatTheFileIs) {
  TemporaryFolder folder;
  const std::string path = folder.write("a", "12345");
  setModified(path, 1700000000, 123456789);
  const FileStamp stamp = fileStamp(path);
  EXPECT_TRUE(stamp.exists);
  EXPECT_NE(stamp.inode, 0u);
  EXPECT_EQ(stamp.size, 5);
  EXPECT_EQ(stamp.modifiedSeconds, 1700000000);
  EXPECT_EQ(stamp.modifiedNanoseconds, 123456789);
}

TEST(FileStamp, StaysTheSameForAnUntouchedFile) {
  TemporaryFolder folder;
  const std::string path = folder.write("a", "12345");
  const FileStamp before = fileStamp(path);
  EXPECT_EQ(textOf(path), "12345");
  EXPECT_TRUE(fileStamp(path) == before);
  EXPECT_FALSE(fileStamp(path) != before);
}

TEST(FileStamp, ChangesWithTheSize) {
  TemporaryFolder folder;
  const std::string path = folder.write("a", "12345");
  setModified(path, 1700000000, 0);
  const FileStamp before = fileStamp(path);
  std::filesystem::resize_file(path, 4);
  setModified(path, 1700000000, 0);
  EXPECT_TRUE(fileStamp(path) != before);
}

TEST(FileStamp, ChangesWithEachPartOfTheTime) {
  TemporaryFolder folder;
  const std::string path = folder.write("a", "12345");
  setModified(path, 1700000000, 500);
  const FileStamp before = fileStamp(path);
  setModified(path, 1700000000, 501);
  EXPECT_TRUE(fileStamp(path) != before);
  setModified(path, 1700000001, 500);
  EXPECT_TRUE(fileStamp(path) != before);
  setModified(path, 1700000000, 500);
  EXPECT_TRUE(fileStamp(path) == before);
}

TEST(FileStamp, ChangesWhenAnotherFileTakesTheName) {
  TemporaryFolder folder;
  const std::string path = folder.write("a", "12345");
  const std::string other = folder.write("b", "67890");
  setModified(path, 1700000000, 500);
  setModified(other, 1700000000, 500);
  const FileStamp before = fileStamp(path);
  std::filesystem::rename(other, path);
  EXPECT_TRUE(fileStamp(path) != before);
}

TEST(FileStamp, AbsentFilesAreEqualAndUnlikeAnyOther) {
  TemporaryFolder folder;
  const FileStamp absent = fileStamp((folder.path() / "a").string());
  EXPECT_FALSE(absent.exists);
  EXPECT_TRUE(absent == fileStamp("/nowhere/at/all"));
  EXPECT_TRUE(absent == FileStamp());
  const std::string path = folder.write("a", "");
  EXPECT_TRUE(fileStamp(path).exists);
  EXPECT_TRUE(fileStamp(path) != absent);
}

TEST(FileStamp, LooksThroughSymbolicLinks) {
  TemporaryFolder folder;
  const std::string path = folder.write("a", "12345");
  const std::string link = (folder.path() / "link").string();
  std::filesystem::create_symlink("a", link);
  EXPECT_TRUE(fileStamp(link) == fileStamp(path));
  std::filesystem::remove(path);
  EXPECT_FALSE(fileStamp(link).exists);
}

}  // namespace
}  // namespace quorbel
