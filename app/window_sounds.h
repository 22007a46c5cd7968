#pragma once

#include <string>
#include <string_view>

#include "win32/sound.h"

namespace tallowmere {

/// The main window's sounds. Whether the machine can play waves is asked once.
class WindowSounds {
 public:
  explicit WindowSounds(const std::string& program_folder);

  /// Plays the sound for a run that has ended, or beeps.
  void search_ended() const;

  static bool is_sound_file(std::string_view name);
  void play(const std::string& path) const;

 private:
  std::string end_sound_;
  bool has_wave_output_ = win32::has_wave_output();
};

}  // namespace tallowmere
