#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "win32/controls.h"
#include "win32/form.h"

namespace tallowmere {

/// Shows how far long work has come and lets the user cancel it. The work calls update() and serves
/// the messages. Short work is over before the window comes; the owner is disabled from the
/// beginning.
class frmProgress : public win32::Form {
 public:
  explicit frmProgress(HWND owner);
  /// Work from its beginning to its end, however it ends.
  class Work {
   public:
    Work(frmProgress& progress, std::string_view caption) : progress_(progress) {
      progress_.begin(caption);
    }
    ~Work() { progress_.end(); }
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;

   private:
    frmProgress& progress_;
  };

  /// `part` from 0 to 1. False once the user has cancelled.
  bool update(const std::string& text, double part);

  /// Hides the window while the work waits, because the user is asked something.
  void pause();
  void go_on();
  /// Cancels as if the user had clicked Cancel.
  void cancel() { cmdCancel_Click(); }

  win32::Label Label1;
  win32::Control ProgressBar1;
  win32::Button cmdCancel;

 private:
  void begin(std::string_view caption);
  void end();
  void show_window();
  void cmdCancel_Click();

  HWND owner_;
  HWND focus_before_ = nullptr;
  bool working_ = false;
  bool in_front_ = false;  ///< the owner was, then this window
  bool cancelled_ = false;
  std::uint64_t started_ = 0;  ///< in milliseconds; when the wait for the window began
  std::uint64_t updated_ = 0;
};

}  // namespace tallowmere
