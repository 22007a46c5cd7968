#include "engine/search_threads.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <new>
#include <system_error>
#include <utility>

namespace tallowmere {

namespace {

/// How often the waiting host looks for what is ready, when no thread wakes it earlier, and serves
/// events.
constexpr auto host_interval = std::chrono::milliseconds(5);

// In files, for each thread.
constexpr std::size_t batch_size = 64;
constexpr std::size_t low_stock = 128;  ///< with fewer to test, folders are listed first
constexpr std::size_t most_held = 2048;

constexpr std::size_t most_folders = 8;  ///< that a thread lists at a time

/// The most files that a thread claims at a time. It claims neighbours, since they open faster one
/// after another, but not so many that others have nothing to do while it reads them.
constexpr std::size_t most_files = 16;
constexpr auto quick = std::chrono::milliseconds(1);

/// Files that threads test side by side.
struct Batch {
  std::vector<WalkOrder::Task> tasks;
  std::atomic<std::size_t> next{0};  ///< the first one that no thread has claimed

  bool exhausted() const { return next.load(std::memory_order_relaxed) >= tasks.size(); }
};

}  // namespace

unsigned machine_threads() {
  return std::max(std::thread::hardware_concurrency(), 1u);
}

/// What threads and host share. The lock guards all that is neither constant nor atomic. But the
/// inside of a claimed folder belongs to the thread that lists it, and the file of a task to the
/// thread that has claimed the task, until its verdict is set.
struct SearchThreads::Shared {
  explicit Shared(std::shared_ptr<const SearchJob> the_job) : job(std::move(the_job)) {}

  /// Reports the result of testing a file to the host.
  void note(SearchFolder& folder, std::size_t row, Verdict verdict, SystemError error) {
    if (is_trouble(verdict)) {
      const std::lock_guard held(lock);
      folder.troubles.push_back({row, std::move(error)});
    }
    folder.set_verdict(row, verdict);
  }

  const std::shared_ptr<const SearchJob> job;
  std::atomic<bool> stop{false};

  std::mutex lock;
  std::condition_variable work;  ///< threads wait for it
  std::condition_variable news;  ///< the host waits for it
  WalkOrder order;
  std::shared_ptr<Batch> batch;  ///< the latest
  std::exception_ptr failure;    ///< of the first thread that failed; all then stop
  std::vector<std::unique_ptr<PendingCalls>> pending;
  unsigned allowed = 1;  ///< only threads with a lower index work
  unsigned alive = 0;
  unsigned idle = 0;
  bool full = false;  ///< a thread is idle because too much is held
  bool host_waits = false;
};

/// One thread's part of the work.
class SearchThreads::Worker {
 public:
  Worker(Shared& shared, unsigned index, FileTester& tester)
      : shared_(shared), index_(index), tester_(tester) {
    std::lock_guard held(shared_.lock);
    shared_.pending.push_back(shared_.job->files.enter_thread());
  }

  void run() {
    while (take()) {
      for (WalkOrder::Place* place : listing_) tester_.list(place->folder, go_on_);
      if (batch_) test_batch();
    }
  }

  /// Lets all threads work, unless the disk has to seek.
  void ask_disk(unsigned most, const std::string& folder) {
    const bool seeks = shared_.job->files.has_to_seek(folder);
    std::lock_guard held(shared_.lock);
    if (!seeks) shared_.allowed = most;
    shared_.work.notify_all();
  }

 private:
  /// Hands over the folders listed and takes the next work; false at the end.
  bool take() {
    std::unique_lock held(shared_.lock);
    batch_.reset();
    if (!shared_.stop) hand_over_listings();
    listing_.clear();
    while (!shared_.stop) {
      if (index_ < shared_.allowed && (take_folders() || take_batch())) return true;
      ++shared_.idle;
      if (shared_.host_waits) shared_.news.notify_one();
      shared_.work.wait(held);
      --shared_.idle;
    }
    return false;
  }

  void hand_over_listings() {
    for (WalkOrder::Place* place : listing_) shared_.order.set_listed(*place);
    if (!listing_.empty() && shared_.idle > 0) shared_.work.notify_all();
  }

