#include "dialogs/folder_finder.h"

#include <atomic>
#include <system_error>
#include <utility>

#include "win32/guarded.h"
#include "win32/hourglass.h"

namespace tallowmere {
namespace {

/// How long a lookup may hold the window up, which nobody sees: ordinary folders show without a
/// flicker.
constexpr std::chrono::milliseconds quick_lookup{200};
constexpr UINT interval_ms = 30;

}  // namespace

class FolderFinder::LookCall : public CallThread::Call {
 public:
  LookCall(Look look, const FileSystem& files) : look_(std::move(look)), files_(files) {}
  void make() override {
    result = look_(files_, [this] { return !given_up; });
  }

  std::atomic<bool> given_up{false};
  FolderLookup result;

 private:
  const Look look_;
  const FileSystem& files_;
};

void FolderFinder::find(Look look, Found found) {
  give_up();
  auto call = std::make_shared<LookCall>(std::move(look), files_);
  try {
    if (!thread_) thread_ = std::make_unique<CallThread>(files_);
    thread_->begin(call);
  } catch (const std::system_error&) {
    call->make();  // no thread can be started: the window waits
    return found(std::move(call->result));
  }
  call_ = std::move(call);
  found_ = std::move(found);
  const win32::Hourglass hourglass;
  if (found_within(quick_lookup)) return finish();
  SetTimer(window_, timer(), interval_ms, &FolderFinder::tick);
}

void FolderFinder::give_up() {
  if (!call_) return;
  KillTimer(window_, timer());
  call_->given_up = true;
  call_.reset();
  found_ = nullptr;
  thread_.reset();
}

void CALLBACK FolderFinder::tick(HWND, UINT, UINT_PTR timer, DWORD) {
  auto* finder = reinterpret_cast<FolderFinder*>(timer);
  win32::guarded(false, [=] {
    if (finder->waiting() && finder->found_within({})) finder->finish();
    return true;
  });
}

/// Waits for the lookup, which is no longer under way when this throws.
bool FolderFinder::found_within(std::chrono::milliseconds time) {
  try {
    return thread_->made_within(time);
  } catch (...) {
    give_up();
    throw;
  }
}

/// Hands over what was found: the receiver may look for another folder and may serve events.
void FolderFinder::finish() {
  KillTimer(window_, timer());
  const std::shared_ptr<LookCall> call = std::move(call_);
  const Found found = std::exchange(found_, nullptr);
  found(std::move(call->result));
}

}  // namespace tallowmere
