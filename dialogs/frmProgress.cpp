#include "dialogs/frmProgress.h"

#include <commctrl.h>

#include "dialogs/resource.h"
#include "win32/text.h"

namespace tallowmere {
namespace {

constexpr std::uint64_t patience = 500;  ///< milliseconds until the window comes
constexpr std::uint64_t update_pause = 50;
constexpr int bar_length = 1000;

}  // namespace

frmProgress::frmProgress(HWND owner)
    : Form(IDD_PROGRESS, owner),
      Label1(item(IDC_PROGRESS_LABEL1)),
      ProgressBar1(item(IDC_PROGRESS_BAR)),
      cmdCancel(item(IDCANCEL)),
      owner_(owner) {
  SendMessageW(ProgressBar1.handle(), PBM_SETRANGE32, 0, bar_length);
  clicked(IDCANCEL, [this] { cmdCancel_Click(); });
}

void frmProgress::begin(std::string_view caption) {
  SetWindowTextW(handle(), win32::wide(caption).c_str());
  Label1.set_text("");
  SendMessageW(ProgressBar1.handle(), PBM_SETPOS, 0, 0);
  cmdCancel.enable(true);
  cancelled_ = false;
  focus_before_ = GetFocus();
  go_on();
}

void frmProgress::go_on() {
  started_ = GetTickCount64();
  updated_ = 0;
  working_ = true;
  in_front_ = GetForegroundWindow() == owner_;
  EnableWindow(owner_, FALSE);
}

bool frmProgress::update(const std::string& text, double part) {
  const std::uint64_t now = GetTickCount64();
  if (now - started_ < patience || now - updated_ < update_pause) return !cancelled_;
  updated_ = now;
  Label1.set_text(text);
  SendMessageW(ProgressBar1.handle(), PBM_SETPOS, static_cast<WPARAM>(part * bar_length), 0);
  if (!IsWindowVisible(handle())) show_window();
  return !cancelled_;
}

void frmProgress::show_window() {
  center_form(owner_);
  ShowWindow(handle(), SW_SHOW);
  cmdCancel.focus();
}

void frmProgress::pause() {
  if (!working_) return;
  working_ = false;
  if (IsWindowVisible(handle())) in_front_ = GetForegroundWindow() == handle();
  // In this order: hiding the active window activates an enabled one, which is to be the owner.
  EnableWindow(owner_, TRUE);
  ShowWindow(handle(), SW_HIDE);
}

void frmProgress::end() {
  pause();
  // A window manager takes the front from a disabled window. A user who works elsewhere meanwhile
  // stays there.
  if (focus_before_ != nullptr && in_front_ && IsWindowVisible(owner_)) SetForegroundWindow(owner_);
  if (focus_before_ != nullptr && IsChild(owner_, focus_before_)) SetFocus(focus_before_);
  focus_before_ = nullptr;
}

/// Cancels the work; the window stays until the file at hand has been given up.
void frmProgress::cmdCancel_Click() {
  cancelled_ = true;
  cmdCancel.enable(false);
}

}  // namespace tallowmere
