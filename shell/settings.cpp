#include "shell/settings.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "engine/file_type_rule.h"
#include "engine/unicode.h"
#include "shell/date_choice.h"
#include "shell/font_sizes.h"
#include "shell/text_settings.h"

namespace tallowmere {
namespace {

constexpr std::size_t longest_font_name = 31;   ///< in UTF-16, what a font may be called on Windows
constexpr std::size_t longest_path = 32767;     ///< in UTF-16, the same of a path
constexpr std::size_t longest_file_type = 255;  ///< in UTF-16, the same of a file
constexpr double largest_font_size = 2160;
constexpr std::size_t recent_searches_limit = 32'000;  ///< bytes of UTF-8 in their value

std::string first_characters(std::string_view text, int count) {
  std::size_t position = 0;
  for (; count > 0 && position < text.size(); --count) next_code_point(text, position);
  return std::string(text.substr(0, position));
}

void load_path(SettingsStore& store, SearchCriteria& search, const SettingsContext& context) {
  search.path = store.get_setting("path");
  if (to_utf16(search.path).size() > longest_path) search.path.clear();
  if (search.path.empty()) search.path = first_characters(context.program_folder, 3);
  search.drive = first_characters(search.path, 3);
}

/// Reads a number that replaces its default only when something is stored.
void load_integer(SettingsStore& store, std::string_view key, int& value) {
  const std::string text = store.get_setting(key);
  if (!text.empty()) value = lenient_integer(text);
}

/// The number stored, or `otherwise` when it lies outside the range. Nothing stored reads as 0.
int load_in_range(SettingsStore& store, std::string_view key, DateRange range, int otherwise) {
  const int number = lenient_integer(store.get_setting(key));
  return range.holds(number) ? number : otherwise;
}

void load_dates(SettingsStore& store, SearchCriteria& search, const SettingsContext& context) {
  set_date_defaults(search, context.today);
  search.date_search = load_in_range(store, "date_search", {0, date_options - 1}, all_dates);
  search.past_days = past_days_range.fit(lenient_integer(store.get_setting("past_days")));
  lenient_date(store.get_setting("from_date"), context.date_order, search.from_date);
  lenient_date(store.get_setting("to_date"), context.date_order, search.to_date);
  search.s_year = load_in_range(store, "s_year", year_range, search.s_year);
  search.s_month = load_in_range(store, "s_month", month_range, search.s_month);
  search.s_month_year = load_in_range(store, "s_month_year", year_range, search.s_month_year);
}

std::string user_type_key(int slot) {
  return "user_type" + std::to_string(slot);
}

void load_user_types(SettingsStore& store, SearchCriteria& search) {
  search.user_types[0].assign(1, '*');
  for (int slot = 1; slot < file_type_slots; ++slot) {
    const std::string type = store.get_setting(user_type_key(slot));
    if (type.empty() || to_utf16(type).size() > longest_file_type) continue;
    if (is_valid_file_type(type)) search.user_types[slot] = type;
  }
}

/// The flags in one string of "Y" and "N", read by 1-based position. Most flags start clear and
/// are set by "Y" only, the others start set and are cleared by "N" only: any other character, or
/// a missing one, leaves a flag as it starts.
class CheckedFlags {
 public:
  explicit CheckedFlags(std::string_view text) {
    std::size_t position = 0;
    while (position < text.size() && flags_.size() < last_position) {
      flags_ += next_code_point(text, position);
    }
  }
  bool switched_on(std::size_t position) const { return is(position, U'Y'); }
  bool kept_on(std::size_t position) const { return !is(position, U'N'); }

