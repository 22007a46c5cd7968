#include "actions/background_operations.h"

#include <windows.h>

#include <atomic>
#include <cerrno>
#include <exception>
#include <new>
#include <system_error>
#include <thread>
#include <utility>

#include "win32/handle.h"

namespace tallowmere {
namespace {

using Result = BackgroundOperations::Result;
using Progress = FileOperations::Progress;

constexpr DWORD look_pause = 50;  ///< milliseconds between two looks at the progress

/// Does the work and lets no exception out: on a thread of its own that would end the program.
Result guarded(const std::function<Result(const Progress&)>& work, const Progress& progress) {
  try {
    return work(progress);
  } catch (const std::bad_alloc&) {
    return SystemError{ERROR_NOT_ENOUGH_MEMORY, "Out of memory"};
  } catch (const std::exception& error) {
    return SystemError{ERROR_INTERNAL_ERROR, error.what()};
  }
}

/// One operation under way on a thread of its own. The destructor gives it up and waits for it.
class Worker {
 public:
  /// Throws where no thread or event can be had.
  explicit Worker(const std::function<Result(const Progress&)>& work)
      : ended_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    if (!ended_) throw std::system_error(ENOMEM, std::generic_category());
    thread_ = std::jthread([this, &work] {
      result_ = guarded(work, [this](std::int64_t bytes_done, std::int64_t bytes_total) {
        done = bytes_done;
        total = bytes_total;
        return !given_up;
      });
      SetEvent(ended_.get());
    });
  }
  ~Worker() { given_up = true; }

  std::atomic<std::int64_t> done = 0;
  std::atomic<std::int64_t> total = 0;
  std::atomic<bool> given_up = false;

  /// True when it has ended or nothing more can be learned of it; false when events may wait.
  bool wait() const {
    const HANDLE event = ended_.get();
    // Wakes for input that was looked at before, but not taken, too.
    const DWORD woken =
        MsgWaitForMultipleObjectsEx(1, &event, look_pause, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    return woken == WAIT_OBJECT_0 || woken == WAIT_FAILED;
  }
  Result result() {
    thread_.join();
    return std::move(result_);
  }

 private:
  win32::Handle ended_;
  Result result_;
  std::jthread thread_;  ///< last: joined while the others are there
};

}  // namespace

BackgroundOperations::BackgroundOperations(FileOperations& operations, std::function<void()> serve)
    : operations_(operations), serve_(std::move(serve)) {}

BackgroundOperations::Result BackgroundOperations::run(const Work& work,
                                                       const Progress& progress) const {
  std::optional<Worker> worker;
  try {
    worker.emplace(work);
  } catch (const std::exception&) {
    return guarded(work, [&](std::int64_t done, std::int64_t total) {
      serve_();
      return progress(done, total);
    });
  }
  while (!worker->wait()) {
    serve_();
    if (!worker->given_up && !progress(worker->done, worker->total)) worker->given_up = true;
  }
  return worker->result();
}

BackgroundOperations::Result BackgroundOperations::run(const Work& work) const {
  return run(work, [](std::int64_t, std::int64_t) { return true; });
}

BackgroundOperations::Result BackgroundOperations::facts(const std::string& path,
                                                         FileFacts& facts) {
  return run([&](const Progress&) { return operations_.facts(path, facts); });
}

BackgroundOperations::Result BackgroundOperations::copy(const std::string& source,
                                                        const std::string& target,
                                                        const Replace& replace,
                                                        const Progress& progress) {
  return run(
      [&](const Progress& inner) { return operations_.copy(source, target, replace, inner); },
      progress);
}

BackgroundOperations::Result BackgroundOperations::move(const std::string& source,
                                                        const std::string& target,
                                                        const Replace& replace,
                                                        const Progress& progress) {
  return run(
      [&](const Progress& inner) { return operations_.move(source, target, replace, inner); },
      progress);
}

BackgroundOperations::Result BackgroundOperations::rename(const std::string& source,
                                                          const std::string& target) {
  return run([&](const Progress&) { return operations_.rename(source, target); });
}

bool BackgroundOperations::can_recycle(const std::string& path) {
  bool can = false;
  run([&](const Progress&) {
    can = operations_.can_recycle(path);
    return Result();
  });
  return can;
}

BackgroundOperations::Result BackgroundOperations::remove(const std::string& path, bool recycle) {
  return run([&](const Progress&) { return operations_.remove(path, recycle); });
}

BackgroundOperations::Result BackgroundOperations::create_folder(const std::string& folder) {
  return run([&](const Progress&) { return operations_.create_folder(folder); });
}

}  // namespace tallowmere
