#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "engine/file_tester.h"
#include "engine/search_folder.h"
#include "engine/walk_order.h"

namespace tallowmere {

/// The threads that a search may use.
struct ThreadUse {
  unsigned most = 0;           ///< 0: the host's own does the work
  bool one_for_seeks = false;  ///< only one where the disk has to seek
};

/// Returns how many threads the machine runs at once, at least 1.
unsigned machine_threads();

/// Lists folders and tests files ahead of the host, which takes them one after another in the order
/// of the walk. All members are called on the host's thread: only it waits, and while it waits it
/// asks `go_on`, which may serve events. Threads that still wait for the system at the end are left
/// behind, with all that they touch; the job's file system and code page must outlive those, too.
/// Without threads, the host's own does each piece of work when it is asked for.
///
/// What threads share has one lock, taken once for some dozens of files or folders. Threads claim
/// the files in a batch through an atomic counter; their verdicts are atomic.
class SearchThreads {
 public:
  SearchThreads(std::shared_ptr<const SearchJob> job, std::function<bool()> go_on);
  ~SearchThreads();
  SearchThreads(const SearchThreads&) = delete;
  SearchThreads& operator=(const SearchThreads&) = delete;

  /// Starts at most `use.most` threads, fewer when the system has no more; asks about seeks for the
  /// disk of `folder`.
  void start(const ThreadUse& use, const std::string& folder);

  /// Adds a folder to be listed and tested, with its subfolders when the job says so.
  void add_folder(std::string_view path);
  /// Adds files of one folder.
  void add_files(std::string_view path, const std::vector<std::string_view>& names,
                 SearchFolder::Source source);
  /// True when threads could use more files than have been added. The folder that next() gave has
  /// then been delivered.
  bool has_room();

  /// Waits for the next folder in order, which replaces the one before; null when there is none, or
  /// when the run is to stop. An exception on a thread is thrown here or in verdict().
  SearchFolder* next();
  /// Has the folder that next() gave listed again; next() then gives it again.
  void list_again();
  /// Waits for the verdict on a file of that folder; `untested` when the run is to stop.
  Verdict verdict(std::size_t row);
  /// Returns why a file of that folder is unread.
  SystemError trouble(std::size_t row) const;

  /// Returns the folder that next() gave or waits for; its parent as long as nobody lists it. Empty
  /// when there is none.
  std::string current_folder() const;

  /// Waits for the threads to end; they must have nothing left to do.
  void finish();

 private:
  struct Shared;
  class Worker;

  static void work(Shared& shared, unsigned index, std::unique_ptr<FileTester> tester,
                   const ThreadUse& use, const std::string& folder);
  template <typename Condition>
  bool wait(Condition condition);
  void release_current();
  void list_next_here();

  const std::shared_ptr<Shared> shared_;
  const std::function<bool()> go_on_;
  std::vector<std::thread> threads_;
  std::unique_ptr<FileTester> own_tester_;  ///< without threads
  WalkOrder::Place* current_ = nullptr;     ///< what next() gave
};

}  // namespace tallowmere