  /// Claims folders to list. The folder that the host waits for is listed however much is held.
  bool take_folders() {
    WalkOrder& order = shared_.order;
    if (order.untested() >= low_stock * shared_.allowed) return false;
    const bool full = order.held() >= most_held * shared_.allowed;
    const std::size_t share = order.siblings_left() / shared_.allowed;
    for (std::size_t i = 0; i < std::clamp<std::size_t>(share, 1, most_folders); ++i) {
      WalkOrder::Place* place = order.claim_folder(full);
      if (!place) break;
      listing_.push_back(place);
      if (full) break;
    }
    shared_.full = shared_.full || full;
    return !listing_.empty();
  }

  bool take_batch() {
    if (!shared_.batch || shared_.batch->exhausted()) {
      if (shared_.order.untested() == 0) return false;
      const auto batch = std::make_shared<Batch>();
      shared_.order.claim_files(batch_size * shared_.allowed, batch->tasks);
      shared_.batch = batch;
    }
    batch_ = shared_.batch;
    return true;
  }

  void test_batch() {
    const auto& tasks = batch_->tasks;
    while (!shared_.stop.load(std::memory_order_relaxed)) {
      std::size_t index = batch_->next.fetch_add(files_, std::memory_order_relaxed);
      if (index >= tasks.size()) return;
      const auto began = std::chrono::steady_clock::now();
      for (const auto end = std::min(index + files_, tasks.size()); index < end; ++index) {
        SearchFolder& folder = tasks[index].place->folder;
        test(folder, folder.turns()[tasks[index].turn].row);
      }
      const bool was_quick = std::chrono::steady_clock::now() - began < quick;
      files_ = was_quick ? std::min(files_ * 2, most_files) : 1;
    }
  }

  void test(SearchFolder& folder, std::size_t row) {
    SystemError error;
    const Verdict verdict = tester_.test(folder, row, go_on_, error);
    shared_.note(folder, row, verdict, std::move(error));
  }

