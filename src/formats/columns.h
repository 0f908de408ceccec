#pragma once

// Lines of columns, with blanks and tabs between them.

#include <array>
#include <cstddef>
#include <string_view>

namespace quorbel {

/// The columns of one line, as views into it. More than kMostColumns are counted, not kept.
class Columns {
 public:
  static constexpr std::size_t kMostColumns = 5;  ///< of any line that means something

  explicit Columns(std::string_view line) {
    constexpr std::string_view kBlanks = " \t";
    for (std::size_t begin = 0;;) {
      begin = line.find_first_not_of(kBlanks, begin);
      if (begin == std::string_view::npos) return;
      const std::size_t end = line.find_first_of(kBlanks, begin);
      if (m_Count < kMostColumns) m_Columns[m_Count] = line.substr(begin, end - begin);
      ++m_Count;
      if (m_Count > kMostColumns || end == std::string_view::npos) return;
      begin = end;
    }
  }

  std::size_t count() const { return m_Count; }

  /// Column `index`, counted from 0; "" where there is none.
  std::string_view operator[](std::size_t index) const { return m_Columns.at(index); }

 private:
  std::array<std::string_view, kMostColumns> m_Columns = {};
  std::size_t m_Count = 0;
};

}  // namespace quorbel
