#include "engine/file_search.h"

#include <algorithm>

namespace tallowmere {

namespace {

constexpr std::size_t most_files_at_once = 256;  ///< of a list, in one piece

}  // namespace

FileSearch::FileSearch(const SearchCriteria& search, const CodePage& page, const FileSystem& files,
                       const Clock& clock, SearchHost& host, const ThreadUse& use)
    : search_(search),
      host_(host),
      use_(use),
      threads_(std::make_shared<SearchJob>(search, page, files, clock, host.wants_facts()),
               [this] { return keep_going(); }) {}

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
  threads_.start(use_, root);
  threads_.add_folder(root);
  SearchFolder* folder = threads_.next();
  while (folder && folder->error && !folder->listing.begun()) {
    if (!host_.retry_folder(*folder->error)) {
      stopped_ = true;
      return;
    }
    threads_.list_again();
    folder = threads_.next();
  }
  if (folder && keep_going()) search_folder_files(*folder);
  SearchAllDir();
  finish();
}

/// Searches the folders below the first one; there are none when they are not wanted.
void FileSearch::SearchAllDir() {
  while (keep_going()) {
    const SearchFolder* folder = threads_.next();
    if (!folder) return;
    search_folder_files(*folder);
  }
}

/// Delivers a folder's files. Those listed before an error are searched, too; the folder then
/// counts as unread.
void FileSearch::search_folder_files(const SearchFolder& folder) {
  left_out_.types += folder.left_out.types;
  left_out_.names += folder.left_out.names;
  for (const SearchFolder::Turn& turn : folder.turns()) {
    if (!keep_going()) break;
    ++files_searched_;
    if (!matches(folder, turn)) continue;
    ++files_matched_;
    const FolderListing::File file = folder.listing.file(turn.row);
    host_.file_matched({folder.path(), file.name, file.facts});
  }
  if (folder.error) note_unread(folder.path(), "", *folder.error);
}

bool FileSearch::matches(const SearchFolder& folder, const SearchFolder::Turn& turn) {
  const Verdict verdict = threads_.verdict(turn.row);
  if (is_trouble(verdict) && !turn.repeated) {
    const SystemError error = threads_.trouble(turn.row);
    note_unread(folder.path(), folder.listing.file(turn.row).name, error);
    const bool tell = verdict == Verdict::broken_off;
    if (tell && !host_.read_failed(unread_.back().path, error)) stopped_ = true;
  }
  const bool in_bytes = verdict == Verdict::match_in_bytes || verdict == Verdict::no_match_in_bytes;
  if (in_bytes && !turn.repeated) ++read_as_bytes_;
  if (verdict == Verdict::other_date && !turn.repeated) ++left_out_.dates;
  return is_match(verdict);
}

void FileSearch::SearchListboxFiles(std::size_t count,
                                    const std::function<FoundFile(std::size_t)>& file_at) {
  files_searched_ = static_cast<std::int64_t>(count);
  if (count == 0) return;
  const auto most = static_cast<unsigned>(std::min<std::size_t>(use_.most, count));
  threads_.start({most, use_.one_for_seeks}, std::string(file_at(0).folder));
  std::size_t added = 0;
  std::vector<std::string_view> names;
  const auto add_some = [&] {
    const FoundFile first = file_at(added);
    names.clear();
    while (added < count && names.size() < most_files_at_once &&
           file_at(added).folder == first.folder) {
      names.push_back(file_at(added++).name);
    }
    threads_.add_files(first.folder, names, SearchFolder::Source::list);
  };
  for (std::size_t i = 0; i < count;) {
    while (added < count && threads_.has_room()) add_some();
    const SearchFolder* folder = threads_.next();
    if (!folder) return;
    for (const SearchFolder::Turn& turn : folder->turns()) {
      if (!keep_going()) return;
      const std::size_t index = i++;
      if (!matches(*folder, turn)) continue;
      ++files_matched_;
      host_.file_matched(file_at(index));
    }
  }
  finish();
}

/// Ends the threads. Everything has been delivered: a stop from here on stops nothing.
void FileSearch::finish() {
  if (stopped_) return;
  threads_.finish();
  stopped_ = false;
}

bool FileSearch::search_selected_file(const std::string& folder, const std::string& name) {
  threads_.start({std::min(use_.most, 1u), false}, folder);
  threads_.add_files(folder, {name}, SearchFolder::Source::selection);
  const SearchFolder* file = threads_.next();
  const bool match = file && matches(*file, file->turns().front());
  finish();
  return match;
}

}  // namespace tallowmere
