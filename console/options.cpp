#include "console/options.h"

#include <charconv>
#include <functional>
#include <optional>
#include <string_view>

#include "engine/file_system.h"
#include "engine/file_type_rule.h"
#include "engine/name_patterns.h"
#include "engine/unicode.h"
#include "shell/proximity_choice.h"

namespace tallowmere::console {

namespace {

constexpr int largest_past_days = 9999;
constexpr int most_threads = 64;

std::optional<int> number(std::string_view text, int low, int high) {
  int value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < low || value > high) return std::nullopt;
  return value;
}

std::optional<Date> iso_date(std::string_view text) {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
  const auto year = number(text.substr(0, 4), 0, 9999);
  const auto month = number(text.substr(5, 2), 1, 12);
  const auto day = number(text.substr(8, 2), 1, 31);
  if (!year || !month || !day) return std::nullopt;
  const Date date{*year, *month, *day};
  if (!is_valid(date)) return std::nullopt;
  return date;
}

template <typename Value>
std::optional<Value> one_of(std::string_view text,
                            const std::vector<std::pair<std::string_view, Value>>& choices) {
  for (const auto& [name, value] : choices) {
    if (text == name) return value;
  }
  return std::nullopt;
}

/// Reads the arguments one after another; the first that is wrong ends it.
class Parser {
 public:
  explicit Parser(const std::vector<std::string>& arguments) : arguments_(arguments) {
    options_.input.prox_before = proximity_default;
    options_.input.prox_after = proximity_default;
    options_.search.unicode_text = true;
  }

  std::variant<Options, UsageError> parse() {
    bool options_end = false;
    while (at_ < arguments_.size() && error_.empty()) {
      const std::string& argument = arguments_[at_++];
      if (!options_end && argument == "--") {
        options_end = true;
      } else if (!options_end && argument.size() > 1 && argument[0] == '-') {
        argument[1] == '-' ? take_option(argument) : take_short_options(argument);
      } else {
        operands_.push_back(argument);
      }
      if (options_.help || options_.version) return options_;
    }
    if (error_.empty()) finish();
    if (!error_.empty()) return UsageError{error_};
    return options_;
  }

 private:
  void fail(const std::string& text) {
    if (error_.empty()) error_ = text;
  }

  /// Returns the value of an option: what follows "=", or the next argument.
  std::string value() {
    if (inline_value_) {
      std::string taken = *inline_value_;
      inline_value_.reset();
      return taken;
    }
    if (at_ < arguments_.size()) return arguments_[at_++];
    fail(name_ + " needs a value");
    return {};
  }

  template <typename Value>
  void store(Value& into, const std::optional<Value>& read, const std::string& wanted) {
    if (read) {
      into = *read;
    } else {
      fail(name_ + " takes " + wanted);
    }
  }

  void take_option(const std::string& argument) {
    const std::size_t equals = argument.find('=');
    name_ = argument.substr(0, equals);
    inline_value_.reset();
    if (equals != std::string::npos) inline_value_ = argument.substr(equals + 1);
    if (!take_search_option() && !take_file_option() && !take_date_option() &&
        !take_output_option()) {
      fail("unknown option " + name_);
    } else if (inline_value_) {
      fail(name_ + " takes no value");
    }
  }

  /// Takes options of one letter; several may follow one dash.
  void take_short_options(const std::string& argument) {
    for (const char letter : argument.substr(1)) {
      const auto name = one_of<std::string>(
          {&letter, 1}, {{"h", "--help"}, {"q", "--quiet"}, {"0", "--null"}, {"V", "--version"}});
      if (!name) return fail("unknown option -" + std::string(1, letter));
      take_option(*name);
    }
  }

  bool take_search_option() {
    CriteriaInput& input = options_.input;
    if (name_ == "--search") {
      store(input.search_type,
            one_of<int>(value(), {{"and", search_and},
                                  {"or", search_or},
                                  {"phrase", search_phrase},
                                  {"near", search_near}}),
            "and, or, phrase or near");
    } else if (name_ == "--match-case") {
      input.match_case = true;
    } else if (name_ == "--before") {
      store(input.prox_before, number(value(), proximity_min, proximity_max),
            "a number from 0 to 1000");
    } else if (name_ == "--after") {
      store(input.prox_after, number(value(), proximity_min, proximity_max),
            "a number from 0 to 1000");
    } else if (name_ == "--prox") {
      store(input.prox_all, one_of<bool>(value(), {{"all", true}, {"any", false}}), "all or any");
    } else {
      return false;
    }
    return true;
  }

