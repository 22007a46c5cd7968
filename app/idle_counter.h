#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "engine/code_page.h"
#include "viewer/file_viewer.h"
#include "viewer/hit_counter.h"
#include "viewer/hit_finder.h"
#include "viewer/waiting_files.h"

namespace tallowmere {

/// Counts the hits of the file on view while nothing else is to do: by a timer, whose messages come
/// when no others wait, a few milliseconds at a time. Another thread reads meanwhile. A failure
/// ends the count without a message: the user's next step reports it.
class IdleCounter {
 public:
  struct Window {
    std::function<bool()> idle;     ///< nothing else is under way
    std::function<void()> counted;  ///< the count has gone on
  };

  /// The timer is one of `window`. The others outlive the counter.
  IdleCounter(HWND window, FileViewer& viewer, const WaitingFiles& files, const CodePage& page,
              Window host);
  ~IdleCounter() { pause(); }
  IdleCounter(const IdleCounter&) = delete;
  IdleCounter& operator=(const IdleCounter&) = delete;

  /// Begins the count or goes on with it; `finder` outlives it. Long files are not counted.
  void go_on(const HitFinder& finder);
  void pause();
  /// Drops the count: the file on view is another one, or its hits are others.
  void forget();

  /// The count so far; null when there is none.
  const HitCounter* counter() const { return counter_ ? &*counter_ : nullptr; }

 private:
  static void CALLBACK timer_proc(HWND window, UINT message, UINT_PTR counter, DWORD time);
  void tick();
  bool take_read();
  bool steps();

  HWND window_;
  FileViewer& viewer_;
  const WaitingFiles& files_;
  const CodePage& page_;
  const Window host_;
  std::optional<HitCounter> counter_;
  FilePiece piece_;                                ///< being read
  std::unique_ptr<WaitingFiles::PieceRead> read_;  ///< null while nothing is
  bool ended_ = false;                             ///< complete, given up or not to be made
  bool ticking_ = false;
};

}  // namespace tallowmere
