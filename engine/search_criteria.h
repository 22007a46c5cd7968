#pragma once

#include <array>
#include <string>

#include "engine/date_time.h"

namespace tallowmere {

enum SearchType : int {
  search_and = 0,     ///< every term must occur
  search_or = 1,      ///< one term must occur
  search_phrase = 2,  ///< the criteria must occur as they are
  search_near = 3     ///< the later terms must occur around the first
};

enum DateSearch : int {
  all_dates = 0,
  between_dates = 1,
  specific_year = 2,
  specific_month = 3,
  previous_days = 4
};

inline constexpr int criteria_limit = 32767;  ///< characters that can be typed or stored
inline constexpr int leave_out_limit = 8191;  ///< characters of `leave_out` likewise
inline constexpr int file_type_slots = 7;     ///< slot 0 is "All Files", 1 to 6 are the user's

/// The only record of the current search: what the user chose. The dialogs edit it, the settings
/// keep it, the engine reads it (see CompiledSearch). The program's entry point owns it and passes
/// it by reference.
struct SearchCriteria {
  // What to search for.
  std::string criteria;  ///< as typed, UTF-8; without trailing spaces unless it is a phrase
  int search_type = search_phrase;
  bool match_case = false;
  bool unicode_text = false;  ///< files in UTF-8 and UTF-16 are read as such, not byte by byte
  int prox_before = 0;        ///< characters before the first term that a NEAR window takes in
  int prox_after = 0;         ///< characters after it
  bool prox_all = false;      ///< NEAR wants all later terms in the window, not just one

  // Where to search.
  std::string drive;  ///< as the drive list shows it, for example C:\ on Windows
  std::string path;   ///< a missing final separator is added before use
  bool search_subfolders = true;
  std::string leave_out;      ///< names with * and ?, separated by ";", as typed: treated as absent
  bool hidden_files = false;  ///< hidden and system files and folders are searched, too
  bool online_files = false;  ///< files that are only in the cloud are fetched to be searched
  std::array<bool, file_type_slots> type_checked{};  ///< the types that are ticked
  std::array<std::string, file_type_slots> user_types{"*"};
  std::array<std::string, file_type_slots> type_descriptions{};  ///< as the system registers them

  // Which file dates to accept.
  int date_search = all_dates;
  int past_days = 0;
  Date from_date;
  Date to_date;
  int s_year = 0;
  int s_month = 0;
  int s_month_year = 0;
};

/// What the criteria and proximity dialogs hold when a search begins.
struct CriteriaInput {
  std::string criteria;  ///< UTF-8
  int search_type = search_phrase;
  bool match_case = false;
  int prox_before = 0;
  int prox_after = 0;
  bool prox_all = false;
};

/// Copies the dialogs' values into `search`. Called once at the start of each run, before anything
/// is made from them. The dialog shows the trimmed text in `search.criteria` the next time.
void load_search_criteria(SearchCriteria& search, const CriteriaInput& input);

}  // namespace tallowmere
