#pragma once

#include <array>
#include <optional>
#include <string>

#include "engine/date_time.h"
#include "engine/search_criteria.h"
#include "results/result_sort.h"
#include "results/row_text.h"
#include "shell/geometry.h"
#include "shell/layout.h"
#include "shell/lenient_values.h"
#include "shell/recent_folders.h"
#include "shell/recent_searches.h"
#include "shell/settings_store.h"

namespace tallowmere {

/// Widths that the user has given to the list's columns, in twips; 0 for those as designed.
using ColumnWidths = std::array<int, result_columns>;
inline constexpr int widest_column = 100'000;

/// What persists besides the search criteria. The initial values are the design's.
struct ShellState {
  bool minimize_on = false;
  bool sound_on = true;
  bool find_on_launch = true;
  SortKey sort_key = SortKey::none;
  std::string font_name = "Courier New";  ///< the viewer's
  double font_size = 10;                  ///< points
  TwipRect placement;                     ///< as stored; all 0 when nothing is stored
  RecentSearches recent_searches;
  RecentFolders recent_folders;
  ListShare list_share = 0;
  ColumnWidths column_widths{};
};

/// What loading needs to know of the world.
struct SettingsContext {
  std::string program_folder;  ///< its first three characters are the drive searched by default
  Date today;
  DateOrder date_order = DateOrder::month_day_year;
};

/// Reads every setting, once, when the program starts. What a search by date cannot use is replaced
/// here; the counts of a NEAR search are kept as stored, within int: their dialog fits them.
void load_settings(SettingsStore& store, SearchCriteria& search, ShellState& shell,
                   const SettingsContext& context);

/// Writes every setting when the main window unloads. `placement` is given only while the window
/// is neither minimised nor maximised; otherwise the one stored before stays.
void save_settings(SettingsStore& store, const SearchCriteria& search, const ShellState& shell,
                   const std::optional<TwipRect>& placement);

}  // namespace tallowmere
