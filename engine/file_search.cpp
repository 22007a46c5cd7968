#include "engine/file_search.h"

#include "engine/file_types.h"

namespace tallowmere {

namespace {

/// A folder whose subfolders are being searched: how far its own path goes in the current path,
/// its subfolders, and which of them is next.
struct OpenFolder {
  std::size_t path_length;
  std::vector<std::string> subfolders;
  std::size_t next = 0;
};

}  // namespace

FileSearch::FileSearch(const SearchCriteria& search, const CodePage& page, const FileSystem& files,
                       const Clock& clock, SearchHost& host)
    : search_(search),
      files_(files),
      file_(files.reader()),
      host_(host),
      dates_(search, clock),
      compiled_(search, page),
      matcher_(compiled_),
      go_on_([this] { return keep_going(); }) {}

bool FileSearch::keep_going() {
  if (!stopped_ && !host_.go_on()) stopped_ = true;
  return !stopped_;
}

void FileSearch::note_unread(const std::string& folder, std::string_view name,
                             const SystemError& error) {
  unread_.push_back({folder + std::string(name), error.text});
}

void FileSearch::search_files() {
  const std::string root = with_separator(search_.path);
  auto error = list(root);
  while (error && !listing_.begun()) {
    if (!host_.retry_folder(*error)) {
      stopped_ = true;
      return;
    }
    error = list(root);
  }
  if (!keep_going()) return;
  search_listed(root, error);
  if (search_.search_subfolders) SearchAllDir(root);
}

// Depth first, each folder's own files before its subfolders. An explicit stack instead of
// recursion: the depth of a tree is bounded by memory alone. The listing is that of `root`.
void FileSearch::SearchAllDir(const std::string& root) {
  std::string path = root;
  std::vector<OpenFolder> open;
  open.push_back({path.size(), sorted_subfolders(listing_)});
  while (!open.empty() && keep_going()) {
    OpenFolder& top = open.back();
    if (top.next == top.subfolders.size()) {
      open.pop_back();
      continue;
    }
    path.resize(top.path_length);
    path += top.subfolders[top.next++];
    path += path_separator;
    search_listed(path, list(path));
    if (listing_.folder_count() > 0) open.push_back({path.size(), sorted_subfolders(listing_)});
  }
}

std::optional<SystemError> FileSearch::list(const std::string& folder) {
  listing_.clear();
  return files_.list_folder(folder, listing_, go_on_);
}

/// What came before an error is searched all the same; the folder then counts as unread.
void FileSearch::search_listed(const std::string& folder, const std::optional<SystemError>& error) {
  search_folder_files(folder);
  if (error) note_unread(folder, "", *error);
}

// Every file type ticked is a pass of its own over the folder. A file that fits two of them counts
// and is listed twice; it is read once.
void FileSearch::search_folder_files(const std::string& folder) {
  verdicts_.assign(listing_.file_count(), Verdict::untested);
  for (std::size_t slot = 0; slot < search_.user_types.size(); ++slot) {
    if (search_.type_checked[slot]) search_slot(folder, search_.user_types[slot]);
  }
}

void FileSearch::search_slot(const std::string& folder, const std::string& pattern) {
  for (std::size_t row = 0; row < listing_.file_count(); ++row) {
    if (!fits_file_type(listing_.file(row).name, pattern)) continue;
    if (!keep_going()) return;
    ++files_searched_;
    if (!test_listed_file(folder, row)) continue;
    FolderListing::File file = listing_.file(row);
    if (!file.facts_known && host_.wants_facts()) files_.facts(folder, file.name, file.facts);
    ++files_matched_;
    host_.file_matched({folder, file.name, file.facts});
  }
}

bool FileSearch::test_listed_file(const std::string& folder, std::size_t row) {
  Verdict& verdict = verdicts_[row];
  if (verdict == Verdict::untested) {
    FolderListing::File file = listing_.file(row);
    const bool matches = wanted_by_date(folder, file) &&
                         test_opened(folder, file.name, file_->open_listed(folder, file.name));
    verdict = matches ? Verdict::match : Verdict::no_match;
  }
  return verdict == Verdict::match;
}

bool FileSearch::wanted_by_date(const std::string& folder, FolderListing::File& file) {
  if (!dates_.limits()) return true;
  if (!file.facts_known) {
    if (const auto error = files_.facts(folder, file.name, file.facts)) {
      note_unread(folder, file.name, *error);
      return false;
    }
  }
  return dates_.file_in_date_range(file.facts.modified);
}

bool FileSearch::test_file(const std::string& folder, std::string_view name) {
  return test_opened(folder, name, file_->open(folder, name));
}

bool FileSearch::test_opened(const std::string& folder, std::string_view name,
                             const std::optional<SystemError>& open_error) {
  if (open_error) {
    note_unread(folder, name, *open_error);
    return false;
  }
  SystemError error;
  const MatchOutcome outcome = matcher_.match_open_file(*file_, go_on_, error);
  if (outcome == MatchOutcome::failed) {
    note_unread(folder, name, error);
    if (!host_.read_failed(unread_.back().path, error)) stopped_ = true;
  }
  return outcome == MatchOutcome::match;
}

void FileSearch::SearchListboxFiles(std::size_t count,
                                    const std::function<FoundFile(std::size_t)>& file_at) {
  files_searched_ = static_cast<std::int64_t>(count);
  for (std::size_t i = 0; i < count && keep_going(); ++i) {
    const FoundFile stored = file_at(i);
    const std::string folder(stored.folder);
    FolderListing::File file{stored.name, false, {}};
    if (!wanted_by_date(folder, file) || !test_file(folder, stored.name)) continue;
    ++files_matched_;
    host_.file_matched(stored);
  }
}

bool FileSearch::search_selected_file(const std::string& folder, const std::string& name) {
  return test_file(folder, name);
}

}  // namespace tallowmere