 private:
  static constexpr std::size_t last_position = 19;
  bool is(std::size_t position, char32_t flag) const {
    return position <= flags_.size() && flags_[position - 1] == flag;
  }
  std::u32string flags_;
};

SortKey load_sort_key(const CheckedFlags& flags) {
  for (int item = 0; item < sort_key_count; ++item) {
    if (flags.switched_on(11 + item)) return static_cast<SortKey>(item);
  }
  return SortKey::none;
}

void apply_flags(const CheckedFlags& flags, SearchCriteria& search, ShellState& shell) {
  for (int slot = 0; slot < file_type_slots; ++slot) {
    search.type_checked[slot] = flags.switched_on(1 + slot);
  }
  search.search_subfolders = flags.switched_on(8);
  shell.minimize_on = flags.switched_on(10);
  shell.sort_key = load_sort_key(flags);
  shell.sound_on = flags.kept_on(16);
  search.match_case = !flags.kept_on(17);
  shell.find_on_launch = flags.kept_on(18);
  search.prox_all = flags.switched_on(19);
}

void apply_first_run(SearchCriteria& search, ShellState& shell) {
  apply_flags(CheckedFlags(""), search, shell);
  search.search_subfolders = true;
  search.type_checked[1] = true;
  shell.sort_key = SortKey::date;
  const char* const types[] = {"txt", "doc", "htm", "log", "w??"};
  std::copy(std::begin(types), std::end(types), search.user_types.begin() + 1);
}

void load_checked(SettingsStore& store, SearchCriteria& search, ShellState& shell) {
  const std::string checked = store.get_setting("checked");
  if (checked.empty()) {
    apply_first_run(search, shell);
  } else {
    apply_flags(CheckedFlags(checked), search, shell);
  }
}

void load_criteria(SettingsStore& store, SearchCriteria& search) {
  const std::string criteria = store.get_setting("criteria");
  if (!criteria.empty()) search.criteria = first_characters(criteria, criteria_limit);
  search.search_type = search_phrase;
  load_integer(store, "search_type", search.search_type);
  if (search.search_type < search_and || search.search_type > search_near) {
    search.search_type = search_phrase;
  }
  load_integer(store, "prox_before", search.prox_before);
  load_integer(store, "prox_after", search.prox_after);
  search.unicode_text = store.get_setting("unicode_text") == "Y";
}

void load_extent(SettingsStore& store, SearchCriteria& search) {
  search.leave_out = first_characters(store.get_setting("leave_out"), leave_out_limit);
  search.hidden_files = store.get_setting("hidden_files") == "Y";
  search.online_files = store.get_setting("online_files") == "Y";
}

void load_search(SettingsStore& store, SearchCriteria& search, ShellState& shell,
                 const SettingsContext& context) {
  load_path(store, search, context);
  load_dates(store, search, context);
  load_user_types(store, search);
  load_checked(store, search, shell);
  load_criteria(store, search);
  load_extent(store, search);
}

/// Loads them. Each is stored as the current search is, so that its faults are corrected likewise.
void load_recent_searches(SettingsStore& store, RecentSearches& recent,
                          const SettingsContext& context) {
  const std::string stored = store.get_setting("recent_searches").substr(0, recent_searches_limit);
  std::vector<SearchCriteria> newest_first;
  std::string_view rest = stored;
  while (!rest.empty() && newest_first.size() < RecentSearches::most) {
    const std::string_view text = rest.substr(0, rest.find(text_settings_separator));
    rest.remove_prefix(std::min(rest.size(), text.size() + 1));
    TextSettings entry(text);
    if (entry.get_setting("path").empty()) continue;
    ShellState not_its_own;
    load_search(entry, newest_first.emplace_back(), not_its_own, context);
  }
  for (auto entry = newest_first.rbegin(); entry != newest_first.rend(); ++entry) {
    recent.begun(*entry);
  }
}

void load_font(SettingsStore& store, ShellState& shell) {
  const std::string name = store.get_setting("font_name");
  if (!name.empty() && to_utf16(name).size() <= longest_font_name) shell.font_name = name;
  const double size = lenient_number(store.get_setting("font_size"));
  if (size >= 1 && size <= largest_font_size) shell.font_size = size;
}

void load_placement(SettingsStore& store, ShellState& shell) {
  shell.placement.left = lenient_integer(store.get_setting("left"));
  shell.placement.top = lenient_integer(store.get_setting("top"));
  shell.placement.height = lenient_integer(store.get_setting("height"));
  shell.placement.width = lenient_integer(store.get_setting("width"));
}

std::string column_key(std::size_t column) {
  return "column_width" + std::to_string(column + 1);
}

/// Loads the list's sizes. A share that a window has no room for is fitted when it is laid out.
void load_list(SettingsStore& store, ShellState& shell) {
  shell.list_share = std::clamp(lenient_integer(store.get_setting("list_share")), 0, whole_window);
  for (std::size_t i = 0; i < shell.column_widths.size(); ++i) {
    const int width = lenient_integer(store.get_setting(column_key(i)));
    shell.column_widths[i] = std::clamp(width, 0, widest_column);
  }
}

std::string checked_text(const SearchCriteria& search, const ShellState& shell) {
  const auto flag = [](bool set) { return set ? 'Y' : 'N'; };
  std::string text;
  for (const bool ticked : search.type_checked) text += flag(ticked);
  text += flag(search.search_subfolders);
  text += 'N';
  text += flag(shell.minimize_on);
  for (int item = 0; item < sort_key_count; ++item) {
    text += flag(shell.sort_key == static_cast<SortKey>(item));
  }
  text += flag(shell.sound_on);
  text += flag(!search.match_case);
  text += flag(shell.find_on_launch);
  text += flag(search.prox_all);
  return text;
}

void save_placement(SettingsStore& store, const TwipRect& placement) {
  store.save_setting("top", std::to_string(placement.top));
  store.save_setting("left", std::to_string(placement.left));
  store.save_setting("height", std::to_string(placement.height));
  store.save_setting("width", std::to_string(placement.width));
}

std::string yes_or_no(bool set) {
  return set ? "Y" : "N";
}

void save_where_and_dates(SettingsStore& store, const SearchCriteria& search) {
  for (int slot = 1; slot < file_type_slots; ++slot) {
    store.save_setting(user_type_key(slot), search.user_types[slot]);
  }
  store.save_setting("path", search.path);
  store.save_setting("leave_out", search.leave_out);
  store.save_setting("hidden_files", yes_or_no(search.hidden_files));
  store.save_setting("online_files", yes_or_no(search.online_files));
  store.save_setting("date_search", std::to_string(search.date_search));
  store.save_setting("from_date", iso_date(search.from_date));
  store.save_setting("to_date", iso_date(search.to_date));
  store.save_setting("s_year", std::to_string(search.s_year));
  store.save_setting("s_month", std::to_string(search.s_month));
  store.save_setting("s_month_year", std::to_string(search.s_month_year));
  store.save_setting("past_days", std::to_string(search.past_days));
}

void save_search(SettingsStore& store, const SearchCriteria& search, const ShellState& shell) {
  store.save_setting("criteria", search.criteria);
  store.save_setting("search_type", std::to_string(search.search_type));
  store.save_setting("prox_before", std::to_string(search.prox_before));
  store.save_setting("prox_after", std::to_string(search.prox_after));
  store.save_setting("unicode_text", yes_or_no(search.unicode_text));
  store.save_setting("checked", checked_text(search, shell));
  save_where_and_dates(store, search);
}

/// Saves those that have room: one of very many words is forgotten when the program ends.
void save_recent_searches(SettingsStore& store, const RecentSearches& recent) {
  std::string stored;
  for (const SearchCriteria& search : recent.entries()) {
    TextSettings entry;
    save_search(entry, search, {});
    const std::string text = entry.text();
    if (stored.size() + text.size() >= recent_searches_limit) continue;
    if (!stored.empty()) stored += text_settings_separator;
    stored += text;
  }
  store.save_setting("recent_searches", stored);
}

}  // namespace

void load_settings(SettingsStore& store, SearchCriteria& search, ShellState& shell,
                   const SettingsContext& context) {
  load_search(store, search, shell, context);
  load_recent_searches(store, shell.recent_searches, context);
  shell.recent_folders.load(store);
  load_font(store, shell);
  load_placement(store, shell);
  load_list(store, shell);
}

void save_settings(SettingsStore& store, const SearchCriteria& search, const ShellState& shell,
                   const std::optional<TwipRect>& placement) {
  if (placement) save_placement(store, *placement);
  save_search(store, search, shell);
  save_recent_searches(store, shell.recent_searches);
  shell.recent_folders.save(store);
  store.save_setting("font_name", shell.font_name);
  store.save_setting("font_size", size_text(shell.font_size));
  store.save_setting("list_share", std::to_string(shell.list_share));
  for (std::size_t i = 0; i < shell.column_widths.size(); ++i) {
    store.save_setting(column_key(i), std::to_string(shell.column_widths[i]));
  }
}

}  // namespace tallowmere
