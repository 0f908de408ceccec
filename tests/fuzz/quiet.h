#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quorbel {

/// Keeps what the code under test prints, and libxml2's reports, out of the fuzzer's log.
void beQuiet();

/// Puts the bytes into the one scratch file of this process and returns its path.
std::string fileOf(const std::uint8_t* data, std::size_t size);

}  // namespace quorbel
