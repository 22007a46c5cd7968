#pragma once

#include <string>
#include <string_view>

#include "win32/sound.h"

namespace tallowmere {

/// What the main window lets its user hear. Whether the machine can play waves is asked once.
class WindowSounds {
 public:
  explicit WindowSounds(const std::string& program_folder);

  /// The sound of a run that has ended, or a beep.
  void search_ended() const;

  static bool is_sound_file(std::string_view name);
  void play(const std::string& path) const;

 private:
  std::string end_sound_;
  bool has_wave_output_ = win32::has_wave_output();
};

}  // namespace tallowmere
