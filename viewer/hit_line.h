#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "engine/call_thread.h"
#include "engine/code_page.h"
#include "engine/file_system.h"
#include "engine/search_criteria.h"

namespace tallowmere {

/// Returns the first line with a hit in a file that begins with `text`: in UTF-8, shortened around
/// the hit, with a space for each control character. Empty without a hit.
std::string first_hit_line(std::string_view text, const SearchCriteria& search,
                           const CodePage& page);

/// Reads such lines for a thread that cannot wait long for a disk. Another thread reads the first
/// megabyte of each file; while one file hangs, it begins no other.
class HitLineReader {
 public:
  using Milliseconds = std::chrono::milliseconds;

  /// Waits for each line as long as `patience`. `files` and `page` must live until the program
  /// ends: a call that hangs may still need them. The search uses them too.
  HitLineReader(const FileSystem& files, const CodePage& page, Milliseconds patience)
      : files_(files), page_(page), patience_(patience) {}

  /// Returns the file's first line with a hit; empty without one, or when it is not there in time.
  std::string line_of(const std::string& folder, const std::string& name,
                      const SearchCriteria& search);

 private:
  class LineCall;

  bool made_within(Milliseconds time);

  const FileSystem& files_;
  const CodePage& page_;
  const Milliseconds patience_;
  std::unique_ptr<CallThread> thread_;  ///< null before the first call
};

}  // namespace tallowmere
