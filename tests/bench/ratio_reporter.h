#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>

namespace quorbel {

/// Prints benchmarks and remembers the shortest time of each one's repetitions, which other work on
/// the machine disturbs least, for ratios between them.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override;

  /// Prints how many times the sum of some benchmarks' times is that of others, and what it should
  /// stay under. Prints that there is no such figure when one of them did not run.
  void printRatio(const std::string& what, const std::vector<std::string>& times,
                  const std::vector<std::string>& ofTimes, double shouldStayUnder) const;

  /// The same for the sum of times itself, in seconds.
  void printSeconds(const std::string& what, const std::vector<std::string>& times,
                    double shouldStayUnder) const;

 private:
  bool sum(const std::vector<std::string>& names, double& seconds) const;

  std::map<std::string, double> m_Seconds;
};

}  // namespace quorbel
