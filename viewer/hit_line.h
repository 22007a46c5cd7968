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

/// The first line with a hit in a file that begins with `text`: in UTF-8, shortened around the hit,
/// with a blank for each control character. Empty without a hit.
std::string first_hit_line(std::string_view text, const SearchCriteria& search,
                           const CodePage& page);

/// Reads such lines for a thread that cannot wait long for a disk. Of each file another
/// thread reads the first megabyte; while one hangs, no other is begun.
class HitLineReader {
 public:
  using Milliseconds = std::chrono::milliseconds;

  /// Both live until the program ends: a call that hangs may need them. The search has them too.
  HitLineReader(const FileSystem& files, const CodePage& page, Milliseconds patience)
      : files_(files), page_(page), patience_(patience) {}

  /// Empty also when the line is not there in time.
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
