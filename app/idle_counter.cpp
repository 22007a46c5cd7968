#include "app/idle_counter.h"

#include <utility>

#include "win32/guarded.h"

namespace tallowmere {

namespace {

constexpr UINT interval_ms = 15;
/// A third of the interval: there is always time for something else.
constexpr std::int64_t steps_ms = 5;

std::int64_t ticks() {
  LARGE_INTEGER now;
  QueryPerformanceCounter(&now);
  return now.QuadPart;
}

std::int64_t ticks_per_ms() {
  LARGE_INTEGER frequency;
  QueryPerformanceFrequency(&frequency);
  return frequency.QuadPart / 1000;
}

}  // namespace

IdleCounter::IdleCounter(HWND window, FileViewer& viewer, const WaitingFiles& files,
                         const CodePage& page, Window host)
    : window_(window), viewer_(viewer), files_(files), page_(page), host_(std::move(host)) {}

void IdleCounter::go_on(const HitFinder& finder) {
  if (ended_) return;
  if (!counter_ && !HitCounter::can_count(finder, viewer_.file_length())) {
    ended_ = true;
    return;
  }
  if (!counter_) {
    counter_.emplace(finder, page_, viewer_.encoding(), viewer_.file_length(),
                     viewer_.viewed_extension());
  }
  if (ticking_) return;
  ticking_ = SetTimer(window_, reinterpret_cast<UINT_PTR>(this), interval_ms, timer_proc) != 0;
}

void IdleCounter::pause() {
  if (std::exchange(ticking_, false)) KillTimer(window_, reinterpret_cast<UINT_PTR>(this));
}

void IdleCounter::forget() {
  pause();
  read_.reset();
  counter_.reset();
  ended_ = false;
}

void CALLBACK IdleCounter::timer_proc(HWND, UINT, UINT_PTR counter, DWORD) {
  win32::guarded(0, [=] {
    reinterpret_cast<IdleCounter*>(counter)->tick();
    return 0;
  });
}

void IdleCounter::tick() {
  if (!ticking_ || !host_.idle()) return;
  if (read_ && !read_->done()) return;
  ended_ = (read_ && !take_read()) || !steps();
  if (ended_) pause();
  host_.counted();
}

/// Takes what was read; returns false when reading failed or the file is no longer what it was.
bool IdleCounter::take_read() {
  const auto read = std::exchange(read_, nullptr);
  return !read->failed() && read->facts() == viewer_.facts() &&
         counter_->hold(piece_, read->take_bytes());
}

/// Counts for up to `steps_ms`; returns false when nothing is left to count.
bool IdleCounter::steps() {
  const std::int64_t end = ticks() + steps_ms * ticks_per_ms();
  while (!counter_->complete() && ticks() < end) {
    piece_ = counter_->wanted();
    if (piece_.length > 0) {
      const FileRecord& file = viewer_.record();
      read_ = files_.begin_read(file.filepath, file.filename, piece_.position, piece_.length);
      return true;
    }
    counter_->step();
  }
  return !counter_->complete();
}

}  // namespace tallowmere
