#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace tallowmere {

/// The seed of a randomised test, printed so that a failure can be repeated with TEST_SEED.
inline std::uint32_t test_seed() {
  const char* given = std::getenv("TEST_SEED");
  const auto seed = given ? static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10))
                          : static_cast<std::uint32_t>(std::random_device{}());
  std::printf("TEST_SEED=%u\n", seed);
  return seed;
}

}  // namespace tallowmere
