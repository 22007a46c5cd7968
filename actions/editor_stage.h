#pragma once

#include <functional>
#include <optional>
#include <string>

#include "launch/script_player.h"
#include "launch/window_title.h"
#include "win32/other_windows.h"
#include "win32/process.h"

namespace tallowmere {

/// What was launched.
struct LaunchedEditor {
  const win32::StartedProgram& process;  ///< outlives the stage
  std::string program_file;              ///< its name, without folder
  std::string opened_file;               ///< likewise
};

/// The windows of a launched editor and the keyboard, as a key script works them.
class EditorStage : public KeyStage {
 public:
  /// `serve_events` returns false when the script is to end.
  EditorStage(LaunchedEditor editor, std::function<bool()> serve_events);

  Activation try_activate(std::string_view title) override;
  KeyTarget target() override;
  bool keyboard_free() override;
  void press(const KeyEvent& event) override;
  bool keys_processed() override;
  double seconds() const override;
  bool pause() override;

 private:
  /// A window that may get keys, and its process, held so that no other one gets its number.
  struct EditorWindow {
    HWND handle = nullptr;
    DWORD process_id = 0;
    std::optional<win32::OtherProcess> process;
    WindowOwner owner = WindowOwner::other_program;
    TitleMatch match = TitleMatch::none;
  };

  EditorWindow find_window() const;
  EditorWindow judge(const win32::OtherWindow& window) const;
  bool still_fits() const;
  bool others_count() const;

  LaunchedEditor editor_;
  std::function<bool()> serve_events_;
  std::string title_;    ///< that the script wants
  EditorWindow window_;  ///< the activated one
  double started_;
  double asked_ = 0;  ///< when the system was last asked to put the window in front
  int answers_ = 0;   ///< of the window since the last key
};

}  // namespace tallowmere
