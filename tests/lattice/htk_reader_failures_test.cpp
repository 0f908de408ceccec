// Files that cannot be read, and lines that make no sense.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "lattice_file.h"

namespace {

/// Makes the C library refuse to open files, while C++ streams still open theirs.
bool g_RefuseFopen = false;

}  // namespace

// The linker puts these in the place of fopen.
extern "C" std::FILE* __real_fopen(const char* path, const char* mode);
extern "C" std::FILE* __wrap_fopen(const char* path, const char* mode) {
  return g_RefuseFopen ? nullptr : __real_fopen(path, mode);
}

namespace quorbel {
namespace {

using namespace std::string_literals;

class HtkReaderFailures : public LatticeFile {};

TEST_F(HtkReaderFailures, KeyWithoutEqualsSignIsASyntaxError) {
  for (const char* line : {"word", "a b=1", "J=5 a", "J=5 a ", "J=5 a\t", "J=5 a\r", "J=5 a #=1",
                           "J=5 a\r=1", "I=0 a", "W", "N", "I", "\"x\"", "J=5 a=1 b c=1"}) {
    EXPECT_EQ(linksOf(line), "talk.lat: syntax error line 2") << line;
  }
  EXPECT_EQ(linksOf("J=5 a \0=1"s), "talk.lat: syntax error line 2");
}

TEST_F(HtkReaderFailures, MessageBeginsWithThePathAsItWasGiven) {
  const std::string path = m_Folder.write("no lattice.lat", "N=2\nbad\n");
  EXPECT_EQ(readHtkLattice(graph, path), path + ": syntax error line 2");
  EXPECT_EQ(readHtkLattice(graph, "./no lattice.lat"), "./no lattice.lat: syntax error line 2");
}

TEST_F(HtkReaderFailures, EveryLineCountsForTheLineNumber) {
  EXPECT_EQ(read("bad\n"), "talk.lat: syntax error line 1");
  EXPECT_EQ(read("\n#\n\r\nN=2\n \nJ=0 UTTERANCE\nbad\nbad\n"), "talk.lat: syntax error line 7");
  std::string text = "N=2\n";
  for (int line = 2; line < 1234; ++line) text += "J=0\n";
  EXPECT_EQ(read(text + "bad\n"), "talk.lat: syntax error line 1234");
}

TEST_F(HtkReaderFailures, WhatStoodBeforeTheFaultStays) {
  EXPECT_EQ(read("N=2\nI=0 t=3 a=1 b\nI=1 t=4\nJ=0 S=0 E=1\n"), "talk.lat: syntax error line 2");
  EXPECT_EQ(describeLattice(graph), "2 nodes, 0 to 1\nnode 0 at 3 with a=-1\n");
  EXPECT_EQ(read("N=2\nI=0 t=3\nI=1 t=4 a=1\nJ=0 S=0 E=1 b=2\nJ=1 S=0 E=1 W=x\n"),
            "talk.lat: syntax error line 5");
  EXPECT_EQ(describeLattice(graph),
            "2 nodes, 0 to 1\nnode 0 at 3\nnode 1 at 4 with a=-1\nlink 0 from 0 to 1 with b=-2\n");
}

TEST_F(HtkReaderFailures, NodeOutsideTheCountIsASyntaxError) {
  for (const char* node : {"3", "4", "-1", "50000", "99999999999", "-99999999999"}) {
    EXPECT_EQ(linksOf("I="s + node), "talk.lat: syntax error line 2") << node;
    EXPECT_EQ(linksOf("I="s + node + " t=1 a=2"), "talk.lat: syntax error line 2") << node;
  }
  EXPECT_EQ(linksOf("I=2 t=1 a=2"), "");
}

TEST_F(HtkReaderFailures, NodeThatALaterCountLeavesOutsideIsASyntaxError) {
  EXPECT_EQ(read("N=3\nI=2 N=2 t=1\n"), "talk.lat: syntax error line 2");
  EXPECT_EQ(describeLattice(graph), "2 nodes, 0 to 1\n");
}

TEST_F(HtkReaderFailures, NodeBeforeAnyCountIsASyntaxError) {
  EXPECT_EQ(read("VERSION=1.0\nI=0 t=1\nN=2\n"), "talk.lat: syntax error line 2");
  EXPECT_EQ(describeLattice(graph), "no lattice\n");
  EXPECT_EQ(read("I=0 N=2\n"), "talk.lat: syntax error line 1");
  EXPECT_EQ(describeLattice(graph), "no lattice\n");
}

TEST_F(HtkReaderFailures, FolderIsNotRead) {
  std::filesystem::create_directory("folder.lat");
  EXPECT_EQ(readHtkLattice(graph, "folder.lat"),
            "folder.lat : file not found or permission denied");
  EXPECT_EQ(describeLattice(graph), "no lattice\n");
}

TEST_F(HtkReaderFailures, BinaryFileIsASyntaxError) {
  std::string bytes;
  for (int i = 1; i < 1024; ++i) bytes += static_cast<char>(i * 7);
  EXPECT_EQ(read(bytes), "talk.lat: syntax error line 1");
  EXPECT_EQ(describeLattice(graph), "no lattice\n");
}

/// Reads files as a user who may not do everything, also when the tests run as root.
class PlainUser {
 public:
  PlainUser() : m_Before(geteuid()) {
    constexpr uid_t kNobody = 65534;
    if (m_Before == 0) {
      EXPECT_EQ(seteuid(kNobody), 0);
    }
  }
  ~PlainUser() { EXPECT_EQ(seteuid(m_Before), 0); }
  PlainUser(const PlainUser&) = delete;
  PlainUser& operator=(const PlainUser&) = delete;

 private:
  uid_t m_Before;
};

TEST_F(HtkReaderFailures, FileThatCannotBeOpenedRaisesALogicError) {
  EXPECT_THROW(readHtkLattice(graph, "missing.lat"), std::logic_error);
  EXPECT_THROW(readHtkLattice(graph, ""), std::logic_error);
  m_Folder.write("file", "N=2\n");
  EXPECT_THROW(readHtkLattice(graph, "file/talk.lat"), std::logic_error);
  EXPECT_EQ(describeLattice(graph), "no lattice\n");
}

TEST_F(HtkReaderFailures, FileWithoutPermissionRaisesALogicError) {
  using std::filesystem::perms;
  std::filesystem::permissions(m_Folder.path(), perms::all);
  m_Folder.write("secret.lat", "N=2\n");
  std::filesystem::permissions("secret.lat", perms::none);
  const PlainUser user;
  EXPECT_THROW(readHtkLattice(graph, "secret.lat"), std::logic_error);
}

TEST_F(HtkReaderFailures, FileThatCannotBeOpenedAgainEndsTheProcess) {
  m_Folder.write("talk.lat", "N=2\n");
  const auto readOpeningOnce = [&] {
    g_RefuseFopen = true;
    readHtkLattice(graph, "talk.lat");
  };
  EXPECT_EXIT(readOpeningOnce(), ::testing::ExitedWithCode(1),
              ::testing::Eq("ERROR: can't open: talk.lat\n"));
}

}  // namespace
}  // namespace quorbel
