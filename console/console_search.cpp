#include "console/console_search.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <new>
#include <optional>
#include <unordered_set>

#include "engine/file_search.h"
#include "results/result_list.h"
#include "shell/run_texts.h"
#include "version.h"

namespace tallowmere::console {

namespace {

using SteadyClock = std::chrono::steady_clock;

/// How long a match may wait in the buffer, and how much fits there. Both keep "printed at once"
/// true for a reader without a system call for every match.
constexpr auto longest_wait = std::chrono::milliseconds(50);
constexpr std::size_t buffer_size = 1 << 15;

/// What editors of Windows begin a UTF-8 text with.
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

/// Standard output, buffered for a moment.
class MatchPrinter {
 public:
  MatchPrinter(Surroundings& around, char terminator)
      : around_(around), terminator_(terminator), flushed_at_(SteadyClock::now()) {}

  void print(std::string_view folder, std::string_view name) {
    buffer_ += folder;
    buffer_ += name;
    buffer_ += terminator_;
    if (buffer_.size() >= buffer_size) flush();
  }

  void flush_when_due() {
    if (!buffer_.empty() && SteadyClock::now() - flushed_at_ >= longest_wait) flush();
  }

  void flush() {
    if (!buffer_.empty() && state_ == Written::good) state_ = around_.out(buffer_);
    buffer_.clear();
    flushed_at_ = SteadyClock::now();
  }

  Written state() const { return state_; }

 private:
  Surroundings& around_;
  char terminator_;
  SteadyClock::time_point flushed_at_;
  std::string buffer_;
  Written state_ = Written::good;
};

class ConsoleHost : public SearchHost {
 public:
  ConsoleHost(const Options& options, Surroundings& around)
      : options_(options),
        around_(around),
        printer_(around, options.null_terminated ? '\0' : '\n') {}

  bool go_on() override {
    printer_.flush_when_due();
    const bool enough = options_.quiet && matched_ > 0;
    return !enough && printer_.state() == Written::good && !around_.interrupted();
  }

  void file_matched(const FoundFile& file) override {
    if (already_told(file)) return;
    ++matched_;
    if (options_.quiet) return;
    if (options_.sort == SortKey::none) return printer_.print(file.folder, file.name);
    FoundFile known = file;
    if (options_.from_list) around_.files.facts(std::string(file.folder), file.name, known.facts);
    list_.add_file_row(known.folder, known.name, known.facts);
  }

  bool wants_facts() const override { return options_.sort != SortKey::none; }

  /// The search keeps the file and the reason.
  bool read_failed(const std::string&, const SystemError&) override { return true; }

  bool retry_folder(const SystemError& error) override {
    folder_error_ = error;
    return false;
  }

  void print_sorted() {
    sort_results(list_, options_.sort);
    if (options_.reverse) reverse_results(list_);
    for (const FileRecord& record : list_.records()) {
      printer_.print(record.filepath, record.filename);
    }
  }

  Written finish_output() {
    printer_.flush();
    return printer_.state();
  }

  std::int64_t matched() const { return matched_; }
  const std::optional<SystemError>& folder_error() const { return folder_error_; }

 private:
  /// True for a file printed before. The search reports a file once for each file type that it
  /// fits; a script wants it once.
  bool already_told(const FoundFile& file) {
    if (options_.from_list || options_.search.type_checked[0]) return false;
    if (file.folder != folder_) {
      folder_ = file.folder;
      names_.clear();
    }
    return !names_.emplace(file.name).second;
  }