  bool take_file_option() {
    if (name_ == "--files") {
      take_file_type(value());
    } else if (name_ == "--text") {
      store(options_.search.unicode_text, one_of<bool>(value(), {{"auto", true}, {"bytes", false}}),
            "auto or bytes");
    } else if (name_ == "--no-subfolders") {
      options_.search.search_subfolders = false;
    } else if (name_ == "--exclude") {
      take_exclusion(value());
    } else if (name_ == "--hidden") {
      options_.search.hidden_files = true;
    } else if (name_ == "--online") {
      options_.search.online_files = true;
    } else if (name_ == "--list") {
      options_.from_list = true;
      options_.list_file = value();
      if (options_.list_file.empty()) fail("--list takes a file, or - for standard input");
    } else {
      return false;
    }
    return true;
  }

  void take_file_type(const std::string& pattern) {
    constexpr std::size_t most = file_type_slots - 1;
    if (file_types_ == most) return fail("--files may be given 6 times at most");
    if (pattern.empty() || !is_valid_file_type(pattern)) {
      return fail("--files takes an extension such as txt or w??");
    }
    ++file_types_;
    options_.search.user_types[file_types_] = pattern;
    options_.search.type_checked[file_types_] = true;
  }

  /// Takes names to leave out. They hold no separators: a path would leave out nothing.
  void take_exclusion(const std::string& names) {
    const char* separators = path_separator == '\\' ? "\\/" : "/";
    if (NamePatterns(names).empty() || names.find_first_of(separators) != std::string::npos) {
      return fail("--exclude takes names such as .git or *.bak, not paths");
    }
    options_.search.leave_out += names + ";";
  }

  bool take_date_option() {
    SearchCriteria& search = options_.search;
    if (name_ == "--between") {
      limit_dates(between_dates);
      store(search.from_date, iso_date(value()), "two dates as YYYY-MM-DD");
      store(search.to_date, iso_date(value()), "two dates as YYYY-MM-DD");
      if (search.from_date > search.to_date) std::swap(search.from_date, search.to_date);
    } else if (name_ == "--year") {
      limit_dates(specific_year);
      store(search.s_year, number(value(), 1, 9999), "a year");
    } else if (name_ == "--month") {
      limit_dates(specific_month);
      take_month(value());
    } else if (name_ == "--past-days") {
      limit_dates(previous_days);
      store(search.past_days, number(value(), 0, largest_past_days), "a number from 0 to 9999");
    } else {
      return false;
    }
    return true;
  }

  void limit_dates(DateSearch mode) {
    if (options_.search.date_search != all_dates) {
      fail("only one of --between, --year, --month and --past-days can be given");
    }
    options_.search.date_search = mode;
  }

  void take_month(const std::string& text) {
    const std::string_view all = text;
    const std::size_t slash = all.find('/');
    if (slash == std::string_view::npos) return fail("--month takes a month and a year as M/Y");
    store(options_.search.s_month, number(all.substr(0, slash), 1, 12),
          "a month and a year as M/Y");
    store(options_.search.s_month_year, number(all.substr(slash + 1), 1, 9999),
          "a month and a year as M/Y");
  }

  bool take_output_option() {
    if (name_ == "--sort") {
      store(options_.sort,
            one_of<SortKey>(value(), {{"name", SortKey::name},
                                      {"date", SortKey::date},
                                      {"size", SortKey::size},
                                      {"folder", SortKey::folder},
                                      {"type", SortKey::type}}),
            "name, date, size, folder or type");
    } else if (name_ == "--reverse") {
      options_.reverse = true;
    } else if (name_ == "--null") {
      options_.null_terminated = true;
    } else if (name_ == "--quiet") {
      options_.quiet = true;
    } else if (name_ == "--threads") {
      store(options_.threads, number(value(), 1, most_threads), "a number from 1 to 64");
    } else if (name_ == "--help") {
      options_.help = true;
    } else if (name_ == "--version") {
      options_.version = true;
    } else {
      return false;
    }
    return true;
  }

