#include "engine/call_thread.h"

#include <condition_variable>
#include <exception>
#include <mutex>
#include <new>
#include <utility>

namespace tallowmere {
namespace {

std::exception_ptr make(CallThread::Call& call) {
  try {
    call.make();
    return nullptr;
  } catch (...) {
    return std::current_exception();
  }
}

}  // namespace

struct CallThread::Shared {
  std::mutex mutex;  ///< guards the rest
  std::condition_variable changed;
  std::shared_ptr<Call> call;  ///< null: none is to be made
  std::exception_ptr failure;  ///< of the call made last
  std::unique_ptr<PendingCalls> pending;
  bool left = false;  ///< its owner is gone: the thread ends when it has nothing to do
};

CallThread::CallThread(const FileSystem& files)
    : shared_(std::make_shared<Shared>()),
      thread_([shared = shared_, &files] { serve(*shared, files); }) {}

CallThread::~CallThread() {
  std::unique_lock lock(shared_->mutex);
  shared_->left = true;
  shared_->changed.notify_all();
  const bool idle = shared_->call == nullptr;
  if (!idle && shared_->pending) shared_->pending->cancel();
  lock.unlock();
  if (idle) {
    thread_.join();
  } else {
    thread_.detach();
  }
}

void CallThread::begin(std::shared_ptr<Call> call) {
  const std::lock_guard lock(shared_->mutex);
  shared_->call = std::move(call);
  shared_->changed.notify_all();
}

bool CallThread::made_within(std::chrono::milliseconds time) {
  std::unique_lock lock(shared_->mutex);
  if (!shared_->changed.wait_for(lock, time, [this] { return shared_->call == nullptr; })) {
    return false;
  }
  if (shared_->failure) std::rethrow_exception(std::exchange(shared_->failure, nullptr));
  return true;
}

void CallThread::serve(Shared& shared, const FileSystem& files) {
  std::unique_lock lock(shared.mutex);
  try {
    shared.pending = files.enter_thread();
  } catch (const std::bad_alloc&) {
    // Without it calls cannot be cancelled, but they are made.
  }
  while (true) {
    shared.changed.wait(lock, [&] { return shared.call || shared.left; });
    if (!shared.call) return;
    const std::shared_ptr<Call> call = shared.call;
    lock.unlock();
    std::exception_ptr failure = make(*call);
    lock.lock();
    shared.call.reset();
    if (shared.left) return;  // what the call has opened is closed here
    shared.failure = std::move(failure);
    shared.changed.notify_all();
  }
}

}  // namespace tallowmere
