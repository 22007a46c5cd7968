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
  unsigned most = 0;           ///< 0: none but the host's own
  bool one_for_seeks = false;  ///< one only where the disk has to seek
};

/// How many threads the machine runs at once, at least 1.
unsigned machine_threads();

/// Lists folders and tests files ahead of the host, which takes them one after another in the order
/// of the walk. All members are called on the host's thread: it alone waits, and asks `go_on` while
/// it does, which may serve events. Threads that still wait for the system at the end are left
/// behind, with all that they touch; the job's file system and code page must outlive those, too.
/// Without threads the host's own does the work, when it is asked for it.
///
/// What threads share has one lock, taken once for some dozens of files or folders. The files in
/// one batch are claimed through an atomic counter; their verdicts are atomic.
class SearchThreads {
 public:
  SearchThreads(std::shared_ptr<const SearchJob> job, std::function<bool()> go_on);
  ~SearchThreads();
  SearchThreads(const SearchThreads&) = delete;
  SearchThreads& operator=(const SearchThreads&) = delete;

  /// Starts as many threads as can be had; the disk asked about is that of `folder`.
  void start(const ThreadUse& use, const std::string& folder);

  /// Adds a folder to be listed and tested, with its subfolders when the job says so.
  void add_folder(std::string_view path);
  /// Adds files of one folder.
  void add_files(std::string_view path, const std::vector<std::string_view>& names,
                 SearchFolder::Source source);
  /// True when threads could use more files than have been added. The folder that next() gave has
  /// then been delivered.
  bool has_room();

  /// Waits for the next folder in order, in place of the one before; null when there is none, and
  /// when the run is to stop. An exception on a thread comes out here or of verdict().
  SearchFolder* next();
  /// Lists the folder that next() gave once more; next() then gives it again.
  void list_again();
  /// Waits for the verdict on a file of that folder; `untested` when the run is to stop.
  Verdict verdict(std::size_t row);
  /// Why a file of that folder is unread.
  SystemError trouble(std::size_t row) const;

  /// The folder that next() gave, or now waits for; its parent's as long as nobody lists it. Empty
  /// when there is none.
  std::string current_folder() const;

  /// Waits for the threads, which have nothing left to do.
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
