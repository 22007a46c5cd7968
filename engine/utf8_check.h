#pragma once

#include <cstddef>
#include <string_view>

namespace tallowmere {

/// How many bytes at the beginning are ASCII.
std::size_t ascii_length(std::string_view text);

/// How many bytes at the beginning are well-formed UTF-8: up to the first byte that begins no whole
/// character. Fast enough to be asked of every file.
std::size_t utf8_length(std::string_view text);

}  // namespace tallowmere