  Shared& shared_;
  const unsigned index_;
  FileTester& tester_;
  const std::function<bool()> go_on_ = [this] {
    return !shared_.stop.load(std::memory_order_relaxed);
  };
  std::vector<WalkOrder::Place*> listing_;
  std::shared_ptr<Batch> batch_;
  std::size_t files_ = 1;  ///< to claim at a time
};

SearchThreads::SearchThreads(std::shared_ptr<const SearchJob> job, std::function<bool()> go_on)
    : shared_(std::make_shared<Shared>(std::move(job))), go_on_(std::move(go_on)) {}

// A thread that still waits for the system ends when its call returns.
SearchThreads::~SearchThreads() {
  if (threads_.empty()) return;
  {
    std::lock_guard held(shared_->lock);
    shared_->stop = true;
    shared_->work.notify_all();
    for (const auto& calls : shared_->pending) {
      if (calls) calls->cancel();
    }
  }
  for (std::thread& thread : threads_) thread.detach();
}

// A thread starts with all that it needs: when there is no memory for more, fewer do the work.
void SearchThreads::start(const ThreadUse& use, const std::string& folder) {
  std::lock_guard held(shared_->lock);
  shared_->allowed = use.one_for_seeks ? 1 : use.most;
  try {
    for (unsigned index = 0; index < use.most; ++index) {
      auto tester = std::make_unique<FileTester>(*shared_->job);
      threads_.emplace_back([=, shared = shared_, tester = std::move(tester)]() mutable {
        work(*shared, index, std::move(tester), use, folder);
      });
      ++shared_->alive;
    }
  } catch (const std::bad_alloc&) {
  } catch (const std::system_error&) {
  }
  if (threads_.empty()) own_tester_ = std::make_unique<FileTester>(*shared_->job);
}

void SearchThreads::work(Shared& shared, unsigned index, std::unique_ptr<FileTester> tester,
                         const ThreadUse& use, const std::string& folder) {
  std::exception_ptr failure;
  try {
    Worker worker(shared, index, *tester);
    if (index == 0 && use.one_for_seeks) worker.ask_disk(use.most, folder);
    worker.run();
  } catch (...) {
    failure = std::current_exception();
  }
  tester.reset();
  std::lock_guard held(shared.lock);
  if (failure) {
    if (!shared.failure) shared.failure = failure;
    shared.stop = true;
    shared.work.notify_all();
  }
  --shared.alive;
  shared.news.notify_one();
}

void SearchThreads::add_folder(std::string_view path) {
  std::lock_guard held(shared_->lock);
  shared_->order.append(path, SearchFolder::Source::folder);
  shared_->work.notify_all();
}

void SearchThreads::add_files(std::string_view path, const std::vector<std::string_view>& names,
                              SearchFolder::Source source) {
  std::lock_guard held(shared_->lock);
  WalkOrder::Place& place = shared_->order.append(path, source);
  for (const std::string_view name : names) place.folder.listing.add_file(name, nullptr);
  place.folder.plan_all();
  shared_->order.set_listed(place);
  if (shared_->idle > 0) shared_->work.notify_all();
}

bool SearchThreads::has_room() {
  release_current();
  std::lock_guard held(shared_->lock);
  if (threads_.empty()) return shared_->order.empty();
  return shared_->order.held() < most_held * shared_->allowed;
}

template <typename Condition>
bool SearchThreads::wait(Condition condition) {
  std::unique_lock held(shared_->lock);
  while (!condition()) {
    if (shared_->failure) std::rethrow_exception(shared_->failure);
    shared_->host_waits = true;
    shared_->news.wait_for(held, host_interval);
    shared_->host_waits = false;
    held.unlock();
    if (!go_on_()) return false;
    held.lock();
  }
  return true;
}

SearchFolder* SearchThreads::next() {
  release_current();
  WalkOrder& order = shared_->order;
  if (threads_.empty()) {
    list_next_here();
  } else if (!wait([&] { return order.empty() || (order.front() && order.front()->listed()); })) {
    return nullptr;
  }
  std::lock_guard held(shared_->lock);
  current_ = order.front();
  return current_ ? &current_->folder : nullptr;
}

void SearchThreads::release_current() {
  if (!current_) return;
  current_ = nullptr;
  std::lock_guard held(shared_->lock);
  WalkOrder& order = shared_->order;
  order.drop_front();
  if (!shared_->full) return;
  if (order.held() >= most_held * shared_->allowed / 2 && order.front()) return;
  shared_->full = false;
  shared_->work.notify_all();
}

void SearchThreads::list_next_here() {
  WalkOrder& order = shared_->order;
  if (order.front() && order.front()->listed()) return;
  WalkOrder::Place* place = order.claim_folder(false);
  if (!place) return;
  own_tester_->list(place->folder, go_on_);
  order.set_listed(*place);
}

void SearchThreads::list_again() {
  std::lock_guard held(shared_->lock);
  shared_->order.unlist_front();
  current_ = nullptr;
  shared_->work.notify_all();
}

Verdict SearchThreads::verdict(std::size_t row) {
  SearchFolder& folder = current_->folder;
  if (threads_.empty() && folder.verdict(row) == Verdict::untested) {
    SystemError error;
    const Verdict verdict = own_tester_->test(folder, row, go_on_, error);
    shared_->note(folder, row, verdict, std::move(error));
  }
  if (folder.verdict(row) == Verdict::untested && !threads_.empty()) {
    wait([&] { return folder.verdict(row) != Verdict::untested; });
  }
  return folder.verdict(row);
}

SystemError SearchThreads::trouble(std::size_t row) const {
  std::lock_guard held(shared_->lock);
  const auto& troubles = current_->folder.troubles;
  const auto found = std::find_if(troubles.begin(), troubles.end(),
                                  [row](const auto& trouble) { return trouble.row == row; });
  assert(found != troubles.end());
  return found->error;
}

std::string SearchThreads::current_folder() const {
  const std::lock_guard held(shared_->lock);
  return shared_->order.first_path();
}

void SearchThreads::finish() {
  if (threads_.empty()) return;
  {
    std::lock_guard held(shared_->lock);
    shared_->stop = true;
    shared_->work.notify_all();
  }
  if (!wait([this] { return shared_->alive == 0; })) return;
  for (std::thread& thread : threads_) thread.join();
  threads_.clear();
}

}  // namespace tallowmere
