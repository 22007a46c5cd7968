#include "actions/background_operations.h"

#include <windows.h>

#include <atomic>
#include <memory>
#include <thread>
#include <type_traits>
#include <utility>

namespace tallowmere {
namespace {

constexpr DWORD look_pause = 50;  ///< milliseconds between two looks at the progress

struct HandleCloser {
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Event = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

}  // namespace

BackgroundOperations::BackgroundOperations(FileOperations& operations, std::function<void()> serve)
    : operations_(operations), serve_(std::move(serve)) {}

BackgroundOperations::Result BackgroundOperations::run(const Work& work,
                                                       const Progress& progress) const {
  std::atomic<std::int64_t> done = 0;
  std::atomic<std::int64_t> total = 0;
  std::atomic<bool> given_up = false;
  const Event finished(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  Result result;
  std::thread worker([&] {
    result = work([&](std::int64_t bytes_done, std::int64_t bytes_total) {
      done = bytes_done;
      total = bytes_total;
      return !given_up;
    });
    SetEvent(finished.get());
  });
  const HANDLE event = finished.get();
  while (MsgWaitForMultipleObjects(1, &event, FALSE, look_pause, QS_ALLINPUT) != WAIT_OBJECT_0) {
    serve_();
    if (!given_up && !progress(done, total)) given_up = true;
  }
  worker.join();
  return result;
}

BackgroundOperations::Result BackgroundOperations::run(const Work& work) const {
  return run(work, [](std::int64_t, std::int64_t) { return true; });
}

BackgroundOperations::Result BackgroundOperations::facts(const std::string& path,
                                                         FileFacts& facts) {
  return run([&](const Progress&) { return operations_.facts(path, facts); });
}

BackgroundOperations::Result BackgroundOperations::copy(const std::string& source,
                                                        const std::string& target, bool replace,
                                                        const Progress& progress) {
  return run(
      [&](const Progress& inner) { return operations_.copy(source, target, replace, inner); },
      progress);
}

BackgroundOperations::Result BackgroundOperations::move(const std::string& source,
                                                        const std::string& target, bool replace,
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
