#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engine/file_system.h"
#include "engine/search_criteria.h"
#include "engine/search_folder.h"
#include "engine/search_threads.h"

namespace tallowmere {

/// A file that matched. The views are valid only during the call that receives them.
struct FoundFile {
  std::string_view folder;  ///< with its final separator
  std::string_view name;
  FileFacts facts;
};

/// A file or folder that the search could not read, or not to its end.
struct UnreadFile {
  std::string path;
  std::string reason;  ///< the system's own words
};

/// What a search reports to the program around it, and asks it. All calls come on the thread that
/// runs the search, in the order of the walk.
class SearchHost {
 public:
  virtual ~SearchHost() = default;

  /// Serves pending events. Called before every file, and every few milliseconds while a file or a
  /// folder takes long; returns false when the run is to stop.
  virtual bool go_on() = 0;

  virtual void file_matched(const FoundFile& file) = 0;

  /// True when file_matched needs the facts even where the system's listings give names only. Asked
  /// once, before the run.
  virtual bool wants_facts() const { return true; }

  /// Reports that reading broke off inside `path`, which counts as unread; returns false when the
  /// run is to stop.
  virtual bool read_failed(const std::string& path, const SystemError& error) = 0;

  /// Reports that the folder to search cannot be listed; true asks for another try, false stops the
  /// run.
  virtual bool retry_folder(const SystemError& error) = 0;
};

/// One search run over the files of a folder, of a list or of a selection. The run's own threads
/// test files ahead of the host; the host sees the walk, file by file.
class FileSearch {
 public:
  /// Prepares a run. `search` and `host` must outlive this object; `files` and `page` also the
  /// threads that hang in the system and are left behind when the run is stopped.
  FileSearch(const SearchCriteria& search, const CodePage& page, const FileSystem& files,
             const Clock& clock, SearchHost& host, const ThreadUse& use);
  FileSearch(const FileSearch&) = delete;
  FileSearch& operator=(const FileSearch&) = delete;

  /// Searches `path` of the criteria, with its subfolders when they say so.
  void search_files();

  /// Tests `count` files; `file_at` gives each one's stored name, folder and facts. The date filter
  /// asks the disk, not the list. The host gets the files that match as they are stored.
  void SearchListboxFiles(std::size_t count, const std::function<FoundFile(std::size_t)>& file_at);

  /// Tests one file whatever its date; true when it matches. A match is not reported to the host.
  bool search_selected_file(const std::string& folder, const std::string& name);

  std::int64_t files_searched() const { return files_searched_; }
  std::int64_t files_matched() const { return files_matched_; }
  /// Counts the searched files whose answer may differ when they are read as Unicode text.
  std::int64_t read_as_bytes() const { return read_as_bytes_; }
  /// Returns what was left out in the part of the walk that has been delivered.
  const LeftOut& left_out() const { return left_out_; }
  /// Returns the folder whose files are being delivered or, until it is listed, waited for; it has
  /// its final separator, and is empty at the end. For the host's thread, also from inside a call
  /// to the host.
  std::string current_folder() const { return threads_.current_folder(); }
  bool stopped() const { return stopped_; }
  const std::vector<UnreadFile>& unread() const { return unread_; }
  /// Moves the unread files out to a caller who keeps them, when the run has ended.
  std::vector<UnreadFile> take_unread() { return std::move(unread_); }

 private:
  void SearchAllDir();
  void search_folder_files(const SearchFolder& folder);
  bool matches(const SearchFolder& folder, const SearchFolder::Turn& turn);
  bool keep_going();
  void finish();
  void note_unread(const std::string& folder, std::string_view name, const SystemError& error);

  const SearchCriteria& search_;
  SearchHost& host_;
  const ThreadUse use_;
  std::int64_t files_searched_ = 0;
  std::int64_t files_matched_ = 0;
  std::int64_t read_as_bytes_ = 0;
  LeftOut left_out_;
  bool stopped_ = false;
  std::vector<UnreadFile> unread_;
  SearchThreads threads_;
};

}  // namespace tallowmere
