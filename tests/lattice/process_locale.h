#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <locale>
#include <ostream>
#include <string>

namespace quorbel {

/// A locale for a whole process. Older versions of the toolkit set only that of the C library,
/// newer ones also the default of C++ streams.
struct LocaleChoice {
  const char* name;
  bool streamsToo;
};

inline void PrintTo(const LocaleChoice& choice, std::ostream* stream) {
  *stream << choice.name << (choice.streamsToo ? " for streams too" : "");
}

/// Switches the process to a locale for as long as this object lives.
class ProcessLocale {
 public:
  explicit ProcessLocale(const LocaleChoice& choice) {
    if (choice.streamsToo) std::locale::global(std::locale(choice.name));
    EXPECT_NE(std::setlocale(LC_ALL, choice.name), nullptr) << choice.name << " is not installed";
  }
  ~ProcessLocale() {
    std::locale::global(std::locale::classic());
    std::setlocale(LC_ALL, "C");
  }
  ProcessLocale(const ProcessLocale&) = delete;
  ProcessLocale& operator=(const ProcessLocale&) = delete;
};

/// A test that runs in every locale that writes numbers in a way of its own.
class InEveryLocale : public ::testing::TestWithParam<LocaleChoice> {
 private:
  ProcessLocale m_Locale{GetParam()};
};

inline const auto kLocales = ::testing::Values(
    LocaleChoice{"C", true}, LocaleChoice{"de_DE.UTF-8", false}, LocaleChoice{"de_DE.UTF-8", true},
    LocaleChoice{"en_US.UTF-8", false}, LocaleChoice{"en_US.UTF-8", true});

}  // namespace quorbel
