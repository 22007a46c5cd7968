#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "engine/file_search.h"
#include "engine/search_page.h"

namespace tallowmere {

inline constexpr std::string_view searching_text = "Searching";
inline constexpr std::string_view sorting_text = "Sorting";
inline constexpr std::string_view sorting_found_text = "Sorting Files Found";
inline constexpr std::string_view search_stopped_text = "Search Stopped";

/// Why criteria cannot be searched for in Unicode text (see SearchPage).
inline constexpr std::string_view too_many_characters_text =
    "The criteria contain more than 126 different characters beyond ASCII.";
static_assert(SearchPage::most == 126);

/// Matches above which sorting_found_text is shown.
inline constexpr std::int64_t quick_run_matches = 200;

/// Seconds between two times of day; at least 0.01, so too when midnight lay between.
double elapsed_seconds(double started, double ended);

/// "3 file(s) matched out of 40", while searching and afterwards.
std::string count_text(std::int64_t listed, std::int64_t searched);

/// The first label after a run over folders or the list.
std::string finished_text(std::int64_t listed, std::int64_t searched);

/// The first label after a run over the selected file.
std::string_view selected_file_text(bool matched);

/// The second label after a run: how long it took, or that it was stopped.
std::string timing_text(bool stopped, double elapsed);

/// "3 files were not read".
std::string not_read_text(std::size_t files);

/// A line for each of these of the files, its path and the reason with a tab between them.
std::string unread_lines(const std::vector<UnreadFile>& unread,
                         const std::vector<std::size_t>& rows);

/// The tool tip of the count: the searches that a narrowed list comes from (see SearchChain), then
/// how many files could not be read, the first ten of them with the reason.
std::string count_tool_tip(const std::string& chain, const std::vector<UnreadFile>& unread);

}  // namespace tallowmere
