#include "ratio_reporter.h"

#include <algorithm>
#include <cstdio>

namespace quorbel {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.error_occurred) continue;
    const double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
    const auto [least, isFirst] = m_Seconds.emplace(run.benchmark_name(), seconds);
    if (!isFirst) least->second = std::min(least->second, seconds);
  }
  if (runs.empty() || runs.front().run_type != Run::RT_Aggregate) ConsoleReporter::ReportRuns(runs);
}

bool RatioReporter::sum(const std::vector<std::string>& names, double& seconds) const {
  seconds = 0.0;
  for (const std::string& name : names) {
    const auto found = m_Seconds.find(name);
    if (found == m_Seconds.end()) return false;
    seconds += found->second;
  }
  return true;
}

void RatioReporter::printRatio(const std::string& what, const std::vector<std::string>& times,
                               const std::vector<std::string>& ofTimes,
                               double shouldStayUnder) const {
  double time = 0.0;
  double ofTime = 0.0;
  if (sum(times, time) && sum(ofTimes, ofTime))
    std::printf("%-64s %8.3f  (should stay under %g)\n", what.c_str(), time / ofTime,
                shouldStayUnder);
  else
    std::printf("%-64s not measured\n", what.c_str());
}

void RatioReporter::printSeconds(const std::string& what, const std::vector<std::string>& times,
                                 double shouldStayUnder) const {
  double time = 0.0;
  if (sum(times, time))
    std::printf("%-64s %8.3f  (should stay under %g)\n", what.c_str(), time, shouldStayUnder);
  else
    std::printf("%-64s not measured\n", what.c_str());
}

}  // namespace quorbel
