#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

#include "tests/support/memory_files.h"

namespace tallowmere {

/// Files in memory on a disk that hangs on command. Knows the threads that call it and outlives
/// them.
class HangingFiles : public MemoryFiles {
 public:
  enum class Call { none, list, facts, open, read };

  HangingFiles() {
    on_list = [this] { pass(Call::list); };
    on_facts = [this] { pass(Call::facts); };
    on_open = [this] { pass(Call::open); };
    on_read = [this] { pass(Call::read); };
  }
  ~HangingFiles() override {
    release();
    wait_for_threads(0);
  }

  /// The next call of this kind hangs until it is released.
  void hang_next(Call call) {
    const std::lock_guard lock(mutex_);
    next_ = call;
  }
  void wait_for_hang() {
    wait([this] { return hanging_ > 0; });
  }
  /// What hangs goes on.
  void release() {
    std::unique_lock lock(mutex_);
    ++releases_;
    changed_.notify_all();
    changed_.wait(lock, [this] { return hanging_ == 0; });
  }
  /// Waits until no more than so many threads are left.
  void wait_for_threads(int count) {
    wait([&] { return threads_ <= count; });
  }

  int hanging() const { return locked(hanging_); }
  int cancelled() const { return locked(cancelled_); }

  std::unique_ptr<PendingCalls> enter_thread() const override {
    return std::make_unique<Thread>(*this);
  }

 private:
  class Thread : public PendingCalls {
   public:
    explicit Thread(const HangingFiles& files) : files_(files) { files_.count(files_.threads_, 1); }
    ~Thread() override { files_.count(files_.threads_, -1); }
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;
    void cancel() override { files_.count(files_.cancelled_, 1); }

   private:
    const HangingFiles& files_;
  };

  void pass(Call call) {
    std::unique_lock lock(mutex_);
    if (next_ != call) return;
    next_ = Call::none;
    ++hanging_;
    changed_.notify_all();
    changed_.wait(lock, [this, before = releases_] { return releases_ != before; });
    --hanging_;
    changed_.notify_all();
  }
  void count(int& what, int change) const {
    const std::lock_guard lock(mutex_);
    what += change;
    changed_.notify_all();
  }
  int locked(const int& what) const {
    const std::lock_guard lock(mutex_);
    return what;
  }
  void wait(const std::function<bool()>& over) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, over);
  }

  mutable std::mutex mutex_;  ///< guards the rest
  mutable std::condition_variable changed_;
  Call next_ = Call::none;
  int hanging_ = 0;
  int releases_ = 0;
  mutable int threads_ = 0;
  mutable int cancelled_ = 0;
};

}  // namespace tallowmere
