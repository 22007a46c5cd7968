#pragma once

#include <chrono>
#include <memory>
#include <thread>

#include "engine/file_system.h"

namespace tallowmere {

/// A thread that makes one call after the other. Destroyed while it makes one, it cancels that as
/// far as the system can and leaves the thread to itself. What it has been left with may still use
/// `files` at any later time, which must live until the program ends.
class CallThread {
 public:
  /// One call of the system with all that it touches, which lives as long as it takes.
  class Call {
   public:
    virtual ~Call() = default;
    virtual void make() = 0;
  };

  /// Throws std::system_error where no thread can be started.
  explicit CallThread(const FileSystem& files);
  ~CallThread();
  CallThread(const CallThread&) = delete;
  CallThread& operator=(const CallThread&) = delete;

  /// Only after the call before was made.
  void begin(std::shared_ptr<Call> call);
  /// Waits at most so long for the call to be made; throws what it has thrown.
  bool made_within(std::chrono::milliseconds time);

 private:
  struct Shared;
  static void serve(Shared& shared, const FileSystem& files);

  const std::shared_ptr<Shared> shared_;  ///< held by the thread too
  std::thread thread_;
};

}  // namespace tallowmere
