#include "actions/editor_stage.h"

#include <utility>

#include "launch/window_title.h"
#include "win32/keystrokes.h"

namespace tallowmere {

namespace {

constexpr double own_windows_first = 3;  // seconds
constexpr double ask_interval = 0.5;     // each request in vain may flash the task bar
constexpr DWORD pause_ms = 20;

/// The first answer may come from before the last key was taken from the queue.
constexpr int wanted_answers = 2;

}  // namespace

EditorStage::EditorStage(LaunchedEditor editor, std::function<bool()> serve_events)
    : editor_(std::move(editor)), serve_events_(std::move(serve_events)), started_(seconds()) {}

Activation EditorStage::try_activate(std::string_view title) {
  title_ = title;
  window_ = find_window();
  if (window_.handle == nullptr) return Activation::waiting;
  if (window_.process->outranks_us()) return Activation::refused;
  if (win32::is_in_front(window_.handle)) {
    const bool ready = others_count() || editor_.process.is_ready();
    return ready ? Activation::done : Activation::waiting;
  }
  if (seconds() - asked_ >= ask_interval) {
    asked_ = seconds();
    win32::bring_to_front(window_.handle);
  }
  return Activation::waiting;
}

KeyTarget EditorStage::target() {
  return still_fits() ? win32::key_target(window_.handle) : KeyTarget::elsewhere;
}

/// An editor may have taken another file meanwhile; a window may be gone, and its handle belong to
/// one of another process.
bool EditorStage::still_fits() const {
  const win32::OtherWindow window = win32::other_window(window_.handle);
  return window_.handle != nullptr && window.process_id == window_.process_id &&
         match_editor_window(window_.owner, window.title, title_, editor_.opened_file) !=
             TitleMatch::none;
}

/// Some editors hand the file over to one that runs already; its windows count when the started
/// program has ended or shows none.
bool EditorStage::others_count() const {
  return !editor_.process.is_running() || seconds() - started_ >= own_windows_first;
}

EditorStage::EditorWindow EditorStage::find_window() const {
  EditorWindow best;
  win32::visit_other_windows([&](const win32::OtherWindow& window) {
    if (match_title(window.title, title_) == TitleMatch::none) return;
    EditorWindow judged = judge(window);
    if (judged.match == TitleMatch::none) return;
    const bool better = std::pair(judged.owner, judged.match) > std::pair(best.owner, best.match);
    if (better) best = std::move(judged);
  });
  return best;
}

EditorStage::EditorWindow EditorStage::judge(const win32::OtherWindow& window) const {
  EditorWindow judged;
  judged.handle = window.handle;
  judged.process_id = window.process_id;
  judged.process.emplace(window.process_id);
  if (window.process_id != 0 && window.process_id == editor_.process.id()) {
    judged.owner = WindowOwner::started;
  } else if (others_count() && judged.process->runs(editor_.program_file)) {
    judged.owner = WindowOwner::same_program;
  }
  judged.match = match_editor_window(judged.owner, window.title, title_, editor_.opened_file);
  return judged;
}

bool EditorStage::keyboard_free() {
  return !win32::modifier_is_down();
}

void EditorStage::press(const KeyEvent& event) {
  answers_ = 0;
  win32::press_key(event);
}

bool EditorStage::keys_processed() {
  if (win32::answers(window_.handle)) ++answers_;
  return answers_ >= wanted_answers;
}

double EditorStage::seconds() const {
  return static_cast<double>(GetTickCount64()) / 1000;
}

bool EditorStage::pause() {
  MsgWaitForMultipleObjectsEx(0, nullptr, pause_ms, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  return serve_events_();
}

}  // namespace tallowmere
