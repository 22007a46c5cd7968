#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "engine/compiled_search.h"
#include "engine/date_filter.h"
#include "engine/file_system.h"
#include "engine/name_patterns.h"
#include "engine/search_folder.h"
#include "engine/text_matcher.h"
#include "engine/unicode_search.h"

namespace tallowmere {

/// What all threads of a search run share. It does not change once the run has begun.
struct SearchJob {
  /// Keeps nothing of `search` and `clock`. `page` and `files` must outlive the threads, also those
  /// that the run leaves behind.
  SearchJob(const SearchCriteria& search, const CodePage& page, const FileSystem& the_files,
            const Clock& clock, bool facts_wanted);

  const FileSystem& files;
  const CompiledSearch compiled;
  const std::unique_ptr<const UnicodeSearch> unicode;  ///< null: every file is in the code page
  const DateFilter dates;
  std::vector<std::string> patterns;  ///< of the file types to search, in their order
  const NamePatterns leave_out;       ///< files and folders that are treated as absent
  const bool subfolders;
  const bool hidden_files;
  const bool online_files;  ///< fetched to be tested
  const bool wants_facts;   ///< of files that match, even where listings give names only
};

/// Lists folders and tests files for one thread, with a reader and a matcher of its own.
class FileTester {
 public:
  explicit FileTester(const SearchJob& job);

  /// Lists the folder and plans the turns of its files.
  void list(SearchFolder& folder, const std::function<bool()>& go_on);

  /// Returns the verdict on a file of the folder; `untested` when `go_on` says no. `error` receives
  /// why a file is unread. Facts that were asked for replace those in the listing.
  Verdict test(SearchFolder& folder, std::size_t row, const std::function<bool()>& go_on,
               SystemError& error);

 private:
  void leave_out(SearchFolder& folder) const;
  std::optional<SystemError> open(const SearchFolder& folder, const FolderListing::File& file);

  const SearchJob& job_;
  const std::unique_ptr<FileReader> file_;
  TextMatcher matcher_;
};

}  // namespace tallowmere
