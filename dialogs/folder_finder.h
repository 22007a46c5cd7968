#pragma once

#include <windows.h>

#include <functional>
#include <memory>

#include "engine/call_thread.h"
#include "files/folder_lookup.h"

namespace tallowmere {

/// Looks for folders on a thread of its own, so that a slow disk or share does not hold up the
/// window. One lookup at a time; all of it is used by the window's thread.
class FolderFinder {
 public:
  /// Runs on the other thread, with copies of what it needs.
  using Look =
      std::function<FolderLookup(const FileSystem& files, const std::function<bool()>& go_on)>;
  using Found = std::function<void(FolderLookup&&)>;

  /// `files` lives until the program ends: what has been given up may still use it.
  FolderFinder(HWND window, const FileSystem& files) : window_(window), files_(files) {}
  ~FolderFinder() { give_up(); }
  FolderFinder(const FolderFinder&) = delete;
  FolderFinder& operator=(const FolderFinder&) = delete;

  /// Hands what `look` finds to `found`: before it returns when that takes moments only, else from
  /// a later message of the window. Gives up what was looked for until now.
  void find(Look look, Found found);
  bool waiting() const { return call_ != nullptr; }
  void give_up();

 private:
  class LookCall;
  static void CALLBACK tick(HWND window, UINT message, UINT_PTR finder, DWORD time);
  UINT_PTR timer() { return reinterpret_cast<UINT_PTR>(this); }
  bool found_within(std::chrono::milliseconds time);
  void finish();

  const HWND window_;
  const FileSystem& files_;
  std::unique_ptr<CallThread> thread_;  ///< kept for the next lookup
  std::shared_ptr<LookCall> call_;      ///< under way; null: none is
  Found found_;
};

}  // namespace tallowmere
