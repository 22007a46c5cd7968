#pragma once

#include <string>
#include <variant>
#include <vector>

#include "engine/search_criteria.h"
#include "results/result_sort.h"

namespace tallowmere::console {

/// What the command line asks for.
struct Options {
  CriteriaInput input;
  SearchCriteria search;  ///< where to search and which dates; the rest is made from `input`
  bool from_list = false;
  std::string list_file;  ///< "-" is standard input
  SortKey sort = SortKey::none;
  bool reverse = false;
  bool null_terminated = false;
  bool quiet = false;
  bool help = false;
  bool version = false;
  int threads = 0;  ///< 0: as many as the machine runs at once
};

struct UsageError {
  std::string text;  ///< one line
};

/// Reads the command line. `arguments` are UTF-8, without the program's name.
std::variant<Options, UsageError> parse_options(const std::vector<std::string>& arguments);

/// Returns the text of --help.
const char* help_text();

}  // namespace tallowmere::console