  const Options& options_;
  Surroundings& around_;
  MatchPrinter printer_;
  ResultList list_;
  std::int64_t matched_ = 0;
  std::optional<SystemError> folder_error_;
  std::string folder_;
  std::unordered_set<std::string> names_;  ///< printed already, of this folder
};

/// Returns where a path's name begins.
std::size_t name_start(const std::string& path) {
  const char* separators = path_separator == '\\' ? "\\/:" : "/";
  return path.find_last_of(separators) + 1;
}

std::optional<SystemError> read_standard_input(Surroundings& around, std::string& text) {
  char block[4096];
  while (const std::size_t got = std::fread(block, 1, sizeof block, stdin)) {
    text.append(block, got);
  }
  const int code = errno;
  if (!std::ferror(stdin) || around.interrupted()) return std::nullopt;
  return SystemError{code, std::strerror(code)};
}

std::optional<SystemError> read_file(const std::string& path, Surroundings& around,
                                     std::string& text) {
  const std::size_t name = name_start(path);
  const auto file = around.files.reader();
  auto failure = file->open(path.substr(0, name), path.substr(name));
  for (std::size_t got = 1; got > 0 && !failure;) {
    unsigned char block[4096];
    failure = file->read(block, sizeof block, got);
    text.append(reinterpret_cast<const char*>(block), got);
  }
  return failure;
}

/// Returns the lines of a text file or of standard input; nothing when it cannot be read.
std::optional<std::vector<std::string>> read_lines(const std::string& path, Surroundings& around,
                                                   SystemError& error) {
  std::string text;
  const auto failure =
      path == "-" ? read_standard_input(around, text) : read_file(path, around, text);
  if (failure) {
    error = *failure;
    return std::nullopt;
  }
  std::vector<std::string> lines;
  // Zero bytes end the paths of a list as --null writes it.
  const char line_end = text.find('\0') == std::string::npos ? '\n' : '\0';
  std::size_t start = text.starts_with(byte_order_mark) ? byte_order_mark.size() : 0;
  while (start < text.size()) {
    const std::size_t end = std::min(text.find(line_end, start), text.size());
    std::string line = text.substr(start, end - start);
    if (path_separator == '\\' && line.ends_with('\r')) line.pop_back();
    if (!line.empty()) lines.push_back(std::move(line));
    start = end + 1;
  }
  return lines;
}

/// Returns how many threads to use. A single one is this thread, which then works instead of
/// waiting.
ThreadUse thread_use(const Options& options) {
  const bool asked = options.threads > 0;
  const unsigned most = asked ? static_cast<unsigned>(options.threads) : machine_threads();
  return {most == 1 ? 0 : most, !asked};
}

void search_lines(FileSearch& search, const std::vector<std::string>& lines) {
  search.SearchListboxFiles(lines.size(), [&lines](std::size_t i) {
    const std::string_view path = lines[i];
    const std::size_t name = name_start(lines[i]);
    return FoundFile{path.substr(0, name), path.substr(name), {}};
  });
}

void report(const FileSearch& search, const ConsoleHost& host, const Options& options,
            double seconds, Surroundings& around) {
  if (!options.quiet) {
    char time[32];
    std::snprintf(time, sizeof time, "%.2f", std::max(seconds, 0.01));
    around.err(count_text(host.matched(), search.files_searched()) + " in " + time + " seconds" +
               (around.interrupted() ? " (stopped)\n" : "\n"));
  }
  for (const UnreadFile& file : search.unread()) {
    around.err(file.path + ": " + file.reason + "\n");
  }
}

/// Says what keeps a folder from being searched, and what to do if it is a file.
std::string folder_trouble(const std::string& path, const SystemError& error,
                           Surroundings& around) {
  const std::size_t name = name_start(path);
  if (around.files.reader()->open(path.substr(0, name), path.substr(name))) {
    return "cannot search " + path + ": " + error.text;
  }
  return path + " is a file, not a folder; to search single files, use --list";
}

int trouble(const std::string& text, Surroundings& around) {
  around.err("tallowmere-find: " + text + "\n");
  return exit_trouble;
}

int search(const Options& options, Surroundings& around) {
  SearchCriteria criteria = options.search;
  load_search_criteria(criteria, options.input);
  if (criteria.unicode_text && !SearchPage(criteria, around.page).fits()) {
    return trouble(std::string(too_many_characters_text) + " (try --text bytes)", around);
  }
  std::optional<std::vector<std::string>> lines;
  if (options.from_list) {
    SystemError error;
    lines = read_lines(options.list_file, around, error);
    if (!lines) return trouble("cannot read " + options.list_file + ": " + error.text, around);
  }

  const auto started = SteadyClock::now();
  ConsoleHost host(options, around);
  FileSearch search(criteria, around.page, around.files, around.clock, host, thread_use(options));
  bool out_of_memory = false;
  try {
    if (lines) {
      search_lines(search, *lines);
    } else {
      search.search_files();
    }
  } catch (const std::bad_alloc&) {
    out_of_memory = true;  // what was found so far is listed
  }
  if (host.folder_error()) {
    return trouble(folder_trouble(criteria.path, *host.folder_error(), around), around);
  }
  if (options.sort != SortKey::none) host.print_sorted();
  const Written written = host.finish_output();
  const std::chrono::duration<double> elapsed = SteadyClock::now() - started;
  if (written == Written::failed) return trouble("cannot write the list", around);
  if (out_of_memory) return trouble("out of memory; the list is not complete", around);
  if (written == Written::good) report(search, host, options, elapsed.count(), around);
  return host.matched() > 0 ? exit_matched : exit_nothing;
}

}  // namespace

int run(const std::vector<std::string>& arguments, Surroundings& around) {
  const auto parsed = parse_options(arguments);
  if (const auto* error = std::get_if<UsageError>(&parsed)) {
    return trouble(error->text + " (try --help)", around);
  }
  const auto& options = std::get<Options>(parsed);
  if (options.help || options.version) {
    around.out(options.help ? help_text() : "tallowmere-find " TALLOWMERE_VERSION "\n");
    return exit_matched;
  }
  try {
    return search(options, around);
  } catch (const std::bad_alloc&) {
    return trouble("out of memory", around);
  }
}

}  // namespace tallowmere::console
