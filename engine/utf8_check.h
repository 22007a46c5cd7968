#pragma once

#include <cstddef>
#include <string_view>

namespace tallowmere {

/// Counts the bytes at the beginning that are ASCII.
std::size_t ascii_length(std::string_view text);

/// Counts the bytes at the beginning that are well-formed UTF-8, up to the first byte that begins
/// no whole character. Fast enough to be used on every file.
std::size_t utf8_length(std::string_view text);

}  // namespace tallowmere
