#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "console/options.h"
#include "engine/code_page.h"
#include "engine/file_system.h"

namespace tallowmere::console {

enum class Written {
  good,
  closed,  ///< nobody reads any more
  failed
};

/// What the console front end needs from its system.
struct Surroundings {
  const FileSystem& files;
  const Clock& clock;
  const CodePage& page;
  /// Writes UTF-8 text to standard output or standard error.
  std::function<Written(std::string_view)> out;
  std::function<void(std::string_view)> err;
  /// True once the user has pressed Ctrl+C.
  std::function<bool()> interrupted;
};

inline constexpr int exit_matched = 0;
inline constexpr int exit_nothing = 1;
inline constexpr int exit_trouble = 2;

/// Runs the whole program; returns the exit status.
int run(const std::vector<std::string>& arguments, Surroundings& around);

}  // namespace tallowmere::console
