#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace quorbel {

/// A folder of its own for each test: the working directory while the test runs, removed
/// afterwards.
class TemporaryFolder {
 public:
  TemporaryFolder() : m_Before(std::filesystem::current_path()) {
    std::string pattern = (std::filesystem::temp_directory_path() / "quorbel-test-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no folder for the test");
    m_Path = pattern;
    std::filesystem::current_path(m_Path);
  }
  ~TemporaryFolder() {
    std::filesystem::current_path(m_Before);
    std::error_code ignored;  // a test may have taken its folder away
    std::filesystem::remove_all(m_Path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return m_Path; }

  /// Writes a file into the folder and returns its full path.
  std::string write(const std::string& name, const std::string& text) const {
    std::ofstream(m_Path / name, std::ios::binary) << text;
    return (m_Path / name).string();
  }

 private:
  std::filesystem::path m_Before;
  std::filesystem::path m_Path;
};

/// The whole text of a file, "" when there is none.
inline std::string textOf(const std::filesystem::path& path) {
  std::ifstream stream(path, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  return text.str();
}

/// Collects what the program prints on standard output while this object lives.
class PrintedText {
 public:
  PrintedText() { ::testing::internal::CaptureStdout(); }
  ~PrintedText() {
    if (!m_Taken) ::testing::internal::GetCapturedStdout();
  }
  std::string take() {
    m_Taken = true;
    return ::testing::internal::GetCapturedStdout();
  }

 private:
  bool m_Taken = false;
};

}  // namespace quorbel
