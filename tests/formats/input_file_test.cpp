#include "formats/input_file.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <filesystem>
#include <string>

#include "formats/lattice_input.h"
#include "temporary_folder.h"

namespace quorbel {
namespace {

const std::string kLattice =
    "N=2 L=1\nI=0 t=0\nI=1 t=1\nJ=0 S=0 E=1 W=\"a word that is long enough to compress\" a=-1\n";

void writeCompressed(const std::string& path, const std::string& text) {
  gzFile file = gzopen(path.c_str(), "wb");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(gzwrite(file, text.data(), static_cast<unsigned>(text.size())),
            static_cast<int>(text.size()));
  EXPECT_EQ(gzclose(file), Z_OK);
}

class InputFileTest : public ::testing::Test {
 protected:
  /// The message for a file, or its bytes.
  std::string read(const std::string& path) {
    std::string bytes;
    const std::string error = readInto(bytes, path);
    return error.empty() ? bytes : "error: " + error;
  }
  std::string readInto(std::string& bytes, const std::string& path) {
    InputFile file;
    std::string error = file.open(path);
    if (error.empty()) error = file.readRest(bytes);
    if (error.empty()) m_IsCompressed = file.isCompressed();
    return error;
  }
  TemporaryFolder m_Folder;
  bool m_IsCompressed = false;
};

TEST_F(InputFileTest, ReadsPlainAndCompressedFilesAlike) {
  m_Folder.write("plain.slf", kLattice);
  writeCompressed("packed.slf", kLattice);
  EXPECT_NE(textOf("packed.slf"), kLattice);
  EXPECT_EQ(read("packed.slf"), kLattice);
  EXPECT_TRUE(m_IsCompressed);
  EXPECT_EQ(read("plain.slf"), kLattice);
  EXPECT_FALSE(m_IsCompressed);
}

TEST_F(InputFileTest, ReadsFilesOfAnyLength) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, (std::size_t{1} << 18u) - 1,
                                 std::size_t{1} << 18u, (std::size_t{1} << 20u) + 7}) {
    std::string text(size, 'x');
    for (std::size_t i = 0; i < size; i += 997) text[i] = static_cast<char>('a' + i % 26);
    m_Folder.write("plain", text);
    writeCompressed("packed", text);
    EXPECT_EQ(read("plain"), text) << size;
    EXPECT_EQ(read("packed"), text) << size;
  }
}

TEST_F(InputFileTest, RefusesWhatBecomesMoreThan256MiB) {
  const std::string step(std::size_t{1} << 20u, '#');
  const auto writeSteps = [&](const char* name, int rest) {
    gzFile file = gzopen(name, "wb1");
    ASSERT_NE(file, nullptr);
    for (int i = 0; i < 256; ++i)
      ASSERT_EQ(gzwrite(file, step.data(), static_cast<unsigned>(step.size())),
                static_cast<int>(step.size()));
    ASSERT_EQ(gzwrite(file, step.data(), static_cast<unsigned>(rest)), rest);
    ASSERT_EQ(gzclose(file), Z_OK);
    ASSERT_LT(std::filesystem::file_size(name), std::size_t{4} << 20u);
  };
  writeSteps("most.gz", 0);
  writeSteps("bomb.gz", 1);
  std::string bytes;
  EXPECT_EQ(readInto(bytes, "most.gz"), "");
  EXPECT_EQ(bytes.size(), std::size_t{256} << 20u);
  EXPECT_EQ(read("bomb.gz"), "error: more than 256 MiB of text, which is beyond any lattice");
}

TEST_F(InputFileTest, RefusesCompressedDataThatAreCutShort) {
  writeCompressed("whole.gz", kLattice);
  const std::string whole = textOf("whole.gz");
  for (const std::size_t size : {whole.size() - 1, whole.size() / 2, std::size_t{15}}) {
    m_Folder.write("cut.gz", whole.substr(0, size));
    EXPECT_EQ(read("cut.gz"), "error: the compressed data end too early") << size;
  }
}

TEST_F(InputFileTest, RefusesCompressedDataThatAreDamaged) {
  writeCompressed("damaged.gz", kLattice);
  std::string bytes = textOf("damaged.gz");
  bytes[bytes.size() - 6] ^= 0x55;  // in the check sum
  m_Folder.write("damaged.gz", bytes);
  EXPECT_EQ(read("damaged.gz"), "error: the compressed data are damaged");
}

TEST_F(InputFileTest, SaysWhyAFileCannotBeRead) {
  std::filesystem::create_directory("folder");
  EXPECT_EQ(read("missing"), "error: No such file or directory");
  EXPECT_EQ(read("folder"), "error: Is a directory");
  WordLattice lattice;
  EXPECT_EQ(readWordLattice("missing", lattice), "missing: No such file or directory");
  m_Folder.write("wrong.slf", "N=x\n");
  EXPECT_EQ(readWordLattice("wrong.slf", lattice), "wrong.slf: line 1: N=x is no number from 0 on");
}

}  // namespace
}  // namespace quorbel
