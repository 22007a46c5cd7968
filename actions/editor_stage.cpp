#include "actions/editor_stage.h"

#include <utility>

#include "shell/window_title.h"
#include "win32/keystrokes.h"

namespace tallowmere {

namespace {

constexpr double own_windows_first = 3;  // seconds
constexpr double ask_interval = 0.5;     // each vain question may flash the task bar
constexpr DWORD pause_ms = 20;

/// The first answer may come from before the last key was taken from the queue.
constexpr int wanted_answers = 2;

}  // namespace

EditorStage::EditorStage(const win32::StartedProgram& program, std::function<bool()> serve_events)
    : program_(program), serve_events_(std::move(serve_events)), started_(seconds()) {}

bool EditorStage::try_activate(std::string_view title) {
  window_ = find_window(title);
  if (window_ == nullptr) return false;
  if (win32::is_in_front(window_)) return others_count() || program_.is_ready();
  if (seconds() - asked_ >= ask_interval) {
    asked_ = seconds();
    win32::bring_to_front(window_);
  }
  return false;
}

/// Some editors hand the file over to one that runs already; its windows count when the started
/// program has ended or shows none.
bool EditorStage::others_count() const {
  return !program_.is_running() || seconds() - started_ >= own_windows_first;
}

HWND EditorStage::find_window(std::string_view title) const {
  HWND best = nullptr;
  std::pair<bool, TitleMatch> best_rank;
  win32::visit_other_windows([&](const win32::OtherWindow& window) {
    const TitleMatch match = match_title(window.title, title);
    const bool own = window.process_id == program_.id();
    if (match == TitleMatch::none || (!own && !others_count())) return;
    const std::pair rank(own, match);
    if (best != nullptr && rank <= best_rank) return;
    best = window.handle;
    best_rank = rank;
  });
  return best;
}

bool EditorStage::keyboard_free() {
  return !win32::modifier_is_down();
}

void EditorStage::press(const KeyEvent& event) {
  answers_ = 0;
  win32::press_key(event);
}

bool EditorStage::keys_processed() {
  if (win32::answers(window_)) ++answers_;
  return answers_ >= wanted_answers;
}

double EditorStage::seconds() const {
  return static_cast<double>(GetTickCount64()) / 1000;
}

bool EditorStage::pause() {
  MsgWaitForMultipleObjects(0, nullptr, FALSE, pause_ms, QS_ALLINPUT);
  return serve_events_();
}

}  // namespace tallowmere
