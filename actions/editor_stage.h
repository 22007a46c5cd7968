#pragma once

#include <functional>

#include "shell/script_player.h"
#include "win32/other_windows.h"
#include "win32/process.h"

namespace tallowmere {

/// The windows of a launched editor and the keyboard, as a key script works them.
class EditorStage : public KeyStage {
 public:
  /// `serve_events` returns false when the script is to end.
  EditorStage(const win32::StartedProgram& program, std::function<bool()> serve_events);

  bool try_activate(std::string_view title) override;
  KeyTarget target() override { return win32::key_target(window_); }
  bool keyboard_free() override;
  void press(const KeyEvent& event) override;
  bool keys_processed() override;
  double seconds() const override;
  bool pause() override;

 private:
  HWND find_window(std::string_view title) const;
  bool others_count() const;

  const win32::StartedProgram& program_;
  std::function<bool()> serve_events_;
  HWND window_ = nullptr;  ///< the activated one
  double started_;
  double asked_ = 0;  ///< when the system was last asked to put the window in front
  int answers_ = 0;   ///< of the window since the last key
};

}  // namespace tallowmere