  void finish() {
    const std::size_t wanted = options_.from_list ? 1 : 2;
    if (operands_.size() < wanted) {
      return fail(options_.from_list ? "CRITERIA is missing" : "FOLDER and CRITERIA are needed");
    }
    if (operands_.size() > wanted) return fail("too many arguments; put CRITERIA in quotes");
    options_.input.criteria = operands_.back();
    if (!is_well_formed_utf8(options_.input.criteria)) return fail("CRITERIA is not valid UTF-8");
    if (!options_.from_list) options_.search.path = operands_.front();
    if (!options_.from_list && options_.search.path.empty()) return fail("FOLDER is empty");
    if (options_.reverse && options_.sort == SortKey::none) return fail("--reverse needs --sort");
    if (options_.input.prox_before == 0 && options_.input.prox_after == 0) {
      return fail("--before and --after cannot both be 0");
    }
    if (file_types_ == 0) options_.search.type_checked[0] = true;
  }

  const std::vector<std::string>& arguments_;
  std::size_t at_ = 0;
  std::string name_;  ///< the option being read
  std::optional<std::string> inline_value_;
  std::vector<std::string> operands_;
  std::size_t file_types_ = 0;
  Options options_;
  std::string error_;
};

}  // namespace

std::variant<Options, UsageError> parse_options(const std::vector<std::string>& arguments) {
  return Parser(arguments).parse();
}

const char* help_text() {
  return R"(Usage: tallowmere-find [OPTION]... FOLDER CRITERIA
       tallowmere-find [OPTION]... --list FILE CRITERIA

Lists the files in FOLDER and its subfolders whose text matches CRITERIA.
Put CRITERIA of several words in quotes. Empty CRITERIA ("") match every file.

Matching
  --search and|or|phrase|near
                     all words, any word, the criteria exactly as written,
                     or words near the first one (default: phrase)
  --match-case       distinguish upper and lower case
  --before N, --after N
                     how far around the first word near looks, in
                     characters, 0 to 1000 (default: 110 each)
  --prox all|any     near: all other words, or any of them (default: any)
  --text auto|bytes  auto: UTF-8 and UTF-16 files are read as their
                     characters, all others byte by byte in the code page;
                     bytes: every file byte by byte (default: auto)
  For and, or and near, spaces separate the words of CRITERIA. A word matches
  whole words only; text in double quotes also matches inside words and may
  contain spaces. A phrase also matches inside words.

Where
  --files PATTERN    only files with this extension, such as txt or w??; may
                     be repeated, up to 6 times (default: all files)
  --exclude NAMES    leave out files and folders with these names, such as
                     .git or *.bak; ";" separates several; may be repeated
  --hidden           also search hidden and system files and folders
  --online           fetch files that are only in the cloud; without it they
                     count as unread
  --no-subfolders    only the files in FOLDER itself
  --list FILE        instead of a folder, the files named in FILE, one path a
                     line or each ended by a zero byte; "-" reads standard
                     input; --exclude and --hidden do not apply to them
  Symbolic links are not followed.

Dates
  --between FROM TO  only files last changed on these days, as YYYY-MM-DD
  --year Y           only files last changed in this year
  --month M/Y        only files last changed in this month
  --past-days N      only files of the past N days (0: today)

Output
  --sort name|date|size|folder|type
                     sort the matches (default: as found, printed at once)
  --reverse          reverse that order
  -0, --null         end each path with a zero byte instead of a line break
  -q, --quiet        print no matches and no summary; stop at the first match
  --threads N        read N files at the same time, 1 to 64 (default: one for
                     each processor core, one for a disk that has to seek);
                     the output is the same
  -h, --help         show this help
  -V, --version      show the version
  --                 what follows is FOLDER or CRITERIA, even if it begins
                     with "-"

Matches go to standard output, one full path a line. The summary and the files
that could not be read go to standard error; they do not change the status.
Exit status: 0 if a file matched, 1 if none did, 2 if the usage was wrong or
FOLDER could not be searched.

Examples
  tallowmere-find --search and --files txt ~/letters "contract signed"
  tallowmere-find --past-days 7 --sort date -- . "-1 error"
)";
}

}  // namespace tallowmere::console
