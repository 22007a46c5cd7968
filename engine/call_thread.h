#pragma once

#include <chrono>
#include <memory>
#include <thread>

#include "engine/file_system.h"

namespace tallowmere {

/// A thread that makes one call after another. If it is destroyed during a call, it cancels that
/// call as far as the system can and leaves the thread behind. That thread may still use `files` at
/// any later time, so `files` must live until the program ends.
class CallThread {
 public:
  /// One call to the system with all that it touches; lives until the call has returned.
  class Call {
   public:
    virtual ~Call() = default;
    virtual void make() = 0;
  };

  /// Starts the thread; throws std::system_error when no thread can be started.
  explicit CallThread(const FileSystem& files);
  ~CallThread();
  CallThread(const CallThread&) = delete;
  CallThread& operator=(const CallThread&) = delete;

  /// Begins a call; allowed only when the call before has been made.
  void begin(std::shared_ptr<Call> call);
  /// Waits for the call at most as long as `time`; false when it is not made by then. Throws what
  /// the call has thrown.
  bool made_within(std::chrono::milliseconds time);

 private:
  struct Shared;
  static void serve(Shared& shared, const FileSystem& files);

  const std::shared_ptr<Shared> shared_;  ///< held by the thread too
  std::thread thread_;
};

}  // namespace tallowmere
