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

/// A file that matched. The views live only during the call that hands them over.
struct FoundFile {
  std::string_view folder;  ///< with its final separator
  std::string_view name;
  FileFacts facts;
};

/// A file or folder that the search had to pass over.
struct UnreadFile {
  std::string path;
  std::string reason;  ///< the system's own words
};

/// What a search tells and asks the program around it. All calls come on the thread that runs the
/// search, in the order of the walk.
class SearchHost {
 public:
  virtual ~SearchHost() = default;

  /// Serves pending events. Called before every file, and every few milliseconds while a file or a
  /// folder takes long; returns false when the run is to stop.
  virtual bool go_on() = 0;

  virtual void file_matched(const FoundFile& file) = 0;

  /// Whether file_matched needs the facts where the system's listings tell names only. Asked once,
  /// before the run.
  virtual bool wants_facts() const { return true; }

  /// Reading broke off inside `path`, which counts as unread; false when the run is to stop.
  virtual bool read_failed(const std::string& path, const SystemError& error) = 0;

  /// The folder to search cannot be listed; true asks for another try, false stops the run.
  virtual bool retry_folder(const SystemError& error) = 0;
};

/// One search run over the files of a folder, of a list or of a selection. Files are tested by
/// threads of the run's own, ahead of the host; what the host sees is the walk, file by file.
class FileSearch {
 public:
  /// `files` and `page` must outlive the threads, also those that hang in the system and are left
  /// behind when the run is stopped.
  FileSearch(const SearchCriteria& search, const CodePage& page, const FileSystem& files,
             const Clock& clock, SearchHost& host, const ThreadUse& use);
  FileSearch(const FileSearch&) = delete;
  FileSearch& operator=(const FileSearch&) = delete;

  /// Searches `path` of the criteria, with its subfolders when they say so.
  void search_files();

  /// Tests `count` files named by `file_at`, which yields each one's stored name, folder and
  /// facts. The date filter asks the disk, not the list. Files matched are handed to the host as
  /// stored.
  void SearchListboxFiles(std::size_t count, const std::function<FoundFile(std::size_t)>& file_at);

  /// Tests one file whatever its date; true when it matches. The host is not told of a match.
  bool search_selected_file(const std::string& folder, const std::string& name);

  std::int64_t files_searched() const { return files_searched_; }
  std::int64_t files_matched() const { return files_matched_; }
  /// Searched files whose answer may be another as Unicode text.
  std::int64_t read_as_bytes() const { return read_as_bytes_; }
  /// By the part of the walk that has been delivered.
  const LeftOut& left_out() const { return left_out_; }
  /// The folder whose files are being delivered or, until it is listed, waited for; with its final
  /// separator. For the host's thread, also from inside a call to the host. Empty at the end.
  std::string current_folder() const { return threads_.current_folder(); }
  bool stopped() const { return stopped_; }
  const std::vector<UnreadFile>& unread() const { return unread_; }
  /// The same for who keeps them, when the run has ended.
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
