#include "viewer/waiting_files.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace tallowmere {

namespace {

using Milliseconds = std::chrono::milliseconds;

/// Calls that are no slower serve no events.
constexpr Milliseconds quick_call{15};
constexpr Milliseconds interval{5};

/// One call of the system with all that it touches, which lives as long as it takes.
class Call {
 public:
  virtual ~Call() = default;
  virtual void make() = 0;
};

class FactsCall : public Call {
 public:
  FactsCall(const FileSystem& files, const std::string& folder, std::string_view name)
      : files_(files), folder_(folder), name_(name) {}
  void make() override { error = files_.facts(folder_, name_, facts); }

  FileFacts facts;
  std::optional<SystemError> error;

 private:
  const FileSystem& files_;
  const std::string folder_;
  const std::string name_;
};

/// The calls of one reader, one after the other. Closing needs no memory.
class ReaderCall : public Call {
 public:
  enum class Action { open, read, close };

  explicit ReaderCall(std::unique_ptr<FileReader> file) : file_(std::move(file)) {}
  void make() override {
    got = 0;
    error.reset();
    switch (action) {
      case Action::open:
        error = file_->open(folder, name);
        break;
      case Action::read:
        if (place) error = file_->seek(*std::exchange(place, std::nullopt));
        if (!error) error = file_->read(bytes.data(), bytes.size(), got);
        break;
      case Action::close:
        file_->close();
        break;
    }
  }

  Action action = Action::open;
  std::string folder;
  std::string name;
  std::optional<std::int64_t> place;  ///< where the next read begins, when not where the last ended
  std::vector<unsigned char> bytes;
  std::size_t got = 0;
  std::optional<SystemError> error;

 private:
  const std::unique_ptr<FileReader> file_;
};

}  // namespace

/// A thread that makes one call after the other. Destroyed while it makes one, it cancels that as
/// far as the system can and leaves the thread to itself.
class WaitingFiles::CallThread {
 public:
  explicit CallThread(const FileSystem& files)
      : thread_([shared = shared_, &files] { serve(*shared, files); }) {}

  ~CallThread() {
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
  CallThread(const CallThread&) = delete;
  CallThread& operator=(const CallThread&) = delete;

  void begin(std::shared_ptr<Call> call) {
    const std::lock_guard lock(shared_->mutex);
    shared_->call = std::move(call);
    shared_->changed.notify_all();
  }

  /// Waits at most so long for the call to be made; throws what it has thrown.
  bool made_within(Milliseconds time) {
    std::unique_lock lock(shared_->mutex);
    if (!shared_->changed.wait_for(lock, time, [this] { return shared_->call == nullptr; })) {
      return false;
    }
    if (shared_->failure) std::rethrow_exception(std::exchange(shared_->failure, nullptr));
    return true;
  }

 private:
  /// Held by the thread too.
  struct Shared {
    std::mutex mutex;  ///< guards the rest
    std::condition_variable changed;
    std::shared_ptr<Call> call;  ///< null: none is to be made
    std::exception_ptr failure;  ///< of the call made last
    std::unique_ptr<PendingCalls> pending;
    bool left = false;  ///< the thread ends when it has nothing to do
  };

  static void serve(Shared& shared, const FileSystem& files) {
    std::unique_lock lock(shared.mutex);
    try {
      shared.pending = files.enter_thread();
    } catch (const std::bad_alloc&) {
      // then they cannot be cancelled
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

  static std::exception_ptr make(Call& call) {
    try {
      call.make();
      return nullptr;
    } catch (...) {
      return std::current_exception();
    }
  }

  const std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
  std::thread thread_;
};

/// Makes the calls on a thread that is kept for the next one, and waits for them.
class WaitingFiles::Caller {
 public:
  Caller(const FileSystem& files, std::function<bool()> keep_waiting)
      : files_(files), keep_waiting_(std::move(keep_waiting)) {}

  void make(const std::shared_ptr<Call>& call) {
    std::unique_ptr<CallThread> thread = begin(call);
    if (!thread) return call->make();
    for (Milliseconds time = quick_call; !thread->made_within(time); time = interval) {
      if (!keep_waiting_()) throw GivenUp();
    }
    kept_ = std::move(thread);
  }

  /// For a last call: what is slow about it is left to the thread, without events.
  void finish(const std::shared_ptr<Call>& call) {
    std::unique_ptr<CallThread> thread = begin(call);
    if (!thread) return call->make();
    if (thread->made_within(quick_call)) kept_ = std::move(thread);
  }

 private:
  /// Null where no thread can be started.
  std::unique_ptr<CallThread> begin(const std::shared_ptr<Call>& call) {
    std::unique_ptr<CallThread> thread = std::move(kept_);
    try {
      if (!thread) thread = std::make_unique<CallThread>(files_);
    } catch (const std::system_error&) {
      return nullptr;
    }
    thread->begin(call);
    return thread;
  }

  const FileSystem& files_;
  const std::function<bool()> keep_waiting_;
  std::unique_ptr<CallThread> kept_;  ///< null during a call, also for what events do meanwhile
};

class WaitingFiles::Reader : public FileReader {
 public:
  Reader(std::unique_ptr<FileReader> file, Caller& caller)
      : caller_(caller), call_(std::make_shared<ReaderCall>(std::move(file))) {}
  ~Reader() override { close(); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  std::optional<SystemError> open(const std::string& folder, std::string_view name) override {
    call_->folder = folder;
    call_->name = name;
    return make(ReaderCall::Action::open)->error;
  }

  std::optional<SystemError> read(unsigned char* into, std::size_t wanted,
                                  std::size_t& got) override {
    call_->bytes.resize(wanted);
    const std::shared_ptr<ReaderCall> call = make(ReaderCall::Action::read);
    got = call->got;
    std::copy_n(call->bytes.begin(), got, into);
    return call->error;
  }

  /// With the next read.
  std::optional<SystemError> seek(std::int64_t position) override {
    call_->place = position;
    return std::nullopt;
  }

  void close() override {
    if (!call_) return;
    call_->action = ReaderCall::Action::close;
    try {
      caller_.finish(call_);
    } catch (const std::bad_alloc&) {
      // for another thread; the file is closed here
    }
  }

 private:
  /// A call that is given up keeps the file, and this reader may be gone then.
  std::shared_ptr<ReaderCall> make(ReaderCall::Action action) {
    const std::shared_ptr<ReaderCall> call = std::move(call_);
    call->action = action;
    caller_.make(call);
    return call_ = call;
  }

  Caller& caller_;
  std::shared_ptr<ReaderCall> call_;  ///< null after a call that did not come to its end
};

WaitingFiles::WaitingFiles(const FileSystem& files, std::function<bool()> keep_waiting)
    : files_(files), caller_(std::make_unique<Caller>(files, std::move(keep_waiting))) {}

WaitingFiles::~WaitingFiles() = default;

std::optional<SystemError> WaitingFiles::facts(const std::string& folder, std::string_view name,
                                               FileFacts& facts) const {
  const auto call = std::make_shared<FactsCall>(files_, folder, name);
  caller_->make(call);
  facts = call->facts;
  return call->error;
}

std::unique_ptr<FileReader> WaitingFiles::reader() const {
  return std::make_unique<Reader>(files_.reader(), *caller_);
}

}  // namespace tallowmere
