#pragma once

#include <ctime>

namespace quorbel {

/// Seconds that the process has computed since this object was made, however busy the machine is.
class ProcessorTime {
 public:
  double seconds() const {
    return static_cast<double>(std::clock() - m_Begin) / static_cast<double>(CLOCKS_PER_SEC);
  }

 private:
  std::clock_t m_Begin = std::clock();
};

}  // namespace quorbel
